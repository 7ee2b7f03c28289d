#include "platform/store/faces/rowqueries.h"

#include <string>

namespace veldona::store {
namespace {

// Begins with a control character, as no text's key does.
std::string key(std::string_view kind, std::string_view table, const ColumnNames& columns = {}) {
    std::string made("\x02");
    made.append(kind).append(table);
    for (const std::string_view column : columns)
        made.append(1, '\n').append(column);
    return made;
}

std::vector<std::string> owned(const ColumnNames& columns) {
    return {columns.begin(), columns.end()};
}

} // namespace

Query insertion(Database& database, std::string_view table, const ColumnNames& columns) {
    return database.query(key("insert ", table, columns), columns.size(),
                          [&] { return sql::insertRow(std::string(table), owned(columns)); });
}

Query correction(Database& database, std::string_view table, const ColumnNames& columns) {
    return database.query(key("update ", table, columns), columns.size() + 1,
                          [&] { return sql::updateRow(std::string(table), owned(columns)); });
}

Query removal(Database& database, std::string_view table) {
    return database.query(key("delete ", table), 1, [&] { return sql::deleteRow(std::string(table)); });
}

Query rows(Database& database, const sql::RowRange& range) {
    std::string kind = range.descending ? "down " : "up ";
    if (range.key) kind.append(std::to_string(static_cast<int>(*range.key))).append(1, ' ');
    if (range.top) kind.append(std::to_string(*range.top)).append(1, ' ');
    const ColumnNames equal(range.equal.begin(), range.equal.end());
    return database.query(key(kind, range.table, equal), equal.size() + (range.key ? 1 : 0),
                          [&] { return sql::selectRows(range); });
}

Query keysAbove(Database& database, std::string_view table, std::int64_t id) {
    Query query = database.query(key("keys ", table), 1, [&] {
        return sql::selectKeys({std::string(table), {}, sql::Operator::Greater, false, std::nullopt});
    });
    query.values.front() = id;
    return query;
}

Query rowCount(Database& database, std::string_view table) {
    return database.query(key("count ", table), 0, [&] { return sql::countRows(std::string(table)); });
}

} // namespace veldona::store
