// A chart as the items of a page: the same on the screen, on paper and in a PDF.
//
// Readable without colour: each series has a filling of its own, named in the legend; values stand over their
// bars where all of them have room.
#pragma once

#include <vector>

#include "platform/report/fontmetrics.h"
#include "platform/report/layout.h"

namespace veldona::report {

// Within `place`, whose corner counts from that of the page, section or window; letters of `points`. Where
// there is no room for bars the title stands alone.
[[nodiscard]] std::vector<Item> drawChart(const Chart& chart, const Place& place, double points,
                                          const FontMetrics& metrics = builtInMetrics());

} // namespace veldona::report
