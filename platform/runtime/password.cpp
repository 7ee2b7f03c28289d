#include "platform/runtime/password.h"

#include <algorithm>

#include <unicode/normalizer2.h>
#include <unicode/unistr.h>

#include "platform/runtime/unicode.h"

namespace veldona {
namespace {

constexpr std::size_t kFewest = 8, kMost = 100;
constexpr char32_t kFirstPrintable = 0x20, kDelete = 0x7f;

bool isPrintable(char32_t code) {
    return code >= kFirstPrintable && code != kDelete && code != 0xfffd;
}

// The engine takes such a text for the key itself and not for a password.
bool looksLikeAKey(std::string_view text) {
    return text.size() > 2 && (text[0] == 'x' || text[0] == 'X') && text[1] == '\'' && text.back() == '\'';
}

} // namespace

Secret passwordOf(std::string_view typed) {
    UErrorCode failed = U_ZERO_ERROR;
    const icu::Normalizer2* composing = icu::Normalizer2::getNFCInstance(failed);
    if (U_FAILURE(failed)) return Secret(typed);
    const auto letters =
        icu::UnicodeString::fromUTF8(icu::StringPiece(typed.data(), static_cast<int>(typed.size())));
    std::string composed;
    composing->normalize(letters, failed).toUTF8String(composed);
    return U_FAILURE(failed) ? Secret(typed) : Secret::taken(composed);
}

std::string weaknessOf(const Secret& password) {
    std::u32string letters = charactersOf(password.text());
    const bool isShort = letters.size()<kFewest, isLong = letters.size()> kMost;
    const bool isOneLetter =
        std::ranges::all_of(letters, [&](char32_t letter) { return letter == letters.front(); });
    const bool hasBlankEnds = !letters.empty() && (letters.front() == U' ' || letters.back() == U' ');
    const bool isReadable = std::ranges::all_of(letters, isPrintable);
    std::ranges::fill(letters, U' ');
    if (isShort) return "Parola çok kısa: en az 8 karakter olmalı.";
    if (isLong) return "Parola çok uzun: en çok 100 karakter olabilir.";
    if (!isReadable) return "Parolada yazılamayan bir karakter var.";
    if (hasBlankEnds) return "Parola boşlukla başlayamaz ve bitemez; kâğıtta görülmez.";
    if (isOneLetter) return "Parola hep aynı karakterden olamaz.";
    if (looksLikeAKey(password.text())) return "Parola x' ile başlayıp ' ile bitemez.";
    return {};
}

} // namespace veldona
