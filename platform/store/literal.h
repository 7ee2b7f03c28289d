// Values as they stand in the engine's SQL text; the rest of what literals become is declared in dialect.h.
#pragma once

#include <string>

#include "platform/runtime/value.h"

namespace veldona::store::sql {

// Null, a whole number, a double or a text, as the engine reads it back to the same value.
[[nodiscard]] std::string engineLiteral(const Value& value);

} // namespace veldona::store::sql
