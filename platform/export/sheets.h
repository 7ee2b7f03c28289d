// What the sheets of a workbook hold, by the choices of the export panel.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/report/page.h"

namespace veldona::exports {

struct WorkbookChoices {
    bool formatted = true;              // bold headings, grouped amounts, dates as dates; else plain cells
    bool headings = true;               // a first row of the columns' names
    double columnWidth = 0;             // letters; 0: as wide as each column needs
    std::optional<report::Area> area{}; // this part of the report alone
    int group = 0;                      // this one of the report's tables alone, from 1
    bool tabular = true;                // a row a record; else a row a line of the pages
    bool functions = false;             // a total is a formula over its column; else a number
};

struct SheetRows {
    std::string name; // of one workbook each another one, as a sheet can be called
    report::DataSet rows;
    bool headings = true;
    bool totals = false; // a last row of the sums that the report shows
};

// One at least. Error 5 where the report has nothing of the part that was chosen.
[[nodiscard]] std::vector<SheetRows> sheetsOf(const report::Document& document,
                                              const WorkbookChoices& choices);

} // namespace veldona::exports
