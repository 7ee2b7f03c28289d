// The letters of a UTF-8 text, one after another.
#pragma once

#include <cstddef>
#include <string_view>

namespace veldona::report {

struct Letter {
    char32_t code = 0;
    std::size_t bytes = 1;
};

// The letter that starts at `at`; a stray byte counts as a letter of its own.
[[nodiscard]] inline Letter letterAt(std::string_view text, std::size_t at) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte(at);
    const std::size_t bytes = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (bytes == 1 || first < 0xC0 || at + bytes > text.size()) return {first, 1};
    char32_t code = first & (0xFFU >> (bytes + 1));
    for (std::size_t i = 1; i < bytes; ++i)
        code = code << 6 | (byte(at + i) & 0x3FU);
    return {code, bytes};
}

} // namespace veldona::report
