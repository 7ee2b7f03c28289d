#include "platform/controls/keynames.h"

#include <string_view>

#include "platform/controls/editing.h"
#include "platform/controls/names.h"
#include "platform/runtime/unicode.h"

namespace veldona {

namespace {

struct NamedKey {
    std::string_view name;
    Key key;
};

constexpr NamedKey kNamedKeys[] = {
    {"Enter", Key::Enter},
    {"Esc", Key::Escape},
    {"Escape", Key::Escape},
    {"Tab", Key::Tab},
    {"Left", Key::Left},
    {"Right", Key::Right},
    {"Up", Key::Up},
    {"Down", Key::Down},
    {"Home", Key::Home},
    {"End", Key::End},
    {"PageUp", Key::PageUp},
    {"PageDown", Key::PageDown},
    {"Backspace", Key::Backspace},
    {"Delete", Key::Delete},
    {"Space", Key::Space},
    {"F1", Key::F1},
    {"F2", Key::F2},
    {"F3", Key::F3},
    {"F4", Key::F4},
    {"F5", Key::F5},
    {"F6", Key::F6},
    {"F7", Key::F7},
    {"F8", Key::F8},
    {"F9", Key::F9},
    {"F10", Key::F10},
    {"F11", Key::F11},
    {"F12", Key::F12},
};

} // namespace

std::string nameOf(Key key) {
    for (const NamedKey& known : kNamedKeys)
        if (known.key == key) return std::string(known.name);
    return {};
}

std::optional<KeyEvent> keyNamed(std::string_view name) {
    if (constexpr std::string_view control = "Ctrl+";
        name.size() > control.size() && sameName(name.substr(0, control.size()), control)) {
        auto made = keyNamed(name.substr(control.size()));
        if (made) made->control = true;
        return made;
    }
    for (const NamedKey& known : kNamedKeys)
        if (sameName(known.name, name)) return KeyEvent{.key = known.key};
    const std::u32string characters = charactersOf(name);
    if (characters.size() != 1) return std::nullopt;
    return KeyEvent{.character = characters.front()};
}

} // namespace veldona
