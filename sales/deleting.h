// A sale is taken out of the books, and its units out of what was sold.
#pragma once

#include "sales/salescreen.h"

namespace veldona {

// Deletes the sale of txtIslemNo after two questions; `id` 0 or below does nothing. All or nothing: a sale
// without a line is not deleted here.
void SatisSil(FrmSatis& f, std::int32_t id);

} // namespace veldona
