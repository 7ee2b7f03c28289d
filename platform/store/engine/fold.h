// Letters without regard to case, by the Turkish alphabet: İ pairs with i, I with ı.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace veldona::store::sql {

// The letter that begins at `at`, folded; `at` moves behind it. A broken sequence is one U+FFFD a byte.
[[nodiscard]] char32_t nextFolded(std::string_view text, std::size_t& at);

[[nodiscard]] std::vector<char32_t> folded(std::string_view text);

} // namespace veldona::store::sql
