// How the account stands, beside its figures: which installments the payments cover, which one comes next,
// which are late and where today lies among them; what is late over all sales of the customer; and what
// guards against a slip at the till, the day of a collection and the last one posted.
//
// Nothing here stands in the way of a load or a posting: the marks are read from the books when a window
// shows the lists, the quiet lines when the screen rests (tmrDurum). Lists and figures stay what they are.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

// Marks of L4, L5, L6 and of L1, L2; the notes of DTPicker1; tmrDurum.
void bindState(FrmMainVeldona& f);

// What is due or was paid may be another than the lists' marks say.
void showMarksAnew(FrmMainVeldona& f);
// Another customer is about to be shown: what is late of the one before must not stand beside it.
void forgetArrears(FrmMainVeldona& f);
// What stands in the journal of the books is kept in mind outside of them.
void lookAtJournal(FrmMainVeldona& f);
// A payment was written. It says so beside "Tahsilat".
void notePosting(FrmMainVeldona& f);

} // namespace veldona
