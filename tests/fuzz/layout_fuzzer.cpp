// A report's layout as a shop may have edited it, with rows: it is refused in words, or it gives pages on
// which everything stands inside. Behind a line "@@@" the input may bring cells, parted by "|", that the rows
// are made of.
#include <cmath>
#include <set>

#include "platform/export/ownform.h"
#include "platform/report/compose.h"
#include "platform/report/layoutreader.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/text.h"
#include "tests/fuzz/fuzzing.h"

namespace veldona::fuzz {
namespace {

using namespace report;

constexpr std::size_t kLongest = 12'000;
constexpr std::size_t kRows = 30;
constexpr double kTolerance = 0.02; // millimetres
constexpr std::string_view kCells = "Ayşe|1.234,50|<&>\"'|%p {AD|7|uzun bir adres, bir satıra sığmayan; "
                                    "Atatürk Mahallesi, İstiklâl Caddesi 1907/5|"
                                    "\xF0\x9F\x98\x80\xE2\x80\xAE|\xFF\xC3|a\nb\r\nc\td|";

std::vector<Value> cellsOf(std::string_view text) {
    std::vector<Value> cells{Null{}, Value(12.5), Value(7), Value(DateTime::of(2026, 11, 22, 10, 30))};
    while (!text.empty()) {
        const Halves halves = cutAt(text, "|");
        cells.emplace_back(halves.first);
        text.remove_prefix(std::min(text.size(), halves.first.size() + 1));
    }
    return cells;
}

void addColumns(const Section& section, std::set<std::string>& names) {
    for (const TextElement& text : section.texts)
        for (const Piece& piece : text.pieces)
            if (!piece.from.column.empty()) names.insert(piece.from.column);
}

std::set<std::string> columnsOf(const Layout& layout) {
    std::set<std::string> names{"ID"};
    for (const auto* section :
         {&layout.reportHeader, &layout.pageHeader, &layout.pageFooter, &layout.reportFooter})
        if (*section) addColumns(**section, names);
    eachPart(
        layout.body, [&](const Section& band) { addColumns(band, names); },
        [&](const Table& table) {
            if (table.header) addColumns(*table.header, names);
            addColumns(table.detail, names);
            if (table.footer) addColumns(*table.footer, names);
        });
    for (const Block& block : layout.body)
        if (const auto* group = std::get_if<Group>(&block)) names.insert(group->key);
    return names;
}

DataSet rowsFor(const std::string& query, const std::set<std::string>& columns,
                const std::vector<Value>& cells) {
    DataSet data;
    data.name = query;
    for (const std::string& column : columns)
        data.columns.push_back({column, 202});
    std::size_t next = query.size();
    for (std::size_t row = 0; row < kRows; ++row)
        for (const std::string& column : columns)
            data.cells.push_back(cells[(next++ + column.size()) % cells.size()]);
    return data;
}

void requireInside(const Document& document, double left, double top, double right, double bottom) {
    for (const double each : {left, top, right, bottom})
        require(std::isfinite(each), "a place that is no number");
    require(left >= -kTolerance && top >= -kTolerance, "off the page, above or at the left");
    require(right <= document.pageWidth + kTolerance, "off the page at the right: " + std::to_string(right));
    require(bottom <= document.pageHeight + kTolerance, "off the page below: " + std::to_string(bottom));
}

void pagesHold(const Document& document) {
    require(!document.pages.empty(), "one page at least");
    require(document.pages.size() <= 2000, "rows without end");
    for (const Page& page : document.pages)
        for (const Item& item : page.items) {
            if (const auto* run = std::get_if<TextRun>(&item)) {
                requireInside(document, run->x, run->y, run->x + run->width, run->y + run->height);
                require(std::isfinite(run->baseline) && run->size > 0, "letters that cannot be set");
                require(run->text.find('\n') == std::string::npos, "a line end inside a line");
            } else if (const auto* line = std::get_if<Line>(&item)) {
                requireInside(document, line->x1, line->y1, line->x2, line->y2);
            } else {
                const Box& box = std::get<Box>(item);
                requireInside(document, box.x, box.y, box.x + box.width, box.y + box.height);
            }
        }
}

// The first text of the pages is found by a search.
void searchHolds(const Document& document) {
    for (const Page& page : document.pages)
        for (const Item& item : page.items)
            if (const auto* run = std::get_if<TextRun>(&item)) {
                const std::string word = trim(run->text);
                if (!word.empty() && validUtf8(word) == word)
                    require(findText(document, word).has_value(), "a printed text is found: " + word);
                return;
            }
}

// Written in the form of a layout file, the pages come out of it again.
void ownFormHolds(const Document& document) {
    std::string written;
    if (!runs([&] { written = exports::ownForm(document); })) return; // too long for a layout file
    const Document again = compose(parseLayout(written, "again"), {}, DateTime::of(2026, 11, 22));
    require(again.pages.size() == document.pages.size(), "as many pages as were written");
}

void layoutHolds(const std::string& xml, std::string_view cells) {
    const Layout layout = parseLayout(xml, "düzen.xml");
    const std::set<std::string> columns = columnsOf(layout);
    const std::vector<Value> pool = cellsOf(cells.empty() ? kCells : cells);
    std::vector<DataSet> data;
    for (const Query& query : layout.queries)
        data.push_back(rowsFor(query.name, columns, pool));
    if (layout.queries.empty()) data.push_back(rowsFor({}, columns, pool));
    const DateTime now = DateTime::of(2026, 11, 22, 10, 30);
    const Document document = compose(layout, data, now);
    pagesHold(document);
    searchHolds(document);
    ownFormHolds(document);
    const Document again = compose(layout, std::move(data), now);
    requireEqual(documentText(again), documentText(document), "the same pages a second time");
}

} // namespace
} // namespace veldona::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldona::fuzz;
    if (size > kLongest) return 0;
    const auto [xml, cells] = cutAt({reinterpret_cast<const char*>(data), size}, "\n@@@\n");
    runs([&xml = xml, &cells = cells] { layoutHolds(xml, cells); });
    return 0;
}
