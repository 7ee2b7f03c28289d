// A key on its way: down to the screen and to the control, the character, what the control does with it, up.
#include <algorithm>

#include "platform/controls/forms.h"
#include "platform/controls/handlers.h"
#include "platform/controls/keynames.h"
#include "platform/controls/userinput.h"

namespace veldona::user {

namespace {

bool lives(const Form& form) {
    return !form.isUnloaded() && !form.forms().ended();
}

bool canAct(const Control* control) {
    return control && lives(control->form()) && control->isShown() && control->isUsable();
}

Control* focusedOf(const Form& form) {
    Control* focused = form.activeControl();
    return canAct(focused) ? focused : nullptr;
}

// The keys that are a character as well come under their own name.
KeyEvent withKeyNamed(KeyEvent event) {
    if (event.key == Key::None) {
        switch (event.character) {
        case U'\b':
            event.key = Key::Backspace;
            break;
        case U'\t':
            event.key = Key::Tab;
            break;
        case U'\n':
        case U'\r':
            event.key = Key::Enter;
            break;
        case 27:
            event.key = Key::Escape;
            break;
        case U' ':
            event.key = Key::Space;
            break;
        default:
            break;
        }
    }
    event.swallowed = false;
    return event;
}

// A command key makes no character; both together are the third level of the keyboard, where "@" is.
bool isCommand(const KeyEvent& event) {
    return event.control != event.alt;
}

// 0: the key makes no character.
char32_t characterOf(const KeyEvent& event) {
    if (isCommand(event)) return 0;
    switch (event.key) {
    case Key::Backspace:
    case Key::Enter:
    case Key::Escape:
    case Key::Space:
        return static_cast<char32_t>(event.key);
    case Key::None:
        return event.character;
    default:
        return 0;
    }
}

// To the screen first; false where one of the two swallowed it, or nobody is left to take it.
template <class Event, class ScreenHandler, class ControlHandler>
bool deliver(Form& form, Control* focused, Event& event, ScreenHandler ofScreen, ControlHandler ofControl,
             const std::string& words) {
    Forms& forms = form.forms();
    const ActWords act{&form, words};
    forms.dispatch([&] { call(form.*ofScreen, event); }, act);
    if (event.swallowed || !lives(form)) return false;
    if (focused) forms.dispatch([&] { call(focused->*ofControl, event); }, act);
    return !event.swallowed && lives(form);
}

bool deliverDown(Form& form, Control* focused, KeyEvent& event) {
    return deliver(form, focused, event, &Form::onKeyDown, &Control::onKeyDown, nameOf(event.key));
}

bool deliverPress(Form& form, Control* focused, KeyPress& press) {
    return deliver(form, focused, press, &Form::onKeyPress, &Control::onKeyPress, {});
}

void moveFocusBy(Form& form, int step) {
    const auto& controls = form.controls();
    const int count = static_cast<int>(controls.size());
    const auto at = std::find(controls.begin(), controls.end(), form.activeControl());
    int place = at != controls.end() ? static_cast<int>(at - controls.begin()) : step > 0 ? -1 : count;
    for (int tried = 0; tried < count; ++tried) {
        place = (place + step + count) % count;
        Control* next = controls[static_cast<std::size_t>(place)];
        if (!next->takesFocus() || !canAct(next)) continue;
        form.moveFocus(*next);
        return;
    }
}

void pressAndAct(Form& form, Control* target, const KeyEvent& event) {
    KeyPress press{characterOf(event)};
    if (press.character != 0 && !deliverPress(form, target, press)) return;
    if (isCommand(event)) return;
    if (event.key == Key::Tab)
        moveFocusBy(form, event.shift ? -1 : 1);
    else if (canAct(target))
        target->takeKey(event, press.character);
}

} // namespace

bool pressKey(Form& form, KeyEvent key) {
    if (form.forms().active() != &form || !form.enabled() || form.forms().ended()) return false;
    const Forms::Hold hold(form.forms());
    const KeyEvent pressed = withKeyNamed(key);
    Control* target = focusedOf(form);
    KeyEvent down = pressed;
    if (deliverDown(form, target, down)) {
        if (Control* called = calledBy(form, pressed))
            click(*called);
        else
            pressAndAct(form, target, pressed);
    }
    if (lives(form)) keyUp(form, focusedOf(form), pressed);
    return true;
}

bool keyDown(Form& form, Control* focused, KeyEvent event) {
    const Forms::Hold hold(form.forms());
    return deliverDown(form, focused, event);
}

bool keyPress(Form& form, Control* focused, KeyPress event) {
    const Forms::Hold hold(form.forms());
    return deliverPress(form, focused, event);
}

void keyUp(Form& form, Control* focused, KeyEvent event) {
    if (focused) form.forms().dispatch([&] { call(focused->onKeyUp, event); });
}

} // namespace veldona::user
