// What an open file says of itself: its tables and queries, and the alphabet that its indexes were sorted by.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/store/dialect/catalog.h"
#include "platform/store/engine/engine.h"

namespace veldona::store {

// Tables of the house itself, whose names begin with MSys, and those of the engine are left out.
// `tablesRead`: those that a statement would read, also through a view.
using TablesRead = std::function<std::vector<std::string>(const std::string& sql)>;
[[nodiscard]] Catalog readCatalog(Engine& engine, const TablesRead& tablesRead);

// Writes the alphabet's version into a new file.
void writeSortOrder(Engine& engine);
// Sorts the text indexes anew where the file was last used with another version of the alphabet: a look-up in
// an index that stands in another order misses rows.
void renewSortOrder(Engine& engine);

} // namespace veldona::store
