// The look of all windows: one calm light style whose sizes follow one scale.
//
// The house font is Liberation Sans 10 pt at scale 1 (9 pt cuts the dots off Ö, Ü and Ğ in a list row). A
// large screen that is not scaled by the desktop gets a larger scale, so that a row can be read there too.
#pragma once

#include <QString>

class QApplication;
class QSize;

namespace veldona {

// The scale for a screen of so many device-independent pixels.
[[nodiscard]] double scaleForScreen(const QSize& available);

// Sets style, palette, font and sheet; again with another scale where the screen changes.
void applyHouseStyle(QApplication& application, double scale);
[[nodiscard]] double houseScale();

// A length drawn for scale 1, at the scale of now.
[[nodiscard]] int scaled(int pixels);

// The style sheet, its lengths (px, pt) multiplied.
[[nodiscard]] QString houseSheet(double scale);

} // namespace veldona
