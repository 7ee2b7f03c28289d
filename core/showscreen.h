#pragma once

#include <string_view>

#include "platform/controls/forms.h"

namespace veldona {

struct Session;

// Opens a screen by its name.
void showScreen(Session& session, std::string_view name, Kip kip);

} // namespace veldona
