// What each key does, window by window: what F1 shows. It is a table and, with their keys, the entries of the
// menus.
//
// The screens' own handlers are the rule; a test presses the keys of every screen and holds this table
// against what happens.
#pragma once

#include <string>
#include <vector>

#include <QString>

#include "platform/controls/keys.h"

class QWidget;

namespace veldona {

class Form;
class WindowHost;

struct KeyLine {
    Key key;           // None: several, or a key that is the same in every window
    std::string shown; // as it stands on the keyboard, and where it counts only in one place: which
    std::string does;
};

// Of this screen alone, without the keys that every window has; empty where it has none. The keys of its
// menus' entries are among them: what one does says its tool tip, where it has none, its words.
[[nodiscard]] std::vector<KeyLine> keysOfScreen(const Form& form);
[[nodiscard]] const std::vector<KeyLine>& keysOfPreview();
[[nodiscard]] const std::vector<KeyLine>& keysOfEveryWindow();

// Shows `own` and the keys of every window, until the operator closes it or goes on to the guide's chapter of
// the screen.
void showKeys(WindowHost& host, QWidget* parent, const QString& windowTitle, const std::vector<KeyLine>& own,
              const std::string& screen = {});

} // namespace veldona
