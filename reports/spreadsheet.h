// The spreadsheet of unpaid amounts, sale by sale and month by month: button EXCEL of the two report screens.
//
// It is written below the program's folder in \aktar\MSExcel and then opened for the operator. Leaving the
// screen (Esc) while it runs gives it up; then, and where it fails, there is no file, since half a list looks
// like a whole one.
#pragma once

#include "reports/reportrange.h"

namespace veldona {

void cmdExcel_Click(ReportRange& range);

} // namespace veldona
