// The delivered schema in the server's words, and what it tells of itself.
#pragma once

#include <string>
#include <vector>

#include "platform/store/dialect/catalog.h"
#include "platform/store/dialect/definition.h"

namespace veldona::store {

[[nodiscard]] std::string quotedName(const std::string& name);

// One script that makes all of it in the schema in use: the alphabet, the functions, the tables.
[[nodiscard]] std::string definitionScript(const std::vector<TableDef>& tables,
                                           const std::vector<SavedQueryDef>& queries);
// Behind the script, which is the same for all books: the key of these.
[[nodiscard]] std::string newJournalKeyStatement();
// A row of MSysGUNLUK.
[[nodiscard]] std::string journalKeyValues(const std::string& kept);
// A table of the connection's own.
[[nodiscard]] std::string scratchStatement(const TableDef& table);
[[nodiscard]] std::string indexDefinition(const TableDef& table, const std::vector<std::string>& columns,
                                          bool isUnique);

// What a column of this declaration holds. Another one is a text's, as names put together are.
[[nodiscard]] ColumnType columnTypeOf(std::string_view domain, bool isCounter);

} // namespace veldona::store
