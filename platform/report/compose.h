// Layout and data become a document: pages filled from top to bottom, page header and footer on each, table
// headers repeated behind a page break, totals at the end.
//
// Laying out reads nothing but its arguments: the same layout, data and moment give the same pages
// everywhere. Errors are ReportErrors that name the layout's file, also where the report would take more
// pages or memory than it may; error 18 where `goOn` says that it is given up.
#pragma once

#include <vector>

#include "platform/report/allowance.h"
#include "platform/report/fontmetrics.h"
#include "platform/report/layout.h"

namespace veldona::report {

[[nodiscard]] Document compose(const Layout& layout, std::vector<DataSet> data, DateTime now,
                               const GoOn& goOn = {}, const FontMetrics& metrics = builtInMetrics());

// A layout that is given its rows. The recordset stays where it stood.
[[nodiscard]] Document composeRows(const Layout& layout, const adodb::Recordset& rows, DateTime now,
                                   const GoOn& goOn = {});

// A template, which asks its own queries.
[[nodiscard]] Document composeTemplate(const Layout& layout, QueryRunner& queries, DateTime now,
                                       const GoOn& goOn = {});

} // namespace veldona::report
