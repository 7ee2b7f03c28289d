// The columns of a SELECT's result: what * stands for, and what each of them is called.
#pragma once

#include "platform/store/dialect/tree.h"

namespace veldona::store::sql {

// Puts the columns of the tables in the place of * and T.*.
void expandStars(Arm& arm);

// Columns of two tables with one name are told apart by the table's; what has no name is numbered.
void nameItems(Arm& arm);

} // namespace veldona::store::sql
