// What a report does with its data, noted at the data for whoever exports it.
#pragma once

#include <vector>

#include "platform/report/layout.h"

namespace veldona::report {

// The sets under their headings, in the order of the tables that show them, those of no table behind them;
// the columns whose sums the report shows are marked.
void describeData(std::vector<DataSet>& data, const Layout& layout);

} // namespace veldona::report
