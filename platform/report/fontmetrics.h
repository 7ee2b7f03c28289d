// How wide a text is, asked for by the layout and answered without a window.
//
// Every report is laid out by the same built-in widths, so that the pages are the same on screen, on paper,
// in a PDF and in a test. A window with another font may bring its own.
#pragma once

#include <string_view>

namespace veldona::report {

inline constexpr double kMillimetresPerPoint = 25.4 / 72;

class FontMetrics {
public:
    virtual ~FontMetrics() = default;
    // Millimetres of a UTF-8 text.
    [[nodiscard]] virtual double width(std::string_view text, double points, bool bold) const = 0;
    // Millimetres from the top of a line to where the letters stand, and to the next line.
    [[nodiscard]] virtual double ascent(double points) const = 0;
    [[nodiscard]] virtual double lineHeight(double points) const = 0;
};

// Liberation Sans, whose widths are those of Arial: measured on the font's own tables, for the letters of
// Latin and Turkish text. Other characters count as wide as a digit, combining marks as nothing.
[[nodiscard]] const FontMetrics& builtInMetrics();

} // namespace veldona::report
