#include "platform/export/delimited.h"

#include <algorithm>
#include <cmath>

#include "platform/export/cells.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"

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

const char* typeName(int type) {
    switch (type) {
    case 2:
    case 3:
        return "whole";
    case 5:
        return "number";
    case 11:
        return "boolean";
    case 135:
        return "date";
    default:
        return "text";
    }
}

std::string padded(std::string text, std::size_t width) {
    if (const std::size_t letters = length(text); letters < width) text.append(width - letters, ' ');
    return text;
}

} // namespace

std::string delimitedRows(const report::Document& document, const Delimiters& delimiters) {
    const report::DataSet rows = rowsOf(document);
    std::string out = kUtf8Mark;
    for (std::size_t c = 0; c < rows.columns.size(); ++c)
        out += (c ? delimiters.field : "") + quoted(rows.columns[c].name, delimiters.text);
    out += kLineEnd;
    for (std::size_t r = 0; r < rows.rowCount(); ++r) {
        for (std::size_t c = 0; c < rows.columns.size(); ++c) {
            const Value& value = rows.at(r, c);
            // A number is quoted where its decimal sign would part it.
            const std::string shown = delimiters.text.empty() ? oneLine(value) : shownCell(value);
            const bool bare = isNumber(value) &&
                              (delimiters.field.empty() || shown.find(delimiters.field) == std::string::npos);
            out += (c ? delimiters.field : "") + (bare ? shown : quoted(shown, delimiters.text));
        }
        out += kLineEnd;
    }
    return out;
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
                    oneLine(std::get<report::TextRun>(page.items[item]).text);
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
    const report::DataSet rows = rowsOf(document);
    std::vector<std::size_t> widths;
    for (std::size_t c = 0; c < rows.columns.size(); ++c) {
        std::size_t width = 1;
        for (std::size_t r = 0; r < rows.rowCount(); ++r)
            width = std::max(width, length(oneLine(rows.at(r, c))));
        widths.push_back(width);
    }
    std::string out = std::string(kUtf8Mark) + "FIELDS " + std::to_string(rows.columns.size()) + " RECORDS " +
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

std::string interchange(const report::Document& document) {
    const report::DataSet rows = rowsOf(document);
    const auto header = [](const char* topic, std::size_t number, const std::string& text) {
        return topic + std::string(kLineEnd) + "0," + std::to_string(number) + kLineEnd + "\"" +
               replaceAll(text, "\"", "'") + "\"" + kLineEnd;
    };
    const auto textCell = [](const std::string& text) {
        return "1,0" + std::string(kLineEnd) + "\"" + replaceAll(text, "\"", "'") + "\"" + kLineEnd;
    };
    const std::string tuple = "-1,0" + std::string(kLineEnd) + "BOT" + kLineEnd;
    // The format calls the columns vectors and the rows tuples.
    std::string out = header("TABLE", 1, oneLine(document.title)) +
                      header("VECTORS", rows.columns.size(), "") + header("TUPLES", rows.rowCount() + 1, "") +
                      header("DATA", 0, "") + tuple;
    for (const report::Column& column : rows.columns)
        out += textCell(column.name);
    for (std::size_t r = 0; r < rows.rowCount(); ++r) {
        out += tuple;
        for (std::size_t c = 0; c < rows.columns.size(); ++c) {
            const Value& value = rows.at(r, c);
            out += isNumber(value) ? "0," + plainNumber(value) + kLineEnd + "V" + kLineEnd
                                   : textCell(oneLine(value));
        }
    }
    return windows1254(out + "-1,0" + kLineEnd + "EOD" + kLineEnd);
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
