// The signs of message boxes and of marked rows, drawn for the size they are shown at instead of blown up
// from a picture.
#pragma once

#include <QIcon>
#include <QStyle>

#include "platform/controls/lists.h"

namespace veldona {

// The sign of a message box; a null icon for what is none.
[[nodiscard]] QIcon messageSign(QStyle::StandardPixmap which);
// Differs from the others in its form, not in its colour alone. One of no mark is empty, and as wide.
[[nodiscard]] QIcon rowSign(RowMark::Kind mark);

} // namespace veldona
