// The workbook of the years from 1997 on (.xls).
#pragma once

#include <string>

#include "platform/export/sheets.h"
#include "platform/report/page.h"

namespace veldona::exports {

// A sheet a data set, or one of the pages' lines. Error 6 where one has more rows than a sheet holds
// (65,536), 5 where the report has nothing of the part that was chosen.
[[nodiscard]] std::string workbook(const report::Document& document, const WorkbookChoices& choices);

} // namespace veldona::exports
