// For whoever shows rows of the books and shall notice that an act on them was taken back.
#pragma once

#include "journal/acts.h"

namespace veldona::journal {

// The acts behind entry `seen` that took another one back, newest first; `seen` becomes the last entry. With
// kNothingSeen there are none.
inline constexpr std::int64_t kNothingSeen = -1;
[[nodiscard]] std::vector<Act> takenBackSince(adodb::Connection& books, std::int64_t& seen);

} // namespace veldona::journal
