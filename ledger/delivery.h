// What changes a sale's head or lines rather than its schedule: the delivery, and a further amount as a new
// line.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

// Head and lines of the sale on show take the flag of dtTeslimEdildigiTarih, the head its date too. The two
// statements stand alone: the second one runs also where the first failed.
void Command4_Click(FrmMainVeldona& f);

// Opens the panel for a further amount.
void mnuUrunEkle_Click(FrmMainVeldona& f);
// Adds the amount as a line, to the lists first, so that it stays there until the next load where no sale is
// on show; TOPBORC follows the lines less the discount, the schedule is not touched. A statement that failed
// is named by its table, and the other one is not undone.
void cmdUrunKaydet_Click(FrmMainVeldona& f);

} // namespace veldona
