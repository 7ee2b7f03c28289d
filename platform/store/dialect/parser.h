// From a shape to a tree.
#pragma once

#include "platform/store/dialect/split.h"
#include "platform/store/dialect/tree.h"

namespace veldona::store::sql {

// Raises StoreError{Syntax} for what is no statement of the dialect, or is nested too deep.
[[nodiscard]] Statement parse(const SplitStatement& statement);

} // namespace veldona::store::sql
