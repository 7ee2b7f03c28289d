// Paints a laid out page: the same on the screen, on paper and in a PDF.
#pragma once

#include <QRectF>

#include "platform/report/page.h"

class QPainter;

namespace veldona {

// The page's top left corner stands at the painter's origin; `dotsPerMillimetre` in the painter's own units.
void paintPage(QPainter& painter, const report::Page& page, double dotsPerMillimetre);

// Where an item stands, in millimetres; of a text, where its letters do.
[[nodiscard]] QRectF placeOf(const report::Item& item);

} // namespace veldona
