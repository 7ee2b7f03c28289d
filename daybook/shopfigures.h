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

// The last one is the month of today. Raises what the store raises, as the next one does.
[[nodiscard]] std::vector<MonthFigures> readMonths(adodb::Connection& books, DateTime today, int months);

// What is overdue of the customers, as in the call list.
[[nodiscard]] AgeGroups readAges(adodb::Connection& books, DateTime today);

} // namespace veldona
