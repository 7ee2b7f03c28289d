// Rows of the books as a scenario writes them: cells joined by "|", each in one form whatever the machine's
// locale.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/value.h"
#include "platform/store/faces/adodb.h"

namespace veldona::console {

// NULL for Null, numbers plain with "." and no trailing zeros, dates as 2026-11-22 10:30:00, true as -1.
[[nodiscard]] std::string cellText(const Value& value);
[[nodiscard]] std::vector<std::string> allRows(const adodb::Recordset& rows);
// Whether the statement is one that answers rows.
[[nodiscard]] bool isSelect(std::string_view sql);

} // namespace veldona::console
