// What the row controls ask of an index before they use it.
#pragma once

#include <cstddef>

#include "platform/runtime/error.h"

namespace veldona {

template <class Rows> [[nodiscard]] bool isInside(int row, const Rows& rows) {
    return row >= 0 && static_cast<std::size_t>(row) < rows.size();
}

// Error 380: a property was given a value that it cannot have.
[[noreturn]] inline void raiseInvalidValue() {
    throw RuntimeError(380, "Geçersiz özellik değeri");
}

} // namespace veldona
