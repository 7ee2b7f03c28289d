// Money taken from the customer: one row of TAKSITODENEN against the sale on show, never against an
// installment.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

// Posts the amount of mskOdenenPara. A failed step is passed over without a word and the next one runs: when
// the row could not be written the screen still says that it was, until the next load. Posting twice posts
// twice.
void Command1_Click(FrmMainVeldona& f);
// Label8 from the payments list, Label9 from it and Label11, all with two decimals. Raises what does not
// read.
void TAHSILAT_TOPLAM_YENILE(FrmMainVeldona& f);
// Which way of entry the plan's frame shows: by count or by amount.
void TAKSIT_CERCEVE_AYARLA(FrmMainVeldona& f);

void fillCboKasa(FrmMainVeldona& f);
void cboKasa_Change(FrmMainVeldona& f);
void cboKasa_Click(FrmMainVeldona& f);

} // namespace veldona
