// What each key does, window by window: the table behind F1.
//
// The screens' own handlers are the rule; a test presses the keys of every screen and holds this table
// against what happens.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "platform/controls/keys.h"

class QWidget;

namespace veldona {

class WindowHost;

struct KeyLine {
    Key key;           // None: several, or a key that is the same in every window
    const char* shown; // as it stands on the keyboard, and where it counts only in one place: which
    const char* does;
};

// Of the screen of this name alone, without the keys that every window has; empty where it has none.
[[nodiscard]] const std::vector<KeyLine>& keysOfScreen(std::string_view form);
[[nodiscard]] const std::vector<KeyLine>& keysOfPreview();
[[nodiscard]] const std::vector<KeyLine>& keysOfEveryWindow();

// Shows `own` and the keys of every window, until the operator closes it or goes on to the guide's chapter of
// the screen.
void showKeys(WindowHost& host, QWidget* parent, const QString& windowTitle, const std::vector<KeyLine>& own,
              const std::string& screen = {});

} // namespace veldona
