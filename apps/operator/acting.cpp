#include "apps/operator/verbs.h"
#include "platform/controls/editing.h"
#include "platform/controls/keynames.h"
#include "platform/controls/menus.h"
#include "platform/controls/names.h"
#include "platform/controls/userinput.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/runtime/unicode.h"

namespace veldona::console {

namespace {

const char* whyNot(const Control& control) {
    if (!control.isShown()) return "it is hidden";
    if (!control.isUsable()) return "it is disabled";
    if (!user::canReach(control)) return "its screen is not in front";
    return "it has no such row or entry, or cannot do that";
}

// An act that is refused changed nothing, so the control still stands to be asked why.
void require(bool done, const Word& name, const Control& control) {
    if (!done) throw Shortfall(name.text + " refused: " + whyNot(control));
}

void focus(Stage& stage, const Line& line) {
    Control& control = stage.control(line.words[0]);
    require(user::focus(control), line.words[0], control);
}

// Where there are windows, keys go through their widgets.
bool pressKey(Stage& stage, Form& screen, const KeyEvent& key) {
    Windows* windows = stage.windows();
    if (windows == nullptr) return user::pressKey(screen, key);
    if (screen.forms().active() != &screen || !screen.enabled()) return false;
    windows->pressKey(screen, key);
    return true;
}

bool type(Stage& stage, Control& control, const std::string& text) {
    if (stage.windows() == nullptr) return user::type(control, text);
    Form& screen = control.form();
    if (!control.takesTyping() || !user::focus(control) || screen.activeControl() != &control) return false;
    control.selectAll();
    for (const char32_t character : charactersOf(text)) {
        if (!pressKey(stage, screen, {.character = character})) return screen.isUnloaded();
    }
    return true;
}

void type(Stage& stage, const Line& line) {
    Control& control = stage.control(line.words[0]);
    require(type(stage, control, line.words[1].text), line.words[0], control);
}

void put(Stage& stage, const Line& line) {
    Control& control = stage.control(line.words[0]);
    require(user::put(control, line.words[1].text), line.words[0], control);
}

void pressKey(Stage& stage, const Line& line) {
    const auto event = keyNamed(line.words[0].text);
    if (!event) throw UnreadableLine("no such key: " + line.words[0].text);
    Form& screen = stage.screen();
    if (!pressKey(stage, screen, *event)) throw Shortfall(screen.name() + " takes no key now");
}

void click(Stage& stage, const Line& line) {
    const bool onRow = line.words.size() > 1;
    const int row = onRow ? wholeNumber(line.words[1]) : 0;
    Control& control = stage.control(line.words[0]);
    require(onRow ? user::clickRow(control, row) : user::click(control), line.words[0], control);
}

void doubleClick(Stage& stage, const Line& line) {
    const bool onRow = line.words.size() > 1;
    const int row = onRow ? wholeNumber(line.words[1]) : 0;
    Control& control = stage.control(line.words[0]);
    require(onRow ? user::dblClickRow(control, row) : user::dblClick(control), line.words[0], control);
}

void clickCell(Stage& stage, const Line& line) {
    const int row = wholeNumber(line.words[1]);
    const int column = wholeNumber(line.words[2]);
    auto& grid = stage.control<FlexGrid>(line.words[0], "flex grid");
    require(user::clickCell(grid, row, column), line.words[0], grid);
}

void choose(Stage& stage, const Line& line) {
    Control& combo = stage.control(line.words[0]);
    require(user::choose(combo, line.words[1].text), line.words[0], combo);
}

void check(Stage& stage, const Line& line) {
    const bool on = choice(line.words[1], "on", "off");
    Control& control = stage.control(line.words[0]);
    require(user::setMark(control, on, stage.clock.today()), line.words[0], control);
}

Value dateOrNull(const Word& word) {
    if (!word.quoted && sameName(word.text, "null")) return {};
    try {
        return readDate(word.text);
    } catch (const RuntimeError&) {
        throw UnreadableLine("this is no date: " + word.text);
    }
}

void pickDate(Stage& stage, const Line& line) {
    const Value date = dateOrNull(line.words[1]);
    auto& box = stage.control<DateBox>(line.words[0], "date control");
    require(user::pickDate(box, date), line.words[0], box);
}

void clickMenu(Stage& stage, const Line& line) {
    auto& item = stage.control<MenuItem>(line.words[0], "menu entry");
    require(user::click(item), line.words[0], item);
}

void clickTool(Stage& stage, const Line& line) {
    const Form& screen = stage.screen();
    for (Control* control : screen.controls()) {
        auto* bar = dynamic_cast<ToolBar*>(control);
        if (bar == nullptr || bar->find(line.words[0].text) == nullptr) continue;
        if (user::clickTool(*bar, line.words[0].text)) return;
        throw Shortfall(line.words[0].text +
                        " refused: the tool is hidden or disabled, or its screen is not in front");
    }
    throw Shortfall("there is no tool " + line.words[0].text + " on " + screen.name());
}

// The time up to the event passes.
void tick(Stage& stage, const Line& line) {
    auto& timer = stage.control<Timer>(line.words[0], "timer");
    if (timer.enabled()) stage.clock.wait(timer.interval);
    user::tick(timer);
}

void answer(Stage& stage, const Line& line) {
    const Word& word = line.words[0];
    if (word.quoted) return stage.dialogs.answers.push_back(word.text);
    for (const char* known : {"yes", "no", "ok"}) {
        if (sameName(word.text, known)) return stage.dialogs.answers.push_back(known);
    }
    throw UnreadableLine("yes, no, ok or a text in quotes should stand here: " + word.text);
}

void quit(Stage& stage, const Line&) {
    stage.process().quit();
}

constexpr Verb kVerbs[] = {
    {"focus", 1, 1, focus},    {"type", 2, 2, type},      {"put", 2, 2, put},
    {"key", 1, 1, pressKey},   {"click", 1, 2, click},    {"dblclick", 1, 2, doubleClick},
    {"cell", 3, 3, clickCell}, {"choose", 2, 2, choose},  {"check", 2, 2, check},
    {"date", 2, 2, pickDate},  {"menu", 1, 1, clickMenu}, {"tool", 1, 1, clickTool},
    {"tick", 1, 1, tick},      {"answer", 1, 1, answer},  {"quit", 0, 0, quit},
};

} // namespace

std::span<const Verb> actingVerbs() {
    return kVerbs;
}

} // namespace veldona::console
