// The two small pages beside the customer grid: the keys of the screen, and the shop's letterhead.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

void fillPages(FrmMainVeldona& f);

} // namespace veldona
