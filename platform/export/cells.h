// What an export of data writes: the rows that the report was made from, or the lines of its pages as rows of
// texts.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/report/page.h"

namespace veldona::exports {

// The data sets that have rows; where there is none, the lines of the pages. One at least.
[[nodiscard]] std::vector<report::DataSet> tablesOf(const report::Document& document);
// What stands over a set where a file holds several.
[[nodiscard]] std::string headingOf(const report::DataSet& data);
using TextChoice = std::function<bool(const report::TextRun&)>;
// One row a line that holds a chosen text, each text in the column that begins where it does on the page.
[[nodiscard]] report::DataSet linesOf(const report::Document& document, const TextChoice& chosen);

[[nodiscard]] bool isNumber(const Value& value);
// With "." as the decimal sign and no grouping, as programs read it.
[[nodiscard]] std::string plainNumber(const Value& value);
// A number with ",", a date as dd/mm/yyyy, "" for Null: as the shop reads it, without controls.
[[nodiscard]] std::string shownCell(const Value& value);
// As a spreadsheet may open it: a text that it would take for a formula stands behind an apostrophe, so that
// a name that somebody wrote into the books calculates nothing on another's machine. Numbers stay.
[[nodiscard]] std::string unformulated(std::string text);
// Mended, without control characters but line ends and tabs, and without the two codes that are no characters
// and that no XML file may hold.
[[nodiscard]] std::string withoutControls(std::string_view text);

// `text` in the eight-bit letters that Western and Turkish Windows have in common. The six letters that only
// the Turkish one has lose their mark; "?" for any other letter.
[[nodiscard]] std::string windowsLetters(std::string_view text);
// "&", "<", ">" and the quotes as entities.
[[nodiscard]] std::string escapedMarkup(std::string_view text);

} // namespace veldona::exports
