#include "apps/anonim/disguise.h"

#include <cstdint>

namespace veldona::anonim {
namespace {

constexpr std::string_view kSmall = "abcdefghijklmnoprstuvyz";
constexpr std::string_view kCapital = "ABCDEFGHIJKLMNOPRSTUVYZ";
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kTurkishSmall = "çğıöşü"; // two bytes each
constexpr std::string_view kTurkishCapital = "ÇĞİÖŞÜ";

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

} // namespace

Disguise::Disguise() : random_(chance()) {}

std::string_view Disguise::pick(std::string_view letters, std::size_t bytesOfOne) {
    std::uniform_int_distribution<std::size_t> place(0, letters.size() / bytesOfOne - 1);
    return letters.substr(place(random_) * bytesOfOne, bytesOfOne);
}

// A letter of another alphabet becomes a Turkish one.
std::string Disguise::operator()(std::string_view text) {
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
        } else if (first >= '0' && first <= '9') {
            made += pick(kDigits, 1);
        } else if (static_cast<unsigned char>(first) < 0x80) {
            made += first;
        } else {
            made += pick(isOneOf(letter, kTurkishCapital) ? kTurkishCapital : kTurkishSmall, 2);
        }
    }
    return made;
}

} // namespace veldona::anonim
