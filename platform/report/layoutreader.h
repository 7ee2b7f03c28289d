// Reads a layout file. Strict: an element, attribute or value that the language does not have is an error
// that names file and line, so that a slip of the shop's own editing shows at once. docs/raporlar.md
// describes the language.
#pragma once

#include <string>
#include <string_view>

#include "platform/report/layout.h"
#include "platform/report/reporterror.h"

namespace veldona::report {

// `file` is what messages call it.
[[nodiscard]] Layout parseLayout(std::string_view xml, const std::string& file);
// `path` is a path of this machine. Error 53 where there is no such file, 75 where it cannot be read.
[[nodiscard]] Layout readLayout(const std::string& path);

} // namespace veldona::report
