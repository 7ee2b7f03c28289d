// The small notations inside the attributes of a layout: texts with their signs, column names, colours.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/report/layout.h"

namespace veldona::report {

struct TextNotation {
    std::vector<Piece> pieces;
    std::string mistake; // what is wrong with it; empty where nothing is
};

// %p page, %P pages, %D date, %T time, %n row number, %% a percent sign; {COLUMN}, {query.COLUMN},
// {COLUMN|mask}, {{ a brace. Any other % stands for itself.
[[nodiscard]] TextNotation readText(std::string_view text);

// Letters, digits and "_", with one "." between query and column where there is a query.
[[nodiscard]] std::optional<ColumnRef> readColumn(std::string_view text);
[[nodiscard]] bool isName(std::string_view text);

// "#rrggbb"
[[nodiscard]] std::optional<Color> readColor(std::string_view text);
// Decimal sign "."; no exponent.
[[nodiscard]] std::optional<double> readNumber(std::string_view text);

// Blanks and line ends before it count for nothing.
[[nodiscard]] bool isSelect(std::string_view sql);

} // namespace veldona::report
