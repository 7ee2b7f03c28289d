// A sale goes into the books whole or not at all: one transaction of the shared connection over header, line,
// stock, payment and schedule. What a step fails by, the step has told; an error that no step tells ends the
// event, and the last handler rolls back.
#pragma once

#include "sales/salescreen.h"

namespace veldona {

// The save button: refuses a total that reads as 0, and afterwards, saved or not, sets the total to 0.
void cmdKaydet_Click(FrmSatis& f);
// Tests and saves: as a new sale in state 3, else in place of the sale of that number. A failure keeps state
// and input.
void SatisKaydet(FrmSatis& f);

[[nodiscard]] bool YeniSatisKaydet(FrmSatis& f);
// Deletes the sale, every payment taken for it included, and writes it again from the grids. Each change
// sells one more unit, and the row of the down payment loses its mark. Who the sale belongs to is read from
// the screen here, and only here.
[[nodiscard]] bool SatisGuncelle(FrmSatis& f);

} // namespace veldona
