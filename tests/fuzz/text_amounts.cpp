#include "tests/fuzz/text_amounts.h"

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <optional>

#include "core/amountwords.h"
#include "core/money.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "tests/fuzz/fuzzing.h"
#include "tests/support/shop.h"

namespace veldona::fuzz {
namespace {

template <class Result, class Convert> std::optional<Result> tried(const Convert& convert) {
    std::optional<Result> result;
    runs([&] { result = convert(); });
    return result;
}

bool areNear(double a, double b) {
    return std::fabs(a - b) <= std::fabs(a) * 1e-14;
}

// The narrow kinds of a number hold the nearest whole one, or nothing.
template <class Narrow> void narrowHolds(double number, const std::optional<Narrow>& narrow) {
    const double nearest = std::nearbyint(number);
    const bool fits = nearest >= static_cast<double>(std::numeric_limits<Narrow>::min()) &&
                      nearest <= static_cast<double>(std::numeric_limits<Narrow>::max());
    // A text of more digits than a double has may lie on either side of a half or of the border.
    const bool isExact = std::fabs(number - nearest) < 0.499;
    require(!isExact || fits == narrow.has_value(), "a narrow number fits or not: " + toText(number));
    if (narrow)
        require(std::fabs(number - *narrow) <= 0.500001, "the nearest whole number: " + toText(number));
}

void numberHolds(double number) {
    require(std::isfinite(number), "a number that is none");
    const std::string shown = toText(number);
    // Fifteen digits of the very largest numbers round up to more than a double has room for.
    if (std::fabs(number) > 1.79769313486231e308) return;
    require(isNumeric(shown), "its own text reads: " + shown);
    require(areNear(toDouble(shown), number), "its own text reads as the same: " + shown);
    const double rounded = roundHalfEven(number, 2);
    require(std::fabs(rounded - number) <= 0.005 + std::fabs(number) * 1e-15, "rounded: " + shown);
    if (const auto grouped = format(number, "#,##0.00"); !grouped.empty()) {
        require(isNumeric(grouped), "a shown number reads: " + grouped);
        requireEqual(format(grouped, "#,##0.00"), grouped, "shown twice");
    }
}

// Words back to the number that they say; nothing where they are no such words.
std::optional<std::int64_t> numberOfWords(std::string words) {
    struct Word {
        const char* text;
        std::int64_t value;
    };
    static constexpr std::array<Word, 23> kWords = {{
        {"trilyon", 1'000'000'000'000},
        {"milyar", 1'000'000'000},
        {"milyon", 1'000'000},
        {"bin", 1'000},
        {"yüz", 100},
        {"on", 10},
        {"yirmi", 20},
        {"otuz", 30},
        {"kırk", 40},
        {"elli", 50},
        {"altmış", 60},
        {"yetmiş", 70},
        {"seksen", 80},
        {"doksan", 90},
        {"bir", 1},
        {"iki", 2},
        {"üç", 3},
        {"dört", 4},
        {"beş", 5},
        {"altı", 6},
        {"yedi", 7},
        {"sekiz", 8},
        {"dokuz", 9},
    }};
    words = replaceAll(lowerTurkish(words), " ", "");
    if (words == "00") return 0;
    std::int64_t all = 0;
    std::int64_t group = 0;
    while (!words.empty()) {
        const Word* found = nullptr;
        for (const Word& word : kWords)
            if (words.starts_with(word.text)) found = &word;
        if (!found) return std::nullopt;
        words.erase(0, std::strlen(found->text));
        if (found->value >= 1'000) {
            all += std::max<std::int64_t>(group, 1) * found->value;
            group = 0;
        } else if (found->value == 100) {
            group = std::max<std::int64_t>(group, 1) * 100;
        } else {
            group += found->value;
        }
    }
    return all + group;
}

void wordsHold(const std::string& text) {
    const auto words = tried<std::string>([&] { return YaziyaCevir(text); });
    if (!words || !isNumeric(text)) return;
    const std::string shown = format(text, "0.00");
    const auto [lira, kurus] = cutAt(*words, " YTL  ");
    require(kurus.ends_with(" YKR"), "both amounts have their unit: " + *words);
    const bool isNegative = lira.starts_with("Eksi ");
    const auto whole = numberOfWords(isNegative ? lira.substr(5) : lira);
    const auto part = numberOfWords(kurus.substr(0, kurus.size() - 4));
    require(whole && part, "words that say a number: " + *words);
    const std::string digits = std::to_string(*whole) + "," + (*part < 10 ? "0" : "") + std::to_string(*part);
    requireEqual(digits, shown.starts_with('-') ? shown.substr(1) : shown,
                 "the words say the amount " + *words);
    require(isNegative || !shown.starts_with('-'), "a debt is said to be one: " + *words);
}

void moneyHolds(Currency money) {
    require(toCurrency(toText(money)) == money, "an amount's own text: " + toText(money));
    const std::string shown = format(money, kMoneyMask);
    const auto read = tried<Currency>([&] { return toCurrency(shown); });
    if (read) {
        const auto apart = tried<Currency>([&] { return *read - money; });
        require(apart && std::llabs(apart->tenThousandths()) <= 50, "shown within half a kuruş: " + shown);
        wordsHold(shown);
    }
    static const Currency one = Currency::ofWhole(1);
    require(money * one == money, "times one: " + shown);
    runs([&] { require(money + one - one == money, "one more and one less: " + shown); });
    runs([&] { require(-(-money) == money, "negated twice: " + shown); });
}

// What is stored of a shown amount is shown as it was.
void storedHolds(Currency money) {
    static test::Shop shop;
    const Session& session = shop.session;
    constexpr std::int64_t kShops = 1'000'000'000LL * 10'000; // as far as a stored amount keeps its kuruş
    if (std::llabs(money.tenThousandths()) > kShops) return;
    const std::string shown = format(money, kMoneyMask);
    const StoredText stored = ParaOku(session, shown, {}, MoneyMode::Deger);
    requireEqual(ParaGoster(session, storedIn(stored)), shown, "stored as " + stored.inStatement());
}

} // namespace

void amountsHold(const std::string& text, const std::string& mask) {
    require(std::isfinite(val(text)), "val always answers a number");
    const auto number = tried<double>([&] { return toDouble(text); });
    require(number.has_value() == isNumeric(text), "numeric is what reads as a number");
    const auto money = tried<Currency>([&] { return toCurrency(text); });
    require(number || !money, "an amount is a number");
    if (number) {
        numberHolds(*number);
        narrowHolds(*number, tried<std::int32_t>([&] { return toLong(text); }));
        narrowHolds(*number, tried<std::int16_t>([&] { return toInteger(text); }));
        narrowHolds(*number, tried<std::uint8_t>([&] { return toByte(text); }));
        runs([&] { return static_cast<void>(toDate(*number)); });
    }
    if (money) {
        moneyHolds(*money);
        storedHolds(*money);
    }
    wordsHold(text);
    runs([&] { return static_cast<void>(format(text, mask)); });
    if (double any = 0; mask.size() >= sizeof any) { // any double at all, also one that is no number
        std::memcpy(&any, mask.data(), sizeof any);
        const bool isNumber = std::isfinite(any);
        if (isNumber) numberHolds(any);
        require(isNumber == runs([&] { return static_cast<void>(toText(any)); }),
                "what is no number has no text");
        runs([&] { moneyHolds(toCurrency(any)); });
        runs([&] { return static_cast<void>(YaziyaCevir(any)); });
        runs([&] { narrowHolds(any, std::optional(toLong(any))); });
    }
}

} // namespace veldona::fuzz
