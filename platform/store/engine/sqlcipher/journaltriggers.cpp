#include "platform/store/engine/sqlcipher/journaltriggers.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <iterator>
#include <utility>

#include "platform/store/engine/journalseal.h"

namespace veldona::store {
namespace {

constexpr std::string_view kBeforeColumns = ", '[", kBehindColumns = "]'";

std::string quoted(std::string_view name) {
    return '"' + std::string(name) + '"';
}

using Filled =
    std::pair<std::string_view, std::string>; // a name behind a dollar sign, and what it stands for

std::string filled(std::string_view text, std::initializer_list<Filled> parts) {
    std::string whole;
    while (!text.empty()) {
        const auto part =
            std::ranges::find_if(parts, [&](const Filled& each) { return text.starts_with(each.first); });
        whole += part == parts.end() ? text.substr(0, 1) : std::string_view(part->second);
        text.remove_prefix(part == parts.end() ? 1 : part->first.size());
    }
    return whole;
}

std::string listOf(const TableDef& table, std::string_view separator, std::string_view form) {
    std::string list;
    for (const ColumnDef& column : table.columns)
        list += std::string(list.empty() ? "" : separator) + filled(form, {{"$NAME", column.name}});
    return list;
}

// What a release's triggers say where another's say otherwise.
struct Wording {
    std::string_view when;   // of a change: whether there is one
    std::string_view before; // of a change: its first statement
    std::string_view values; // of a change: behind the names
    std::string_view insertion;
};

// Oldest first, the last one is today's. Whoever changes a word adds a row, by which the books of before are
// known and get the new triggers at their opening.
//
// In parts of its own: what a function answers for a row, the columns of the entry take one by one.
//
// OR ROLLBACK: no entry's number is taken, since the next one is found under the write lock. Were the
// statement alone to be undone, the engine would keep, and encrypt, each page that it touches beside the
// books. Values, since a selection from the table that is written would go by way of a temporary one.
constexpr std::array<Wording, 3> kWordings = {
    {{"", "SELECT vd_entry_before($OLD); ", ", $NEW",
      "INSERT INTO $ENTRY SELECT $PARTS WHERE vd_entry_part(0) IS NOT NULL"},
     {"", "SELECT vd_entry_before($OLD); ", ", $NEW",
      "INSERT OR ROLLBACK INTO $ENTRY SELECT $PARTS WHERE vd_entry_part(0) IS NOT NULL"},
     {" WHEN vd_changed('$NAMES', $BOTH)", "", "", "INSERT OR ROLLBACK INTO $ENTRY VALUES ($PARTS)"}}};

// The key and the newest entry, whatever there is: one row.
constexpr std::string_view kEntry =
    "SELECT $FUNCTION(k.\"ANAHTAR\", h.\"ID\", h.\"ISLEM\", h.\"OZET\", $WHAT) FROM (SELECT 1) LEFT JOIN "
    "\"MSysGUNLUK\" k LEFT JOIN \"GUNLUK\" h ON h.\"ID\" = (SELECT max(\"ID\") FROM \"GUNLUK\")";

std::string insertion(const Wording& wording) {
    std::string columns, parts;
    int part = 0;
    for (const char* column : kSealedColumns) {
        columns += quoted(column) + ", ";
        parts += "vd_entry_part(" + std::to_string(part++) + "), ";
    }
    return filled(wording.insertion, {{"$ENTRY", "\"GUNLUK\" (" + columns + quoted(kSealColumn) + ")"},
                                      {"$PARTS", parts + "vd_entry_part(" + std::to_string(part) + ")"}});
}

struct Event {
    std::string_view kind, name, values; // by its letter; the engine's word; the row that the entry tells
};
constexpr std::array<Event, 3> kEvents = {
    {{kAdded, "INSERT", ", $NEW"}, {kChanged, "UPDATE", ""}, {kRemoved, "DELETE", ", $OLD"}}};

JournalTrigger trigger(const TableDef& table, const Event& event, const Wording& wording) {
    const bool isChange = event.kind == kChanged;
    const std::string names = listOf(table, ",", "$NAME");
    const std::string what = '\'' + std::string(event.kind) + "', '" + table.name + '\'' +
                             std::string(kBeforeColumns) + names + std::string(kBehindColumns) +
                             std::string(isChange ? wording.values : event.values);
    const std::string entry = filled(kEntry, {{"$FUNCTION", "vd_entry"}, {"$WHAT", what}});
    std::string name = std::string(kJournalTable) + '_' + std::string(event.kind) + '_' + table.name;
    std::string text = "CREATE TRIGGER " + quoted(name) + " AFTER " + std::string(event.name) + " ON " +
                       quoted(table.name) + std::string(isChange ? wording.when : "") + " BEGIN " +
                       std::string(isChange ? wording.before : "") + entry + "; " + insertion(wording) +
                       "; END";
    return {std::move(name), filled(text, {{"$NAMES", names},
                                           {"$NEW", listOf(table, ", ", "NEW.\"$NAME\"")},
                                           {"$OLD", listOf(table, ", ", "OLD.\"$NAME\"")},
                                           {"$BOTH", listOf(table, ", ", "OLD.\"$NAME\", NEW.\"$NAME\"")}})};
}

std::vector<JournalTrigger> triggersOf(const TableDef& table, const Wording& wording) {
    std::vector<JournalTrigger> triggers;
    if (table.isJournaled)
        for (const Event& event : kEvents)
            triggers.push_back(trigger(table, event, wording));
    return triggers;
}

} // namespace

std::vector<JournalTrigger> journalTriggers(const TableDef& table) {
    return triggersOf(table, kWordings.back());
}

std::vector<JournalTrigger> journalTriggersOfAll(const TableDef& table) {
    std::vector<JournalTrigger> all;
    for (const Wording& wording : kWordings)
        std::ranges::move(triggersOf(table, wording), std::back_inserter(all));
    return all;
}

int formerJournalWordings() {
    return static_cast<int>(kWordings.size()) - 1;
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
    const auto entry = engine.prepare(filled(kEntry, {{"$FUNCTION", "vd_note"}, {"$WHAT", "?1"}}));
    entry->bind(1, what);
    entry->step();
    engine.execute(insertion(kWordings.back()));
}

} // namespace veldona::store
