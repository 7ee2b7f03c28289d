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

bool isInFront(const Control& control) {
    return control.form().forms().active() == &control.form() && canReach(control);
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

} // namespace

bool canReach(const Control& control) {
    return control.form().forms().isOpenToOperator(control.form()) && control.isInReach();
}

bool focus(Control& control) {
    const Forms::Hold hold(control.form().forms());
    if (!control.takesFocus() || !turnTo(control)) return false;
    control.form().moveFocus(control);
    return true;
}

bool type(Control& textControl, std::string_view text) {
    if (!textControl.takesTyping()) return false;
    Form& form = textControl.form();
    const Forms::Hold hold(form.forms());
    if (!reach(textControl) || form.activeControl() != &textControl) return closedItsScreen(textControl);
    textControl.selectAll();
    // What a screen opened or closed by a character leaves of the text is typed to nobody.
    for (const char32_t character : charactersOf(text))
        if (!pressKey(form, {.character = character})) break;
    return true;
}

bool put(Control& textControl, std::string_view text) {
    Form& form = textControl.form();
    const Forms::Hold hold(form.forms());
    if (textControl.locked || !reach(textControl) || !textControl.put(text))
        return closedItsScreen(textControl);
    const std::u32string characters = charactersOf(text);
    KeyEvent last{.key = characters.empty() ? Key::Delete : Key::None};
    if (!characters.empty()) last.character = characters.back();
    if (!form.isUnloaded()) keyUp(form, form.activeControl(), last);
    return true;
}

bool click(Control& control) {
    if (!control.takesClick()) return false;
    const Forms::Hold hold(control.form().forms());
    if (!reach(control)) return closedItsScreen(control);
    control.press();
    return true;
}

bool clickRow(Control& listOrGrid, int row) {
    const Forms::Hold hold(listOrGrid.form().forms());
    const auto isRow = [&] { return row >= 0 && row < listOrGrid.rowsToClick(); };
    if (!isRow() || !reach(listOrGrid) || !isRow()) return closedItsScreen(listOrGrid);
    listOrGrid.clickRow(row);
    return true;
}

bool dblClick(Control& control) {
    const Forms::Hold hold(control.form().forms());
    if (!click(control)) return false;
    if (isInFront(control))
        control.form().forms().dispatch([&control] { call(control.onDblClick); },
                                        {&control.form(), control.actWords()});
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
    grid.press();
    return true;
}

bool clickHead(DataGrid& grid, int column) {
    const Forms::Hold hold(grid.form().forms());
    if (column < 0 || column >= static_cast<int>(grid.columns().size()) || !reach(grid))
        return closedItsScreen(grid);
    grid.form().forms().dispatch([&] { call(grid.onHeadClick, column); });
    return true;
}

bool choose(Control& combo, std::string_view entry) {
    const Forms::Hold hold(combo.form().forms());
    if (combo.locked || !reach(combo)) return closedItsScreen(combo);
    return combo.choose(entry);
}

bool setMark(Control& box, bool on, DateTime today) {
    const Forms::Hold hold(box.form().forms());
    if (!box.mark() || !canReach(box)) return false;
    if (box.mark() == on) return true;
    if (!reach(box)) return closedItsScreen(box);
    box.setMark(on, today);
    return true;
}

bool pickDate(DateBox& box, const Value& dateOrNull) {
    const Forms::Hold hold(box.form().forms());
    if (!box.canHold(dateOrNull) || box.locked || !reach(box)) return closedItsScreen(box);
    box.form().forms().dispatch([&] { box.setValue(dateOrNull); });
    return true;
}

Control* calledBy(const Form& form, const KeyEvent& key) {
    for (Control* each : form.controls())
        if (each->isCalledBy(key) && canReach(*each)) return each;
    return nullptr;
}

bool clickTool(ToolBar& bar, std::string_view key) {
    const Forms::Hold hold(bar.form().forms());
    if (!turnTo(bar)) return false;
    const ToolBar::Tool* tool = bar.find(key);
    if (!tool || !tool->visible || !tool->enabled) return false;
    bar.form().forms().dispatch([&bar, pressed = tool->key] { call(bar.onToolClick, pressed); },
                                {&bar.form(), tool->caption});
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

void rowSelected(Control& list, int row) {
    const Forms::Hold hold(list.form().forms());
    if (row >= 0 && row < list.rowsToClick()) list.clickRow(row);
}

void rowEntered(DataGrid& grid, int row) {
    if (row >= 0 && row < grid.rowCount()) grid.enterRow(row);
}

} // namespace veldona::user
