#include "apps/aktar/jettext.h"

#include <algorithm>
#include <cstddef>

#include "platform/runtime/unicode.h"

namespace veldona::aktar {
namespace {

constexpr std::string_view kCompressed = "\xff\xfe";

char16_t unitAt(std::string_view bytes, std::size_t at) {
    const auto low = static_cast<unsigned char>(bytes[at]);
    const auto high = static_cast<unsigned char>(bytes[at + 1]);
    return static_cast<char16_t>(low | high << 8);
}

// A zero byte switches between one byte a letter and two; nothing where the last letter is cut.
std::optional<std::u16string> expanded(std::string_view bytes) {
    std::u16string units;
    bool single = bytes.starts_with(kCompressed);
    std::size_t at = single ? kCompressed.size() : 0;
    const bool switching = single;
    while (at < bytes.size()) {
        if (switching && bytes[at] == '\0') {
            single = !single;
            ++at;
        } else if (single) {
            units += static_cast<char16_t>(static_cast<unsigned char>(bytes[at]));
            ++at;
        } else {
            if (bytes.size() - at < 2) return std::nullopt;
            units += unitAt(bytes, at);
            at += 2;
        }
    }
    return units;
}

bool isLetter(char32_t code) {
    if (code < 0x20) return code >= '\t' && code <= '\r'; // tabs and line ends of every kind
    return code != 0x7F && (code & 0xFFFE) != 0xFFFE && !(code >= 0xFDD0 && code <= 0xFDEF);
}

} // namespace

std::optional<std::string> decodeJetText(std::string_view bytes) {
    const std::optional<std::u16string> units = expanded(bytes);
    if (!units) return std::nullopt;
    std::optional<std::string> text = utf8Of(*units);
    if (!text || !std::ranges::all_of(charactersOf(*text), isLetter)) return std::nullopt;
    return text;
}

std::optional<std::string> foreignLetter(std::string_view text) {
    for (const char32_t code : charactersOf(text))
        if (!isInWindows1254(code)) return utf8Of(code);
    return std::nullopt;
}

} // namespace veldona::aktar
