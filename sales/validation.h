// What a sale must hold before it is saved. The total is not among it: the save button tests that one alone.
#pragma once

#include "sales/salescreen.h"

namespace veldona {

// False with a message that names the missing fields.
[[nodiscard]] bool MinimumInputKontrolu(FrmSatis& f);
// Nothing on this screen contradicts itself: always true.
[[nodiscard]] bool MantikliInputKontrolu(FrmSatis& f);

} // namespace veldona
