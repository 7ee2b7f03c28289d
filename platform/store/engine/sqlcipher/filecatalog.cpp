#include "platform/store/engine/sqlcipher/filecatalog.h"

#include <string>
#include <utility>
#include <vector>

#include "platform/store/engine/alphabet.h"
#include "platform/store/engine/sqlcipher/definitionsql.h"

namespace veldona::store {
namespace {

struct Listed {
    std::string name;
    bool isQuery;
};

std::vector<Listed> listRelations(Engine& engine) {
    std::vector<Listed> listed;
    // A table of the connection's own is met before one of its name in the file.
    for (const char* catalog : {"sqlite_temp_master", "sqlite_master"}) {
        auto statement = engine.prepare("SELECT name, type = 'view' FROM " + std::string(catalog) +
                                        " WHERE type IN ('table', 'view') AND name NOT LIKE 'sqlite_%' "
                                        "AND name NOT LIKE 'MSys%' ORDER BY rowid");
        while (statement->step())
            listed.push_back({std::string(statement->text(0)), statement->whole(1) != 0});
    }
    return listed;
}

// A column of a query that is computed from others has no declared type; it is a text, as names put together
// are.
ColumnType declaredOrText(std::string_view declaration) {
    const std::optional<ColumnType> type = columnTypeOfDeclaration(declaration);
    return type.value_or(ColumnType::Text);
}

std::string quoted(std::string_view name) {
    return "\"" + std::string(name) + "\"";
}

// The key of a table is its counter; by its declaration alone it is a whole number like others.
void markCounter(Engine& engine, Catalog::Relation& table) {
    auto info = engine.prepare("PRAGMA table_info(" + quoted(table.name) + ")");
    for (std::size_t i = 0; info->step() && i < table.columns.size(); ++i)
        if (info->whole(5) != 0) table.columns[i].type = ColumnType::Counter;
}

Catalog::Relation readRelation(Engine& engine, const Listed& listed, const TablesRead& tablesRead) {
    Catalog::Relation relation{listed.name, {}, listed.isQuery, {listed.name}};
    const std::string all = "SELECT * FROM " + quoted(listed.name);
    const auto statement = engine.prepare(all);
    for (int i = 0; i < statement->columnCount(); ++i)
        relation.columns.push_back({statement->columnName(i), declaredOrText(statement->declaredType(i))});
    if (listed.isQuery) {
        relation.baseTables = tablesRead(all);
        std::erase(relation.baseTables, listed.name);
    } else {
        markCounter(engine, relation);
    }
    return relation;
}

std::string writtenSortOrder(Engine& engine) {
    auto table = engine.prepare("SELECT 1 FROM sqlite_master WHERE name = 'MSysSIRALAMA'");
    if (!table->step()) return {};
    auto version = engine.prepare("SELECT SURUM FROM MSysSIRALAMA");
    return version->step() ? std::string(version->text(0)) : std::string();
}

} // namespace

Catalog readCatalog(Engine& engine, const TablesRead& tablesRead) {
    Catalog catalog;
    for (const Listed& listed : listRelations(engine))
        catalog.add(readRelation(engine, listed, tablesRead));
    return catalog;
}

void writeSortOrder(Engine& engine) {
    engine.execute("CREATE TABLE IF NOT EXISTS MSysSIRALAMA (SURUM TEXT)");
    engine.execute("DELETE FROM MSysSIRALAMA");
    auto statement = engine.prepare("INSERT INTO MSysSIRALAMA (SURUM) VALUES (?1)");
    statement->bind(1, Alphabet::turkish().version());
    statement->step();
}

void renewSortOrder(Engine& engine) {
    if (writtenSortOrder(engine) == Alphabet::turkish().version()) return;
    engine.begin();
    engine.execute("REINDEX TURKISH");
    writeSortOrder(engine);
    engine.commit();
}

} // namespace veldona::store
