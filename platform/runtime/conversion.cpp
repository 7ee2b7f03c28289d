#include "platform/runtime/conversion.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "platform/runtime/datetext.h"
#include "platform/runtime/decimal.h"
#include "platform/runtime/error.h"

namespace veldona {

namespace {

using Kind = Value::Kind;

constexpr double kDayInSeconds = kSecondsADay;
constexpr int truth = -1; // what True counts as a number

template <class T> T orOverflow(std::optional<T> number) {
    if (!number) raise(ErrorNumber::Overflow);
    return *number;
}

double days(DateTime date) {
    return static_cast<double>(date.seconds()) / kDayInSeconds;
}

DateTime dateOfDays(double count) {
    static const DateTime first = DateTime::of(100, 1, 1);
    static const DateTime last = DateTime::of(9999, 12, 31, 23, 59, 59);
    if (!(std::fabs(count) < 1e7)) raise(ErrorNumber::Overflow);
    const DateTime date = DateTime::ofSeconds(std::llround(count * kDayInSeconds));
    if (date < first || date > last) raise(ErrorNumber::Overflow);
    return date;
}

Decimal readOrRaise(const std::string& text) {
    const auto number = Decimal::read(text);
    if (!number) raise(ErrorNumber::TypeMismatch);
    return *number;
}

Decimal readOrRaise(const Value& text) {
    return readOrRaise(text.get<std::string>());
}

// A half of a double is exact in it, so the machine's own rounding to even is the decimal one.
std::int64_t wholeOf(double value) {
    if (!(std::fabs(value) < 9.2e18)) raise(ErrorNumber::Overflow);
    return std::llrint(value);
}

std::int64_t wholeOf(const Value& value) {
    switch (value.kind()) {
    case Kind::Null:
        raise(ErrorNumber::InvalidUseOfNull);
    case Kind::Boolean:
        return value.get<bool>() ? truth : 0;
    case Kind::Whole:
        return value.get<std::int64_t>();
    case Kind::Double:
        return wholeOf(value.get<double>());
    case Kind::Money:
        return *Decimal::ofScaled(value.get<Currency>().tenThousandths(), 4).toScaled(0);
    case Kind::Date:
        return wholeOf(days(value.get<DateTime>()));
    case Kind::Text:
        return orOverflow(readOrRaise(value).toScaled(0));
    }
    raise(ErrorNumber::TypeMismatch);
}

template <class Narrow> Narrow narrowed(const Value& value) {
    const std::int64_t whole = wholeOf(value);
    if (whole < std::numeric_limits<Narrow>::min() || whole > std::numeric_limits<Narrow>::max())
        raise(ErrorNumber::Overflow);
    return static_cast<Narrow>(whole);
}

bool equalsWord(std::string_view text, std::string_view lowerCase) {
    if (text.size() != lowerCase.size()) return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if ((text[i] | 0x20) != lowerCase[i]) return false;
    return true;
}

std::string textOf(std::int64_t whole) {
    std::array<char, 24> text;
    return {text.data(), std::to_chars(text.data(), text.data() + text.size(), whole).ptr};
}

// "1,5E+16": for what is too large, or too small, to stand in full with its digits.
void appendScientific(std::string& out, const Decimal& number) {
    out += number.digit(0);
    if (number.count() > 1) out += ',';
    for (int i = 1; i < number.count(); ++i)
        out += number.digit(i);
    const int exponent = number.point() - 1;
    out += exponent < 0 ? "E-" : "E+";
    appendDigits(out, std::abs(exponent), 2);
}

std::string textOf(const Decimal& number) {
    std::string out;
    if (number.isNegative()) out += '-';
    if (number.count() == 0) return "0";
    const int decimals = number.count() - number.point();
    // A share of a small debt (0,0333333333333333) stays readable, down to the last decimal of money.
    const bool isTiny = number.point() < -3 && decimals > 15;
    if (number.point() > 15 || isTiny) {
        appendScientific(out, number);
        return out;
    }
    if (number.point() <= 0) out += '0';
    for (int i = 0; i < number.point(); ++i)
        out += number.digit(i);
    if (decimals <= 0) return out;
    out += ',';
    for (int i = number.point(); i < number.count(); ++i)
        out += number.digit(i);
    return out;
}

std::string textOf(double number) {
    if (number == std::trunc(number) && std::fabs(number) < 1e15)
        return textOf(static_cast<std::int64_t>(number));
    return textOf(Decimal::ofDouble(number));
}

std::string textOf(Currency money) {
    const std::int64_t count = money.tenThousandths();
    std::string out;
    if (count < 0) out += '-';
    const std::uint64_t size =
        count < 0 ? 0 - static_cast<std::uint64_t>(count) : static_cast<std::uint64_t>(count);
    std::array<char, 24> whole;
    out.append(whole.data(), std::to_chars(whole.data(), whole.data() + whole.size(), size / 10'000).ptr);
    auto rest = static_cast<int>(size % 10'000);
    if (rest == 0) return out;
    out += ',';
    int width = 4;
    for (; rest % 10 == 0; rest /= 10)
        --width;
    appendDigits(out, rest, width);
    return out;
}

} // namespace

Currency toCurrency(const Value& value) {
    switch (value.kind()) {
    case Kind::Money:
        return value.get<Currency>();
    case Kind::Double:
        return Currency::ofDouble(value.get<double>());
    case Kind::Date:
        return Currency::ofDouble(days(value.get<DateTime>()));
    case Kind::Text:
        return Currency::ofTenThousandths(orOverflow(readOrRaise(value).toScaled(4)));
    default:
        return Currency::ofWhole(wholeOf(value));
    }
}

Currency toShownCurrency(const std::string& text, int decimals) {
    Decimal number = readOrRaise(text);
    number.round(decimals, Ties::AwayFromZero);
    return Currency::ofTenThousandths(orOverflow(number.toScaled(4)));
}

double toDouble(const Value& value) {
    switch (value.kind()) {
    case Kind::Double:
        return value.get<double>();
    case Kind::Money:
        return value.get<Currency>().toDouble();
    case Kind::Date:
        return days(value.get<DateTime>());
    case Kind::Text:
        return orOverflow(readOrRaise(value).toDouble());
    default:
        return static_cast<double>(wholeOf(value));
    }
}

std::int32_t toLong(const Value& value) {
    return narrowed<std::int32_t>(value);
}

std::int16_t toInteger(const Value& value) {
    return narrowed<std::int16_t>(value);
}

std::uint8_t toByte(const Value& value) {
    return narrowed<std::uint8_t>(value);
}

bool toBoolean(const Value& value) {
    if (value.kind() == Kind::Boolean) return value.get<bool>();
    if (value.isText()) {
        if (equalsWord(value.get<std::string>(), "true")) return true;
        if (equalsWord(value.get<std::string>(), "false")) return false;
    }
    return toDouble(value) != 0;
}

DateTime toDate(const Value& value) {
    switch (value.kind()) {
    case Kind::Date:
        return value.get<DateTime>();
    case Kind::Text:
        return readDate(value.get<std::string>());
    default:
        return dateOfDays(toDouble(value));
    }
}

std::string toText(const Value& value) {
    switch (value.kind()) {
    case Kind::Null:
        raise(ErrorNumber::InvalidUseOfNull);
    case Kind::Boolean:
        return value.get<bool>() ? "True" : "False";
    case Kind::Whole:
        return textOf(value.get<std::int64_t>());
    case Kind::Double:
        return textOf(value.get<double>());
    case Kind::Money:
        return textOf(value.get<Currency>());
    case Kind::Date: {
        std::string out;
        appendDate(out, value.get<DateTime>());
        return out;
    }
    case Kind::Text:
        return value.get<std::string>();
    }
    raise(ErrorNumber::TypeMismatch);
}

std::string joinText(const Value& value) {
    return value.isNull() ? std::string() : toText(value);
}

bool isNumeric(const Value& value) {
    if (!value.isText()) return !value.isNull();
    const auto number = Decimal::read(value.get<std::string>());
    return number && number->toDouble();
}

double val(std::string_view text) {
    const Decimal number = Decimal::readLeading(text);
    // A text of hundreds of digits is no amount, but it must not fail either.
    const double limit = std::numeric_limits<double>::max();
    return number.toDouble().value_or(number.isNegative() ? -limit : limit);
}

double val(const Value& value) {
    if (value.isText()) return val(value.get<std::string>());
    return val(joinText(value));
}

double roundHalfEven(double value, int decimals) {
    if (decimals < 0) raise(ErrorNumber::InvalidCall);
    if (std::isfinite(value) && value == std::trunc(value))
        return value; // also beyond the digits that are read
    Decimal rounded = Decimal::ofDouble(value);
    rounded.round(decimals, Ties::ToEven);
    return orOverflow(rounded.toDouble());
}

double divide(double dividend, double divisor) {
    if (divisor == 0) raise(ErrorNumber::DivisionByZero);
    const double quotient = dividend / divisor;
    if (!std::isfinite(quotient)) raise(ErrorNumber::Overflow);
    return quotient;
}

} // namespace veldona
