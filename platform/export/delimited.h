// Exports that are plain text: parted values, lines of the pages, fixed records, the interchange format, the
// description of the report. Each answers the bytes of the file; text is UTF-8 with a mark at its front,
// lines end in CR LF. Where the report was made from several data sets, each stands under its heading.
#pragma once

#include <string>

#include "platform/report/page.h"

namespace veldona::exports {

struct Delimiters {
    std::string field = ",";
    std::string text = "\""; // around texts, doubled inside them; empty: none
};

// A line of the column names, then the rows.
[[nodiscard]] std::string delimitedRows(const report::Document& document, const Delimiters& delimiters);
// A number with decimals is quoted, as its sign is the comma too.
[[nodiscard]] std::string commaSeparated(const report::Document& document);
[[nodiscard]] std::string tabbedRows(const report::Document& document);
// The lines of the pages, a tab between the cells of a line, a form feed between pages.
[[nodiscard]] std::string tabbedPages(const report::Document& document);
// The same with every text as near to its place on the page as letters of one width come.
[[nodiscard]] std::string plainText(const report::Document& document);
// Rows as records of fixed width behind a header that gives each field its name, place and width.
[[nodiscard]] std::string fixedRecords(const report::Document& document);
// Data Interchange Format. It names neither its letters nor its decimal sign, so both are written as every
// reader takes them: Ş as S, 450,25 as 45025E-2.
[[nodiscard]] std::string interchange(const report::Document& document);
// What the report is made of: page, data, columns and their types, texts in their places.
[[nodiscard]] std::string definition(const report::Document& document);

} // namespace veldona::exports
