// How long an installment is overdue, in the four groups by which a shop looks at what it is owed.
#pragma once

#include <array>
#include <optional>

#include "daybook/arrears.h"

namespace veldona {

[[nodiscard]] inline int daysBetween(DateTime from, DateTime to) {
    return static_cast<int>((to.date().seconds() - from.date().seconds()) / kSecondsADay);
}

struct AgeGroups {
    struct Group {
        const char* name;
        int lastDay; // the last one has no end
    };
    static constexpr std::array<Group, 4> kAll = {
        {{"1–30 gün", 30}, {"31–60 gün", 60}, {"61–90 gün", 90}, {"90+ gün", 0}}};

    // Its place in kAll; nothing where the day has not passed yet.
    [[nodiscard]] static std::optional<std::size_t> of(DateTime due, DateTime today);

    std::array<StoredAmount, kAll.size()> sums;
    std::array<int, kAll.size()> counts{};

    // False where it is not overdue, and counts nowhere.
    bool add(const OpenInstallment& row, DateTime today);
    [[nodiscard]] StoredAmount total() const;
};

} // namespace veldona
