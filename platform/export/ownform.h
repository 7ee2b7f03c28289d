// The report in the form of this program's own layout files, its pages as they stand: the layout reader opens
// it and lays the same pages out again, without asking the books.
#pragma once

#include <string>

#include "platform/report/page.h"

namespace veldona::exports {

// Error 321 where the pages are more than a layout file may hold.
[[nodiscard]] std::string ownForm(const report::Document& document);

} // namespace veldona::exports
