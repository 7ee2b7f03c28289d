// A key on its way: down to the screen and to the control, the character, what the control does with it, up.
#include <algorithm>
#include <optional>

#include "platform/controls/editing.h"
#include "platform/controls/forms.h"
#include "platform/controls/handlers.h"
#include "platform/controls/userinput.h"
#include "platform/runtime/text.h"
#include "platform/runtime/unicode.h"

namespace veldona::user {

namespace {

constexpr int kPage = 10; // rows

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
bool deliver(Form& form, Control* focused, Event& event, ScreenHandler ofScreen, ControlHandler ofControl) {
    Forms& forms = form.forms();
    forms.dispatch([&] { call(form.*ofScreen, event); });
    if (event.swallowed || !lives(form)) return false;
    if (focused) forms.dispatch([&] { call(focused->*ofControl, event); });
    return !event.swallowed && lives(form);
}

bool deliverDown(Form& form, Control* focused, KeyEvent& event) {
    return deliver(form, focused, event, &Form::onKeyDown, &Control::onKeyDown);
}

bool deliverPress(Form& form, Control* focused, KeyPress& press) {
    return deliver(form, focused, press, &Form::onKeyPress, &Control::onKeyPress);
}

// What a key does to a text. The caret is where it belongs before the change is told.
template <class TextControl>
void editText(TextControl& control, const KeyEvent& event, char32_t character, int maxLength) {
    Editing editing{control.text(), control.selStart(), control.selLength()};
    if (editing.moveCaret(event.key)) {
        control.select(editing.caret, 0);
        return;
    }
    if (control.locked) return;
    const bool isEdited = event.key == Key::Delete ? editing.deleteForward()
                          : character == U'\b'     ? editing.backspace()
                          : character >= U' '      ? editing.insert(character, maxLength)
                                                   : false;
    if (!isEdited) return;
    control.form().forms().dispatch([&] { control.edit(std::move(editing.text), editing.caret); });
}

// The row that a key moves to; nothing where it moves none.
std::optional<int> movedRow(Key key, int row, int first, int count, bool endsToo) {
    int to = row;
    switch (key) {
    case Key::Up:
        to = row - 1;
        break;
    case Key::Down:
        to = row + 1;
        break;
    case Key::PageUp:
        to = row - kPage;
        break;
    case Key::PageDown:
        to = row + kPage;
        break;
    case Key::Home:
        to = endsToo ? first : row;
        break;
    case Key::End:
        to = endsToo ? count - 1 : row;
        break;
    default:
        return std::nullopt;
    }
    if (count <= first || to == row) return std::nullopt;
    to = std::clamp(to, first, count - 1);
    return to == row ? std::nullopt : std::optional(to);
}

// The next entry that begins with the character, from the one behind the selected one on and round.
std::optional<int> entryBeginning(const ComboBox& combo, char32_t character) {
    const std::string wanted = upperTurkish(utf8Of(character));
    for (int step = 1; step <= combo.count(); ++step) {
        const int row = (combo.listIndex() + step) % combo.count();
        if (upperTurkish(left(combo.list(row), 1)) != wanted) continue;
        return row == combo.listIndex() ? std::nullopt : std::optional(row);
    }
    return std::nullopt;
}

void keyToCombo(ComboBox& combo, const KeyEvent& event, char32_t character) {
    const bool isTyped = combo.style() == ComboBox::Style::Free;
    if (!combo.locked) {
        if (const auto row = movedRow(event.key, combo.listIndex(), 0, combo.count(), !isTyped)) {
            rowSelected(combo, *row);
            return;
        }
    }
    if (isTyped) {
        editText(combo, event, character, 0);
        return;
    }
    if (combo.locked || character < U' ') return;
    if (const auto row = entryBeginning(combo, character)) rowSelected(combo, *row);
}

void keyToSheet(FlexGrid& grid, Key key) {
    if (const auto row = movedRow(key, grid.row(), 1, grid.rows(), false)) grid.setRow(*row);
    if (key == Key::Left && grid.col() > 1) grid.setCol(grid.col() - 1);
    if (key == Key::Right && grid.col() + 1 < grid.columns()) grid.setCol(grid.col() + 1);
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

// What the control itself does with a key that nobody swallowed.
void actOn(Control& control, const KeyEvent& event, char32_t character) {
    Forms& forms = control.form().forms();
    const bool isPush = event.key == Key::Space;
    if (auto* text = dynamic_cast<TextBox*>(&control))
        editText(*text, event, character, text->maxLength);
    else if (auto* combo = dynamic_cast<ComboBox*>(&control))
        keyToCombo(*combo, event, character);
    else if (auto* list = dynamic_cast<ListBox*>(&control)) {
        if (const auto row = movedRow(event.key, list->listIndex(), 0, list->count(), true))
            rowSelected(*list, *row);
    } else if (auto* grid = dynamic_cast<DataGrid*>(&control)) {
        if (const auto row = movedRow(event.key, grid->currentRow(), 0, grid->rowCount(), false))
            rowSelected(*grid, *row);
    } else if (auto* sheet = dynamic_cast<FlexGrid*>(&control))
        keyToSheet(*sheet, event.key);
    else if (auto* box = dynamic_cast<CheckBox*>(&control); box && isPush)
        forms.dispatch([box] { box->setChecked(!box->checked()); });
    else if (auto* option = dynamic_cast<OptionButton*>(&control); option && isPush)
        forms.dispatch([option] { option->setValue(true); });
    else if (dynamic_cast<CommandButton*>(&control) && (isPush || event.key == Key::Enter))
        forms.dispatch([&control] { call(control.onClick); });
}

void pressAndAct(Form& form, Control* target, const KeyEvent& event) {
    KeyPress press{characterOf(event)};
    if (press.character != 0 && !deliverPress(form, target, press)) return;
    if (isCommand(event)) return;
    if (event.key == Key::Tab)
        moveFocusBy(form, event.shift ? -1 : 1);
    else if (canAct(target))
        actOn(*target, event, press.character);
}

} // namespace

bool pressKey(Form& form, KeyEvent key) {
    if (form.forms().active() != &form || !form.enabled() || form.forms().ended()) return false;
    const Forms::Hold hold(form.forms());
    const KeyEvent pressed = withKeyNamed(key);
    Control* target = focusedOf(form);
    KeyEvent down = pressed;
    if (deliverDown(form, target, down)) {
        if (MenuItem* entry = entryCalledBy(form, pressed))
            clickMenu(*entry);
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
