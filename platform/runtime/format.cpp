#include "platform/runtime/format.h"

#include <algorithm>
#include <optional>

#include "platform/runtime/conversion.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/decimal.h"

namespace veldona {

namespace {

// "#,##0.00" taken apart.
struct NumberMask {
    std::string_view before, behind; // what stands around the digits, as it is
    int leastWhole = 0;
    int leastDecimals = 0;
    int mostDecimals = 0;
    bool groups = false;
};

bool isPlace(char c) {
    return c == '#' || c == '0';
}

bool isNumberMask(std::string_view mask) {
    return std::any_of(mask.begin(), mask.end(), isPlace);
}

NumberMask takeApart(std::string_view mask) {
    NumberMask made;
    std::size_t first = 0;
    while (!isPlace(mask[first]))
        ++first;
    if (first > 0 && mask[first - 1] == '.') --first;
    std::size_t end = first;
    while (end < mask.size() && (isPlace(mask[end]) || mask[end] == '.' || mask[end] == ','))
        ++end;
    made.before = mask.substr(0, first);
    made.behind = mask.substr(end);
    const std::string_view digits = mask.substr(first, end - first);
    // The layouts of the reports write the mask with the signs of the shop, "#.##0,00".
    const std::size_t lastComma = digits.rfind(',');
    const bool asShown = lastComma != std::string_view::npos && lastComma > digits.rfind('.');
    const bool swapped = asShown && digits.find('.') != std::string_view::npos;
    const char decimalSign = swapped ? ',' : '.';
    bool behindSign = false;
    for (const char c : digits) {
        if (c == decimalSign) {
            behindSign = true;
        } else if (c != '#' && c != '0') {
            made.groups = made.groups || !behindSign;
        } else if (behindSign) {
            ++made.mostDecimals;
            if (c == '0') made.leastDecimals = made.mostDecimals;
        } else if (c == '0' || made.leastWhole > 0) {
            ++made.leastWhole; // behind a "0" every place shows
        }
    }
    return made;
}

std::string formatNumber(Decimal number, std::string_view maskText) {
    const NumberMask mask = takeApart(maskText);
    number.round(mask.mostDecimals, Ties::AwayFromZero);
    std::string out;
    out.append(mask.before);
    if (number.isNegative()) out += '-';
    const int whole = std::max(number.point(), mask.leastWhole);
    for (int place = whole; place > 0; --place) {
        out += number.digit(number.point() - place);
        if (mask.groups && place > 1 && place % 3 == 1) out += '.';
    }
    const int decimals = std::max(mask.leastDecimals, number.count() - number.point());
    if (decimals > 0) out += ',';
    for (int i = 0; i < decimals; ++i)
        out += number.digit(number.point() + i);
    return out.append(mask.behind);
}

// The number to show; nothing for a text that is none.
std::optional<Decimal> numberOf(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Text: {
        auto number = Decimal::read(value.get<std::string>());
        if (number && !number->toDouble()) number.reset();
        return number;
    }
    case Value::Kind::Money:
        return Decimal::ofScaled(value.get<Currency>().tenThousandths(), 4);
    case Value::Kind::Whole:
        return Decimal::ofScaled(value.get<std::int64_t>(), 0);
    default:
        return Decimal::ofDouble(toDouble(value));
    }
}

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isDatePart(char letter) {
    return letter == 'd' || letter == 'm' || letter == 'y' || letter == 'h' || letter == 'n' || letter == 's';
}

// `letter` stands `count` times in the mask.
void appendDatePart(std::string& out, DateTime date, char letter, int count) {
    const int width = std::min(count, 2);
    switch (letter) {
    case 'd':
        return appendDigits(out, date.day(), width);
    case 'm':
        return appendDigits(out, date.month(), width);
    case 'h':
        return appendDigits(out, date.hour(), width);
    case 'n':
        return appendDigits(out, date.minute(), width);
    case 's':
        return appendDigits(out, date.second(), width);
    default:
        return count > 2 ? appendDigits(out, date.year(), 4) : appendDigits(out, date.year() % 100, 2);
    }
}

std::string formatDate(DateTime date, std::string_view mask) {
    std::string out;
    char before = 0; // the last part's letter, by which "mm" is months or minutes
    for (std::size_t i = 0; i < mask.size();) {
        char letter = lowered(mask[i]);
        std::size_t end = i + 1;
        while (end < mask.size() && lowered(mask[end]) == letter)
            ++end;
        if (!isDatePart(letter)) {
            out.append(mask.substr(i, end - i));
        } else {
            if (letter == 'm' && before == 'h') letter = 'n';
            appendDatePart(out, date, letter, static_cast<int>(end - i));
            before = letter;
        }
        i = end;
    }
    return out;
}

std::optional<DateTime> dateOf(const Value& value) {
    if (value.isText()) return findDate(value.get<std::string>());
    return toDate(value);
}

} // namespace

std::string format(const Value& value, std::string_view mask) {
    if (value.isNull()) return {};
    if (mask.empty()) return toText(value);
    if (isNumberMask(mask)) {
        const auto number = numberOf(value);
        return number ? formatNumber(*number, mask) : value.get<std::string>();
    }
    const auto date = dateOf(value);
    return date ? formatDate(*date, mask) : value.get<std::string>();
}

} // namespace veldona
