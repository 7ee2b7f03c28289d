// The main screen turned to an account by whoever looked it up elsewhere.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

// Enter in L3: opens the selected sale, and the amount can be typed.
void openSelectedSale(FrmMainVeldona& f);

// Opens a screen in which an account is picked, or one of its sales, and then what was picked there: the
// answer 4 in gFormKayit with the account in HSTNO and the sale's number, or 0, in KayitID.
void openPickedIn(FrmMainVeldona& f, const char* screen);
// The same for a screen that is told something in gFormKayit.
void openPicked(FrmMainVeldona& f, const char* screen);

} // namespace veldona
