// A report's layout as its file describes it: sections of texts, lines and boxes, and the queries it brings.
//
// Made by readLayout (layoutreader.h) only, which has checked it: every element lies within its section and
// its section within the page, every named query exists. Lengths are millimetres from the section's top left
// corner, which stands at the left margin.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/report/chart.h"
#include "platform/report/page.h"

namespace veldona::report {

struct Place {
    double x = 0, y = 0, width = 0, height = 0;
    [[nodiscard]] double right() const { return x + width; }
    [[nodiscard]] double bottom() const { return y + height; }
};

// Query and column: "firma.ADRES". Without a query it is the one of the section or table around it, and
// without that the rows that the caller handed over.
struct ColumnRef {
    std::string query;
    std::string column;
};

// A part of a shown text.
struct Piece {
    enum class Kind { Words, Column, Sum, PageNumber, PageCount, Date, Time, RowNumber };
    Kind kind = Kind::Words;
    std::string words;
    ColumnRef from; // of a column or a sum
    std::string mask;
};

struct TextElement {
    std::string name; // may be empty
    Place place;
    double size = 9;
    bool bold = false;
    bool wraps = false; // grows downward, and pushes down what stands below it
    Align align = Align::Left;
    Color color;
    std::vector<Piece> pieces;
    int line = 0; // of the file
};

struct LineElement {
    Place place; // from its top left to its bottom right corner
    double thickness = 0.2;
    Color color;
    int line = 0;
};

struct BoxElement {
    Place place;
    double thickness = 0.2;
    Color color;
    std::optional<Color> fill;
    int line = 0;
};

// Where the program draws a chart: the one that it has for this name.
struct ChartElement {
    std::string name;
    Place place;
    double size = 9; // of its letters
    Chart chart;
    int line = 0;
};

// Painted in this order: boxes, lines, charts, texts.
struct Section {
    std::string name;
    std::string query;
    double height = 0;
    std::optional<Color> stripe; // behind every second row of a detail
    std::vector<BoxElement> boxes;
    std::vector<LineElement> lines;
    std::vector<ChartElement> charts;
    std::vector<TextElement> texts;
    int line = 0;
};

// The detail once a row, below a header that every page repeats.
struct Table {
    double x = 0;
    std::string query;
    std::optional<Section> header;
    Section detail;
    std::optional<Section> footer;
    bool hidesWhenEmpty = false; // header and footer too, where there is no row
};

using SideBySide = std::vector<Table>; // a table alone is a SideBySide of one
using Part = std::variant<Section, SideBySide>;

// Its parts once for each row of its query. Within it every set of rows that has the key's column holds those
// of the row's key alone, the query itself that one row; the others are whole.
struct Group {
    std::string query;
    std::string key;
    bool startsPage = false; // each row but the first on a page of its own
    double room = 0;         // a row begins on the next page where less is left
    std::vector<Part> parts;
    int line = 0;
};

using Block = std::variant<Section, SideBySide, Group>;

// Every band and every table of a body, those of groups among them, in their order.
template <class Body, class OnBand, class OnTable>
void eachPart(Body& body, const OnBand& onBand, const OnTable& onTable) {
    const auto visit = [&](auto& part) {
        if (auto* band = std::get_if<Section>(&part)) onBand(*band);
        if (auto* side = std::get_if<SideBySide>(&part))
            for (auto& table : *side)
                onTable(table);
    };
    for (auto& block : body) {
        visit(block);
        if (auto* group = std::get_if<Group>(&block))
            for (auto& part : group->parts)
                visit(part);
    }
}

struct Query {
    std::string name;
    std::string sql;     // empty: the program hands its rows over
    std::string heading; // of its rows in an export; may be empty
    int line = 0;
};

struct Margins {
    double left = 15, top = 12, right = 15, bottom = 12;
};

struct Layout {
    std::string file; // for messages
    std::string title;
    std::string fileName; // of what is laid out by it; empty: the title
    double pageWidth = 210, pageHeight = 297;
    Margins margins;
    std::vector<Query> queries;
    std::optional<Section> reportHeader, pageHeader, pageFooter, reportFooter;
    std::vector<Block> body;

    // Puts a text in the place of the layout's own, as it stands: no sign in it means anything. False where
    // the layout has no such element, as a shop may have taken it out.
    bool setText(std::string_view section, std::string_view name, std::string text);
    // Gives the chart to the places of its name. False where the layout has none, as a shop may have taken it
    // out.
    bool setChart(std::string_view name, const Chart& chart);
    // Every text of every section.
    [[nodiscard]] std::vector<TextElement*> texts();
    // Puts a statement in the place of the layout's own. False where there is no such query.
    bool setQuery(std::string_view name, std::string sql);
};

} // namespace veldona::report
