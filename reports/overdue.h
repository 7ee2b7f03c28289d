// How much of each open sale should have come in by a day and has not.
//
// With one day, everything up to and with it counts; with two, only schedule rows and payments from the first
// up to, and not with, the second. The customer's cheques come off every one of his sales, as stored.
#pragma once

#include "reports/receivablesscreen.h"

namespace veldona {

void overdueReport(ReportScreen& f);

} // namespace veldona
