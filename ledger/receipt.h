// The receipt of a collection: on the built-in layout, or on a template that a shop may edit.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

// Prints the receipt of the amount in mskOdenenPara with the balance over all sales of the customer. A step
// that fails is passed over. With the ready-made form chosen nothing is printed and the frame stays.
void cmdMakbuzYazdir_Click(FrmMainVeldona& f);

// The route by the template; no control takes it, the ready-made form is meant for it. MAKBUZ_HAZIRLA fills
// the scratch row from the screen and the books, by MAKBUZ_GENEL_YAZ; RaporYazdirTahsilatMakbuzu shows the
// template.
void MAKBUZ_HAZIRLA(FrmMainVeldona& f);
void RaporYazdirTahsilatMakbuzu(FrmMainVeldona& f);

} // namespace veldona
