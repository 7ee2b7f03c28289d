// Keys by the names that a scenario calls them.
#pragma once

#include <string>

#include "platform/controls/keys.h"

namespace veldona::console {

// "F2", "Enter", "Left" … or one character; an UnreadableLine for anything else.
[[nodiscard]] KeyEvent keyNamed(const std::string& name);

} // namespace veldona::console
