#include "platform/runtime/datetext.h"

#include <array>
#include <charconv>

#include "platform/runtime/conversion.h"
#include "platform/runtime/error.h"

namespace veldona {

namespace {

struct Number {
    int value = 0;
    int digits = 0;
};

// Takes one to four digits off the front; none for anything else.
Number takeNumber(std::string_view& text) {
    Number taken;
    while (!text.empty() && text.front() >= '0' && text.front() <= '9') {
        if (++taken.digits > 4) return {};
        taken.value = taken.value * 10 + (text.front() - '0');
        text.remove_prefix(1);
    }
    return taken;
}

bool takeOneOf(std::string_view& text, std::string_view characters) {
    if (text.empty() || characters.find(text.front()) == std::string_view::npos) return false;
    text.remove_prefix(1);
    return true;
}

void skipBlanks(std::string_view& text) {
    while (takeOneOf(text, " "))
        continue;
}

constexpr std::string_view separators = "/.-,";

std::optional<DateTime> dayOf(int year, int month, int day) {
    if (!DateTime::isDay(year, month, day)) return std::nullopt;
    return DateTime::of(year, month, day);
}

// Inside the signs of a literal, which puts the month first, blanks count for nothing.
bool takeSeparator(std::string_view& text, DateOrder order) {
    if (order == DateOrder::DayFirst) return takeOneOf(text, separators);
    skipBlanks(text);
    if (!takeOneOf(text, separators)) return false;
    skipBlanks(text);
    return true;
}

std::optional<DateTime> takeDay(std::string_view& text, DateOrder order) {
    std::array<Number, 3> part;
    for (std::size_t i = 0; i < part.size(); ++i) {
        if (i > 0 && !takeSeparator(text, order)) return std::nullopt;
        part[i] = takeNumber(text);
        if (part[i].digits == 0 || part[i].digits == 3) return std::nullopt;
    }
    const auto [first, second, third] = part;
    if (second.digits > 2) return std::nullopt;
    if (first.digits == 4) {
        if (third.digits > 2) return std::nullopt;
        return dayOf(first.value, second.value, third.value);
    }
    const int century = third.digits == 4 ? 0 : third.value < 30 ? 2000 : 1900;
    const int year = century + third.value;
    const auto dayFirst = dayOf(year, second.value, first.value);
    const auto monthFirst = dayOf(year, first.value, second.value);
    if (order == DateOrder::DayFirst) return dayFirst ? dayFirst : monthFirst;
    return monthFirst ? monthFirst : dayFirst;
}

// "hh:mm" or "hh:mm:ss", as seconds of the day.
std::optional<int> takeTime(std::string_view& text) {
    std::array<Number, 3> part;
    for (std::size_t i = 0; i < part.size(); ++i) {
        if (i > 0 && !takeOneOf(text, ":")) {
            if (i == 2) break;
            return std::nullopt;
        }
        part[i] = takeNumber(text);
        if (part[i].digits < 1 || part[i].digits > 2 || part[i].value >= (i == 0 ? 24 : 60))
            return std::nullopt;
    }
    return (part[0].value * 60 + part[1].value) * 60 + part[2].value;
}

DateTime found(std::optional<DateTime> date) {
    if (!date) raise(ErrorNumber::TypeMismatch);
    return *date;
}

} // namespace

std::optional<DateTime> findDate(std::string_view text, DateOrder order) {
    skipBlanks(text);
    const auto day = takeDay(text, order);
    if (!day || text.empty()) return day;
    if (!takeOneOf(text, " ")) return std::nullopt;
    skipBlanks(text);
    if (text.empty()) return day;
    const auto time = takeTime(text);
    skipBlanks(text);
    if (!time || !text.empty()) return std::nullopt;
    return DateTime::ofSeconds(day->seconds() + *time);
}

DateTime readDate(std::string_view text) {
    return found(findDate(text, DateOrder::DayFirst));
}

DateTime readDateLiteral(std::string_view text) {
    return found(findDate(text, DateOrder::MonthFirst));
}

bool isDate(const Value& value) {
    if (value.isText()) return findDate(value.get<std::string>()).has_value();
    return value.kind() == Value::Kind::Date;
}

void appendDigits(std::string& out, int number, int width) {
    std::array<char, 12> digits;
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    const auto size = static_cast<int>(end - digits.data());
    if (size < width) out.append(static_cast<std::size_t>(width - size), '0');
    out.append(digits.data(), static_cast<std::size_t>(size));
}

void appendDate(std::string& out, DateTime date) {
    appendDigits(out, date.day(), 2);
    out += '/';
    appendDigits(out, date.month(), 2);
    out += '/';
    appendDigits(out, date.year(), 4);
    if (!date.hasTime()) return;
    out += ' ';
    appendDigits(out, date.hour(), 2);
    out += ':';
    appendDigits(out, date.minute(), 2);
    out += ':';
    appendDigits(out, date.second(), 2);
}

} // namespace veldona
