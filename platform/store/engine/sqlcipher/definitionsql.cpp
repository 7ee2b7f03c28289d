#include "platform/store/engine/sqlcipher/definitionsql.h"

#include <stdexcept>

#include "platform/store/dialect/catalog.h"
#include "platform/store/dialect/savedquery.h"
#include "platform/store/engine/sqlcipher/journaltriggers.h"
#include "platform/store/engine/sqlcipher/words.h"

namespace veldona::store {
namespace {

using enum ColumnType;

std::string quoted(const std::string& name) {
    return '"' + name + '"';
}

// The words decide how the engine keeps a value: INT as a whole number, TEXT as text, DOUB as a double.
std::string declaration(ColumnType type) {
    switch (type) {
    case Counter:
        return "INTEGER PRIMARY KEY AUTOINCREMENT";
    case Whole:
        return "INTEGER";
    case Small:
        return "SMALLINT";
    case Number:
        return "DOUBLE";
    case Text:
        return "TEXT COLLATE TURKISH";
    case Memo:
        return "MEMOTEXT COLLATE TURKISH";
    case Date:
        return "DATETIMETEXT";
    case Boolean:
        return "BOOLEAN";
    }
    throw std::logic_error("a column type without a declaration");
}

} // namespace

std::string columnDefinition(const ColumnDef& column) {
    const std::string typed = quoted(column.name) + ' ' + declaration(column.type);
    return column.defaultValue ? typed + " DEFAULT " + std::to_string(*column.defaultValue) : typed;
}

std::string tableStatement(const TableDef& table, Lifetime lifetime) {
    std::string sql = lifetime == Lifetime::File ? "CREATE TABLE " : "CREATE TEMP TABLE ";
    sql += quoted(table.name) + " (";
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (i > 0) sql += ", ";
        sql += columnDefinition(table.columns[i]);
    }
    return sql + ')';
}

std::string indexName(const TableDef& table, const std::vector<std::string>& columns) {
    std::string name = table.name;
    for (const std::string& column : columns)
        name += '_' + column;
    return name;
}

std::string indexStatement(const TableDef& table, const std::vector<std::string>& columns, Unique unique) {
    std::string list;
    for (const std::string& column : columns)
        list += (list.empty() ? "" : ", ") + quoted(column);
    return (unique == Unique::Yes ? "CREATE UNIQUE INDEX " : "CREATE INDEX ") +
           quoted(indexName(table, columns)) + " ON " + quoted(table.name) + " (" + list + ')';
}

std::vector<std::string> definitionStatements(const std::vector<TableDef>& tables,
                                              const std::vector<SavedQueryDef>& queries) {
    std::vector<std::string> statements;
    Catalog catalog;
    for (const TableDef& table : tables) {
        statements.push_back(tableStatement(table, Lifetime::File));
        if (!table.key.empty()) statements.push_back(indexStatement(table, table.key, Unique::Yes));
        for (const auto& columns : table.indexes)
            statements.push_back(indexStatement(table, columns, Unique::No));
        catalog.add({table.name, table.columns, false, {table.name}});
    }
    for (const TableDef& table : tables)
        for (JournalTrigger& trigger : journalTriggers(table))
            statements.push_back(std::move(trigger.statement));
    for (const SavedQueryDef& query : queries)
        statements.push_back("CREATE VIEW " + quoted(query.name) + " AS " +
                             savedQueryText(query, catalog, kSqlcipherWords));
    return statements;
}

std::optional<ColumnType> columnTypeOfDeclaration(std::string_view declared) {
    if (declared == "INTEGER") return Whole;
    if (declared == "SMALLINT") return Small;
    if (declared == "DOUBLE") return Number;
    if (declared == "TEXT") return Text;
    if (declared == "MEMOTEXT") return Memo;
    if (declared == "DATETIMETEXT") return Date;
    if (declared == "BOOLEAN") return Boolean;
    return std::nullopt;
}

} // namespace veldona::store
