// The pages for a browser, in the two dialects that the exports offer. UTF-8.
#pragma once

#include <string>

#include "platform/report/page.h"

namespace veldona::exports {

// Each page a table whose rows are its lines: what a browser without style sheets can show.
[[nodiscard]] std::string hypertext32(const report::Document& document, bool navigator);
// Each page as it is printed, every item in its place.
[[nodiscard]] std::string hypertext4(const report::Document& document, bool navigator);

} // namespace veldona::exports
