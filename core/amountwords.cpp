#include "core/amountwords.h"

#include <algorithm>
#include <array>

#include "platform/runtime/conversion.h"
#include "platform/runtime/error.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

using Words = std::array<const char*, 10>;
constexpr Words Birler = {"", "bir", "iki", "üç", "dört", "beş", "altı", "yedi", "sekiz", "dokuz"};
constexpr Words Onlar = {"", "on", "yirmi", "otuz", "kırk", "elli", "altmış", "yetmiş", "seksen", "doksan"};
constexpr std::array<const char*, 5> Binler = {"trilyon ", "milyar ", "milyon ", "bin ", ""};

constexpr std::size_t kDigits = 15;
constexpr std::size_t kThousands = 3; // the group that reads "bin", where 1.000.000 reads "birmilyon"

std::string hundreds(std::size_t digit) {
    if (digit == 0) return {};
    return digit == 1 ? "yüz" : Birler[digit] + std::string("yüz");
}

// `three` digits of the group-th group from the left.
std::string groupWords(std::string_view three, std::size_t group) {
    const auto digit = [&](std::size_t place) { return static_cast<std::size_t>(three[place] - '0'); };
    std::string words = hundreds(digit(0)) + Onlar[digit(1)] + Birler[digit(2)];
    if (!words.empty()) words += Binler[group];
    return group == kThousands && words == "birbin " ? "bin " : words;
}

} // namespace

std::string SayiYaz(std::string& digits) {
    if (length(digits) > kDigits) raise(ErrorNumber::InvalidCall);
    if (!std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; }))
        raise(ErrorNumber::TypeMismatch);
    digits.insert(0, kDigits - digits.size(), '0');
    std::string words;
    for (std::size_t group = 0; group < Binler.size(); ++group)
        words += groupWords(std::string_view(digits).substr(3 * group, 3), group);
    if (words.empty()) words = "00";
    return upperTurkish(left(words, 1)) + mid(words, 2);
}

std::string YaziyaCevir(const Value& value) {
    if (!isNumeric(value)) return "GİRİLEN DEĞER SAYI DEĞİL!";
    std::string shown = format(value, "0.00");
    if (shown.front() == '-') shown.erase(0, 1);
    std::string whole = shown.substr(0, shown.size() - 3);
    std::string kurus = shown.substr(shown.size() - 2);
    const std::string sign = toDouble(value) < 0 ? "Eksi " : "";
    return sign + SayiYaz(whole) + " YTL  " + SayiYaz(kurus) + " YKR";
}

} // namespace veldona
