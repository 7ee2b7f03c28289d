// The real windows, as far as a scenario needs them: they follow the screens and can be pictured.
#pragma once

#include <string>

#include "platform/controls/forms.h"

namespace veldona::console {

class Windows {
public:
    virtual ~Windows() = default;
    // Who is to hear what the screens do.
    [[nodiscard]] virtual FormHost& follower() = 0;
    // The window of this screen as a picture; false where the file cannot be written.
    [[nodiscard]] virtual bool takePicture(Form& screen, const std::string& file) = 0;
};

} // namespace veldona::console
