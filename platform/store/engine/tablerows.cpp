#include "platform/store/engine/tablerows.h"

#include <vector>

namespace veldona::store {
namespace {

constexpr std::int64_t kPortion = 20'000;
constexpr std::int64_t kBetweenLooks = 1'000;

void copyTable(const Inquiry& from, const Inquiry& into, const Catalog::Relation& table,
               const std::function<void()>& onRows) {
    std::vector<std::string> columns;
    for (const ColumnDef& column : table.columns)
        columns.push_back(column.name);
    const auto insertion = into.insertion(table.name, columns);
    std::int64_t count = 0;
    for (TableRows rows(from, table); rows.next();) {
        if (onRows && count++ % kBetweenLooks == 0) onRows();
        for (int column = 0; column < static_cast<int>(columns.size()); ++column)
            insertion->bind(column + 1, storedValue(rows.row(), column));
        insertion->step();
        insertion->reset();
    }
}

} // namespace

TableRows::TableRows(const Inquiry& books, const Catalog::Relation& table)
    : books_(books), table_('[' + table.name + ']') {
    for (const ColumnDef& column : table.columns)
        columns_ += (columns_.empty() ? "[" : ", [") + column.name + ']';
}

bool TableRows::stepped() {
    if (!statement_->step()) return false;
    ++inPortion_;
    lastId_ = statement_->whole(0); // ID is the first column of each table
    return true;
}

bool TableRows::next() {
    if (statement_ != nullptr) {
        if (stepped()) return true;
        if (inPortion_ < kPortion) return false;
    }
    inPortion_ = 0;
    statement_ =
        books_.prepare("SELECT TOP " + std::to_string(kPortion) + ' ' + columns_ + " FROM " + table_ +
                       (lastId_ ? " WHERE ID > " + std::to_string(*lastId_) : "") + " ORDER BY ID");
    return stepped();
}

Value storedValue(const Statement& row, int column) {
    switch (row.storage(column)) {
    case Statement::Storage::Null:
        break;
    case Statement::Storage::Whole:
        return row.whole(column);
    case Statement::Storage::Number:
        return row.number(column);
    case Statement::Storage::Text:
        return row.text(column);
    }
    return Null();
}

void copyRows(Engine& from, Engine& into, const std::function<void()>& onRows) {
    const Inquiry source(from), target(into);
    into.beginFilling();
    std::vector<const Catalog::Relation*> tables; // older books may lack some, and columns of others
    for (const Catalog::Relation& table : target.catalog().relations())
        if (const auto* known = source.catalog().find(table.name); known != nullptr && !table.isQuery)
            tables.push_back(known);
    for (const Catalog::Relation* table : tables)
        copyTable(source, target, *table, onRows);
    for (const Catalog::Relation* table : tables)
        into.setLastCounter(table->name, from.lastCounterOf(table->name));
    into.setJournalKey(from.journalKey());
    into.endFilling();
}

} // namespace veldona::store
