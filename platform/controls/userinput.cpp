#include "platform/controls/userinput.h"

#include <algorithm>

#include "platform/controls/editing.h"
#include "platform/controls/forms.h"
#include "platform/controls/handlers.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/runtime/unicode.h"

namespace veldona::user {

namespace {

void raiseClick(Control& control) {
    control.form().forms().dispatch([&control] { call(control.onClick); });
}

bool isInFront(const Control& control) {
    return control.form().forms().active() == &control.form() && canReach(control);
}

// A menu that no bar shows opens over a control that names it.
bool popsUp(const Control& menu) {
    const auto& controls = menu.form().controls();
    return std::any_of(controls.begin(), controls.end(), [&menu](const Control* each) {
        return each->popupMenu == &menu && each->isShown() && each->isUsable();
    });
}

bool canOpen(const Control& item) {
    if (!item.isUsable() || !item.visible()) return false;
    for (const Control* menu = item.holder(); menu; menu = menu->holder())
        if (!menu->visible() && !popsUp(*menu)) return false;
    return true;
}

// Turns to the control's screen; false where the control is out of reach, or by then is.
bool turnTo(Control& control) {
    if (!canReach(control)) return false;
    control.form().forms().turnTo(control.form());
    return isInFront(control);
}

// Enters a control as the hand does that is about to use it; false where it is out of reach, or by then is.
bool reach(Control& control) {
    if (!turnTo(control)) return false;
    if (control.takesFocus()) control.form().moveFocus(control);
    return isInFront(control);
}

// What an act that found no target comes to: refused, but done where its own events closed the screen.
bool closedItsScreen(const Control& control) {
    return control.form().isUnloaded();
}

void selectAll(Control& control) {
    if (auto* text = dynamic_cast<TextBox*>(&control)) text->selectAll();
    if (auto* combo = dynamic_cast<ComboBox*>(&control)) combo->selectAll();
}

bool putDate(DateBox& box, std::string_view text) {
    if (text.empty()) return pickDate(box, Null{});
    return isDate(Value(text)) && pickDate(box, Value(text));
}

bool putText(Control& control, std::string_view text) {
    if (auto* box = dynamic_cast<TextBox*>(&control)) {
        std::string kept = validUtf8(text);
        if (box->maxLength > 0) kept = left(kept, static_cast<std::size_t>(box->maxLength));
        const int end = static_cast<int>(length(kept));
        textEdited(*box, std::move(kept), end);
        return true;
    }
    if (auto* date = dynamic_cast<DateBox*>(&control)) return putDate(*date, text);
    auto* combo = dynamic_cast<ComboBox*>(&control);
    if (!combo) return false;
    if (combo->style() == ComboBox::Style::ListOnly) return choose(*combo, text);
    textEdited(*combo, validUtf8(text));
    return true;
}

} // namespace

bool canReach(const Control& control) {
    if (!control.form().forms().isOpenToOperator(control.form())) return false;
    if (dynamic_cast<const MenuItem*>(&control)) return canOpen(control);
    return control.isShown() && control.isUsable();
}

bool focus(Control& control) {
    const Forms::Hold hold(control.form().forms());
    if (!control.takesFocus() || !turnTo(control)) return false;
    control.form().moveFocus(control);
    return true;
}

bool type(Control& textControl, std::string_view text) {
    if (!dynamic_cast<TextBox*>(&textControl) && !dynamic_cast<ComboBox*>(&textControl)) return false;
    Form& form = textControl.form();
    const Forms::Hold hold(form.forms());
    if (!reach(textControl) || form.activeControl() != &textControl) return closedItsScreen(textControl);
    selectAll(textControl);
    // What a screen opened or closed by a character leaves of the text is typed to nobody.
    for (const char32_t character : charactersOf(text))
        if (!pressKey(form, {.character = character})) break;
    return true;
}

bool put(Control& textControl, std::string_view text) {
    Form& form = textControl.form();
    const Forms::Hold hold(form.forms());
    if (textControl.locked || !reach(textControl) || !putText(textControl, text))
        return closedItsScreen(textControl);
    const std::u32string characters = charactersOf(text);
    KeyEvent last{.key = characters.empty() ? Key::Delete : Key::None};
    if (!characters.empty()) last.character = characters.back();
    if (!form.isUnloaded()) keyUp(form, form.activeControl(), last);
    return true;
}

bool click(Control& control) {
    if (dynamic_cast<ToolBar*>(&control) || dynamic_cast<Timer*>(&control)) return false;
    const Forms::Hold hold(control.form().forms());
    if (!reach(control)) return closedItsScreen(control);
    Forms& forms = control.form().forms();
    if (auto* box = dynamic_cast<CheckBox*>(&control))
        forms.dispatch([box] { box->setChecked(!box->checked()); });
    else if (auto* option = dynamic_cast<OptionButton*>(&control))
        forms.dispatch([option] { option->setValue(true); });
    else
        raiseClick(control);
    return true;
}

bool clickRow(Control& listOrGrid, int row) {
    const Forms::Hold hold(listOrGrid.form().forms());
    const auto isRowOf = [row](int count) { return row >= 0 && row < count; };
    if (auto* list = dynamic_cast<ListBox*>(&listOrGrid)) {
        if (!isRowOf(list->count()) || !reach(*list) || !isRowOf(list->count()))
            return closedItsScreen(*list);
        rowSelected(*list, row);
        return true;
    }
    if (auto* grid = dynamic_cast<DataGrid*>(&listOrGrid)) {
        if (!isRowOf(grid->rowCount()) || !reach(*grid) || !isRowOf(grid->rowCount()))
            return closedItsScreen(*grid);
        rowSelected(*grid, row);
        if (!grid->form().isUnloaded()) raiseClick(*grid);
        return true;
    }
    if (auto* combo = dynamic_cast<ComboBox*>(&listOrGrid)) {
        if (combo->locked || !isRowOf(combo->count()) || !reach(*combo) || !isRowOf(combo->count()))
            return closedItsScreen(*combo);
        rowSelected(*combo, row);
        return true;
    }
    auto* tabs = dynamic_cast<TabControl*>(&listOrGrid);
    if (!tabs || !isRowOf(static_cast<int>(tabs->pages().size())) || !reach(*tabs))
        return tabs && closedItsScreen(*tabs);
    tabs->setTab(row);
    raiseClick(*tabs);
    return true;
}

bool dblClick(Control& control) {
    const Forms::Hold hold(control.form().forms());
    if (!click(control)) return false;
    if (isInFront(control)) control.form().forms().dispatch([&control] { call(control.onDblClick); });
    return true;
}

bool dblClickRow(Control& listOrGrid, int row) {
    const Forms::Hold hold(listOrGrid.form().forms());
    if (!clickRow(listOrGrid, row)) return false;
    if (isInFront(listOrGrid)) listOrGrid.form().forms().dispatch([&] { call(listOrGrid.onDblClick); });
    return true;
}

bool clickCell(FlexGrid& grid, int row, int column) {
    const auto isCell = [&] {
        return row >= 0 && row < grid.rows() && column >= 0 && column < grid.columns();
    };
    const Forms::Hold hold(grid.form().forms());
    if (!isCell() || !reach(grid) || !isCell()) return closedItsScreen(grid);
    grid.setRow(row);
    grid.setCol(column);
    raiseClick(grid);
    return true;
}

bool clickHead(DataGrid& grid, int column) {
    const Forms::Hold hold(grid.form().forms());
    if (column < 0 || column >= static_cast<int>(grid.columns().size()) || !reach(grid))
        return closedItsScreen(grid);
    grid.form().forms().dispatch([&] { call(grid.onHeadClick, column); });
    return true;
}

bool choose(ComboBox& combo, std::string_view entry) {
    const Forms::Hold hold(combo.form().forms());
    if (combo.locked || !reach(combo)) return closedItsScreen(combo);
    for (int row = 0; row < combo.count(); ++row) {
        if (combo.list(row) != entry) continue;
        rowSelected(combo, row);
        return true;
    }
    return false;
}

bool setChecked(CheckBox& box, bool checked) {
    if (!canReach(box)) return false;
    return box.checked() == checked || click(box);
}

bool setChecked(DateBox& box, bool checked, DateTime today) {
    if (box.style() != DateBox::Style::PickerWithCheck || !canReach(box)) return false;
    if (checked == !box.value().isNull()) return true;
    const Value held = box.lastDate().isNull() ? Value(today) : box.lastDate();
    return pickDate(box, checked ? held : Value());
}

bool pickDate(DateBox& box, const Value& dateOrNull) {
    const Forms::Hold hold(box.form().forms());
    const bool canHold = dateOrNull.isNull() ? box.style() != DateBox::Style::Picker : isDate(dateOrNull);
    if (!canHold || box.locked || !reach(box)) return closedItsScreen(box);
    box.form().forms().dispatch([&] { box.setValue(dateOrNull); });
    return true;
}

bool clickMenu(MenuItem& item) {
    const Forms::Hold hold(item.form().forms());
    if (!turnTo(item)) return false;
    raiseClick(item);
    return true;
}

MenuItem* entryCalledBy(const Form& form, const KeyEvent& key) {
    for (Control* each : form.controls()) {
        auto* item = dynamic_cast<MenuItem*>(each);
        if (item && item->isCalledBy(key) && canReach(*item)) return item;
    }
    return nullptr;
}

bool clickTool(ToolBar& bar, std::string_view key) {
    const Forms::Hold hold(bar.form().forms());
    if (!turnTo(bar)) return false;
    const ToolBar::Tool* tool = bar.find(key);
    if (!tool || !tool->visible || !tool->enabled) return false;
    bar.form().forms().dispatch([&bar, pressed = tool->key] { call(bar.onToolClick, pressed); });
    return true;
}

void tick(Timer& timer) {
    if (!timer.enabled() || timer.interval <= 0) return;
    timer.form().forms().dispatch([&timer] { call(timer.onTimer); });
}

void textEdited(TextBox& box, std::string text, int selStart) {
    box.form().forms().dispatch([&] { box.edit(std::move(text), selStart); });
}

void textEdited(ComboBox& box, std::string text) {
    const int end = static_cast<int>(length(text));
    box.form().forms().dispatch([&] { box.edit(std::move(text), end); });
}

void rowSelected(ListBox& list, int row) {
    if (row < 0 || row >= list.count()) return;
    list.setListIndex(row);
    raiseClick(list);
}

void rowSelected(ComboBox& combo, int row) {
    if (row < 0 || row >= combo.count()) return;
    combo.setListIndex(row);
    raiseClick(combo);
}

void rowSelected(DataGrid& grid, int row) {
    if (row < 0 || row >= grid.rowCount()) return;
    grid.form().forms().dispatch([&] {
        grid.moveTo(row);
        call(grid.onRowChange);
    });
}

} // namespace veldona::user
