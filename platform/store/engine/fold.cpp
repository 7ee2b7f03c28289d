#include "platform/store/engine/fold.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <array>

namespace veldona::store::sql {
namespace {

constexpr char32_t kDotlessI = U'ı';
constexpr char32_t kBroken = 0xFFFD;

constexpr std::array<char32_t, 128> kLatin = [] {
    std::array<char32_t, 128> letters{};
    for (char32_t letter = 0; letter < letters.size(); ++letter) {
        letters[letter] = letter >= 'A' && letter <= 'Z' ? letter + ('a' - 'A') : letter;
    }
    letters['I'] = kDotlessI;
    return letters;
}();

char32_t foldOther(char32_t letter) {
    switch (letter) {
    case U'İ':
        return U'i';
    case U'ı':
    case U'ç':
    case U'ğ':
    case U'ö':
    case U'ş':
    case U'ü':
        return letter;
    default:
        return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(letter), U_FOLD_CASE_EXCLUDE_SPECIAL_I));
    }
}

} // namespace

char32_t nextFolded(std::string_view text, std::size_t& at) {
    const auto first = static_cast<unsigned char>(text[at]);
    if (first < kLatin.size()) {
        ++at;
        return kLatin[first];
    }
    UChar32 letter = 0;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    U8_NEXT(bytes, at, text.size(), letter);
    return letter < 0 ? kBroken : foldOther(static_cast<char32_t>(letter));
}

std::vector<char32_t> folded(std::string_view text) {
    std::vector<char32_t> letters;
    letters.reserve(text.size());
    for (std::size_t at = 0; at < text.size();)
        letters.push_back(nextFolded(text, at));
    return letters;
}

} // namespace veldona::store::sql
