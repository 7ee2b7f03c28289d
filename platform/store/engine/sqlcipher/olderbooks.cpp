#include "platform/store/engine/sqlcipher/olderbooks.h"

#include <algorithm>
#include <map>
#include <vector>

#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/journalseal.h"
#include "platform/store/engine/sqlcipher/definitionsql.h"
#include "platform/store/engine/sqlcipher/delivered.h"
#include "platform/store/engine/sqlcipher/journaltriggers.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"

namespace veldona::store {
namespace {

constexpr std::chrono::milliseconds kForTheRest{1000}; // nobody waits longer for what the next opening can do

using Statements = std::map<std::string, std::string>; // by name

std::string quoted(const std::string& name) {
    return '"' + name + '"';
}

Statements catalogOf(Engine& engine) {
    Statements catalog;
    const auto known = engine.prepare("SELECT name, ifnull(sql, '') FROM sqlite_master");
    while (known->step())
        catalog.emplace(known->text(0), known->text(1));
    return catalog;
}

std::vector<ColumnDef> missingColumns(const TableDef& table, const std::string& declaration) {
    std::vector<ColumnDef> missing;
    for (const ColumnDef& column : table.columns) {
        const std::string begin = quoted(column.name) + ' ';
        const bool stands = declaration.find('(' + begin) != std::string::npos ||
                            declaration.find(", " + begin) != std::string::npos;
        if (!stands && column.type != ColumnType::Counter) missing.push_back(column);
    }
    return missing;
}

bool standsTwice(Engine& engine, const TableDef& table) {
    std::string columns;
    for (const std::string& column : table.key)
        columns += (columns.empty() ? "" : ", ") + quoted(column);
    const auto found =
        engine.prepare("SELECT 1 FROM " + quoted(table.name) + " WHERE " + quoted(table.key.front()) +
                       " IS NOT NULL GROUP BY " + columns + " HAVING count(*) > 1 LIMIT 1");
    return found->step();
}

// The statements that add what is missing, in their order.
struct Missing {
    std::vector<std::string> shape; // tables and columns: no statement that names them runs without
    std::vector<std::string> rest;
    std::vector<std::string> triggers; // of the journal: without them it would miss what is written meanwhile
    bool lacksKey = false;             // of the journal: no entry can be sealed, no row be written
    bool hasLostParts = false;         // of a journal that stood there once
    bool hasLostTail = false;          // of it: the next entry would cover that any are gone

    [[nodiscard]] bool isJournalWhole() const {
        return triggers.empty() && !lacksKey && !hasLostParts && !hasLostTail;
    }
    [[nodiscard]] bool isNothing() const { return shape.empty() && rest.empty() && isJournalWhole(); }
};

void addIndexes(Engine& engine, const TableDef& table, const Statements& catalog, Missing& missing) {
    for (const auto& columns : table.indexes)
        if (!catalog.contains(indexName(table, columns)))
            missing.rest.push_back(indexStatement(table, columns, Unique::No));
    if (table.key.empty()) return;
    const std::string name = indexName(table, table.key);
    const auto known = catalog.find(name);
    if (known != catalog.end() && known->second.starts_with("CREATE UNIQUE ")) return;
    // A table or a column that comes now holds no value twice.
    const auto file = catalog.find(table.name);
    if (file != catalog.end() && missingColumns(table, file->second).empty() && standsTwice(engine, table))
        return;
    if (known != catalog.end()) missing.rest.push_back("DROP INDEX " + quoted(name));
    missing.rest.push_back(indexStatement(table, table.key, Unique::Yes));
}

void addQueries(const Delivered& delivered, const Statements& catalog, Missing& missing) {
    std::vector<std::string> beginnings;
    for (const SavedQueryDef& query : delivered.queries)
        if (!catalog.contains(query.name)) beginnings.push_back("CREATE VIEW " + quoted(query.name) + ' ');
    if (beginnings.empty()) return; // the statements take some milliseconds to make
    for (const std::string& statement : definitionStatements(delivered.tables, delivered.queries))
        if (std::ranges::any_of(beginnings, [&](auto& begin) { return statement.starts_with(begin); }))
            missing.rest.push_back(statement);
}

void addTriggers(const TableDef& table, const Statements& catalog, Missing& missing) {
    for (const JournalTrigger& trigger : journalTriggers(table)) {
        const auto known = catalog.find(trigger.name);
        if (known != catalog.end() && known->second == trigger.statement) continue;
        if (known != catalog.end()) missing.triggers.push_back("DROP TRIGGER " + quoted(trigger.name));
        if (known == catalog.end() && catalog.contains(kJournalKeyTable)) missing.hasLostParts = true;
        missing.triggers.push_back(trigger.statement);
    }
}

std::int64_t newestEntry(Engine& engine) {
    const auto newest = engine.prepare("SELECT ifnull(max(ID), 0) FROM " + quoted(kJournalTable));
    return newest->step() ? newest->whole(0) : 0;
}

Missing missingOf(Engine& engine, const Delivered& delivered) {
    const Statements catalog = catalogOf(engine);
    Missing missing;
    for (const TableDef& table : delivered.tables) {
        const auto known = catalog.find(table.name);
        if (known == catalog.end())
            missing.shape.push_back(tableStatement(table, Lifetime::File));
        else
            for (const ColumnDef& column : missingColumns(table, known->second))
                missing.shape.push_back("ALTER TABLE " + quoted(table.name) + " ADD COLUMN " +
                                        columnDefinition(column));
        addIndexes(engine, table, catalog, missing);
        addTriggers(table, catalog, missing);
    }
    addQueries(delivered, catalog, missing);
    missing.lacksKey = anyJournaled(delivered.tables) && engine.journalKey().empty();
    if (catalog.contains(kJournalKeyTable) && !catalog.contains(kJournalTable)) missing.hasLostParts = true;
    missing.hasLostTail =
        catalog.contains(kJournalTable) && engine.lastCounterOf(kJournalTable) > newestEntry(engine);
    return missing;
}

// Where the column's definition ends in `declaration`, if it stands there without its default.
std::size_t endOfUndefaulted(const std::string& declaration, const ColumnDef& column) {
    const std::string definition = columnDefinition({column.name, column.type});
    const std::size_t at = declaration.find(definition);
    if (at == std::string::npos) return at;
    const std::size_t end = at + definition.size();
    const char behind = end < declaration.size() ? declaration[end] : ' ';
    return behind == ',' || behind == ')' ? end : std::string::npos;
}

// The declaration with the defaults that it lacks; what holds Null in their columns holds them, too, if
// `fill`.
std::string defaulted(Engine& engine, const TableDef& table, std::string declaration, bool fill) {
    for (const ColumnDef& column : table.columns) {
        if (!column.defaultValue) continue;
        const std::size_t end = endOfUndefaulted(declaration, column);
        if (end == std::string::npos) continue;
        const std::string value = std::to_string(*column.defaultValue);
        declaration.insert(end, " DEFAULT " + value);
        const std::string name = quoted(column.name);
        if (fill)
            engine.execute("UPDATE " + quoted(table.name) + " SET " + name + " = " + value + " WHERE " +
                           name + " IS NULL");
    }
    return declaration;
}

// The tables that lack a default, with their statements as they should be.
Statements undefaulted(Engine& engine, const std::vector<TableDef>& tables, bool fill) {
    Statements catalog = catalogOf(engine), changed;
    for (const TableDef& table : tables) {
        const std::string& known = catalog[table.name];
        std::string today = defaulted(engine, table, known, fill);
        if (today != known) changed.emplace(table.name, std::move(today));
    }
    return changed;
}

// The engine has no statement that gives a column a default. Where nothing else of a declaration changes, it
// allows its text to be written; the raised version makes other workstations read it anew.
bool writeDefaults(Engine& engine, const std::vector<TableDef>& tables) {
    const Statements changed = undefaulted(engine, tables, true);
    if (changed.empty()) return false;
    engine.execute("PRAGMA writable_schema = ON");
    for (const auto& [table, today] : changed) {
        const auto write =
            engine.prepare("UPDATE sqlite_master SET sql = ?1 WHERE type = 'table' AND name = ?2");
        write->bind(1, today);
        write->bind(2, table);
        write->step();
    }
    engine.execute("PRAGMA writable_schema = OFF");
    const auto version = engine.prepare("PRAGMA schema_version");
    version->step();
    const std::int64_t raised = version->whole(0) + 1;
    version->reset();
    engine.execute("PRAGMA schema_version = " + std::to_string(raised));
    return true;
}

// Behind the rest: what the upgrade itself fills in is nobody's act.
void addJournal(Engine& engine, const Missing& missing, bool isOfToday) {
    if (missing.isJournalWhole()) return;
    if (missing.lacksKey) makeJournalKey(engine);
    if (missing.lacksKey || (missing.hasLostParts && isOfToday))
        engine.noteInJournal(isOfToday ? kMendedNote : kBegunNote);
    if (missing.hasLostTail) {
        engine.noteInJournal(kTailNote);
        engine.setLastCounter(kJournalTable, newestEntry(engine));
    }
    for (const std::string& statement : missing.triggers)
        engine.execute(statement);
}

// Looked for once more under the lock: another till may have been quicker.
bool addMissing(Engine& engine, const Delivered& delivered, const std::function<void()>& keepCopy) {
    engine.begin();
    const Missing missing = missingOf(engine, delivered);
    if (!missing.shape.empty()) keepCopy();
    for (const auto& statements : {missing.shape, missing.rest})
        for (const std::string& statement : statements)
            engine.execute(statement);
    const bool isRewritten = writeDefaults(engine, delivered.tables);
    addJournal(engine, missing, shapeOf(engine) == shapeOf(delivered));
    engine.execute("PRAGMA user_version = " + std::to_string(shapeOf(delivered)));
    engine.commit();
    return isRewritten;
}

} // namespace

bool bringUpToDate(Engine& engine, const Delivered& delivered, const std::string& path,
                   std::chrono::milliseconds longest, const std::function<void()>& keepCopy) {
    if (delivered.tables.empty()) return false; // any file is taken as it is
    const Missing missing = missingOf(engine, delivered);
    if (missing.isNothing() && undefaulted(engine, delivered.tables, false).empty() &&
        shapeOf(engine) == shapeOf(delivered))
        return false;
    const bool canWait = missing.shape.empty() && missing.isJournalWhole();
    engine.setBusyTimeout(canWait ? std::min(longest, kForTheRest) : longest);
    try {
        return addMissing(engine, delivered, keepCopy);
    } catch (const StoreError& failure) {
        if (engine.inTransaction()) engine.rollback();
        engine.execute("PRAGMA writable_schema = OFF");
        static_cast<void>(engine.takeDiskFailure());
        if (canWait) return false; // what the disk has to say, the next save says
        throw StoreError(failure.kind(), "Veritabanı açılmadı: " + path +
                                             " eski bir sürümün; bu sürümün istediği alanlar eklenemedi, "
                                             "dosya olduğu gibi kaldı. " +
                                             failure.description());
    }
}

void coverMissing(Engine& engine, const Delivered& delivered) {
    const Statements catalog = catalogOf(engine);
    std::vector<std::string> covers;
    for (const TableDef& table : delivered.tables) {
        const auto known = catalog.find(table.name);
        if (known == catalog.end()) {
            covers.push_back(tableStatement(table, Lifetime::Connection));
            continue;
        }
        std::string columns;
        for (const ColumnDef& column : missingColumns(table, known->second))
            columns += ", " + (column.defaultValue ? std::to_string(*column.defaultValue) : "NULL") + " AS " +
                       quoted(column.name);
        if (!columns.empty())
            covers.push_back("CREATE TEMP VIEW " + quoted(table.name) + " AS SELECT *" + columns +
                             " FROM main." + quoted(table.name));
    }
    if (covers.empty()) return;
    shapeConnection(engine, "PRAGMA query_only = OFF");
    for (const std::string& cover : covers)
        shapeConnection(engine, cover);
    shapeConnection(engine, "PRAGMA query_only = ON");
}

} // namespace veldona::store
