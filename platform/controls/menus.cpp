#include "platform/controls/menus.h"

#include <algorithm>

#include "platform/controls/form.h"
#include "platform/controls/keynames.h"
#include "platform/runtime/error.h"

namespace veldona {

namespace {

bool popsUp(const Control& menu) {
    const auto& controls = menu.form().controls();
    return std::any_of(controls.begin(), controls.end(), [&menu](const Control* each) {
        return each->popupMenu == &menu && each->isShown() && each->isUsable();
    });
}

char32_t lower(char32_t character) {
    return character >= U'A' && character <= U'Z' ? character - U'A' + U'a' : character;
}

} // namespace

Menu::Menu(Form& form, std::string name, std::string words)
    : Captioned(form, std::move(name), std::move(words)) {}

bool Menu::hasEntryToShow() const {
    return std::any_of(entries_.begin(), entries_.end(),
                       [](const MenuItem* each) { return each->visible(); });
}

MenuItem::MenuItem(Menu& menu, std::string name, std::string words, std::string key)
    : Captioned(menu.form(), std::move(name), std::move(words)), keyName_(std::move(key)) {
    placeIn(menu);
    menu.entries_.push_back(this);
    if (keyName_.empty()) return;
    const auto named = keyNamed(keyName_);
    if (!named) raise(ErrorNumber::InvalidCall);
    key_ = *named;
}

bool MenuItem::isInReach() const {
    return visible() && isUsable() && (holder()->visible() || popsUp(*holder()));
}

bool MenuItem::isCalledBy(const KeyEvent& event) const {
    return !keyName_.empty() && event.key == key_.key && lower(event.character) == lower(key_.character) &&
           event.control == key_.control && event.alt == key_.alt && event.shift == key_.shift;
}

} // namespace veldona
