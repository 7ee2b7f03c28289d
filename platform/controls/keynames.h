// Keys by the names that menus show and scenarios use.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/controls/keys.h"

namespace veldona {

// "F2", "Enter", "Left" … or one character, "Ctrl+" before any of them; nothing for any other name.
[[nodiscard]] std::optional<KeyEvent> keyNamed(std::string_view name);
[[nodiscard]] std::string nameOf(Key key); // "" of one that has none

} // namespace veldona
