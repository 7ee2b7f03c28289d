// What every window owes the operator, as checks over its widgets. Each answers one line a fault, naming the
// widget; only what is shown counts.
#pragma once

#include <QSize>
#include <QStringList>

class QWidget;

namespace veldona::test {

// What takes the keyboard or is pressed, and says nothing to a screen reader.
[[nodiscard]] QStringList namelessControls(const QWidget& window);
// A letter that two of the window answer to with Alt, menu bar included.
[[nodiscard]] QStringList mnemonicClashes(const QWidget& window);
// Labels whose letter leads nowhere, or to what is not shown; two labels that lead to one field.
[[nodiscard]] QStringList strayLabels(const QWidget& window);
// Needs more room than `screen` has.
[[nodiscard]] QStringList overSize(const QWidget& window, const QSize& screen);
// Words that do not fit into their widget: labels, buttons, tabs, headings, titles.
[[nodiscard]] QStringList clippedWords(const QWidget& window);
// Tab from the focused control, all round: what it does not reach, and what it reaches twice.
[[nodiscard]] QStringList tabFaults(QWidget& window);

} // namespace veldona::test
