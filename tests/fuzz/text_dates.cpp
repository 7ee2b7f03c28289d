#include "core/money.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/store/dialect/literal.h"
#include "tests/fuzz/fuzzing.h"
#include "tests/fuzz/text_parts.h"

namespace veldona::fuzz {
namespace {

void dateHolds(DateTime date, const std::string& mask) {
    require(date.year() >= 100 && date.year() <= 9999, "a year of the calendar");
    require(readDate(toText(date)) == date, "its own text: " + toText(date));
    require(DateTime::of(date.year(), date.month(), date.day(), date.hour(), date.minute(), date.second()) ==
                date,
            "its own parts: " + toText(date));
    const std::string stored = store::storedDate(date);
    require(store::dateOfStored(stored) == date, "as it is stored: " + stored);
    // A statement's literal is month first.
    const std::string sign = dateLiteral(date);
    require(readDateLiteral(sign.substr(1, sign.size() - 2)) == date.date(), "as a literal: " + sign);
    DateTime twice = date;
    TarihDuzelt(twice);
    require(twice.day() == date.day() || (date.day() <= 12 && twice.day() == date.month()),
            "only a day that may be a month is swapped: " + toText(date));
    TarihDuzelt(twice);
    require(twice == date.date() || twice == date, "swapped twice: " + toText(date));
    runs([&] { return static_cast<void>(format(date, mask)); });
    runs([&] {
        const DateTime next = addMonths(date, 1);
        require(monthsBetween(date, next) == 1, "a month later: " + toText(date));
        require(next.day() <= date.day(), "a month later, not later in the month: " + toText(date));
    });
}

} // namespace

void datesHold(const std::string& text, const std::string& mask) {
    const bool isRead = runs([&] { dateHolds(readDate(text), mask); });
    require(isRead == isDate(text), "a date is what reads as one: " + text);
    runs([&] { dateHolds(readDateLiteral(text), mask); });
    if (isRead)
        requireEqual(format(text, "dd/mm/yyyy hh:mm:ss"), format(readDate(text), "dd/mm/yyyy hh:mm:ss"),
                     "a date's text under a mask");
    else
        requireEqual(format(text, "dd/mm/yyyy"), text, "what is no date stays as it is");
}

} // namespace veldona::fuzz
