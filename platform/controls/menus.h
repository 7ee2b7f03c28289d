// Menus and their entries. A screen declares them among its controls: the words, the key, and as onClick the
// act. The window makes its bar of them, the console knows them by name.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/controls/controls.h"

namespace veldona {

class MenuItem;

// One of the bar, shown while it has an entry to show. A hidden one pops up from the control that names it.
class Menu : public Captioned {
public:
    Menu(Form& form, std::string name, std::string words);
    [[nodiscard]] bool takesFocus() const override { return false; }
    [[nodiscard]] const std::vector<MenuItem*>& entries() const { return entries_; } // as declared
    [[nodiscard]] bool hasEntryToShow() const;

private:
    friend class MenuItem;
    std::vector<MenuItem*> entries_;
};

class MenuItem : public Captioned {
public:
    // `key`, "F8" or "Ctrl+F", calls it from anywhere in its screen, where neither the screen nor a control
    // has swallowed it. Error 5 for a name that is no key's.
    MenuItem(Menu& menu, std::string name, std::string words, std::string key = {});
    [[nodiscard]] bool takesFocus() const override { return false; }
    // Its menu stands in the bar, or pops up from a control that can be used.
    [[nodiscard]] bool isInReach() const override;
    [[nodiscard]] const std::string& keyName() const { return keyName_; } // as it is shown; "": none
    [[nodiscard]] bool isCalledBy(const KeyEvent& event) const override;

private:
    std::string keyName_;
    KeyEvent key_;
};

} // namespace veldona
