// Rows with hostile texts into every export: each file stays one of its format, with as many rows and cells
// as there are, and the texts come out of it as they went in. The input's first line is the title, each other
// one a row, its cells parted by "|"; "=" begins a number, "@" a date, "~" is an empty cell, and U+001E a
// line end inside a text.
#include <algorithm>
#include <utility>

#include <pugixml.hpp>

#include "platform/export/cells.h"
#include "platform/export/delimited.h"
#include "platform/export/hypertext.h"
#include "platform/export/ownform.h"
#include "platform/export/richtext.h"
#include "platform/export/workbook.h"
#include "platform/export/xmldata.h"
#include "platform/report/compose.h"
#include "platform/report/layoutreader.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/runtime/unicode.h"
#include "tests/fuzz/export_readers.h"
#include "tests/fuzz/fuzzing.h"

namespace veldona::fuzz {
namespace {

using report::DataSet;
using report::Document;
using report::TextRun;

constexpr std::size_t kLongest = 20'000;
constexpr std::size_t kColumns = 4;
constexpr const char* kLayout = R"(<report title="x">
<pageHeader height="6"><label x="0" y="0" width="60" text="%D {A}"/></pageHeader>
<detail height="6"><field x="0" y="0" width="30" column="A" wrap="yes"/>
<field x="32" y="0" width="40" column="B"/>
<field x="75" y="0" width="40" column="C" bold="yes" align="right" format="#.##0,00"/>
<field x="120" y="0" width="40" column="D" size="12" align="center"/></detail></report>)";

Value cellOf(std::string text) {
    std::ranges::replace(text, '\x1E', '\n');
    if (text.starts_with('=')) return val(text.substr(1));
    if (text.starts_with('@') && isDate(text.substr(1))) return readDate(text.substr(1));
    if (text == "~") return Null{};
    return text;
}

DataSet rowsOf(std::string_view text) {
    DataSet data;
    for (const char* name : {"A", "B", "C", "D"})
        data.columns.push_back({name, 202});
    while (!text.empty()) {
        auto [line, rest] = cutAt(text, "\n");
        text.remove_prefix(text.size() - rest.size());
        for (std::size_t i = 0; i < kColumns; ++i) {
            auto [cell, others] = cutAt(line, "|");
            data.cells.push_back(cellOf(std::move(cell)));
            line = std::move(others);
        }
    }
    return data;
}

std::vector<std::string> textsOn(const Document& document) {
    std::vector<std::string> texts;
    for (const report::Page& page : document.pages)
        for (const report::TextLine& line : report::textLines(page))
            for (const std::size_t item : line)
                texts.push_back(exports::withoutControls(std::get<TextRun>(page.items[item]).text));
    return texts;
}

// The same pages and rows with a harmless text in the place of each: an export then holds the format alone.
Document harmless(Document document) {
    const auto tame = [](std::string& text) { text = exports::withoutControls(text).empty() ? "" : "x"; };
    tame(document.title);
    for (report::Page& page : document.pages)
        for (report::Item& item : page.items)
            if (auto* run = std::get_if<TextRun>(&item)) tame(run->text);
    for (DataSet& data : document.data)
        for (Value& cell : data.cells)
            if (cell.isText()) cell = "x";
    return document;
}

std::string guarded(const Value& value) {
    const std::string shown = exports::shownCell(value);
    return value.isText() ? exports::unformulated(shown) : shown;
}

void separatedHolds(const Document& document) {
    const DataSet data = exports::tablesOf(document).front();
    const auto rows = readCommaSeparated(exports::commaSeparated(document));
    require(rows.size() == data.rowCount() + 1, "as many rows as there are");
    for (std::size_t r = 0; r < data.rowCount(); ++r) {
        require(rows[r + 1].size() == data.columns.size(), "as many values as columns");
        for (std::size_t c = 0; c < data.columns.size(); ++c)
            requireEqual(rows[r + 1][c], guarded(data.at(r, c)), "a value");
    }
    for (const std::string& line : readLines(exports::tabbedRows(document)))
        require(std::ranges::count(line, '\t') + 1 == std::ssize(data.columns),
                "as many tabs as there are columns: " + line);
    const std::size_t lines = readLines(exports::tabbedPages(document)).size();
    require(lines == readLines(exports::tabbedPages(harmless(document))).size(), "a line a line of the page");
    require(lines == readLines(exports::plainText(document)).size(), "and as many without tabs");
}

void recordsHold(const Document& document) {
    const std::vector<std::string> lines = readLines(exports::fixedRecords(document));
    const DataSet data = exports::tablesOf(document).front();
    require(lines.size() == 1 + data.columns.size() + data.rowCount(), "a line a column and a record");
    for (std::size_t i = 1 + data.columns.size(); i < lines.size(); ++i)
        require(length(lines[i]) == length(lines.back()), "records of one width");

    const std::vector<std::string> interchanged = readLines(exports::interchange(document));
    require(interchanged.size() == readLines(exports::interchange(harmless(document))).size(),
            "a text is one line of the interchange");
    for (const std::string& line : interchanged)
        require(std::ranges::count(line, '"') % 2 == 0 && std::ranges::count(line, '"') <= 2,
                "quotes around a text, not in it: " + line);
    require(readLines(exports::definition(document)).size() ==
                readLines(exports::definition(harmless(document))).size(),
            "a text is one line of the description");
}

void markupHolds(const Document& document) {
    const Document tame = harmless(document);
    for (const bool navigator : {false, true}) {
        const std::string old = exports::hypertext32(document, navigator);
        require(readTags(old) == readTags(exports::hypertext32(tame, navigator)), "no tag comes from a text");
        requireXmlCharacters(old);
        const std::string page = exports::hypertext4(document, navigator);
        require(readTags(page) == readTags(exports::hypertext4(tame, navigator)), "no tag comes from a text");
        requireXmlCharacters(page);
    }
}

void xmlHolds(const Document& document) {
    const DataSet data = exports::tablesOf(document).front();
    for (const std::string& text : exports::xmlData(document, false)) {
        requireXmlCharacters(text);
        pugi::xml_document file;
        const auto read =
            file.load_buffer(text.data(), text.size(), pugi::parse_full | pugi::parse_ws_pcdata_single);
        require(read, std::string("XML: ") + read.description());
        const pugi::xml_node report = file.child("report");
        requireEqual(report.attribute("title").value(), exports::withoutControls(document.title),
                     "the title");
        std::size_t row = 0;
        for (const pugi::xml_node each : report.child("data").children("row")) {
            for (const pugi::xml_node field : each.children("field")) {
                const Value& cell =
                    data.at(row, static_cast<std::size_t>(data.findColumn(field.attribute("name").value())));
                if (cell.isText()) requireEqual(field.child_value(), exports::shownCell(cell), "a field");
            }
            ++row;
        }
        require(row == data.rowCount(), "as many rows as there are");
    }
}

void wordsHold(const Document& document) {
    std::u16string expected = u"Arial;" + utf16Of(exports::withoutControls(document.title));
    for (const std::string& text : textsOn(document))
        expected += utf16Of(text);
    require(readRichText(exports::richText(document)) == expected, "the texts of a rich text");
}

void workbookHolds(const Document& document) {
    const DataSet data = exports::tablesOf(document).front();
    std::vector<std::u16string> expected;
    for (const Value& cell : data.cells)
        if (cell.isText()) expected.push_back(utf16Of(exports::shownCell(cell)).substr(0, 4000));
    for (const bool formatted : {false, true}) {
        auto texts =
            readWorkbookTexts(exports::workbook(document, {formatted, false, formatted ? 0.0 : 12.0}));
        if (!formatted) // dates stand there as texts
            std::erase_if(
                texts, [&](const auto& text) { return std::ranges::find(expected, text) == expected.end(); });
        for (std::size_t i = 0; formatted && i < texts.size(); ++i)
            require(texts.size() == expected.size() && expected[i].starts_with(texts[i]),
                    "a text of the sheet");
    }
}

void ownFormHolds(const Document& document) {
    std::string written;
    if (!runs([&] { written = exports::ownForm(document); })) return; // too long for a layout file
    requireXmlCharacters(written);
    const Document again =
        report::compose(report::parseLayout(written, "again"), {}, DateTime::of(2026, 11, 22));
    auto texts = textsOn(again);
    auto wanted = textsOn(document);
    for (auto* each : {&texts, &wanted}) {
        std::erase_if(*each,
                      [](const std::string& text) { return trim(replaceAll(text, "\t", "")).empty(); });
        std::ranges::sort(*each);
    }
    require(texts.size() == wanted.size(), "as many texts come out of it");
    for (std::size_t i = 0; i < texts.size(); ++i)
        requireEqual(texts[i], wanted[i], "a text comes out of it");
}

void exportsHold(const std::string& title, std::string_view rows) {
    report::Layout layout = report::parseLayout(kLayout, "fixed.xml");
    layout.title = title;
    const Document document = report::compose(layout, {rowsOf(rows)}, DateTime::of(2026, 11, 22, 10, 30));
    separatedHolds(document);
    recordsHold(document);
    markupHolds(document);
    xmlHolds(document);
    wordsHold(document);
    workbookHolds(document);
    ownFormHolds(document);
}

} // namespace
} // namespace veldona::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldona::fuzz;
    if (size > kLongest) return 0;
    const auto [title, rows] = cutAt({reinterpret_cast<const char*>(data), size}, "\n");
    exportsHold(title, rows);
    return 0;
}
