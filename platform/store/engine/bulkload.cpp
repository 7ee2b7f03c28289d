#include "platform/store/engine/bulkload.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <utility>

#include "platform/store/dialect/literal.h"
#include "platform/store/dialect/names.h"
#include "platform/store/engine/durable.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"

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
    : path_(nativePath), engine_(openSqlcipher(nativePath, password, std::chrono::seconds(1))) {
    engine_->execute("PRAGMA locking_mode = EXCLUSIVE");
    engine_->execute("PRAGMA journal_mode = OFF");
    engine_->execute("PRAGMA synchronous = OFF");
    engine_->begin();
    takeIndexesOff();
}

// A long index that grows row by row in no order touches another page at each row; sorted at the end, it is
// written from front to back.
void BulkLoad::takeIndexesOff() {
    std::vector<std::string> names;
    const auto known =
        engine_->prepare("SELECT name, sql FROM sqlite_master WHERE type = 'index' AND sql <> ''");
    while (known->step()) {
        names.emplace_back(known->text(0));
        indexes_.emplace_back(known->text(1));
    }
    known->reset();
    for (const std::string& name : names)
        engine_->execute("DROP INDEX \"" + name + '"');
}

// Rows may bring a key twice from where they come; the books then go on without its being unique. Looked for
// before: without a journal nothing takes back what a statement that fails has done.
void BulkLoad::makeAgain(std::string index) {
    constexpr std::string_view unique = "UNIQUE ", on = " ON ";
    const std::size_t word = index.find(unique), table = index.find(on) + on.size(), list = index.rfind('(');
    if (word != index.npos) {
        const std::string columns = index.substr(list + 1, index.size() - list - 2);
        const auto twice = engine_->prepare("SELECT 1 FROM " + index.substr(table, list - table) + " WHERE " +
                                            columns.substr(0, columns.find(',')) + " IS NOT NULL GROUP BY " +
                                            columns + " HAVING count(*) > 1 LIMIT 1");
        if (twice->step()) index.erase(word, unique.size());
    }
    engine_->execute(index);
}

BulkLoad::Rows::Rows(Engine& engine, const TableDef& table, const std::vector<std::string>& columns) {
    std::string names;
    std::string marks;
    for (const std::string& column : columns) {
        types_.push_back(typeOf(table, column));
        names += (names.empty() ? "\"" : ", \"") + column + '"';
        marks += marks.empty() ? "?" : ", ?";
    }
    insert_ = engine.prepare("INSERT INTO \"" + table.name + "\" (" + names + ") VALUES (" + marks + ")");
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
    return Rows(*engine_, table, columns);
}

void BulkLoad::finish() {
    for (const std::string& index : indexes_)
        makeAgain(index);
    engine_->commit();
    engine_.reset();
    syncFile(path_); // nothing was while it was filled
}

} // namespace veldona::store
