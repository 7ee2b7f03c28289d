// Readers of the formats that reports are exported to, each as strict as what will open the file: a text of
// the rows that means something to the format breaks it here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veldona::fuzz {

// The rows of parted values in quotes, "" a quote inside them. Broken where a quote stands wrong.
[[nodiscard]] std::vector<std::vector<std::string>> readCommaSeparated(std::string_view file);

// The tags of a page in their order, texts left out. Broken where one is left open or closes another one.
[[nodiscard]] std::vector<std::string> readTags(std::string_view html);

// The texts of a rich text behind its font table. Broken for an open group, a letter beyond ASCII, or a word
// that no report needs.
[[nodiscard]] std::u16string readRichText(std::string_view file);

// The texts of the label records of an old workbook. Broken where a record runs over the end of the file.
[[nodiscard]] std::vector<std::u16string> readWorkbookTexts(std::string_view file);

// What XML may hold: sound UTF-8 without the characters that no XML file has.
void requireXmlCharacters(const std::string& xml);

// Lines that end in CR LF; a line end of another kind belongs to the line.
[[nodiscard]] std::vector<std::string> readLines(std::string_view file);

} // namespace veldona::fuzz
