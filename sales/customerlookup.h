// Whose card the sale screen shows. The customer of a new sale is gHSTNO, set by the main screen and by the
// finder; a number typed and entered changes what is shown, not who the sale belongs to.
#pragma once

#include "sales/salescreen.h"

namespace veldona {

// Enter looks the number up, F10 opens the customer finder.
void txtCariKod_KeyDown(FrmSatis& f, KeyEvent& event);
// txtUnvan from the card of that ID; an empty text leaves it alone.
void txtKod_Change(FrmSatis& f);

} // namespace veldona
