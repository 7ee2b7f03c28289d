#include "platform/store/engine/bulkload.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "platform/store/dialect/literal.h"
#include "platform/store/dialect/names.h"
#include "platform/store/engine/durable.h"
#include "platform/store/engine/journalseal.h"
#include "platform/store/engine/openfile.h"

namespace veldona::store {
namespace {

ColumnType typeOf(const TableDef& table, std::string_view column) {
    const auto found = std::find_if(table.columns.begin(), table.columns.end(),
                                    [&](const ColumnDef& known) { return sameName(known.name, column); });
    if (found == table.columns.end())
        throw std::logic_error("a bulk load names a column that its table has not");
    return found->type;
}

} // namespace

BulkLoad::BulkLoad(const std::string& nativePath, std::string_view password)
    : path_(nativePath), engine_(openFile(nativePath, password, std::chrono::seconds(1), {})),
      inquiry_(std::make_unique<Inquiry>(*engine_)) {
    engine_->beginFilling();
}

BulkLoad::Rows::Rows(const Inquiry& books, const TableDef& table, const std::vector<std::string>& columns)
    : insert_(books.insertion(table.name, columns)) {
    for (const std::string& column : columns)
        types_.push_back(typeOf(table, column));
}

void BulkLoad::Rows::add(std::span<const Value> row) {
    if (row.size() != types_.size()) throw std::logic_error("a bulk load's row has not one value a column");
    int index = 0;
    for (const Value& value : row) {
        insert_->bind(index + 1, bindValue(value, types_[static_cast<std::size_t>(index)]));
        ++index;
    }
    insert_->step();
    insert_->reset();
}

BulkLoad::Rows BulkLoad::into(const TableDef& table, const std::vector<std::string>& columns) {
    return Rows(*inquiry_, table, columns);
}

void BulkLoad::finish() {
    engine_->noteInJournal(kFilledNote);
    engine_->endFilling();
    inquiry_.reset();
    engine_.reset();
    syncFile(path_); // nothing was while it was filled
}

} // namespace veldona::store
