// A saved query in an engine's words.
#pragma once

#include <string>

#include "platform/store/dialect/catalog.h"
#include "platform/store/dialect/definition.h"
#include "platform/store/dialect/enginewords.h"

namespace veldona::store {

// The engine's SELECT for `query`, which `catalog` knows from then on: later ones may read it. Raises
// StoreError where it doesn't read.
[[nodiscard]] std::string savedQueryText(const SavedQueryDef& query, Catalog& catalog,
                                         const EngineWords& words);

} // namespace veldona::store
