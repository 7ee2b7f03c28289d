// Holds an open file against the books as they are delivered.
//
// Nothing may stand in its catalog that this program did not put there: a trigger of a stranger's would write
// along with each save, a view or a virtual table would answer in a table's place. Read are the statements
// that the engine builds its tables by; the kinds and names beside them may say anything.
#pragma once

#include <string>

#include "platform/store/dialect/definition.h"
#include "platform/store/engine/engine.h"

namespace veldona::store {

// Raises Damaged, naming the first thing that is not ours. Tables, columns, indexes and queries may be
// missing, as in older books. Only reads.
void requireDelivered(Engine& engine, const Delivered& delivered, const std::string& path);

// Gives books that have it not yet the unique key of each table, whole or not at all. Books in which a key
// stands twice go on without; so do those that somebody else writes to just now, until the next opening.
void completeKeys(Engine& engine, const std::vector<TableDef>& tables);

// The scratch tables of this connection: in memory, and seen before a table of that name in the file.
void makeScratchTables(Engine& engine, const std::vector<TableDef>& tables);

} // namespace veldona::store
