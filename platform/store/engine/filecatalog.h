// What an open file says of itself: its tables and queries, and the alphabet that its indexes were sorted by.
#pragma once

#include "platform/store/dialect/catalog.h"
#include "platform/store/engine/engine.h"

namespace veldona::store {

// Tables of the house itself, whose names begin with MSys, and those of the engine are left out.
[[nodiscard]] Catalog readCatalog(Engine& engine);

// Writes the alphabet's version into a new file.
void writeSortOrder(Engine& engine);
// Sorts the text indexes anew where the file was last used with another version of the alphabet: a look-up in
// an index that stands in another order misses rows.
void renewSortOrder(Engine& engine);

} // namespace veldona::store
