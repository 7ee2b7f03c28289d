#include "platform/export/cells.h"

#include <algorithm>

#include "platform/report/pagetext.h"
#include "platform/runtime/columntype.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/runtime/unicode.h"

namespace veldona::exports {

namespace {

// A line of a page: the texts that were chosen.
struct ChosenLine {
    const report::Page* page;
    report::TextLine items;
    [[nodiscard]] const report::TextRun& run(std::size_t item) const {
        return std::get<report::TextRun>(page->items[item]);
    }
};

std::vector<ChosenLine> chosenLines(const report::Document& document, const TextChoice& chosen) {
    std::vector<ChosenLine> lines;
    for (const report::Page& page : document.pages)
        for (report::TextLine& line : report::textLines(page)) {
            std::erase_if(
                line, [&](std::size_t item) { return !chosen(std::get<report::TextRun>(page.items[item])); });
            if (!line.empty()) lines.push_back({&page, std::move(line)});
        }
    return lines;
}

// The places at which the texts begin, near ones as one.
std::vector<double> startsOf(const std::vector<ChosenLine>& lines) {
    constexpr double near = 2; // millimetres
    std::vector<double> starts;
    for (const ChosenLine& line : lines)
        for (const std::size_t item : line.items)
            starts.push_back(line.run(item).x);
    std::ranges::sort(starts);
    const auto same = [](double kept, double next) { return next - kept < near; };
    starts.erase(std::unique(starts.begin(), starts.end(), same), starts.end());
    return starts;
}

std::vector<std::string> cellsOf(const ChosenLine& line, const std::vector<double>& starts,
                                 std::size_t columns) {
    std::vector<std::string> cells(columns);
    std::size_t next = 0;
    for (std::size_t i = 0; i < line.items.size(); ++i) {
        const report::TextRun& run = line.run(line.items[i]);
        const auto own =
            static_cast<std::size_t>(std::ranges::upper_bound(starts, run.x) - starts.begin()) - 1;
        // Two texts that begin at one place stand side by side, and those behind them keep a column.
        const std::size_t most = columns - (line.items.size() - i);
        next = std::min(std::max(own, next), most);
        cells[next++] = withoutControls(run.text);
    }
    return cells;
}

} // namespace

report::DataSet linesOf(const report::Document& document, const TextChoice& chosen) {
    const std::vector<ChosenLine> lines = chosenLines(document, chosen);
    const std::vector<double> starts = startsOf(lines);
    std::size_t columns = std::max<std::size_t>(starts.size(), 1);
    for (const ChosenLine& line : lines)
        columns = std::max(columns, line.items.size());
    report::DataSet made;
    for (std::size_t i = 1; i <= columns; ++i)
        made.columns.push_back({"ALAN_" + std::to_string(i), columntype::kText});
    for (const ChosenLine& line : lines)
        for (std::string& cell : cellsOf(line, starts, columns))
            made.cells.emplace_back(std::move(cell));
    return made;
}

std::vector<report::DataSet> tablesOf(const report::Document& document) {
    std::vector<report::DataSet> tables;
    for (const report::DataSet& data : document.data)
        if (data.rowCount() > 0) tables.push_back(data);
    if (tables.empty()) tables.push_back(linesOf(document, [](const report::TextRun&) { return true; }));
    return tables;
}

std::string headingOf(const report::DataSet& data) {
    return withoutControls(data.heading.empty() ? data.name : data.heading);
}

bool isNumber(const Value& value) {
    return value.kind() == Value::Kind::Whole || value.kind() == Value::Kind::Double ||
           value.kind() == Value::Kind::Money;
}

std::string plainNumber(const Value& value) {
    return replaceAll(toText(value), ",", ".");
}

std::string shownCell(const Value& value) {
    return withoutControls(joinText(value));
}

std::string unformulated(std::string text) {
    constexpr std::string_view kFormulas = "=+-@\t\r";
    const bool isFormula = !text.empty() && kFormulas.find(text.front()) != kFormulas.npos;
    return isFormula && !isNumeric(Value(text)) ? "'" + text : text;
}

std::string withoutControls(std::string_view text) {
    std::string kept = validUtf8(text);
    std::erase_if(kept, [](char c) {
        return (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') || c == 0x7F;
    });
    for (const char* noCharacter : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"})
        kept = replaceAll(kept, noCharacter, "");
    return kept;
}

std::string windowsLetters(std::string_view text) {
    // The six places in which Turkish and Western Windows differ.
    std::string common(text);
    for (const auto& [letter, plain] :
         {std::pair{"Ğ", "G"}, {"İ", "I"}, {"Ş", "S"}, {"ğ", "g"}, {"ı", "i"}, {"ş", "s"}})
        common = replaceAll(common, letter, plain);
    return windows1254(common);
}

std::string escapedMarkup(std::string_view text) {
    std::string out;
    for (const char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            out += c;
        }
    }
    return out;
}

} // namespace veldona::exports
