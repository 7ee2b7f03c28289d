// What an operator can do to a screen, each as the events it makes, run through the dispatcher.
//
// The operator console and the tests call these; a window calls the lower ones (keyDown, textEdited …) and
// lets its widgets do the editing. An act on a control that is hidden or disabled, or whose screen stands
// behind a modal one, is refused (false). One on another open screen turns to that screen first.
#pragma once

#include <string>
#include <string_view>

#include "platform/controls/form.h"
#include "platform/controls/lists.h"

namespace veldona::user {

[[nodiscard]] bool canReach(const Control& control);

// Leaves the focused control (its lost-focus event) and enters this one (its got-focus event).
bool focus(Control& control);
// Focus if needed, all text selected, then each character: key-down, key-press, change, key-up.
// They go to the focused control, so a handler that moves the focus takes the rest of them along.
bool type(Control& textControl, std::string_view text);
// The same, but the text arrives at once: one change, then one key-up. A date control takes a readable date,
// a combo without typing one of its entries, a locked text nothing.
bool put(Control& textControl, std::string_view text);
// To the screen first, then to the focused control, with what the control itself does with it: a character or
// Backspace or Delete edits, Up and Down move a list's, combo's or grid's row (with its click or row-change
// event), Tab moves the focus, Space clicks a button, Enter clicks one that has the focus. Key-down,
// key-press and what the control does go to the control that had the focus before, key-up to the one that has
// it then. A key of a menu's entry that nobody swallowed on its way down clicks that entry and nothing else.
bool pressKey(Form& form, KeyEvent key);
// All but a label take the focus first.
bool click(Control& control);
// Selected and clicked; false outside the rows. A combo's row is chosen, a tab control's page turned to.
bool clickRow(Control& listOrGrid, int row);
bool dblClick(Control& control);
bool dblClickRow(Control& listOrGrid, int row);
bool clickCell(FlexGrid& grid, int row, int column);
bool clickHead(DataGrid& grid, int column);
bool choose(Control& combo, std::string_view entry); // false where the list has no such entry
// A check box, or a picker's own, which takes `today` where it never held a date.
bool setMark(Control& box, bool on, DateTime today);
bool pickDate(DateBox& box, const Value& dateOrNull);
[[nodiscard]] Control* calledBy(const Form& form, const KeyEvent& key); // one in reach; nullptr: none
bool clickTool(ToolBar& bar, std::string_view key);
void tick(Timer& timer);

// For windows: one event each; the widget has done or will do the editing. keyDown and keyPress give back
// whether the key goes on to the widget.
bool keyDown(Form& form, Control* focused, KeyEvent event);
bool keyPress(Form& form, Control* focused, KeyPress event);
void keyUp(Form& form, Control* focused, KeyEvent event);
void textEdited(TextBox& box, std::string text, int selStart);
void textEdited(ComboBox& box, std::string text);
void rowSelected(Control& list, int row); // by mouse or arrow: selects and clicks
void rowEntered(DataGrid& grid, int row);

} // namespace veldona::user
