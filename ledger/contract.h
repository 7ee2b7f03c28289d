// The installment contract of the sale on show: three scratch tables are filled, and a template prints them.
// Nothing in the ledger changes. The steps stand each by itself; the next print empties what one left behind.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

void cmdSozlesme_Click(FrmMainVeldona& f);

// The steps, in their order.
void SOZLESME_PLAN_YUKLE(FrmMainVeldona& f, std::int32_t islemno);  // BEKLENENODM
void SOZLESME_ODEME_YUKLE(FrmMainVeldona& f, std::int32_t islemno); // GUNUGECENODM
void SOZLESME_HAZIRLA(FrmMainVeldona& f, std::int32_t islemno);     // T_TEMP_GENEL, its one row
void SOZLESME_INDIRIM_YAZ(FrmMainVeldona& f);
void RaporYazdir(FrmMainVeldona& f);

} // namespace veldona
