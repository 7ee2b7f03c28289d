#include "platform/runtime/text.h"

#include <unicode/ucasemap.h>
#include <unicode/uchar.h>

#include <algorithm>
#include <memory>

#include "platform/runtime/error.h"
#include "platform/runtime/unicode.h"

namespace veldona {

namespace {

struct CloseCaseMap {
    void operator()(UCaseMap* map) const { ucasemap_close(map); }
};

const UCaseMap* turkish() {
    static const std::unique_ptr<UCaseMap, CloseCaseMap> map = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<UCaseMap, CloseCaseMap> opened(ucasemap_open("tr", 0, &status));
        if (U_FAILURE(status)) throw RuntimeError(status, u_errorName(status));
        return opened;
    }();
    return map.get();
}

using CaseMapping = decltype(&ucasemap_utf8ToUpper);

// Broken sequences are mended on the way: the mapping would hand them on.
std::string mapped(std::string_view given, CaseMapping mapping) {
    const UCaseMap* map = turkish();
    const std::string text = validUtf8(given);
    std::string out(text.size() + text.size() / 4 + 8, '\0');
    for (;;) {
        UErrorCode status = U_ZERO_ERROR;
        const std::int32_t size = mapping(map, out.data(), static_cast<std::int32_t>(out.size()), text.data(),
                                          static_cast<std::int32_t>(text.size()), &status);
        const bool fits = size <= static_cast<std::int32_t>(out.size());
        out.resize(static_cast<std::size_t>(size));
        if (fits && U_SUCCESS(status)) return out;
        if (status != U_BUFFER_OVERFLOW_ERROR) throw RuntimeError(status, u_errorName(status));
    }
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// Every byte but a continuation byte begins a character.
bool begins(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
}

// The byte where the character behind the first `count` begins.
std::size_t offsetOf(std::string_view text, std::size_t count) {
    if (count == 0) return 0;
    std::size_t seen = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (begins(text[i]) && seen++ == count) return i;
    return text.size();
}

} // namespace

std::string trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(' ') - first + 1));
}

std::string upperTurkish(std::string_view text) {
    if (!isAscii(text)) return mapped(text, ucasemap_utf8ToUpper);
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        if (c == 'i')
            out += "İ";
        else
            out += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return out;
}

std::string lowerTurkish(std::string_view text) {
    if (!isAscii(text)) return mapped(text, ucasemap_utf8ToLower);
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        if (c == 'I')
            out += "ı";
        else
            out += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return out;
}

std::size_t length(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), begins));
}

std::string left(std::string_view text, std::size_t count) {
    return std::string(text.substr(0, offsetOf(text, count)));
}

std::string mid(std::string_view text, std::size_t start, std::size_t count) {
    if (start == 0) raise(ErrorNumber::InvalidCall);
    const std::string_view rest = text.substr(offsetOf(text, start - 1));
    return std::string(rest.substr(0, offsetOf(rest, count)));
}

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string out;
    if (from.empty()) return out.assign(text);
    std::size_t done = 0;
    for (std::size_t hit; (hit = text.find(from, done)) != std::string_view::npos; done = hit + from.size())
        out.append(text, done, hit - done).append(to);
    return out.append(text, done);
}

std::string validUtf8(std::string_view text) {
    std::string out;
    std::size_t sound = 0; // up to here the text is copied
    for (std::size_t i = 0; i < text.size();) {
        const Letter letter = letterAt(text, i);
        if (!letter.sound) {
            out.append(text, sound, i - sound).append("\uFFFD");
            sound = i + letter.bytes;
        }
        i += letter.bytes;
    }
    return out.append(text, sound);
}

namespace {

// True for sound text of ASCII's visible characters and the accented letters of Latin scripts alone, as
// nearly everything is that a shop holds.
bool isPlainTurkish(std::string_view text) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = static_cast<unsigned char>(text[at]);
        if (byte >= ' ' && byte < 0x7f) continue;
        // U+00C0 … U+017F
        const bool isLetter = byte >= 0xC3 && byte <= 0xC5 && at + 1 < text.size() &&
                              (static_cast<unsigned char>(text[at + 1]) & 0xC0) == 0x80;
        if (!isLetter) return false;
        ++at;
    }
    return true;
}

} // namespace

std::string visibleText(std::string_view text) {
    if (isPlainTurkish(text)) return std::string(text);
    std::string kept;
    for (const char32_t character : charactersOf(text)) {
        const auto kind = u_charType(static_cast<UChar32>(character));
        if (character == '\t' || character == '\n' || character == '\r')
            kept += ' ';
        else if (kind != U_CONTROL_CHAR && kind != U_FORMAT_CHAR)
            appendUtf8(kept, character);
    }
    return kept;
}

} // namespace veldona
