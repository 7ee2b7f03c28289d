// Shown text under a mask.
#pragma once

#include <string>
#include <string_view>

#include "platform/runtime/value.h"

namespace veldona {

// Numbers: "#,##0.00", "#,##0.000000", "0.00", "###,###,###" and their like (digits behind "." are decimals,
// a "," between digits groups, "#" shows no zero); rounded half away from zero on the decimal value. A text
// is read as a number first; one that is not numeric comes back unchanged, so "" stays "". A mask written
// with the signs of the shop ("#.##0,00", as the report layouts have it) means the same.
//
// Dates: "dd/mm/yyyy", "mm,dd,yyyy", "hh:mm:ss" and their like, letters' case ignored; "mm" behind "hh" is
// minutes. A text under a date mask is read as a date first; one that is none comes back unchanged.
//
// Null gives "". An empty mask gives the plain text.
[[nodiscard]] std::string format(const Value& value, std::string_view mask);

} // namespace veldona
