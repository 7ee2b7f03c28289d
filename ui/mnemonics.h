// The underlined letters of a window, each there once at a time.
//
// A panel that opened over the window takes its letters from what lies below it; the words there go on
// without their mark until it closes.
#pragma once

class QWidget;

namespace veldona {

void shareLetters(QWidget& window);

} // namespace veldona
