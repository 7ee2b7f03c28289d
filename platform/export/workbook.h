// The workbook of the years from 1997 on (.xls): the report's rows on one sheet.
#pragma once

#include <string>

#include "platform/report/page.h"

namespace veldona::exports {

struct WorkbookChoices {
    bool formatted = true;  // bold headings, grouped amounts, dates as dates; else plain cells
    bool headings = true;   // a first row of the columns' names
    double columnWidth = 0; // letters; 0: as wide as each column needs
};

// Error 6 where the report has more rows than a sheet holds (65,536).
[[nodiscard]] std::string workbook(const report::Document& document, const WorkbookChoices& choices);

} // namespace veldona::exports
