// Tables and columns of the books as a shop calls them, and their values as its screens show them.
#pragma once

#include <string>

#include "platform/runtime/value.h"

namespace veldona::journal {

[[nodiscard]] std::string captionOf(const std::string& table, const std::string& column);
// `stored` as the books hold it; "—" where there is nothing.
[[nodiscard]] std::string shownIn(const std::string& column, const Value& stored);
[[nodiscard]] std::string shownAmount(double column);
// The day of a stored moment; the text itself where it is none.
[[nodiscard]] std::string shownDay(const std::string& stored);

} // namespace veldona::journal
