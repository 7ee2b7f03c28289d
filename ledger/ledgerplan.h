// Spreads an amount over monthly installments of the sale on show, beside or on top of its schedule.
//
// The plan is built on the schedule lists as the operator types: each key in one of the two plan fields loads
// the sale anew, which drops the rows not saved yet, and builds again, so that the lists always show exactly
// one plan. A row that stands on the screen alone has -1 in lstYapilacakOdmID. Only cmdTaksitKaydet writes.
// A step that fails is passed over: a count that fits no byte stays 0, and nothing is built.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

// Opens the panel, the selected row's day and amount proposed.
void mnuTaksitlendirmeYap_Click(FrmMainVeldona& f);

void MskTaksitAdedi_KeyUp(FrmMainVeldona& f);
void mskTaksitTutari_KeyUp(FrmMainVeldona& f);
// By count every row gets the same share, unrounded. By amount the last row takes what is left over, which
// may lower it.
void TAKSIT_OLUSTUR_ADET(FrmMainVeldona& f);
void TAKSIT_OLUSTUR_TUTAR(FrmMainVeldona& f);

// Writes the rows from the plan's first one on in one transaction; it says that it is done also where that
// was rolled back, and loads the sale anew.
void cmdTaksitKaydet_Click(FrmMainVeldona& f);
// The rows built stay on the screen until the next load.
void cmdTaksitVazgec_Click(FrmMainVeldona& f);
// False where there is no row to write or one of them failed, which has been told of.
[[nodiscard]] bool TAKSIT_SATIR_YAZ(FrmMainVeldona& f);

// lblToplamOdenecek: the schedule less the payments, both as listed.
void KALAN_TAKSITLENDIRME(FrmMainVeldona& f);

void bindPlan(FrmMainVeldona& f);

} // namespace veldona
