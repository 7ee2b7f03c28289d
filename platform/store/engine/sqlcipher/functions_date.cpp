#include <cmath>
#include <iterator>

#include "platform/runtime/conversion.h"
#include "platform/runtime/datetime.h"
#include "platform/runtime/text.h"
#include "platform/store/dialect/literal.h"
#include "platform/store/engine/sqlcipher/functions_engine.h"

namespace veldona::store::sql {
namespace {

DateTime moved(DateTime date, double seconds) {
    if (!(std::abs(seconds) < 1e12)) raise(ErrorNumber::Overflow);
    const DateTime result = DateTime::ofSeconds(date.seconds() + std::llround(seconds));
    if (result < DateTime::of(100, 1, 1) || result > DateTime::of(9999, 12, 31, 23, 59, 59)) {
        raise(ErrorNumber::Overflow);
    }
    return result;
}

void answerDate(DateTime date, Answer& answer) {
    answer.text(storedDate(date));
}

void dateOf(const Arguments& arguments, Answer& answer) {
    try {
        answerDate(arguments.date(0), answer);
    } catch (const RuntimeError&) {
        const std::string shown = left(validUtf8(arguments.text(0)), 60);
        answer.fail("Veri türü uyuşmuyor: \"" + shown + "\" tarih olarak okunamadı.");
    }
}

// "dd/MM/yyyy", and the time where it is not midnight; cut out of the stored text without reading it as a
// date.
void textOfDate(const Arguments& arguments, Answer& answer) {
    const std::string_view stored = arguments.text(0);
    if (!dateOfStored(stored)) return answer.text(stored);
    std::string shown;
    shown.append(stored.substr(8, 2))
        .append("/")
        .append(stored.substr(5, 2))
        .append("/")
        .append(stored.substr(0, 4));
    if (stored.substr(11) != "00:00:00") shown.append(stored.substr(10));
    answer.text(shown);
}

void days(const Arguments& arguments, Answer& answer) {
    answer.number(static_cast<double>(arguments.date(0).seconds()) / static_cast<double>(kSecondsADay));
}

void addDays(const Arguments& arguments, Answer& answer) {
    answerDate(moved(arguments.date(0), arguments.number(1) * static_cast<double>(kSecondsADay)), answer);
}

template <int (DateTime::*part)() const> void partOf(const Arguments& arguments, Answer& answer) {
    answer.whole((arguments.date(0).*part)());
}

void dayOnly(const Arguments& arguments, Answer& answer) {
    answerDate(arguments.date(0).date(), answer);
}

enum class Unit { Year, Quarter, Month, Week, Day, Hour, Minute, Second };

Unit unitOf(std::string_view name) {
    const std::string unit = lowerTurkish(name);
    if (unit == "yyyy") return Unit::Year;
    if (unit == "q") return Unit::Quarter;
    if (unit == "m") return Unit::Month;
    if (unit == "ww") return Unit::Week;
    if (unit == "d" || unit == "y" || unit == "w") return Unit::Day;
    if (unit == "h") return Unit::Hour;
    if (unit == "n") return Unit::Minute;
    if (unit == "s") return Unit::Second;
    raise(ErrorNumber::InvalidCall);
}

int monthsIn(Unit unit) {
    return unit == Unit::Year ? 12 : unit == Unit::Quarter ? 3 : unit == Unit::Month ? 1 : 0;
}

std::int64_t secondsIn(Unit unit) {
    switch (unit) {
    case Unit::Week:
        return 7 * kSecondsADay;
    case Unit::Day:
        return kSecondsADay;
    case Unit::Hour:
        return 3600;
    case Unit::Minute:
        return 60;
    default:
        return 1;
    }
}

void dateAdd(const Arguments& arguments, Answer& answer) {
    const Unit unit = unitOf(arguments.text(0));
    const int count = arguments.whole(1);
    const DateTime date = arguments.date(2);
    if (monthsIn(unit) == 0) {
        return answerDate(moved(date, static_cast<double>(count) * static_cast<double>(secondsIn(unit))),
                          answer);
    }
    constexpr int kMostMonths = 200000; // past every calendar, and safe to multiply
    if (count > kMostMonths || count < -kMostMonths) raise(ErrorNumber::InvalidCall);
    answerDate(addMonths(date, count * monthsIn(unit)), answer);
}

std::int64_t floored(std::int64_t number, std::int64_t by) {
    return number / by - (number % by < 0 ? 1 : 0);
}

// Borders passed, not time gone by: 23:59 to 00:01 is a day.
std::int64_t difference(Unit unit, DateTime from, DateTime to) {
    switch (unit) {
    case Unit::Year:
        return to.year() - from.year();
    case Unit::Quarter:
        return (to.year() - from.year()) * 4 + (to.month() - 1) / 3 - (from.month() - 1) / 3;
    case Unit::Month:
        return monthsBetween(from, to);
    case Unit::Week: // day zero is a Saturday, and a week begins on Sunday
        return floored(floored(to.seconds(), kSecondsADay) - 1, 7) -
               floored(floored(from.seconds(), kSecondsADay) - 1, 7);
    default:
        return floored(to.seconds(), secondsIn(unit)) - floored(from.seconds(), secondsIn(unit));
    }
}

void dateDiff(const Arguments& arguments, Answer& answer) {
    answer.whole(difference(unitOf(arguments.text(0)), arguments.date(1), arguments.date(2)));
}

// Months and days outside the calendar run on: month 13 is January of the year behind.
void dateSerial(const Arguments& arguments, Answer& answer) {
    const int months = arguments.whole(1), days = arguments.whole(2);
    constexpr int kMostMonths = 200000;
    if (months > kMostMonths || months < -kMostMonths) raise(ErrorNumber::InvalidCall);
    const DateTime first = addMonths(DateTime::of(arguments.whole(0), 1, 1), months - 1);
    answerDate(moved(first, (static_cast<double>(days) - 1) * static_cast<double>(kSecondsADay)), answer);
}

} // namespace

void registerDateFunctions(sqlite3* connection) {
    constexpr Registered kFunctions[] = {
        {"vd_date", 1, run<dateOf>},
        {"vd_date_text", 1, run<textOfDate>},
        {"vd_days", 1, run<days>},
        {"vd_adddays", 2, run<addDays>},
        {"vd_year", 1, run<partOf<&DateTime::year>>},
        {"vd_month", 1, run<partOf<&DateTime::month>>},
        {"vd_day", 1, run<partOf<&DateTime::day>>},
        {"vd_hour", 1, run<partOf<&DateTime::hour>>},
        {"vd_minute", 1, run<partOf<&DateTime::minute>>},
        {"vd_second", 1, run<partOf<&DateTime::second>>},
        {"vd_dateadd", 3, run<dateAdd>},
        {"vd_datediff", 3, run<dateDiff>},
        {"vd_dateserial", 3, run<dateSerial>},
        {"vd_datevalue", 1, run<dayOnly>},
    };
    registerAll(connection, kFunctions, std::size(kFunctions));
}

} // namespace veldona::store::sql
