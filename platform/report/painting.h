// One section with one row of data as items, its top left corner at the origin.
#pragma once

#include <vector>

#include "platform/report/allowance.h"
#include "platform/report/binding.h"
#include "platform/report/fontmetrics.h"

namespace veldona::report {

struct Moment {
    DateTime now;
    std::size_t row = 0; // of the section's data
    std::size_t page = 0, pageCount = 0;
};

struct Painted {
    std::vector<Item> items;
    double height = 0;
};

// Wrapped texts grow downward: what stands below such a text moves down, lines and boxes that reach past it
// are drawn out, and the section becomes taller.
// What it makes is taken from the allowance.
[[nodiscard]] Painted paint(const BoundSection& section, const Moment& moment, const FontMetrics& metrics,
                            Allowance& allowance);

// What one of its texts says, as long as it is.
[[nodiscard]] std::string shownText(const BoundSection& section, const BoundText& text, const Moment& moment,
                                    Allowance& allowance);

void moveItem(Item& item, double x, double y);

// For a section that is taller than the page: keeps in `upper` what fits into `room` millimetres and returns
// the rest. Texts are cut between two lines.
[[nodiscard]] Painted cutAt(Painted& upper, double room);

} // namespace veldona::report
