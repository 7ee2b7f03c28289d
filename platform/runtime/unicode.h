// The characters of a text, and the forms in which other programs keep it.
//
// Broken UTF-8 is never handed on: the bytes that could have begun a character count as one broken letter,
// which stands as U+FFFD in every other form.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace veldona {

struct Letter {
    char32_t code = 0; // U+FFFD where it is broken
    std::size_t bytes = 1;
    bool sound = true;
};

// The letter that starts at `at`, which lies within the text.
[[nodiscard]] Letter letterAt(std::string_view utf8, std::size_t at);
// A surrogate or what lies beyond the last character is appended as U+FFFD.
void appendUtf8(std::string& text, char32_t code);

[[nodiscard]] std::u32string charactersOf(std::string_view utf8);
[[nodiscard]] std::string utf8Of(char32_t character);

[[nodiscard]] std::u16string utf16Of(std::string_view utf8);
// Nothing where half a pair of surrogates stands alone.
[[nodiscard]] std::optional<std::string> utf8Of(std::u16string_view units);

// The code page of Turkish Windows; "?" for a letter that it has not.
[[nodiscard]] std::string windows1254(std::string_view utf8);
[[nodiscard]] bool isInWindows1254(char32_t code);

} // namespace veldona
