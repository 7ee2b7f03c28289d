// The product totals, rebuilt from the movements. Each sale and each deleted sale moves them by a small step
// (StokGuncelle); this sets them anew where they have drifted.
#pragma once

namespace veldona {

struct Session;

// Received, sold and left of every product. The steps do not add up: an invoice's sum replaces what the stock
// movements or the sale lines gave for the same product. A step whose statement fails has told of it and is
// left off there; the next one runs.
void StokYenidenHesapla(Session& session);

} // namespace veldona
