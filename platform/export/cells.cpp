#include "platform/export/cells.h"

#include <algorithm>
#include <array>

#include "platform/report/letters.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"

namespace veldona::exports {

namespace {

// U+0080 … U+009F of the code page.
constexpr std::array<char32_t, 32> kUpperControls = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0,      0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0,      0x0178};
struct Special {
    char32_t code;
    char plain;
};
constexpr std::array<Special, 6> kTurkish = {
    {{0x011E, 'G'}, {0x0130, 'I'}, {0x015E, 'S'}, {0x011F, 'g'}, {0x0131, 'i'}, {0x015F, 's'}}};
// What Western Windows has in their places.
constexpr std::array<char32_t, 6> kWestern = {0xD0, 0xDD, 0xDE, 0xF0, 0xFD, 0xFE};

char byteOf(char32_t code) {
    if (code < 0x80) return static_cast<char>(code);
    for (const Special& special : kTurkish)
        if (special.code == code) return special.plain;
    if (const auto found = std::ranges::find(kUpperControls, code); found != kUpperControls.end())
        return static_cast<char>(0x80 + (found - kUpperControls.begin()));
    const bool common = code >= 0xA0 && code <= 0xFF && std::ranges::find(kWestern, code) == kWestern.end();
    return common ? static_cast<char>(code) : '?';
}

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
        made.columns.push_back({"ALAN_" + std::to_string(i), 202});
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
    std::string bytes;
    for (std::size_t at = 0; at < text.size();) {
        const report::Letter letter = report::letterAt(text, at);
        bytes += byteOf(letter.code);
        at += letter.bytes;
    }
    return bytes;
}

std::u16string utf16(std::string_view text) {
    const std::string mended = validUtf8(text);
    std::u16string units;
    for (std::size_t at = 0; at < mended.size();) {
        const report::Letter letter = report::letterAt(mended, at);
        at += letter.bytes;
        if (letter.code < 0x10000) {
            units += static_cast<char16_t>(letter.code);
        } else {
            units += static_cast<char16_t>(0xD800 + ((letter.code - 0x10000) >> 10));
            units += static_cast<char16_t>(0xDC00 + ((letter.code - 0x10000) & 0x3FF));
        }
    }
    return units;
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
