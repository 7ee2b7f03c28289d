// The commands of the main screen that open another one. A command whose screen the program does not have is
// seen, and cannot be pressed.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

// A new sale for the customer on show, who becomes the current one.
void cmdSatis_Click(FrmMainVeldona& f);
// Hands the help program beside the executable to the desktop.
void cmdOnlineYardimIste_Click(FrmMainVeldona& f);

void bindCommands(FrmMainVeldona& f);

} // namespace veldona
