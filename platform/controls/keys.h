// Keys as the platform numbers them, and the two events that a key makes.
#pragma once

namespace veldona {

enum class Key {
    None = 0,
    Backspace = 8,
    Tab = 9,
    Enter = 13,
    Escape = 27,
    Space = 32,
    PageUp = 33,
    PageDown = 34,
    End = 35,
    Home = 36,
    Left = 37,
    Up = 38,
    Right = 39,
    Down = 40,
    Delete = 46,
    F1 = 112,
    F2,
    F3,
    F4,
    F5,
    F6,
    F7,
    F8,
    F9,
    F10,
    F11,
    F12,
};

// A key going down or up. Characters that are no key of the list come as Key::None with `character` set.
struct KeyEvent {
    Key key = Key::None;
    char32_t character = 0;
    bool shift = false;
    bool control = false;
    bool alt = false;
    bool swallowed = false; // set by a handler: nobody behind it sees the key
};

// A character arriving: 8 backspace, 13 Enter, 27 Escape, else the character itself.
struct KeyPress {
    char32_t character = 0;
    bool swallowed = false;
};

} // namespace veldona
