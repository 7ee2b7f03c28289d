// From an account number to a ledger on the screen.
//
// None of these loads shows a store's error of its own: the ones that go on past failures say so, the others
// leave the event to the last handler. Nothing here writes to the books.
//
// A load lets waiting events run, and the operator may act in the middle of it. Before that the sale on show
// is put away, so that nothing is written to one that goes with another account. Behind it, a load that was
// begun meanwhile is the newer one, and what is left of the older one isn't done any more: those that answer
// answer false then.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

// Lets waiting events run; false where a load was run by them, or the screen is gone.
[[nodiscard]] bool letEventsIntoLoad(FrmMainVeldona& f);

// The change event of Text1, so each keystroke: finds the customer and fills L3.
void MusteriYukle(FrmMainVeldona& f);
// Fills L3 with the customer's sale numbers, highest first, and blanks the ledger. No row of L3 is selected
// by it.
bool ISLEMNUMARALARI_YUKLE(FrmMainVeldona& f);

// Loads the sale selected in L3; without a selection all lists are emptied and the three balances are 0,00.
bool YAKIN_CAGIR(FrmMainVeldona& f);
// The lines of that sale.
void CAGIR(FrmMainVeldona& f);
// List2 from the product table; a code that is missing there gets no row, so that the later rows slip.
void goster(FrmMainVeldona& f);
// The load by gISLEMNO, for a caller outside this screen: the list of sales is not looked at, the total is
// the stored TOPBORC, unscaled, and no discount is taken off.
void UZAK_CAGIR(FrmMainVeldona& f);
void UZAK_ICIN_CAGIR(FrmMainVeldona& f);

void L3_Click(FrmMainVeldona& f);
// Opens the selected sale: lines, schedule, payments, balances, header, overdue warning.
bool L3_DblClick(FrmMainVeldona& f);

// A click on one of the parallel lists: its neighbours take the same row; a schedule row proposes its amount.
void L1_Click(FrmMainVeldona& f);
void L2_Click(FrmMainVeldona& f);
void L4_Click(FrmMainVeldona& f);
void L5_Click(FrmMainVeldona& f);
void rowList_Click(FrmMainVeldona& f, int row);

} // namespace veldona
