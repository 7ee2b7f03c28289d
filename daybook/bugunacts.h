// What is done from the call list: an account opened, a note written, the list on paper and as a spreadsheet.
#pragma once

#include "daybook/bugun.h"

namespace veldona {

// What was written since is read anew; the customer stood on stays, where still listed.
void refreshCallList(FrmBugun& f);
// Hands the customer stood on to the caller and closes the screen; nothing without one.
void openCalledAccount(FrmBugun& f);
// Of the customer stood on. False where something is missing or the write failed, which has been told.
bool saveCallNote(FrmBugun& f);
// What is shown, in its order.
void printCallList(FrmBugun& f);
void writeCallSheet(FrmBugun& f);

} // namespace veldona
