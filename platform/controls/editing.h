// A text being edited by keys: what it holds, where the caret stands, what is selected. Counted in
// characters; bytes that are no character belong to the one before them, so that broken text is edited
// without harm.
#pragma once

#include <string>
#include <string_view>

#include "platform/controls/keys.h"

namespace veldona {

struct Editing {
    std::string text;
    int caret = 0;
    int selected = 0; // characters behind the caret

    // Each gives back whether the text changed.
    bool insert(char32_t character, int maxLength); // in place of the selection; 0: no limit
    bool backspace();
    bool deleteForward();
    // Left, Right, Home, End; false for other keys.
    bool moveCaret(Key key);

private:
    void replaceSelection(std::string_view by, int characters);
};

} // namespace veldona
