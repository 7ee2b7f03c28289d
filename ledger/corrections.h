// Repairs of the sale on show, in place: a schedule row's day and amount, the sale's date. Each stands as far
// as it got; nothing here is undone when a later step fails.
//
// The two corrections of a schedule row are near twins, by the list that they were started from. They differ
// in one letter of their question, in how they read the old amount and the selected row, and in that only
// the one started from the dates says who wrote the row and when.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

// Opens fraDuzelt on the selected schedule row; fraIslemTarihi on the selected line.
void openFraDuzelt(FrmMainVeldona& f, int row);
void openFraIslemTarihi(FrmMainVeldona& f);

// Asks where the schedule would fall below what has been paid; No leaves with nothing changed. A failed step
// is passed over, and the last one's words are shown at the end. Where no row matches nothing is written.
void TAKSIT_DUZELT_TARIH(FrmMainVeldona& f);
void TAKSIT_DUZELT_TUTAR(FrmMainVeldona& f);

void cmdKaydet_Click(FrmMainVeldona& f);
// The same by Enter, but that the overdue warning is left as it is.
void mskOdenecekMiktar_Enter(FrmMainVeldona& f);
void cmdVazGecKayit_Click(FrmMainVeldona& f);

// The date of the selected line and of the sale's head; the other lines and the schedule keep theirs. A
// statement that fails ends it without a word, and the panel stays open.
void cmdTamam_Click(FrmMainVeldona& f);

// The correction dialogs on the selected schedule row and payment.
void Command3_Click(FrmMainVeldona& f);
void L1_DblClick(FrmMainVeldona& f);
void L2_DblClick(FrmMainVeldona& f);

// Ties the controls of all repairs, deletes included, to their procedures.
void bindCorrections(FrmMainVeldona& f);

} // namespace veldona
