// A message that is longer than the screen is high.
#pragma once

class QMessageBox;

namespace veldona {

// Its text is scrolled where box and text together would not fit; the buttons stay in sight. Once the box has
// its text and its buttons.
void keepOnScreen(QMessageBox& box);

} // namespace veldona
