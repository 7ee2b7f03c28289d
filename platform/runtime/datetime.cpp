#include "platform/runtime/datetime.h"

#include <chrono>

#include "platform/runtime/error.h"

namespace veldona {

namespace {

using std::chrono::day;
using std::chrono::days;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

constexpr sys_days dayZero = year{1899} / month{12} / day{30};
constexpr int firstYear = 100;
constexpr int lastYear = 9999;

// Days since day zero; a moment before midnight of a day belongs to the day before, also before day zero.
std::int64_t dayNumber(std::int64_t seconds) {
    return seconds >= 0 ? seconds / kSecondsADay : -((-seconds + kSecondsADay - 1) / kSecondsADay);
}

int secondOfDay(std::int64_t seconds) {
    return static_cast<int>(seconds - dayNumber(seconds) * kSecondsADay);
}

year_month_day calendar(std::int64_t seconds) {
    return year_month_day{dayZero + days{static_cast<int>(dayNumber(seconds))}};
}

year_month_day calendarDay(int yearNumber, int monthNumber, int dayNumber) {
    return year{yearNumber} / month{static_cast<unsigned>(monthNumber)} /
           day{static_cast<unsigned>(dayNumber)};
}

std::int64_t secondsOf(const year_month_day& date) {
    return std::int64_t{(sys_days{date} - dayZero).count()} * kSecondsADay;
}

} // namespace

bool DateTime::isDay(int year, int month, int day) {
    return year >= firstYear && year <= lastYear && month >= 1 && month <= 12 && day >= 1 && day <= 31 &&
           calendarDay(year, month, day).ok();
}

DateTime DateTime::of(int year, int month, int day, int hour, int minute, int second) {
    const bool isTime = hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
    if (!isTime || !isDay(year, month, day)) raise(ErrorNumber::InvalidCall);
    return ofSeconds(secondsOf(calendarDay(year, month, day)) + (std::int64_t{hour} * 60 + minute) * 60 +
                     second);
}

int DateTime::year() const {
    return static_cast<int>(calendar(seconds_).year());
}

int DateTime::month() const {
    return static_cast<int>(static_cast<unsigned>(calendar(seconds_).month()));
}

int DateTime::day() const {
    return static_cast<int>(static_cast<unsigned>(calendar(seconds_).day()));
}

int DateTime::hour() const {
    return secondOfDay(seconds_) / 3600;
}

int DateTime::minute() const {
    return secondOfDay(seconds_) / 60 % 60;
}

int DateTime::second() const {
    return secondOfDay(seconds_) % 60;
}

DateTime DateTime::date() const {
    return ofSeconds(seconds_ - secondOfDay(seconds_));
}

DateTime DateTime::plusDays(int days) const {
    const DateTime later = ofSeconds(seconds_ + days * kSecondsADay);
    if (later < of(firstYear, 1, 1) || later > of(lastYear, 12, 31, 23, 59, 59))
        raise(ErrorNumber::InvalidCall);
    return later;
}

DateTime addMonths(DateTime date, int months) {
    const std::int64_t counted = std::int64_t{date.year()} * 12 + date.month() - 1 + months;
    if (counted < std::int64_t{firstYear} * 12 || counted >= std::int64_t{lastYear + 1} * 12)
        raise(ErrorNumber::InvalidCall);
    const auto yearNumber = static_cast<int>(counted / 12);
    const auto monthNumber = static_cast<int>(counted % 12) + 1;
    int dayNumber = date.day();
    while (!DateTime::isDay(yearNumber, monthNumber, dayNumber))
        --dayNumber;
    const DateTime day = DateTime::of(yearNumber, monthNumber, dayNumber);
    return DateTime::ofSeconds(day.seconds() + date.seconds() - date.date().seconds());
}

int monthsBetween(DateTime from, DateTime to) {
    return (to.year() - from.year()) * 12 + to.month() - from.month();
}

} // namespace veldona
