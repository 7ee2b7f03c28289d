// The main screen's life: load, activation, keys, unload.
#pragma once

#include "ledger/mainscreen.h"

namespace veldona {

void Form_Load(FrmMainVeldona& f);
// Each time the screen comes to the front; a step that fails is passed over.
void Form_Activate(FrmMainVeldona& f);
void Form_Unload(FrmMainVeldona& f);
void Form_KeyDown(FrmMainVeldona& f, KeyEvent& event);
void Form_KeyPress(FrmMainVeldona& f, KeyPress& press);

} // namespace veldona
