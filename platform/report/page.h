// A report laid out: pages of positioned texts, lines and boxes, and the rows that it was made from.
//
// All lengths are millimetres from the page's top left corner, font sizes are points. The items of a page are
// painted in their order. Nothing here knows a toolkit: the window, the printer and the PDF writer paint the
// same pages, text search and text export read them, the data exports read the rows.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "platform/report/rows.h"

namespace veldona::report {

enum class Align { Left, Center, Right };

struct Color {
    std::uint8_t red = 0, green = 0, blue = 0;
    friend bool operator==(const Color&, const Color&) = default;
};

// The part of the report that a text was printed by. A table's header and footer are those of its group. In
// the order in which the export panel lists them.
enum class Area { Detail, GroupFooter, GroupHeader, PageFooter, PageHeader, ReportFooter, ReportHeader };

// One line of text. It fits its box, by the widths of Liberation Sans; a painter whose font is a little wider
// keeps to the side that `align` names.
struct TextRun {
    double x = 0, y = 0, width = 0, height = 0;
    double baseline = 0; // where the letters stand
    std::string text;
    double size = 9;
    bool bold = false;
    Align align = Align::Left;
    Color color;
    Area area = Area::Detail;
    int table = 0; // which of the report's tables it belongs to, from 1; 0: none
};

struct Line {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    double thickness = 0.2;
    Color color;
};

struct Box {
    double x = 0, y = 0, width = 0, height = 0;
    double thickness = 0.2; // 0: no border
    Color color;
    bool filled = false;
    Color fill;
};

using Item = std::variant<TextRun, Line, Box>;

struct Page {
    std::vector<Item> items;
};

struct Document {
    std::string title;
    double pageWidth = 210, pageHeight = 297;
    std::vector<Page> pages;   // one at least
    std::vector<DataSet> data; // what the tables show comes first, in their order
    std::string fileName{};    // what a file of it is called, without its ending; empty: the title
};

} // namespace veldona::report
