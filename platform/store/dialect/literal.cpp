#include "platform/store/dialect/literal.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string_view>

#include "platform/runtime/conversion.h"
#include "platform/runtime/error.h"
#include "platform/runtime/text.h"
#include "platform/store/dialect/storeerror.h"

namespace veldona::store {
namespace {

using enum ColumnType;

[[noreturn]] void failMismatch(const std::string& shown, std::string_view what) {
    throw StoreError(StoreError::Kind::TypeMismatch,
                     "Veri türü uyuşmuyor: \"" + shown + "\" " + std::string(what));
}

double readNumber(const std::string& text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size())
        failMismatch(text, "sayı olarak okunamadı.");
    return number;
}

Value numberValue(const std::string& text) {
    std::int64_t whole = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), whole);
    if (error == std::errc{} && end == text.data() + text.size()) return whole;
    return readNumber(text);
}

Value engineNumber(const Value& value) {
    const double number = toDouble(value);
    if (!std::isfinite(number)) raise(ErrorNumber::Overflow);
    return number;
}

Value converted(const Value& value, ColumnType target) {
    switch (target) {
    case Counter:
    case Whole:
        return static_cast<std::int64_t>(toLong(value));
    case Small:
        return static_cast<std::int64_t>(toInteger(value));
    case Number:
        return engineNumber(value);
    case Text:
    case Memo:
        return toText(value);
    case Date:
        return storedDate(toDate(value));
    case Boolean:
        return toBoolean(value) ? -1 : 0;
    }
    return {};
}

std::string_view meaning(ColumnType target) {
    switch (target) {
    case Date:
        return "tarih olarak okunamadı.";
    case Text:
    case Memo:
        return "metin olarak okunamadı.";
    default:
        return "sayı olarak okunamadı.";
    }
}

std::string shown(const Value& value) {
    constexpr std::size_t kMost = 60;
    return left(joinText(value), kMost);
}

Value literalDate(const Literal& literal) {
    try {
        return readDateLiteral(literal.text);
    } catch (const RuntimeError&) {
        failMismatch(left(validUtf8(literal.text), 60), meaning(Date));
    }
}

} // namespace

Value bindValue(const Value& value, ColumnType target) {
    if (value.isNull()) return value;
    if (value.isText() && (target == Text || target == Memo)) return validUtf8(value.get<std::string>());
    try {
        return converted(value, target);
    } catch (const RuntimeError& error) {
        const bool tooLarge = error.number() == static_cast<std::int32_t>(ErrorNumber::Overflow);
        failMismatch(shown(value), tooLarge ? "alanın alabileceği değerlerin dışında." : meaning(target));
    }
}

Value bindLiteral(const Literal& literal, std::optional<ColumnType> target) {
    switch (literal.kind) {
    case Literal::Kind::Text:
        if (!target || target == Text || target == Memo) return literal.text;
        return bindValue(literal.text, *target);
    case Literal::Kind::Date: {
        const Value date = literalDate(literal);
        return bindValue(date, target.value_or(Date));
    }
    case Literal::Kind::Number:
        break;
    }
    const Value number = numberValue(literal.text);
    return target ? bindValue(number, *target) : number;
}

std::string storedDate(DateTime date) {
    std::string stored = "0000-00-00 00:00:00";
    const auto put = [&stored](std::size_t at, int digits, int number) {
        for (std::size_t i = at + static_cast<std::size_t>(digits); i-- > at; number /= 10) {
            stored[i] = static_cast<char>('0' + number % 10);
        }
    };
    put(0, 4, date.year());
    put(5, 2, date.month());
    put(8, 2, date.day());
    put(11, 2, date.hour());
    put(14, 2, date.minute());
    put(17, 2, date.second());
    return stored;
}

std::optional<DateTime> dateOfStored(std::string_view stored) {
    constexpr std::string_view kForm = "0000-00-00 00:00:00";
    if (stored.size() != kForm.size()) return std::nullopt;
    bool isFormed = true;
    for (std::size_t i = 0; i < kForm.size(); ++i) {
        const bool isDigit = static_cast<unsigned char>(stored[i] - '0') < 10;
        isFormed = isFormed && (isDigit ? kForm[i] == '0' : stored[i] == kForm[i]);
    }
    if (!isFormed) return std::nullopt;
    const auto two = [stored](std::size_t at) { return (stored[at] - '0') * 10 + (stored[at + 1] - '0'); };
    const int year = two(0) * 100 + two(2), month = two(5), day = two(8);
    const int hour = two(11), minute = two(14), second = two(17);
    if (!DateTime::isDay(year, month, day) || hour > 23 || minute > 59 || second > 59) return std::nullopt;
    return DateTime::of(year, month, day).plusSeconds((hour * 60 + minute) * 60 + second);
}

namespace sql {

std::string engineLiteral(const Value& value) {
    if (value.isNull()) return "NULL";
    if (value.kind() == Value::Kind::Whole) return std::to_string(value.get<std::int64_t>());
    if (value.kind() == Value::Kind::Double) {
        std::array<char, 32> digits{};
        // Not printf: a window system sets the machine's locale, and a decimal comma is none of the engine's.
        const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value.get<double>());
        std::string written(digits.data(), end.ptr);
        if (written.find_first_of(".e") == std::string::npos) written += ".0";
        return written;
    }
    std::string quoted = "'";
    for (const char letter : value.get<std::string>()) {
        quoted += letter;
        if (letter == '\'') quoted += '\'';
    }
    return quoted + "'";
}

} // namespace sql
} // namespace veldona::store
