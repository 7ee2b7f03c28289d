#include "platform/controls/editing.h"

#include <algorithm>

#include "platform/runtime/text.h"
#include "platform/runtime/unicode.h"

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

} // namespace veldona
