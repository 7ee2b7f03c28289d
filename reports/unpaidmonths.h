// The months of one sale in which due and paid differ: the walk of the spreadsheet.
//
// The walk goes from the earliest date of schedule and payments to the latest, a month a step. The limit that
// the operator chooses only decides whether a sale is walked at all.
#pragma once

#include <span>
#include <vector>

#include "reports/saleaccounts.h"

namespace veldona {

struct OpenMonth {
    DateTime ODTRH;     // of the month's first schedule row, else of its first payment
    StoredAmount kalan; // due less paid in that month; negative where more was paid
};

// True where debt and payments are the same number of whole stored units.
[[nodiscard]] bool paidInFull(StoredAmount topBorc, std::span<const Hareket> paid);

// Error 6 where the dates lie more than 255 months apart.
[[nodiscard]] std::vector<OpenMonth> openMonths(std::span<const Hareket> installments,
                                                std::span<const Hareket> paid);

} // namespace veldona
