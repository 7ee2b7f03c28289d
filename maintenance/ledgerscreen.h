// The main screen, of which the correction dialogs read and mend the lists.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

// Error 91 where it is not loaded.
[[nodiscard]] FrmMainVeldona& ledgerScreen(Forms& forms);

} // namespace veldona
