#include "platform/export/delimited.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/export/cells.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/columntype.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/runtime/unicode.h"

namespace veldona::exports {

namespace {

constexpr const char* kUtf8Mark = "\xEF\xBB\xBF";
constexpr const char* kLineEnd = "\r\n";
constexpr double kLetterWidth = 1.9; // millimetres of a letter where all are of one width

std::string quoted(std::string_view text, const std::string& sign) {
    return sign.empty() ? std::string(text) : sign + replaceAll(text, sign, sign + sign) + sign;
}

std::string oneLine(const Value& value) {
    std::string text = shownCell(value);
    std::ranges::replace_if(
        text, [](char c) { return c == '\n' || c == '\t'; }, ' ');
    return text;
}

template <class LineOf> std::string pages(const report::Document& document, const LineOf& lineOf) {
    std::string out = kUtf8Mark;
    for (std::size_t i = 0; i < document.pages.size(); ++i) {
        if (i) out += '\f';
        const report::Page& page = document.pages[i];
        for (const report::TextLine& line : report::textLines(page))
            out += lineOf(page, line) + kLineEnd;
    }
    return out;
}

const char* typeName(std::int32_t type) {
    switch (type) {
    case columntype::kSmall:
    case columntype::kWhole:
        return "whole";
    case columntype::kNumber:
        return "number";
    case columntype::kBoolean:
        return "boolean";
    case columntype::kDate:
        return "date";
    default:
        return "text";
    }
}

std::string padded(std::string text, std::size_t width) {
    if (const std::size_t letters = length(text); letters < width) text.append(width - letters, ' ');
    return text;
}

// One table alone stands as it is; several each under their heading, with an empty line between them.
template <class Heading, class Write>
std::string eachTable(const report::Document& document, const Heading& heading, const Write& write) {
    const std::vector<report::DataSet> tables = tablesOf(document);
    std::string out;
    for (const report::DataSet& rows : tables) {
        if (!out.empty()) out += kLineEnd;
        if (tables.size() > 1) out += heading(oneLine(headingOf(rows))) + kLineEnd;
        out += write(rows);
    }
    return out;
}

std::string delimitedTable(const report::DataSet& rows, const Delimiters& delimiters) {
    std::string out;
    for (std::size_t c = 0; c < rows.columns.size(); ++c)
        out += (c ? delimiters.field : "") + quoted(rows.columns[c].name, delimiters.text);
    out += kLineEnd;
    for (std::size_t r = 0; r < rows.rowCount(); ++r) {
        for (std::size_t c = 0; c < rows.columns.size(); ++c) {
            const Value& value = rows.at(r, c);
            // A number is quoted where its decimal sign would part it.
            std::string shown = delimiters.text.empty() ? oneLine(value) : shownCell(value);
            if (value.isText()) shown = unformulated(std::move(shown));
            const bool bare = isNumber(value) &&
                              (delimiters.field.empty() || shown.find(delimiters.field) == std::string::npos);
            out += (c ? delimiters.field : "") + (bare ? shown : quoted(shown, delimiters.text));
        }
        out += kLineEnd;
    }
    return out;
}

std::string recordTable(const report::DataSet& rows) {
    std::vector<std::size_t> widths;
    for (std::size_t c = 0; c < rows.columns.size(); ++c) {
        std::size_t width = 1;
        for (std::size_t r = 0; r < rows.rowCount(); ++r)
            width = std::max(width, length(oneLine(rows.at(r, c))));
        widths.push_back(width);
    }
    std::string out = "FIELDS " + std::to_string(rows.columns.size()) + " RECORDS " +
                      std::to_string(rows.rowCount()) + kLineEnd;
    std::size_t place = 1;
    for (std::size_t c = 0; c < rows.columns.size(); ++c) {
        out += rows.columns[c].name + " " + typeName(rows.columns[c].type) + " " + std::to_string(place) +
               " " + std::to_string(widths[c]) + kLineEnd;
        place += widths[c];
    }
    for (std::size_t r = 0; r < rows.rowCount(); ++r) {
        for (std::size_t c = 0; c < rows.columns.size(); ++c)
            out += padded(oneLine(rows.at(r, c)), widths[c]);
        out += kLineEnd;
    }
    return out;
}

// The format has one table, whose columns it calls vectors and whose rows tuples: several data sets stand in
// it one below the other, each under its heading, with an empty tuple between them.
class Interchange {
public:
    explicit Interchange(const report::Document& document) : document_(document) {}

    [[nodiscard]] std::string write() {
        const std::vector<report::DataSet> tables = tablesOf(document_);
        for (const report::DataSet& rows : tables)
            vectors_ = std::max(vectors_, rows.columns.size());
        for (const report::DataSet& rows : tables) {
            if (tuples_ > 0) tuple();
            if (tables.size() > 1) tuple(text(oneLine(headingOf(rows))), 1);
            table(rows);
        }
        return header("TABLE", 1, oneLine(document_.title)) + header("VECTORS", vectors_, "") +
               header("TUPLES", tuples_, "") + header("DATA", 0, "") + cells_ + line("-1,0") + line("EOD");
    }

private:
    static std::string line(const std::string& text) { return text + kLineEnd; }
    static std::string inQuotes(const std::string& text) {
        return line("\"" + replaceAll(text, "\"", "'") + "\"");
    }
    static std::string header(const char* topic, std::size_t number, const std::string& text) {
        return line(topic) + line("0," + std::to_string(number)) + inQuotes(text);
    }
    static std::string text(const std::string& words) { return line("1,0") + inQuotes(words); }
    static std::string cell(const Value& value) {
        return isNumber(value) ? line("0," + wholeNumber(value)) + line("V")
                               : text(unformulated(oneLine(value)));
    }
    // 450,25 as 45025E-2: a reader takes a decimal sign by its own country.
    static std::string wholeNumber(const Value& value) {
        std::string number = plainNumber(value);
        const std::size_t point = number.find('.');
        if (point == std::string::npos || number.find('E') != std::string::npos) return number;
        const std::size_t decimals = number.size() - point - 1;
        number.erase(point, 1);
        return number + "E-" + std::to_string(decimals);
    }
    void tuple(const std::string& cells = {}, std::size_t count = 0) {
        ++tuples_;
        cells_ += line("-1,0") + line("BOT") + cells;
        for (std::size_t i = count; i < vectors_; ++i)
            cells_ += text("");
    }
    void table(const report::DataSet& rows) {
        std::string names;
        for (const report::Column& column : rows.columns)
            names += text(column.name);
        tuple(names, rows.columns.size());
        for (std::size_t r = 0; r < rows.rowCount(); ++r) {
            std::string cells;
            for (std::size_t c = 0; c < rows.columns.size(); ++c)
                cells += cell(rows.at(r, c));
            tuple(cells, rows.columns.size());
        }
    }

    const report::Document& document_;
    std::size_t vectors_ = 0, tuples_ = 0;
    std::string cells_;
};

} // namespace

std::string delimitedRows(const report::Document& document, const Delimiters& delimiters) {
    return kUtf8Mark + eachTable(
                           document,
                           [&](const std::string& heading) { return quoted(heading, delimiters.text); },
                           [&](const report::DataSet& rows) { return delimitedTable(rows, delimiters); });
}

std::string commaSeparated(const report::Document& document) {
    return delimitedRows(document, {",", "\""});
}

std::string tabbedRows(const report::Document& document) {
    return delimitedRows(document, {"\t", ""});
}

std::string tabbedPages(const report::Document& document) {
    return pages(document, [](const report::Page& page, const report::TextLine& line) {
        std::string text;
        for (const std::size_t item : line)
            text += (item == line.front() ? "" : "\t") +
                    unformulated(oneLine(std::get<report::TextRun>(page.items[item]).text));
        return text;
    });
}

std::string plainText(const report::Document& document) {
    return pages(document, [](const report::Page& page, const report::TextLine& line) {
        std::string text;
        std::size_t column = 0;
        for (const std::size_t item : line) {
            const auto& run = std::get<report::TextRun>(page.items[item]);
            const std::string words = oneLine(run.text);
            const std::size_t letters = length(words);
            auto wanted = static_cast<std::size_t>(std::max(0.0, run.x / kLetterWidth));
            if (run.align == report::Align::Right) {
                const auto end = static_cast<std::size_t>(std::max(0.0, (run.x + run.width) / kLetterWidth));
                wanted = end > letters ? end - letters : 0;
            }
            const std::size_t start = std::max(wanted, column ? column + 1 : 0);
            text += std::string(start - column, ' ') + words;
            column = start + letters;
        }
        return text;
    });
}

std::string fixedRecords(const report::Document& document) {
    return kUtf8Mark + eachTable(
                           document,
                           [](const std::string& heading) { return "TABLE " + quoted(heading, "\""); },
                           recordTable);
}

std::string interchange(const report::Document& document) {
    return windowsLetters(Interchange(document).write());
}

std::string definition(const report::Document& document) {
    const auto measure = [](double millimetres) { return replaceAll(format(millimetres, "0.00"), ",", "."); };
    std::string out = std::string(kUtf8Mark) + "REPORT \"" + oneLine(document.title) + "\"" + kLineEnd +
                      "PAGE " + measure(document.pageWidth) + " x " + measure(document.pageHeight) + " mm, " +
                      std::to_string(document.pages.size()) + " pages" + kLineEnd;
    for (const report::DataSet& data : document.data) {
        out += "DATA \"" + data.name + "\" " + std::to_string(data.rowCount()) + " rows" + kLineEnd;
        for (const report::Column& column : data.columns)
            out += "  COLUMN " + column.name + " " + typeName(column.type) + kLineEnd;
    }
    for (std::size_t i = 0; i < document.pages.size(); ++i) {
        out += "CONTENT OF PAGE " + std::to_string(i + 1) + kLineEnd;
        for (const report::Item& item : document.pages[i].items)
            if (const auto* run = std::get_if<report::TextRun>(&item))
                out += "  TEXT at " + measure(run->x) + "," + measure(run->y) + " width " +
                       measure(run->width) + " size " + measure(run->size) + (run->bold ? " bold" : "") +
                       " \"" + oneLine(run->text) + "\"" + kLineEnd;
    }
    return out;
}

} // namespace veldona::exports
