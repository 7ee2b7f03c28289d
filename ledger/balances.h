// How the lists become figures: total to pay, paid, remaining, and the row-by-row comparison of paid and due.
//
// All of it works on list text. What is owed comes from the sale's lines, what was paid from the payments;
// the schedule says only when. These procedures show no error, save the warning of TaksitKontrol.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

// The three balances of the sale on show; `indirim` is the stored discount, Null or "" counting as 0.
void BAKIYE_HESAPLA(FrmMainVeldona& f, const Value& indirim);
// The same for the load by number: the total is `topborc` as stored.
void UZAK_BAKIYE_HESAPLA(FrmMainVeldona& f, const Value& topborc);

// Sets payment i against installment i, by position, into L6; their sum into Label21.
void GECIKEN_ODM(FrmMainVeldona& f);
// Label15: what the schedule does not cover, where paid and total differ.
void TAKSITLENDIRILMEMIS_MIKTAR(FrmMainVeldona& f);
// Reads the discount into lblIndirim and warns where the schedule does not add up to the total.
bool TaksitKontrol(FrmMainVeldona& f);
// The same check under its other name.
bool TAKSIT_KONTROL(FrmMainVeldona& f);
// Marks the lists once the installments up to the collection's date pass what was paid. No load runs it.
void RENK_AYARLA(FrmMainVeldona& f);

} // namespace veldona
