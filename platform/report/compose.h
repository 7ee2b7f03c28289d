// Layout and data become a document: pages filled from top to bottom, page header and footer on each, table
// headers repeated behind a page break, totals at the end.
//
// Laying out reads nothing but its arguments: the same layout, data and moment give the same pages
// everywhere. Errors are ReportErrors that name the layout's file, also where the report would take more
// pages or memory than it may; error 18 where `goOn` says that it is given up.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/report/allowance.h"
#include "platform/report/fontmetrics.h"
#include "platform/report/layout.h"

namespace veldona::report {

[[nodiscard]] Document compose(const Layout& layout, std::vector<DataSet> data, DateTime now,
                               const GoOn& goOn = {}, const FontMetrics& metrics = builtInMetrics());

// What the text of this name in a detail says, row by row and each in one piece: a message has no page.
// Empty where the layout has no such text, as a shop may have taken it out.
[[nodiscard]] std::vector<std::string> composeTexts(const Layout& layout, const std::vector<DataSet>& data,
                                                    std::string_view name, DateTime now);

// A template, which asks its own queries.
[[nodiscard]] Document composeTemplate(const Layout& layout, QueryRunner& queries, DateTime now,
                                       const GoOn& goOn = {});

} // namespace veldona::report
