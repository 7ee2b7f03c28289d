// What the customer owes past its date, and the warning written on the customer's card.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

// Sums, over the customer's sales, what fell due in the report range and is not covered by the sale's
// payments of any date, into lblVadeFarki; a sale paid ahead offsets no other. With no account number nothing
// happens.
void GECIKME_UYARI(FrmMainVeldona& f);
// The customer's whole schedule less all payments, into cyMusteriBakiye.
void MUSTERI_BAKIYE(FrmMainVeldona& f);
// True for a customer of the group of guarantors, who have no account of their own to warn of.
[[nodiscard]] bool GRUP_KONTROL(FrmMainVeldona& f);
void Command6_Click(FrmMainVeldona& f);
// Blinks lbluyari while a warning stands on the card.
void tmrUyari_Timer(FrmMainVeldona& f);
void lbluyari_Click(FrmMainVeldona& f);

} // namespace veldona
