// The real windows, as far as a scenario needs them: they follow the screens, take the keys, and can be
// pictured.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/controls/forms.h"
#include "platform/desktop/clock.h"

namespace veldona::console {

class Windows {
public:
    virtual ~Windows() = default;
    // Who is to hear what the screens do.
    [[nodiscard]] virtual FormHost& follower() = 0;
    // Shows what changed in the screens.
    virtual void flush() = 0;
    // One key, down and up, through the widget that has the focus.
    virtual void pressKey(Form& screen, const KeyEvent& key) = 0;
    // The window of this screen as a picture; false where the file cannot be written.
    [[nodiscard]] virtual bool takePicture(Form& screen, const std::string& file) = 0;
};

// Opens the windows of one scenario, whose day the clock tells.
using OpenWindows = std::function<std::unique_ptr<Windows>(Clock&)>;

} // namespace veldona::console
