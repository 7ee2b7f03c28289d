// Whether books in two places are the same ones: every value of every row, and what each account owes and has
// paid, as each of the two adds it up.
#pragma once

#include <cstdint>

#include "platform/store/engine/engine.h"

namespace veldona::backup {

struct Sameness {
    std::int64_t rows = 0;
    std::int64_t accounts = 0; // with a plan of instalments
};

// Reads both from front to back, a portion at a time. Raises Refusal, which says where they part.
[[nodiscard]] Sameness requireSame(store::Engine& one, store::Engine& other);

} // namespace veldona::backup
