// The report's data as XML: every data set, its columns, its rows.
#pragma once

#include <string>
#include <vector>

#include "platform/report/page.h"

namespace veldona::exports {

// One text for the whole report, or one a data set. A report without data gives the lines of its pages. Dates
// and numbers are written as XML has them.
[[nodiscard]] std::vector<std::string> xmlData(const report::Document& document, bool oneForEach);

} // namespace veldona::exports
