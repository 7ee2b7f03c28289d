// The triggers that write the journal of the books, in the engine's words. They call functions that only this
// program's connections have (functions_journal.cpp), so that a strange program can't write to the tables at
// all.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/store/dialect/definition.h"
#include "platform/store/engine/engine.h"

namespace veldona::store {

// Where the shop's key stands.
inline constexpr const char* kJournalKeyStatement = "CREATE TABLE MSysGUNLUK (ANAHTAR TEXT)";

struct JournalTrigger {
    std::string name, statement;
};
// Of an added, a changed and a removed row; none for a table without a journal.
[[nodiscard]] std::vector<JournalTrigger> journalTriggers(const TableDef& table);
// The same with those that releases before this one made.
[[nodiscard]] std::vector<JournalTrigger> journalTriggersOfAll(const TableDef& table);
// How often their words have changed so far.
[[nodiscard]] int formerJournalWordings();

// The columns that a trigger's statement says it keeps; nothing where it is none of ours. A trigger of an
// older release keeps fewer.
[[nodiscard]] std::vector<std::string> columnsOfTrigger(std::string_view statement);

[[nodiscard]] bool anyJournaled(const std::vector<TableDef>& tables);
// Makes the table of the key, with a new one; in the transaction that runs.
void makeJournalKey(Engine& engine);
// "" where there is none.
[[nodiscard]] std::string readJournalKey(Engine& engine);
void writeJournalKey(Engine& engine, const std::string& key);
// An entry that is no row's.
void noteInJournal(Engine& engine, const std::string& what);

} // namespace veldona::store
