// The shop in figures: month by month what was due, what came in and what was sold; what is overdue, by age.
#pragma once

#include <vector>

#include "daybook/agegroups.h"

namespace veldona {

struct MonthFigures {
    DateTime first;        // its first day
    StoredAmount due;      // of the whole month, down payments included
    StoredAmount received; // payments of whatever installment, down payments included
    StoredAmount sold;     // the lines, before a discount
    int sales = 0;
};

struct ShopFigures {
    std::vector<MonthFigures> months; // the last one is that of today
    AgeGroups ages;                   // of the customers, as in the call list
};

// Raises what the store raises.
[[nodiscard]] ShopFigures readFigures(adodb::Connection& books, DateTime today, int months);

} // namespace veldona
