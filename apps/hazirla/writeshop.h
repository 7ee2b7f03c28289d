// Writes a sample shop into a database as delivered, each row as the program's own screens would have written
// it.
#pragma once

#include <string>

#include "apps/hazirla/shop.h"

namespace veldona::hazirla {

// Fills `file`, which must hold the first rows and nothing more. Raises StoreError or RuntimeError.
void writeShop(const std::string& file, const Shop& shop);

} // namespace veldona::hazirla
