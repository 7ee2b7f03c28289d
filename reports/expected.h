// How much is expected to come in during a period: on each sale the smaller of what falls due in it and what
// is still unpaid up to its end. Both days belong to it.
//
// Older arrears do not add to it. A sale with nothing due in the period does not show.
#pragma once

#include "reports/receivablesscreen.h"

namespace veldona {

void expectedReport(ReportScreen& f);

} // namespace veldona
