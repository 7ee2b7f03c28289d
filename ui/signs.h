// The signs of the message boxes, drawn for the size they are shown at instead of blown up from a picture.
#pragma once

#include <QIcon>
#include <QStyle>

namespace veldona {

// The sign of a message box; a null icon for what is none.
[[nodiscard]] QIcon messageSign(QStyle::StandardPixmap which);

} // namespace veldona
