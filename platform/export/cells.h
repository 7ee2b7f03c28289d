// What an export of data writes: the rows that the report was made from, or, where it has none, the lines of
// its pages as rows of texts.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/report/page.h"

namespace veldona::exports {

// The first data set that has rows; else one row a line, with as many columns as the longest line has cells.
[[nodiscard]] report::DataSet rowsOf(const report::Document& document);
// The texts of each line from left to right.
[[nodiscard]] std::vector<std::vector<std::string>> cellsOf(const report::Page& page);

[[nodiscard]] bool isNumber(const Value& value);
// With "." as the decimal sign and no grouping, as programs read it.
[[nodiscard]] std::string plainNumber(const Value& value);
// A number with ",", a date as dd/mm/yyyy, "" for Null: as the shop reads it, without controls.
[[nodiscard]] std::string shownCell(const Value& value);
// Mended, without control characters but line ends and tabs, and without the two codes that are no characters
// and that no XML file may hold.
[[nodiscard]] std::string withoutControls(std::string_view text);

// `text` in the eight-bit letters of Turkish Windows; "?" for a letter that is not among them.
[[nodiscard]] std::string windows1254(std::string_view text);
[[nodiscard]] std::u16string utf16(std::string_view text);
// "&", "<", ">" and the quotes as entities.
[[nodiscard]] std::string escapedMarkup(std::string_view text);

} // namespace veldona::exports
