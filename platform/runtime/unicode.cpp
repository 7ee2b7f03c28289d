#include "platform/runtime/unicode.h"

#include <unicode/ucnv.h>
#include <unicode/uset.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <memory>

#include "platform/runtime/error.h"

namespace veldona {

namespace {

constexpr char32_t kReplacement = 0xFFFD;

void require(UErrorCode status) {
    if (U_FAILURE(status)) throw RuntimeError(status, u_errorName(status));
}

struct CloseConverter {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};

struct CloseSet {
    void operator()(USet* set) const { uset_close(set); }
};

UConverter* turkishWindows() {
    static const std::unique_ptr<UConverter, CloseConverter> converter = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<UConverter, CloseConverter> opened(ucnv_open("windows-1254", &status));
        if (U_SUCCESS(status)) ucnv_setSubstChars(opened.get(), "?", 1, &status);
        require(status);
        return opened;
    }();
    return converter.get();
}

const USet* lettersOfTurkishWindows() {
    static const std::unique_ptr<USet, CloseSet> letters = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<USet, CloseSet> set(uset_openEmpty());
        ucnv_getUnicodeSet(turkishWindows(), set.get(), UCNV_ROUNDTRIP_SET, &status);
        require(status);
        return set;
    }();
    return letters.get();
}

} // namespace

// ICU's macro narrows on purpose.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
Letter letterAt(std::string_view utf8, std::size_t at) {
    std::size_t next = at;
    UChar32 code = 0;
    U8_NEXT(utf8, next, utf8.size(), code);
    if (code < 0) return {kReplacement, next - at, false};
    return {static_cast<char32_t>(code), next - at, true};
}
#pragma GCC diagnostic pop

void appendUtf8(std::string& text, char32_t code) {
    if (code > 0x10FFFF || U_IS_SURROGATE(code)) code = kReplacement;
    char bytes[U8_MAX_LENGTH];
    std::size_t size = 0;
    U8_APPEND_UNSAFE(bytes, size, code);
    text.append(bytes, size);
}

std::u32string charactersOf(std::string_view utf8) {
    std::u32string characters;
    for (std::size_t at = 0; at < utf8.size();) {
        const Letter letter = letterAt(utf8, at);
        characters += letter.code;
        at += letter.bytes;
    }
    return characters;
}

std::string utf8Of(char32_t character) {
    std::string text;
    appendUtf8(text, character);
    return text;
}

std::u16string utf16Of(std::string_view utf8) {
    std::u16string units;
    for (const char32_t code : charactersOf(utf8)) {
        char16_t pair[U16_MAX_LENGTH];
        std::size_t size = 0;
        U16_APPEND_UNSAFE(pair, size, code);
        units.append(pair, size);
    }
    return units;
}

std::optional<std::string> utf8Of(std::u16string_view units) {
    std::string text;
    for (std::size_t at = 0; at < units.size();) {
        UChar32 code = 0;
        U16_NEXT(units, at, units.size(), code);
        if (U_IS_SURROGATE(code)) return std::nullopt;
        appendUtf8(text, static_cast<char32_t>(code));
    }
    return text;
}

std::string windows1254(std::string_view utf8) {
    const std::u16string units = utf16Of(utf8);
    std::string bytes(units.size(), '\0'); // a letter of the page is one unit and one byte
    UErrorCode status = U_ZERO_ERROR;
    const int size = ucnv_fromUChars(turkishWindows(), bytes.data(), static_cast<int>(bytes.size()),
                                     units.data(), static_cast<int>(units.size()), &status);
    if (status != U_STRING_NOT_TERMINATED_WARNING) require(status);
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
}

bool isInWindows1254(char32_t code) {
    return uset_contains(lettersOfTurkishWindows(), static_cast<UChar32>(code)) != 0;
}

} // namespace veldona
