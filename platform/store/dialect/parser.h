// From the words of a statement to its tree.
#pragma once

#include "platform/store/dialect/reading.h"
#include "platform/store/dialect/tree.h"

namespace veldona::store::sql {

// Raises StoreError{Syntax} for what is no statement of the dialect, or is nested too deep.
[[nodiscard]] Statement parse(const Reading& statement);

} // namespace veldona::store::sql
