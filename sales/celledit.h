// Editing the two grids in place: three editors each, for amount, date and the third column, laid over the
// current cell. Enter writes the cell and goes on to the next column's editor; behind the third column a row
// is added, so that a plan or a paid list is extended row after row.
#pragma once

#include "sales/salescreen.h"

namespace veldona {

void bindCellEdit(FrmSatis& f);
// The rows under them are made anew: what stands in an open editor belongs to none of them.
void closeCellEdit(FrmSatis& f);

} // namespace veldona
