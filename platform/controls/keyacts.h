// What keys do to a text and to a row, for the kinds of controls that have one.
#pragma once

#include <optional>

#include "platform/controls/editing.h"
#include "platform/controls/keys.h"

namespace veldona {

// The text as the key leaves it; nothing where it changes none. The caret alone is moved at once.
template <class TextControl>
[[nodiscard]] std::optional<Editing> editedBy(TextControl& control, const KeyEvent& key, char32_t character,
                                              int maxLength) {
    Editing editing{control.text(), control.selStart(), control.selLength()};
    if (editing.moveCaret(key.key)) {
        control.select(editing.caret, 0);
        return std::nullopt;
    }
    if (control.locked) return std::nullopt;
    const bool isEdited = key.key == Key::Delete ? editing.deleteForward()
                          : character == U'\b'   ? editing.backspace()
                          : character >= U' '    ? editing.insert(character, maxLength)
                                                 : false;
    return isEdited ? std::optional(std::move(editing)) : std::nullopt;
}

// The row that a key moves to, of those from `first` on; nothing where it moves none. `endsToo`: Home and End
// are for the rows.
[[nodiscard]] std::optional<int> movedRow(Key key, int row, int first, int count, bool endsToo);

} // namespace veldona
