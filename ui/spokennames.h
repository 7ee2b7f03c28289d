// What a screen reader calls a control that has no label of its own: the toolkit finds the label that leads
// to a plain field, here its parts and the columns of tables are named after theirs.
#pragma once

class QWidget;

namespace veldona {

// Names that the drawing gives are left alone. Once the window is drawn and its tables are linked.
void nameControls(QWidget& window);

} // namespace veldona
