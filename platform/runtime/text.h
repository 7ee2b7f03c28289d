// Text as the operator sees it: UTF-8, counted in characters, cased by the Turkish alphabet.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace veldona {

// Without the blanks (and only blanks) at both ends.
[[nodiscard]] std::string trim(std::string_view text);
[[nodiscard]] std::string upperTurkish(std::string_view text);
[[nodiscard]] std::string lowerTurkish(std::string_view text);

// Characters, not bytes.
[[nodiscard]] std::size_t length(std::string_view text);
// The first `count` characters, or fewer.
[[nodiscard]] std::string left(std::string_view text, std::size_t count);
// From the `start`-th character, counted from 1, at most `count` of them. Error 5 where start is 0.
[[nodiscard]] std::string mid(std::string_view text, std::size_t start,
                              std::size_t count = std::string::npos);
[[nodiscard]] std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);
// Broken UTF-8 mended with U+FFFD, so that nothing behind it meets a broken sequence.
[[nodiscard]] std::string validUtf8(std::string_view text);

// As one line of text can be typed: tabs and line ends are blanks, other control characters and invisible
// format characters are dropped, broken UTF-8 is mended. The store's order does not see such characters, so
// two texts that differ by them alone would be one customer to it and two to a comparison of letters.
[[nodiscard]] std::string visibleText(std::string_view text);

} // namespace veldona
