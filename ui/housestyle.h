// The look of all windows: one calm light style whose sizes follow one scale.
//
// The house font is Liberation Sans 10 pt at scale 1 (9 pt cuts the dots off Ö, Ü and Ğ in a list row). A
// large screen that is not scaled by the desktop gets a larger scale, so that a row can be read there too.
#pragma once

#include <QString>

#include "platform/controls/lists.h"

class QApplication;
class QColor;
class QSize;

namespace veldona {

// The scale for a screen of so many device-independent pixels, whose desktop asks for letters of so many dots
// an inch: as large as either wants it, as long as the main screen has room.
[[nodiscard]] double scaleForScreen(const QSize& available, double dotsPerInch = 96);

// Sets style, palette, font and sheet; again with another scale where the screen changes.
void followScreen(QApplication& application);
void applyHouseStyle(QApplication& application, double scale);
[[nodiscard]] double houseScale();

// A length drawn for scale 1, at the scale of now.
[[nodiscard]] int scaled(int pixels);

// Of the letters of a marked row, and of the line between rows; readable on a list's background.
[[nodiscard]] QColor letterColour(RowMark::Kind mark);
[[nodiscard]] QColor lineColour();

// The style sheet, its lengths multiplied: pixels by one, letters (pt) by the other.
[[nodiscard]] QString houseSheet(double scale, double letters);

} // namespace veldona
