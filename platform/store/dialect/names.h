// Names of tables and columns, compared as the engine does: letters of the Latin alphabet without regard to
// case.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace veldona::store {

[[nodiscard]] constexpr char foldLetter(char letter) {
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

[[nodiscard]] constexpr bool sameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    if (a == b) return true; // most names are written as they were declared
    return std::equal(a.begin(), a.end(), b.begin(),
                      [](char x, char y) { return foldLetter(x) == foldLetter(y); });
}

[[nodiscard]] inline std::string foldName(std::string_view name) {
    std::string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), foldLetter);
    return folded;
}

} // namespace veldona::store
