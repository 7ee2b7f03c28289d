// What was taken back at this till or at another one while its account stood on the main screen: the screen
// then shows the books as they are now.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

// From now on; what was taken back before is on the screen.
void beginWatchingForTakenBack(FrmMainVeldona& f);
// Loads the account on show anew where one of its acts was taken back since the last call. What is typed into
// the fields stays. As long as a panel is open, or a load is under way, it waits: the panel's rows are those
// of the lists.
void showTakenBack(FrmMainVeldona& f);
// The buttons that save an open panel write to the account that stands there: where one of its acts was taken
// back meanwhile, they say so, close the panel and show the account as it is now.
void guardPanels(FrmMainVeldona& f);
// The screen on which acts are taken back; then what was picked there, or the books anew.
void openRecentActs(FrmMainVeldona& f);

} // namespace veldona
