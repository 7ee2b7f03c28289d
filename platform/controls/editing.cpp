#include "platform/controls/editing.h"

#include <algorithm>

#include "platform/runtime/text.h"

namespace veldona {

void Editing::replaceSelection(std::string_view by, int characters) {
    const auto start = static_cast<std::size_t>(caret);
    text = left(text, start) + std::string(by) + mid(text, start + static_cast<std::size_t>(selected) + 1);
    caret += characters;
    selected = 0;
}

bool Editing::insert(char32_t character, int maxLength) {
    if (maxLength > 0 && static_cast<int>(length(text)) - selected >= maxLength) return false;
    replaceSelection(utf8Of(character), 1);
    return true;
}

bool Editing::backspace() {
    if (selected == 0) {
        if (caret == 0) return false;
        --caret;
        selected = 1;
    }
    replaceSelection({}, 0);
    return true;
}

bool Editing::deleteForward() {
    if (selected == 0) {
        if (caret >= static_cast<int>(length(text))) return false;
        selected = 1;
    }
    replaceSelection({}, 0);
    return true;
}

bool Editing::moveCaret(Key key) {
    const int end = static_cast<int>(length(text));
    switch (key) {
    case Key::Left:
        caret = selected > 0 ? caret : std::max(caret - 1, 0);
        break;
    case Key::Right:
        caret = std::min(selected > 0 ? caret + selected : caret + 1, end);
        break;
    case Key::Home:
        caret = 0;
        break;
    case Key::End:
        caret = end;
        break;
    default:
        return false;
    }
    selected = 0;
    return true;
}

std::u32string charactersOf(std::string_view utf8) {
    const std::string sound = validUtf8(utf8);
    std::u32string characters;
    for (const char byte : sound) {
        const auto bits = static_cast<unsigned char>(byte);
        if ((bits & 0xC0) == 0x80)
            characters.back() = characters.back() << 6 | (bits & 0x3F);
        else
            characters.push_back(bits < 0x80   ? bits
                                 : bits < 0xE0 ? bits & 0x1F
                                 : bits < 0xF0 ? bits & 0x0F
                                               : bits & 0x07);
    }
    return characters;
}

std::string utf8Of(char32_t character) {
    if (character < 0x80) return {static_cast<char>(character)};
    const int behind = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    constexpr unsigned char leads[] = {0, 0xC0, 0xE0, 0xF0};
    std::string bytes(
        1, static_cast<char>(leads[behind] | static_cast<unsigned char>(character >> (6 * behind))));
    for (int i = behind - 1; i >= 0; --i)
        bytes += static_cast<char>(0x80 | static_cast<unsigned char>(character >> (6 * i) & 0x3F));
    return validUtf8(bytes);
}

} // namespace veldona
