// Keys of the window system as the screens number them, and back.
#pragma once

#include <optional>

#include <QString>

#include "platform/controls/keys.h"

class QKeyEvent;

namespace veldona {

[[nodiscard]] KeyEvent keyOf(const QKeyEvent& event);
// The character that a key going down makes; none for a command or a key that makes none.
[[nodiscard]] std::optional<KeyPress> characterOf(const QKeyEvent& event);

struct QtKey {
    int key = 0;
    Qt::KeyboardModifiers modifiers;
    QString text;
};
[[nodiscard]] QtKey toQt(const KeyEvent& event);

} // namespace veldona
