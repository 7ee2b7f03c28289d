// Which .ui file draws which form: one line a screen.
#pragma once

namespace veldona {

class WindowHost;

void drawScreens(WindowHost& host);

} // namespace veldona
