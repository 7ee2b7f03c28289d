// A calendar day with a time of day, in whole seconds. No zone: the shop's wall clock.
#pragma once

#include <compare>
#include <cstdint>

namespace veldona {

inline constexpr std::int64_t kSecondsADay = 86'400;

class DateTime {
public:
    // Midnight of 30/12/1899, the platform's day zero.
    constexpr DateTime() = default;

    // Error 5 where year (100…9999), month, day or time is outside the calendar.
    [[nodiscard]] static DateTime of(int year, int month, int day, int hour = 0, int minute = 0,
                                     int second = 0);
    // False where the three are no calendar day.
    [[nodiscard]] static bool isDay(int year, int month, int day);
    // Seconds since day zero, negative before it.
    [[nodiscard]] static constexpr DateTime ofSeconds(std::int64_t seconds) {
        DateTime made;
        made.seconds_ = seconds;
        return made;
    }

    [[nodiscard]] constexpr std::int64_t seconds() const { return seconds_; }
    [[nodiscard]] int year() const;
    [[nodiscard]] int month() const;
    [[nodiscard]] int day() const;
    [[nodiscard]] int hour() const;
    [[nodiscard]] int minute() const;
    [[nodiscard]] int second() const;
    // The same day at midnight.
    [[nodiscard]] DateTime date() const;
    [[nodiscard]] bool hasTime() const { return date() != *this; }
    // `days` later, the time of day unchanged.
    [[nodiscard]] DateTime plusDays(int days) const;
    [[nodiscard]] constexpr DateTime plusSeconds(std::int64_t seconds) const {
        return ofSeconds(seconds_ + seconds);
    }

    friend constexpr auto operator<=>(DateTime, DateTime) = default;

private:
    std::int64_t seconds_ = 0;
};

// `months` calendar months later; a day that the month does not have becomes its last day. Error 5 past year
// 9999.
[[nodiscard]] DateTime addMonths(DateTime date, int months);
// The difference of the month numbers, days not looked at: 31 January to 1 February is 1.
[[nodiscard]] int monthsBetween(DateTime from, DateTime to);

} // namespace veldona
