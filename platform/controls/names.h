// Names of forms, controls and tools are plain ASCII: letters pair as in code, whatever alphabet the screens
// speak.
#pragma once

#include <string>
#include <string_view>

namespace veldona {

[[nodiscard]] std::string nameKey(std::string_view name); // in upper case
[[nodiscard]] bool sameName(std::string_view a, std::string_view b);

} // namespace veldona
