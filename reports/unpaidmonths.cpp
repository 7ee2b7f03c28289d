#include "reports/unpaidmonths.h"

#include <algorithm>
#include <cmath>

#include "platform/runtime/conversion.h"
#include "platform/runtime/error.h"

namespace veldona {

namespace {

using Movements = std::span<const Hareket>;

// Sums of fractions leave a residue in the last bits, which is no money.
StoredAmount net(StoredAmount sum) {
    constexpr int decimals = 4;
    const double column = sum.column();
    return column == std::nearbyint(column) ? sum : StoredAmount::ofColumn(roundHalfEven(column, decimals));
}

template <class Test> StoredAmount sumOf(Movements rows, const Test& test) {
    StoredAmount sum;
    for (const Hareket& row : rows)
        if (row.ODTRH && test(*row.ODTRH)) sum += row.ODMIKTAR;
    return net(sum);
}

StoredAmount upTo(Movements rows, DateTime son) {
    return sumOf(rows, [&](DateTime date) { return date <= son; });
}

struct Pencere {
    DateTime bas, son; // the second is outside
    [[nodiscard]] bool holds(DateTime date) const { return date >= bas && date < son; }
};

// From the first of the date's month to the first of the next.
Pencere monthOf(DateTime date) {
    const DateTime bas = DateTime::of(date.year(), date.month(), 1);
    return {bas, addMonths(bas, 1)};
}

const Hareket* firstOne(Movements rows, const Pencere& pencere) {
    const auto found = std::ranges::find_if(
        rows, [&](const Hareket& row) { return row.ODTRH && pencere.holds(*row.ODTRH); });
    return found == rows.end() ? nullptr : &*found;
}

struct Ends {
    std::optional<DateTime> ilk, son;
    void widen(Movements rows) {
        for (const Hareket& row : rows) {
            if (!row.ODTRH) continue;
            ilk = ilk ? std::min(*ilk, *row.ODTRH) : *row.ODTRH;
            son = son ? std::max(*son, *row.ODTRH) : *row.ODTRH;
        }
    }
};

} // namespace

bool paidInFull(StoredAmount topBorc, std::span<const Hareket> paid) {
    StoredAmount sum;
    for (const Hareket& row : paid)
        sum += row.ODMIKTAR;
    return topBorc.rounded() == sum.rounded();
}

std::vector<OpenMonth> openMonths(std::span<const Hareket> installments, std::span<const Hareket> paid) {
    Ends ends;
    ends.widen(installments);
    ends.widen(paid);
    std::vector<OpenMonth> months;
    if (!ends.ilk) return months;
    const int monthCount = toByte(monthsBetween(*ends.ilk, *ends.son));
    DateTime day = *ends.ilk;
    for (int i = 0; i <= monthCount; ++i, day = addMonths(day, 1)) {
        const StoredAmount wholeDebt = upTo(installments, day), payment = upTo(paid, day);
        if (wholeDebt == payment) break;
        if (payment > wholeDebt) continue;
        const Pencere ay = monthOf(day);
        const auto within = [&](DateTime date) { return ay.holds(date); };
        const StoredAmount monthsDebt = sumOf(installments, within), monthsPayment = sumOf(paid, within);
        if (monthsDebt == monthsPayment) continue;
        const Hareket* ilk = firstOne(installments, ay);
        if (!ilk) ilk = firstOne(paid, ay);
        months.push_back({*ilk->ODTRH, monthsDebt - monthsPayment});
    }
    return months;
}

} // namespace veldona
