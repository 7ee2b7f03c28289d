#include "ui/keytranslation.h"

#include <algorithm>
#include <iterator>

#include <QKeyEvent>

namespace veldona {

namespace {

struct Pair {
    Qt::Key qt;
    Key key;
};

// Where two of Qt's keys mean one, the first is the one to send.
constexpr Pair kKeys[] = {
    {Qt::Key_Backspace, Key::Backspace},
    {Qt::Key_Tab, Key::Tab},
    {Qt::Key_Backtab, Key::Tab},
    {Qt::Key_Return, Key::Enter},
    {Qt::Key_Enter, Key::Enter},
    {Qt::Key_Escape, Key::Escape},
    {Qt::Key_Space, Key::Space},
    {Qt::Key_PageUp, Key::PageUp},
    {Qt::Key_PageDown, Key::PageDown},
    {Qt::Key_End, Key::End},
    {Qt::Key_Home, Key::Home},
    {Qt::Key_Left, Key::Left},
    {Qt::Key_Up, Key::Up},
    {Qt::Key_Right, Key::Right},
    {Qt::Key_Down, Key::Down},
    {Qt::Key_Delete, Key::Delete},
    {Qt::Key_F1, Key::F1},
    {Qt::Key_F2, Key::F2},
    {Qt::Key_F3, Key::F3},
    {Qt::Key_F4, Key::F4},
    {Qt::Key_F5, Key::F5},
    {Qt::Key_F6, Key::F6},
    {Qt::Key_F7, Key::F7},
    {Qt::Key_F8, Key::F8},
    {Qt::Key_F9, Key::F9},
    {Qt::Key_F10, Key::F10},
    {Qt::Key_F11, Key::F11},
    {Qt::Key_F12, Key::F12},
};

char32_t printable(const QKeyEvent& event) {
    const auto characters = event.text().toUcs4();
    if (characters.isEmpty()) return 0;
    const char32_t first = characters.first();
    return first >= U' ' && first != 127 ? first : 0;
}

bool isCommand(const QKeyEvent& event) {
    // Both together are the third level of the keyboard, where "@" is.
    const bool control = event.modifiers().testFlag(Qt::ControlModifier);
    return control != event.modifiers().testFlag(Qt::AltModifier);
}

// The letter that Ctrl turns into a command; its text is a control character.
char32_t commandLetter(const QKeyEvent& event) {
    const bool isLetter = event.key() >= Qt::Key_A && event.key() <= Qt::Key_Z;
    return isLetter && isCommand(event) && event.modifiers().testFlag(Qt::ControlModifier)
               ? U'a' + static_cast<char32_t>(event.key() - Qt::Key_A)
               : 0;
}

} // namespace

KeyEvent keyOf(const QKeyEvent& event) {
    KeyEvent made;
    const auto* found = std::find_if(std::begin(kKeys), std::end(kKeys),
                                     [&event](const Pair& pair) { return pair.qt == event.key(); });
    if (found != std::end(kKeys))
        made.key = found->key;
    else
        made.character = commandLetter(event) != 0 ? commandLetter(event) : printable(event);
    made.shift = event.modifiers().testFlag(Qt::ShiftModifier);
    made.control = event.modifiers().testFlag(Qt::ControlModifier);
    made.alt = event.modifiers().testFlag(Qt::AltModifier);
    return made;
}

std::optional<KeyPress> characterOf(const QKeyEvent& event) {
    if (isCommand(event)) return std::nullopt;
    switch (const Key key = keyOf(event).key) {
    case Key::Backspace:
    case Key::Enter:
    case Key::Escape:
    case Key::Space:
        return KeyPress{static_cast<char32_t>(key)};
    case Key::None:
        break;
    default:
        return std::nullopt;
    }
    const char32_t character = printable(event);
    return character == 0 ? std::nullopt : std::optional(KeyPress{character});
}

QtKey toQt(const KeyEvent& event) {
    QtKey made;
    made.modifiers.setFlag(Qt::ShiftModifier, event.shift);
    made.modifiers.setFlag(Qt::ControlModifier, event.control);
    made.modifiers.setFlag(Qt::AltModifier, event.alt);
    const auto* found = std::find_if(std::begin(kKeys), std::end(kKeys),
                                     [&event](const Pair& pair) { return pair.key == event.key; });
    if (found != std::end(kKeys)) {
        made.key = event.key == Key::Tab && event.shift ? Qt::Key_Backtab : found->qt;
        if (event.key == Key::Space) made.text = " ";
        if (event.key == Key::Enter) made.text = "\r";
    } else {
        made.text = QString::fromUcs4(&event.character, 1);
        made.key = made.text.toUpper().front().unicode();
        if (event.control && !event.alt) made.text = QChar(made.key & 0x1f);
    }
    return made;
}

} // namespace veldona
