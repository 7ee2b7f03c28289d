// What was due and what came in, month by month.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/runtime/datetime.h"
#include "platform/runtime/storedamount.h"

namespace veldona {

// Months counted from one far back, so that one is the next but one of another by subtraction.
[[nodiscard]] inline int monthNumber(DateTime day) {
    return day.year() * 12 + day.month() - 1;
}
// Of a stored date ("2026-11-22 …"), which is not read further; nothing where it is none.
[[nodiscard]] inline std::optional<int> monthNumber(std::string_view stored) {
    const auto number = [&](std::size_t from, std::size_t count) {
        int read = 0;
        const char* const end = stored.data() + from + count;
        const auto [stop, failed] = std::from_chars(stored.data() + from, end, read);
        return failed == std::errc{} && stop == end ? read : 0;
    };
    if (stored.size() < 7) return std::nullopt;
    const int year = number(0, 4), month = number(5, 2);
    if (year == 0 || month == 0) return std::nullopt;
    return year * 12 + month - 1;
}

class MonthSums {
public:
    struct Sums {
        StoredAmount due, received;
    };

    void add(std::string_view stored, StoredAmount Sums::*sum, StoredAmount amount) {
        if (const auto month = monthNumber(stored)) of(*month).*sum += amount;
    }
    // Zero where nothing was added.
    [[nodiscard]] Sums at(int month) const {
        const int place = month - first_;
        return place < 0 || place >= static_cast<int>(sums_.size()) ? Sums{}
                                                                    : sums_[static_cast<std::size_t>(place)];
    }

private:
    Sums& of(int month) {
        if (sums_.empty()) first_ = month;
        if (month < first_) {
            sums_.insert(sums_.begin(), static_cast<std::size_t>(first_ - month), Sums{});
            first_ = month;
        }
        const auto place = static_cast<std::size_t>(month - first_);
        if (place >= sums_.size()) sums_.resize(place + 1);
        return sums_[place];
    }

    int first_ = 0;
    std::vector<Sums> sums_;
};

} // namespace veldona
