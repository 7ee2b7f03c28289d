#include "apps/aktar/jettext.h"

#include <cstddef>

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

void appendUtf8(std::string& text, char32_t code) {
    const auto put = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (code < 0x80) {
        put(code);
        return;
    }
    if (code < 0x800) {
        put(0xC0 | code >> 6);
    } else {
        if (code < 0x10000) {
            put(0xE0 | code >> 12);
        } else {
            put(0xF0 | code >> 18);
            put(0x80 | (code >> 12 & 0x3F));
        }
        put(0x80 | (code >> 6 & 0x3F));
    }
    put(0x80 | (code & 0x3F));
}

bool isHighHalf(char32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowHalf(char32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

} // namespace

std::optional<std::string> decodeJetText(std::string_view bytes) {
    const std::optional<std::u16string> units = expanded(bytes);
    if (!units) return std::nullopt;
    std::string text;
    for (std::size_t i = 0; i < units->size(); ++i) {
        char32_t code = (*units)[i];
        if (isLowHalf(code)) return std::nullopt;
        if (isHighHalf(code)) {
            if (++i == units->size() || !isLowHalf((*units)[i])) return std::nullopt;
            code = 0x10000 + ((code - 0xD800) << 10) + ((*units)[i] - 0xDC00U);
        }
        if (!isLetter(code)) return std::nullopt;
        appendUtf8(text, code);
    }
    return text;
}

std::optional<std::string> foreignLetter(std::string_view text) {
    // What the page has beyond one byte of Latin letters, and the six letters that give way there.
    static constexpr std::string_view kAlso = "ĞğİıŞş€‚ƒ„…†‡ˆ‰Š‹Œ‘’“”•–—˜™š›œŸ";
    static constexpr std::string_view kNot = "ÐðÝýÞþ";
    while (!text.empty()) {
        const auto lead = static_cast<unsigned char>(text.front());
        const std::size_t size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        const std::string_view letter = text.substr(0, size);
        text.remove_prefix(letter.size());
        if (size == 1) continue;
        const auto second = static_cast<unsigned char>(letter[1]);
        const bool latin = (lead == 0xC2 && second >= 0xA0) || lead == 0xC3;
        const bool known = latin ? kNot.find(letter) == std::string_view::npos
                                 : kAlso.find(letter) != std::string_view::npos;
        if (!known) return std::string(letter);
    }
    return std::nullopt;
}

} // namespace veldona::aktar
