// For whoever shows rows of the books and shall notice that an act on them was taken back.
#pragma once

#include "journal/acts.h"

namespace veldona::journal {

// The acts behind entry `seen` that took another one back, newest first; `seen` becomes the last entry. With
// `seen` 0 there are none.
[[nodiscard]] std::vector<Act> takenBackSince(adodb::Connection& books, std::int64_t& seen);

} // namespace veldona::journal
