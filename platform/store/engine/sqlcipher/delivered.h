// Holds an open file against the books as they are delivered.
//
// Nothing may stand in its catalog that this program did not put there: a trigger of a stranger's, one letter
// other than ours, would write along with each save, a view or a virtual table would answer in a table's
// place. Read are the statements that the engine builds its tables by; the kinds and names beside them may
// say anything.
#pragma once

#include <string>

#include "platform/store/dialect/definition.h"
#include "platform/store/engine/engine.h"

namespace veldona::store {

// How many parts books have that are made today: columns, defaults, indexes, keys, journals, queries. It only
// grows, since books with a part that is delivered no longer would be refused. The file keeps the number of
// the program that brought it up to date, which tells newer books from strange ones.
[[nodiscard]] int shapeOf(const Delivered& delivered);
// The number that the file keeps; 0 in the oldest books.
[[nodiscard]] int shapeOf(Engine& engine);

// Raises Damaged, naming the first thing that is not ours, or Other for the books of a newer program. Tables,
// columns, indexes and queries may be missing, as in older books. Only reads.
void requireDelivered(Engine& engine, const Delivered& delivered, const std::string& path);

// The scratch tables of this connection: in memory, and seen before a table of that name in the file.
void makeScratchTables(Engine& engine, const std::vector<TableDef>& tables);

} // namespace veldona::store
