#include "daybook/agegroups.h"

namespace veldona {

std::optional<std::size_t> AgeGroups::of(DateTime due, DateTime today) {
    const int days = daysBetween(due, today);
    if (days < 1) return std::nullopt;
    std::size_t group = 0;
    while (group + 1 < kAll.size() && days > kAll[group].lastDay)
        ++group;
    return group;
}

bool AgeGroups::add(const OpenInstallment& row, DateTime today) {
    const auto group = of(row.due, today);
    if (!group) return false;
    sums[*group] += row.open;
    ++counts[*group];
    return true;
}

StoredAmount AgeGroups::total() const {
    StoredAmount sum;
    for (const StoredAmount each : sums)
        sum += each;
    return sum;
}

} // namespace veldona
