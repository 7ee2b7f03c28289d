// A text made to fit the width of its box: wrapped into lines, or cut with "…" behind it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/report/fontmetrics.h"

namespace veldona::report {

struct Font {
    const FontMetrics& metrics;
    double points;
    bool bold;
    [[nodiscard]] double width(std::string_view text) const { return metrics.width(text, points, bold); }
};

// At blanks; a word that is longer than a line is broken where the line ends. Line ends of the text stay,
// blanks at the end of a line go, those inside it stay. One line at least; what stands behind `most` lines is
// left out.
[[nodiscard]] std::vector<std::string> wrapped(std::string_view text, const Font& font, double width,
                                               std::size_t most = std::string::npos);

// In one line, cut where it is too long. Line ends become blanks.
[[nodiscard]] std::string clipped(std::string_view text, const Font& font, double width);

} // namespace veldona::report
