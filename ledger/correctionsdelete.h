// What is deleted from the ledger: a whole sale, one of its lines, one of its schedule rows.
//
// Only the whole sale is one transaction, which puts its stock back; its payments go with it, however much
// was collected. A deleted line puts nothing back and leaves the schedule as it is, so that the next load
// finds the two apart.
#pragma once

#include <cstdint>
#include <optional>

#include "ledger/mainscreen.h"

namespace veldona {

// Asks first. Whatever the answer the account is loaded anew, with no sale on show; where the delete failed
// its error is told instead, and nothing has changed.
void cmdIslemNoSil_Click(FrmMainVeldona& f);
// The four deletes, the head last; raises what the first failing one raises.
void SATIS_KAYIT_SIL(FrmMainVeldona& f, std::int32_t islemno);

// The only line of a sale is never deleted. A failed step is passed over, and its words are shown at the end.
void mnuSatirSil_Click(FrmMainVeldona& f);
// A row that stands on the screen alone just leaves it.
void mnuYapilacakOdmSatirSil_Click(FrmMainVeldona& f);

} // namespace veldona
