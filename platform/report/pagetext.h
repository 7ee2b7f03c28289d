// The pages of a document read as text: for the text export, for the search, for whoever checks what is
// printed.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/report/page.h"

namespace veldona::report {

// The texts that stand on one line of a page, from left to right: their places in Page::items.
using TextLine = std::vector<std::size_t>;

// From top to bottom. Texts whose letters stand within a millimetre of one height are one line.
[[nodiscard]] std::vector<TextLine> textLines(const Page& page);
// The cells of a line parted by blanks.
[[nodiscard]] std::string lineText(const Page& page, const TextLine& line);
// Line after line, each with a line end.
[[nodiscard]] std::string pageText(const Page& page);
// Page after page, parted by form feeds.
[[nodiscard]] std::string documentText(const Document& document);

// A page and an item on it.
struct Found {
    std::size_t page = 0;
    std::size_t item = 0;
    friend bool operator==(const Found&, const Found&) = default;
};

// The next line that holds `text`, behind `after` or from the start, round to the start again; the item is
// the one in which the text begins. Case does not matter, by the Turkish alphabet. Nothing for an empty text.
[[nodiscard]] std::optional<Found> findText(const Document& document, std::string_view text,
                                            std::optional<Found> after = {});

} // namespace veldona::report
