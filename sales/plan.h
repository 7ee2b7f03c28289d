// The plan of a sale, recomputed by the events of its fields into the two grids.
//
// A recomputation first empties both grids, so that cells edited by hand are lost. KalanHesapla alone goes on
// past an error; the two plans leave the grids as far as they were filled. Counts are held in 8 bits: one
// beyond 255, or stepping past the 255th installment, is an overflow.
#pragma once

#include "sales/salescreen.h"

namespace veldona {

// MskKalan: the total less the down payment. Without installments the plan's fields are blanked, and the
// total with them.
void KalanHesapla(FrmSatis& f);
// The plan by count, from MskTaksitAdedi.
void TaksitPlaniAdetle(FrmSatis& f);
// The plan by amount, from mskTaksitTutari. An amount that would give 255 installments or more is passed over
// without a word.
void TaksitPlaniTutarla(FrmSatis& f);

// Shows the field of the way of entry and empties the other one, whose change event then runs.
void chkTaksitAdetGir_Click(FrmSatis& f);
// Both ways it sets the total to 0.
void chkOtomatikTaksitHesapla_Click(FrmSatis& f);

} // namespace veldona
