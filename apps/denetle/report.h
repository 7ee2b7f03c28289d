// What was found, for a person to read and for a spreadsheet.
#pragma once

#include <string>

#include "apps/denetle/check.h"

namespace veldona::denetle {

// Turkish sentences, account by account.
[[nodiscard]] std::string asText(const Findings& findings);

// One line a finding, parted by ";" as a Turkish spreadsheet expects it, in UTF-8 with its mark. A cell that
// the spreadsheet would calculate is made a text.
[[nodiscard]] std::string asCsv(const Findings& findings);
// A line of it that is no account's.
[[nodiscard]] std::string asCsv(const std::string& ofTheJournal);

} // namespace veldona::denetle
