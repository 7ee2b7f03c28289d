#include "platform/store/engine/sqlcipher/journaltriggers.h"

#include <algorithm>

#include "platform/store/engine/journalseal.h"

namespace veldona::store {
namespace {

constexpr std::string_view kBeforeColumns = ", '[", kBehindColumns = "]'";

std::string quoted(std::string_view name) {
    return '"' + std::string(name) + '"';
}

std::string namesOf(const TableDef& table) {
    std::string names;
    for (const ColumnDef& column : table.columns)
        names += (names.empty() ? "" : ",") + column.name;
    return names;
}

std::string valuesOf(const TableDef& table, const char* row) {
    std::string values;
    for (const ColumnDef& column : table.columns)
        values += std::string(", ") + row + '.' + quoted(column.name);
    return values;
}

// The key and the newest entry, whatever there is: one row.
const std::string& source() {
    static const std::string from = " FROM (SELECT 1) LEFT JOIN \"MSysGUNLUK\" k LEFT JOIN \"GUNLUK\" h ON "
                                    "h.\"ID\" = (SELECT max(\"ID\") FROM "
                                    "\"GUNLUK\")";
    return from;
}

// In parts of its own: what a function answers for a row, the columns of the entry take one by one. An update
// that changed nothing gives no part.
//
// OR ROLLBACK: no entry's number is taken, since the next one is found under the write lock. Were the
// statement alone to be undone, the engine would keep, and encrypt, each page that it touches beside the
// books.
const std::string& insertion() {
    static const std::string statement = [] {
        std::string columns, parts;
        int part = 0;
        for (const char* column : kSealedColumns) {
            columns += quoted(column) + ", ";
            parts += "vd_entry_part(" + std::to_string(part++) + "), ";
        }
        return "INSERT OR ROLLBACK INTO \"GUNLUK\" (" + columns + quoted(kSealColumn) + ") SELECT " + parts +
               "vd_entry_part(" + std::to_string(part) + ") WHERE vd_entry_part(0) IS NOT NULL";
    }();
    return statement;
}

std::string entry(const TableDef& table, std::string_view kind, const char* row) {
    return "SELECT vd_entry(k.\"ANAHTAR\", h.\"ID\", h.\"ISLEM\", h.\"OZET\", '" + std::string(kind) +
           "', '" + table.name + '\'' + std::string(kBeforeColumns) + namesOf(table) +
           std::string(kBehindColumns) + valuesOf(table, row) + ')' + source() + "; " + insertion() + ';';
}

JournalTrigger trigger(const TableDef& table, std::string_view kind, const char* event,
                       const std::string& body) {
    std::string name = std::string(kJournalTable) + '_' + std::string(kind) + '_' + table.name;
    std::string statement = "CREATE TRIGGER " + quoted(name) + " AFTER " + event + " ON " +
                            quoted(table.name) + " BEGIN " + body + " END";
    return {std::move(name), std::move(statement)};
}

} // namespace

std::vector<JournalTrigger> journalTriggers(const TableDef& table) {
    if (!table.isJournaled) return {};
    const std::string before = "SELECT vd_entry_before(" + valuesOf(table, "OLD").substr(2) + "); ";
    return {trigger(table, kAdded, "INSERT", entry(table, kAdded, "NEW")),
            trigger(table, kChanged, "UPDATE", before + entry(table, kChanged, "NEW")),
            trigger(table, kRemoved, "DELETE", entry(table, kRemoved, "OLD"))};
}

std::vector<std::string> columnsOfTrigger(std::string_view statement) {
    std::vector<std::string> columns;
    const std::size_t begin = statement.find(kBeforeColumns), end = statement.find(kBehindColumns);
    if (!statement.starts_with("CREATE TRIGGER ") || begin == statement.npos || end == statement.npos ||
        end < begin)
        return columns;
    std::string_view names =
        statement.substr(begin + kBeforeColumns.size(), end - begin - kBeforeColumns.size());
    for (;;) {
        const std::size_t comma = names.find(',');
        columns.emplace_back(names.substr(0, comma));
        if (comma == names.npos) return columns;
        names.remove_prefix(comma + 1);
    }
}

bool anyJournaled(const std::vector<TableDef>& tables) {
    return std::ranges::any_of(tables, [](const TableDef& table) { return table.isJournaled; });
}

void makeJournalKey(Engine& engine) {
    engine.execute("DROP TABLE IF EXISTS MSysGUNLUK"); // emptied by a stranger
    engine.execute(kJournalKeyStatement);
    writeJournalKey(engine, newJournalKey());
}

std::string readJournalKey(Engine& engine) {
    const auto known = engine.prepare("SELECT 1 FROM sqlite_master WHERE name = 'MSysGUNLUK'");
    if (!known->step()) return {};
    const auto kept = engine.prepare("SELECT ANAHTAR FROM MSysGUNLUK");
    return kept->step() ? std::string(kept->text(0)) : std::string();
}

void writeJournalKey(Engine& engine, const std::string& key) {
    engine.execute("DELETE FROM MSysGUNLUK");
    const auto insertion = engine.prepare("INSERT INTO MSysGUNLUK (ANAHTAR) VALUES (?1)");
    insertion->bind(1, key);
    insertion->step();
}

void noteInJournal(Engine& engine, const std::string& what) {
    const auto entry =
        engine.prepare("SELECT vd_note(k.\"ANAHTAR\", h.\"ID\", h.\"ISLEM\", h.\"OZET\", ?1)" + source());
    entry->bind(1, what);
    entry->step();
    engine.execute(insertion());
}

} // namespace veldona::store
