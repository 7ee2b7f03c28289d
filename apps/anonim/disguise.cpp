#include "apps/anonim/disguise.h"

#include <algorithm>
#include <cstdint>

#include "platform/runtime/text.h"

namespace veldona::anonim {
namespace {

constexpr std::string_view kSmall = "abcdefghijklmnoprstuvyz";
constexpr std::string_view kCapital = "ABCDEFGHIJKLMNOPRSTUVYZ";
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kTurkishSmall = "çğıöşü"; // two bytes each
constexpr std::string_view kTurkishCapital = "ÇĞİÖŞÜ";

constexpr std::string_view kInNumbers = " -/().+";
constexpr std::string_view kOwnAccounts[] = {"G3", "G4", "TI"}; // the house's, which the reports know
constexpr std::size_t kPersonal = 5;                            // digits of a number that may be somebody's

std::uint64_t chance() {
    std::random_device device;
    return (static_cast<std::uint64_t>(device()) << 32) ^ device();
}

// How many bytes the letter at the front takes; broken ones count one by one.
std::size_t lengthOf(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = lead < 0xC0 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    return length <= text.size() ? length : 1;
}

bool isOneOf(std::string_view letter, std::string_view letters) {
    for (std::size_t at = 0; at < letters.size(); at += 2)
        if (letters.substr(at, 2) == letter) return true;
    return false;
}

bool isDigit(char letter) {
    return letter >= '0' && letter <= '9';
}

std::string digitsOf(std::string_view text) {
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits), isDigit);
    return digits;
}

// How far the number at the front reaches: digits, and in between the signs that a telephone is written with.
std::size_t lengthOfNumber(std::string_view text) {
    std::size_t end = 0;
    for (std::size_t at = 0;
         at < text.size() && (isDigit(text[at]) || kInNumbers.find(text[at]) != kInNumbers.npos); ++at)
        if (isDigit(text[at])) end = at + 1;
    return end;
}

// `text` as one of the same letters would be written that has a capital where `like` has one.
std::string capitalsAs(const std::string& text, std::string_view like) {
    std::string made;
    for (std::string_view rest = text; !rest.empty();) {
        if (like.empty()) return text; // of another length: nothing to go by
        const std::string_view letter = rest.substr(0, lengthOf(rest)),
                               other = like.substr(0, lengthOf(like));
        rest.remove_prefix(letter.size());
        like.remove_prefix(other.size());
        made += upperTurkish(other) == other ? upperTurkish(letter) : lowerTurkish(letter);
    }
    return like.empty() ? made : text;
}

} // namespace

Disguise::Disguise() : Disguise(chance()) {}

// Half a year to four years: the seasons of the shop say nothing, and no date leaves the range of the books.
Disguise::Disguise(std::uint64_t seed)
    : random_(seed), weeks_(std::uniform_int_distribution<int>(26, 208)(random_)) {}

std::string_view Disguise::pick(std::string_view letters, std::size_t bytesOfOne) {
    std::uniform_int_distribution<std::size_t> place(0, letters.size() / bytesOfOne - 1);
    return letters.substr(place(random_) * bytesOfOne, bytesOfOne);
}

// A letter of another alphabet becomes a Turkish one.
std::string Disguise::redrawn(std::string_view text) {
    std::string made;
    made.reserve(text.size());
    while (!text.empty()) {
        const std::string_view letter = text.substr(0, lengthOf(text));
        text.remove_prefix(letter.size());
        const char first = letter.front();
        if (first >= 'a' && first <= 'z') {
            made += pick(kSmall, 1);
        } else if (first >= 'A' && first <= 'Z') {
            made += pick(kCapital, 1);
        } else if (isDigit(first)) {
            made += pick(kDigits, 1);
        } else if (static_cast<unsigned char>(first) < 0x80) {
            made += first;
        } else {
            made += pick(isOneOf(letter, kTurkishCapital) ? kTurkishCapital : kTurkishSmall, 2);
        }
    }
    return made;
}

std::string Disguise::drawn(std::string_view digits) {
    const std::size_t zeros = std::min(digits.find_first_not_of('0'), digits.size());
    std::string made(digits.substr(0, zeros));
    if (zeros < digits.size()) made += pick(kDigits.substr(1), 1);
    while (made.size() < digits.size())
        made += pick(kDigits, 1);
    return made;
}

// Where nearly all numbers of a length are taken, chance would look for the free one for long.
std::string Disguise::newAccount(const std::string& number) {
    const bool isPlain = number.find_first_not_of(kDigits) == std::string::npos;
    constexpr int kDraws = 50;
    std::string made;
    for (int i = 0; i < kDraws; ++i) {
        made = isPlain ? drawn(number) : redrawn(number);
        if (given_.insert(upperTurkish(made)).second) return made;
    }
    const std::string first = made;
    do {
        std::size_t at = made.size();
        while (at > 0 && (made[at - 1] == '9' || !isDigit(made[at - 1])))
            if (--at; isDigit(made[at])) made[at] = '0';
        if (at == 0)
            made.insert(0, 1, '1'); // all numbers of this length are taken
        else
            ++made[at - 1];
    } while (!given_.insert(upperTurkish(made)).second);
    return made;
}

void Disguise::learnAccount(const std::vector<std::string>& spellings) {
    const std::string& first = spellings.front();
    const bool isOwn =
        std::find(std::begin(kOwnAccounts), std::end(kOwnAccounts), first) != std::end(kOwnAccounts);
    const std::string made = isOwn ? first : newAccount(first);
    for (const std::string& each : spellings)
        accounts_[each] = isOwn || each == first ? made : capitalsAs(made, each);
}

std::string Disguise::account(const std::string& number) const {
    return accounts_.at(number);
}

std::string Disguise::digitsFor(const std::string& digits) {
    if (const auto known = accounts_.find(digits); known != accounts_.end()) return known->second;
    if (digits.size() < kPersonal) return redrawn(digits);
    const auto [place, isNew] = numbers_.try_emplace(digits);
    if (isNew) place->second = redrawn(digits);
    return place->second;
}

// A number as it is written in groups: one telephone in two fashions stays one.
std::string Disguise::numberFor(std::string_view shaped) {
    const std::string digits = digitsFor(digitsOf(shaped));
    std::string made;
    std::size_t next = 0;
    for (const char letter : shaped)
        if (!isDigit(letter))
            made += letter;
        else if (next < digits.size())
            made += digits[next++];
    return made + digits.substr(next);
}

std::string Disguise::operator()(std::string_view text) {
    std::string made;
    while (!text.empty()) {
        const std::size_t number = lengthOfNumber(text);
        const bool isOne = digitsOf(text.substr(0, number)).size() >= kPersonal;
        // Shorter groups are looked at one by one: each may be an account.
        const std::size_t size = isOne ? number : std::min(text.find_first_not_of(kDigits), text.size());
        if (size > 0) {
            made += isOne ? numberFor(text.substr(0, size)) : digitsFor(std::string(text.substr(0, size)));
            text.remove_prefix(size);
            continue;
        }
        const std::size_t words = std::min(text.find_first_of(kDigits), text.size());
        made += redrawn(text.substr(0, words));
        text.remove_prefix(words);
    }
    return made;
}

std::string Disguise::code(const std::string& text) {
    const auto [place, isNew] = codes_.try_emplace(text);
    if (isNew) place->second = (*this)(text);
    return place->second;
}

std::string Disguise::flat() {
    return redrawn("Xxxxxxxx");
}

} // namespace veldona::anonim
