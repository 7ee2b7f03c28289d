#include "platform/store/engine/alphabet.h"

#include <unicode/uchar.h>
#include <unicode/ucol.h>
#include <unicode/unorm2.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <stdexcept>

#include "platform/runtime/unicode.h"

namespace veldona::store {
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

// The letter that begins at `at`, folded; `at` moves behind it.
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

// A letter beyond ASCII, parted from its marks, which are left out.
void appendPlain(std::string& text, UChar32 letter) {
    UErrorCode status = U_ZERO_ERROR;
    static const UNormalizer2* const parting = unorm2_getNFDInstance(&status);
    std::array<UChar, 32> parts{};
    std::int32_t length = unorm2_getDecomposition(parting, letter, parts.data(),
                                                  static_cast<std::int32_t>(parts.size()), &status);
    if (length < 0) { // it is whole
        length = 0;
        U16_APPEND_UNSAFE(parts, length, letter);
    }
    for (std::int32_t at = 0; at < length;) {
        UChar32 part = 0;
        U16_NEXT(parts, at, length, part);
        if (u_getCombiningClass(part) == 0)
            appendUtf8(text, static_cast<char32_t>(u_foldCase(part, U_FOLD_CASE_DEFAULT)));
    }
}

bool isDigits(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char letter) { return letter >= '0' && letter <= '9'; });
}

constexpr char32_t kAnyLetters = U'%';
constexpr char32_t kAnyLetter = U'_';

} // namespace

Alphabet::Alphabet() {
    UErrorCode status = U_ZERO_ERROR;
    order_.reset(ucol_open("tr", &status));
    if (U_FAILURE(status)) throw std::runtime_error("the Turkish alphabet is missing from the machine's ICU");
    ucol_setStrength(order_.get(), UCOL_SECONDARY); // accents count, capitals do not
    UVersionInfo version;
    ucol_getVersion(order_.get(), version);
    std::array<char, U_MAX_VERSION_STRING_LENGTH> digits{};
    u_versionToString(version, digits.data());
    version_ = digits.data();
}

void Alphabet::Close::operator()(UCollator* order) const {
    ucol_close(order);
}

const Alphabet& Alphabet::turkish() {
    static const Alphabet alphabet;
    return alphabet;
}

// Account numbers are most of what is looked up: equal bytes and plain digits need no alphabet.
int Alphabet::compare(std::string_view left, std::string_view right) const {
    if (left == right) return 0;
    if (isDigits(left) && isDigits(right)) return left.compare(right) < 0 ? -1 : 1;
    UErrorCode status = U_ZERO_ERROR;
    return ucol_strcollUTF8(order_.get(), left.data(), static_cast<int>(left.size()), right.data(),
                            static_cast<int>(right.size()), &status);
}

std::vector<char32_t> Alphabet::folded(std::string_view text) {
    std::vector<char32_t> letters;
    letters.reserve(text.size());
    for (std::size_t at = 0; at < text.size();)
        letters.push_back(nextFolded(text, at));
    return letters;
}

std::string Alphabet::plain(std::string_view text) {
    std::string letters;
    letters.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const Letter letter = letterAt(text, at);
        at += letter.bytes;
        if (letter.code < kLatin.size())
            letters += letter.code == 'I' ? 'i' : static_cast<char>(kLatin[letter.code]);
        else if (letter.code == kDotlessI)
            letters += 'i';
        else
            appendPlain(letters, static_cast<UChar32>(letter.code));
    }
    return letters;
}

// Goes back to the last % only, so that no pattern makes it slower
// than the product of the two lengths.
bool LikePattern::fits(std::string_view text) const {
    const std::vector<char32_t>& pattern = letters_;
    constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    std::size_t at = 0, place = 0, behindAny = kNone, resumeAt = 0;
    while (at < text.size()) {
        if (place < pattern.size() && pattern[place] == kAnyLetters) {
            behindAny = ++place;
            if (behindAny == pattern.size()) return true;
            resumeAt = at;
            continue;
        }
        const std::size_t before = at;
        const char32_t letter = nextFolded(text, at);
        if (place < pattern.size() && (pattern[place] == letter || pattern[place] == kAnyLetter)) {
            ++place;
        } else if (behindAny != kNone) {
            at = resumeAt;
            static_cast<void>(nextFolded(text, at));
            resumeAt = at;
            place = behindAny;
        } else {
            at = before;
            return false;
        }
    }
    while (place < pattern.size() && pattern[place] == kAnyLetters)
        ++place;
    return place == pattern.size();
}

} // namespace veldona::store
