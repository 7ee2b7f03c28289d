#include <gtest/gtest.h>

#include "controls_stage.h"
#include "tests/support/raised.h"

namespace veldona {
namespace {

using test::numberRaised;

KeyEvent keyOf(Key key) {
    return {.key = key};
}

KeyEvent keyOf(char32_t character) {
    return {.key = Key::None, .character = character};
}

TEST(Keys, EachCharacterGoesDownIsPressedChangesAndComesUp) {
    Stage stage;
    Screen& screen = stage.shown();
    screen.traceChange(screen.a);
    screen.traceChange(screen.b);
    user::focus(screen.b);
    stage.host.log.take();
    screen.a.setText("eski");
    screen.onKeyDown = [&](KeyEvent&) { stage.host.log("F.down"); };
    screen.onKeyPress = [&](KeyPress&) { stage.host.log("F.press"); };
    stage.host.log.take();
    EXPECT_TRUE(user::type(screen.a, "ğ7"));
    EXPECT_EQ(stage.host.log.take(), "b.lost a.got F.down a.down F.press a.press a=ğ a.up "
                                     "F.down a.down F.press a.press a=ğ7 a.up");
    EXPECT_TRUE(user::put(screen.a, "12"));
    EXPECT_EQ(stage.host.log.take(), "a=12 a.up");
    EXPECT_TRUE(user::pressKey(screen, keyOf(Key::F2)));
    EXPECT_EQ(stage.host.log.take(), "F.down a.down a.up");
}

TEST(Keys, WhoSwallowsAKeyHidesItFromThoseBehind) {
    struct Case {
        const char* who;
        const char* log;
        const char* text;
    };
    for (const Case& each : {Case{"F.down", "F.down a.up", ""}, Case{"a.down", "F.down a.down a.up", ""},
                             Case{"F.press", "F.down a.down F.press a.up", ""},
                             Case{"a.press", "F.down a.down F.press a.press a.up", ""},
                             Case{"none", "F.down a.down F.press a.press a.up", "x"}}) {
        Stage stage;
        Screen& screen = stage.shown();
        screen.trace(screen.a);
        const auto handler = [&](const char* as) {
            return [&, as](auto& event) {
                stage.host.log(as);
                event.swallowed = std::string(each.who) == as;
            };
        };
        screen.onKeyDown = handler("F.down");
        screen.onKeyPress = handler("F.press");
        screen.a.onKeyDown = handler("a.down");
        screen.a.onKeyPress = handler("a.press");
        user::pressKey(screen, keyOf(U'x'));
        EXPECT_EQ(stage.host.log.take(), each.log) << each.who;
        EXPECT_EQ(screen.a.text(), each.text) << each.who;
    }
}

TEST(Keys, AKeyThatMovesTheFocusActsWhereItWentDownAndComesUpWhereTheFocusIs) {
    Stage stage;
    Screen& screen = stage.shown();
    for (const char* row : {"1", "2", "3"})
        screen.list.add(row);
    screen.trace(screen.list);
    screen.trace(screen.a);
    screen.onKeyDown = [&](KeyEvent&) { screen.list.setFocus(); };
    user::pressKey(screen, keyOf(Key::Down));
    EXPECT_EQ(stage.host.log.take(), "a.lost lst.got a.down lst.up");
    EXPECT_EQ(screen.list.listIndex(), -1);
}

TEST(Keys, AHandlerMayChangeTheCharacter) {
    Stage stage;
    Screen& screen = stage.shown();
    screen.onKeyPress = [](KeyPress& press) {
        press.character = press.character == U'.' ? U',' : press.character;
    };
    user::type(screen.a, "1.5");
    EXPECT_EQ(screen.a.text(), "1,5");
}

TEST(Keys, EscapeThatClosesTheScreenReachesNobodyElse) {
    Stage stage;
    stage.shown();
    Screen& screen = stage.shown("frmB");
    screen.trace(screen.a);
    screen.onKeyPress = [&](KeyPress& press) {
        if (press.character == 27) stage.forms.unload(screen);
    };
    user::pressKey(screen, keyOf(Key::Escape));
    EXPECT_EQ(stage.host.log.take(), "a.down frmB.unload frmB.gone frmA.activate");
}

TEST(Keys, EditATextAtItsCaret) {
    struct Case {
        const char* text;
        int caret, selected;
        KeyEvent key;
        const char* after;
        int caretAfter;
    };
    const std::string broken = "a\xC4";
    const Case cases[] = {
        {"çş", 1, 0, keyOf(U'ü'), "çüş", 2},
        {"çşğ", 0, 2, keyOf(U'x'), "xğ", 1},
        {"çş", 1, 0, keyOf(Key::Backspace), "ş", 0},
        {"çş", 0, 0, keyOf(Key::Backspace), "çş", 0},
        {"çş", 1, 0, keyOf(Key::Delete), "ç", 1},
        {"çş", 2, 0, keyOf(Key::Delete), "çş", 2},
        {"çşğ", 1, 1, keyOf(Key::Delete), "çğ", 1},
        {"çşğ", 1, 2, keyOf(Key::Right), "çşğ", 3},
        {"çşğ", 1, 2, keyOf(Key::Left), "çşğ", 1},
        {"çşğ", 2, 0, keyOf(Key::Left), "çşğ", 1},
        {"çşğ", 3, 0, keyOf(Key::Right), "çşğ", 3},
        {"çşğ", 2, 0, keyOf(Key::Home), "çşğ", 0},
        {"çşğ", 0, 3, keyOf(Key::End), "çşğ", 3},
        {"12345", 2, 0, keyOf(U'x'), "12345", 2},
        {"12345", 2, 1, keyOf(U'x'), "12x45", 3},
        {"a", 1, 0, keyOf(Key::Enter), "a", 1},
        {"a", 1, 0, keyOf(U'\x1F600'), "a\U0001F600", 2},
        {broken.c_str(), 2, 0, keyOf(U'x'), "a\uFFFDx", 3}, // an edit leaves no broken sequence behind
        {broken.c_str(), 2, 0, keyOf(Key::Backspace), "a", 1},
        {"\x87\x87", 0, 0, keyOf(Key::Delete), "\uFFFD", 0},
    };
    for (const Case& each : cases) {
        Stage stage;
        Screen& screen = stage.shown();
        screen.a.maxLength = 5;
        screen.a.setText(each.text);
        screen.a.select(each.caret, each.selected);
        int changes = 0;
        screen.a.onChange = [&] { ++changes; };
        user::pressKey(screen, each.key);
        EXPECT_EQ(screen.a.text(), each.after);
        EXPECT_EQ(screen.a.selStart(), each.caretAfter) << each.after;
        EXPECT_EQ(screen.a.selLength(), 0) << each.after;
        EXPECT_EQ(changes, screen.a.text() == each.text ? 0 : 1) << each.after;
    }
}

TEST(Keys, ALockedTextAndACommandKeyEditNothing) {
    Stage stage;
    Screen& screen = stage.shown();
    user::pressKey(screen, {.key = Key::None, .character = U'c', .control = true});
    user::pressKey(screen, {.key = Key::None, .character = U'@', .control = true, .alt = true});
    user::pressKey(screen, {.key = Key::Backspace, .control = true});
    user::pressKey(screen, {.key = Key::Tab, .alt = true});
    EXPECT_EQ(screen.a.text(), "@");
    EXPECT_EQ(screen.activeControl(), &screen.a);
    screen.a.locked = true;
    EXPECT_TRUE(user::type(screen.a, "x"));
    EXPECT_FALSE(user::put(screen.a, "x"));
    user::pressKey(screen, keyOf(Key::Delete));
    EXPECT_EQ(screen.a.text(), "@");
}

TEST(Keys, MoveTheRowOfAListWithAClickWhereItMoves) {
    struct Case {
        int row;
        Key key;
        int after;
    };
    for (const Case& each :
         {Case{-1, Key::Down, 0}, Case{-1, Key::Up, 0}, Case{0, Key::Up, 0}, Case{0, Key::Down, 1},
          Case{24, Key::Down, 24}, Case{20, Key::PageDown, 24}, Case{12, Key::PageUp, 2},
          Case{3, Key::PageUp, 0}, Case{12, Key::Home, 0}, Case{12, Key::End, 24}, Case{12, Key::Left, 12}}) {
        Stage stage;
        Screen& screen = stage.shown();
        for (int i = 0; i < 25; ++i)
            screen.list.add(std::to_string(i));
        screen.list.setListIndex(each.row);
        int clicks = 0;
        screen.list.onClick = [&] { ++clicks; };
        user::focus(screen.list);
        user::pressKey(screen, keyOf(each.key));
        EXPECT_EQ(screen.list.listIndex(), each.after) << each.row;
        EXPECT_EQ(clicks, each.after == each.row ? 0 : 1) << each.row;
    }
}

TEST(Keys, TabWalksTheControlsThatTakeTheFocus) {
    Stage stage;
    Screen& screen = stage.shown();
    screen.button.placeIn(screen.frame);
    screen.frame.setVisible(false);
    screen.list.setEnabled(false);
    std::string way;
    for (int i = 0; i < 4; ++i) {
        user::pressKey(screen, keyOf(Key::Tab));
        way += screen.activeControl()->name() + " ";
    }
    for (int i = 0; i < 5; ++i)
        user::pressKey(screen, {.key = Key::Tab, .shift = true});
    EXPECT_EQ(way, "b cbo cboList grd ");
    EXPECT_EQ(screen.activeControl()->name(), "dt");
}

TEST(Keys, SpaceAndEnterUseAControl) {
    Stage stage;
    Screen& screen = stage.shown();
    for (Control* each : {static_cast<Control*>(&screen.button), static_cast<Control*>(&screen.check),
                          static_cast<Control*>(&screen.option1)}) {
        each->onClick = [&stage, each] { stage.host.log(each->name()); };
        for (const Key key : {Key::Space, Key::Enter, Key::Space}) {
            user::focus(*each);
            user::pressKey(screen, keyOf(key));
        }
    }
    EXPECT_EQ(stage.host.log.take(), "cmd cmd cmd chk chk opt1");
}

TEST(Combo, AChoiceIsAClickAndATextIsAChange) {
    Stage stage;
    Screen& screen = stage.shown();
    for (ComboBox* combo : {&screen.combo, &screen.closedCombo}) {
        screen.traceChange(*combo);
        combo->onGotFocus = combo->onLostFocus = nullptr;
        combo->add("Ilgın", 5);
        combo->add("İzmir", Value("7"));
        combo->add("ırmak");
    }
    EXPECT_TRUE(user::choose(screen.combo, "İzmir"));
    EXPECT_EQ(stage.host.log.take(), "cbo.click");
    EXPECT_EQ(screen.combo.boundText(), "7");
    EXPECT_FALSE(user::choose(screen.combo, "Bolu"));
    screen.combo.setText("ırmak");
    EXPECT_EQ(screen.combo.listIndex(), 2);
    screen.combo.setText("");
    EXPECT_EQ(screen.combo.boundText(), "");
    screen.combo.setListIndex(0);
    EXPECT_EQ(stage.host.log.take(), "cbo=ırmak cbo=");
    user::type(screen.combo, "ab");
    EXPECT_EQ(screen.combo.text(), "ab");
    EXPECT_EQ(screen.combo.listIndex(), -1);
    stage.host.log.take();

    user::focus(screen.closedCombo);
    std::string chosen;
    for (const char32_t each : {U'I', U'ı', U'i', U'i', U'x'}) {
        user::pressKey(screen, keyOf(each));
        chosen += std::to_string(screen.closedCombo.listIndex());
    }
    EXPECT_EQ(chosen, "02111");
    EXPECT_EQ(numberRaised([&] { screen.closedCombo.setText("Bolu"); }), 383);
    EXPECT_EQ(screen.closedCombo.text(), "İzmir");
    screen.closedCombo.clear();
    EXPECT_EQ(screen.closedCombo.text(), "");
}

TEST(Acts, AreRefusedWhereTheHandCannotReach) {
    Stage stage;
    Screen& screen = stage.shown();
    screen.button.placeIn(screen.frame);
    screen.list.add("1");
    const auto canClick = [&] { return user::click(screen.button); };
    EXPECT_TRUE(canClick());
    screen.frame.setEnabled(false);
    EXPECT_FALSE(canClick());
    screen.frame.setEnabled(true);
    screen.frame.setVisible(false);
    EXPECT_FALSE(canClick());
    EXPECT_EQ(numberRaised([&] { screen.button.setFocus(); }), 5);
    EXPECT_EQ(numberRaised([&] { screen.label.setFocus(); }), 5);
    screen.frame.setVisible(true);
    screen.setEnabled(false);
    EXPECT_FALSE(canClick());
    screen.setEnabled(true);
    EXPECT_FALSE(user::clickRow(screen.list, 1));
    EXPECT_FALSE(user::type(screen.list, "1"));
    stage.shown("frmB");
    EXPECT_FALSE(user::pressKey(screen, keyOf(U'x')));
}

TEST(Acts, AClickIsLostWhereLeavingAControlHidItsTarget) {
    Stage stage;
    Screen& screen = stage.shown();
    screen.trace(screen.button);
    user::focus(screen.a);
    screen.a.onLostFocus = [&] { screen.button.setVisible(false); };
    EXPECT_FALSE(user::click(screen.button));
    // Its focus went with it, and no key reaches it.
    EXPECT_EQ(stage.host.log.take(), "cmd.lost");
    EXPECT_EQ(screen.activeControl(), nullptr);
    user::pressKey(screen, keyOf(Key::Enter));
    EXPECT_EQ(stage.host.log.take(), "");
}

TEST(Acts, AnActWhoseFirstEventClosedTheScreenIsDone) {
    Stage stage;
    Screen& screen = stage.shown();
    screen.combo.add("1");
    screen.a.onLostFocus = [&] { stage.forms.unload(screen); };
    EXPECT_TRUE(user::clickRow(screen.combo, 0)); // so nobody asks the control that is gone why it refused
    EXPECT_EQ(stage.forms.active(), nullptr);
}

TEST(Acts, ALabelIsClickedWithoutTheFocusAndADoubleClickIsAClickFirst) {
    Stage stage;
    Screen& screen = stage.shown();
    screen.list.add("1");
    for (Control* each : {static_cast<Control*>(&screen.label), static_cast<Control*>(&screen.list),
                          static_cast<Control*>(&screen.a)})
        screen.trace(*each);
    user::click(screen.label);
    EXPECT_EQ(stage.host.log.take(), "lbl.click");
    user::dblClickRow(screen.list, 0);
    EXPECT_EQ(stage.host.log.take(), "a.lost lst.got lst.click lst.dblclick");
}

TEST(Acts, AnEntrysKeyComesBehindScreenAndControl) {
    Stage stage;
    Screen& screen = stage.shown();
    screen.trace(screen.entry);
    const KeyEvent key{.character = U'd', .control = true};
    user::pressKey(screen, key);
    EXPECT_EQ(stage.host.log.take(), "mnuSil.click");
    user::pressKey(screen, {.character = U'd'}); // the letter alone is a text's
    screen.entry.setEnabled(false);
    user::pressKey(screen, key);
    screen.entry.setEnabled(true);
    screen.a.onKeyDown = [](KeyEvent& event) { event.swallowed = true; };
    screen.a.setFocus();
    user::pressKey(screen, key);
    EXPECT_EQ(stage.host.log.take().find("mnuSil"), std::string::npos);
}

TEST(Acts, AHiddenMenuOpensOverTheControlThatNamesIt) {
    Stage stage;
    Screen& screen = stage.shown();
    screen.trace(screen.entry);
    EXPECT_TRUE(user::click(screen.entry));
    screen.menu.setVisible(false);
    EXPECT_FALSE(user::click(screen.entry));
    screen.list.popupMenu = &screen.menu;
    EXPECT_TRUE(user::click(screen.entry));
    screen.list.setVisible(false);
    EXPECT_FALSE(user::click(screen.entry));
    screen.list.setVisible(true);
    screen.entry.setVisible(false);
    EXPECT_FALSE(user::click(screen.entry));
}

TEST(Choices, ClickOnceWhereTheyChange) {
    Stage stage;
    Screen& screen = stage.shown();
    screen.framedOption.placeIn(screen.frame);
    for (Control* each :
         {static_cast<Control*>(&screen.check), static_cast<Control*>(&screen.option1),
          static_cast<Control*>(&screen.option2), static_cast<Control*>(&screen.framedOption)})
        each->onClick = [&stage, each] { stage.host.log(each->name()); };
    user::click(screen.check);
    user::setMark(screen.check, true, {});
    screen.check.setChecked(true);
    screen.framedOption.setValue(true);
    screen.option1.setValue(true);
    user::click(screen.option2);
    EXPECT_EQ(stage.host.log.take(), "chk opt3 opt1 opt2");
    EXPECT_FALSE(screen.option1.value());
    EXPECT_TRUE(screen.framedOption.value());
}

TEST(Dates, AreADayOrNothing) {
    Stage stage;
    Screen& screen = stage.shown();
    DateBox plain{screen, "dtPlain"};
    const DateTime today = DateTime::of(2026, 11, 22);
    screen.date.setValue(DateTime::of(2026, 3, 5, 10, 30));
    EXPECT_EQ(screen.date.value(), Value(DateTime::of(2026, 3, 5)));
    EXPECT_TRUE(user::setMark(screen.date, false, today));
    EXPECT_EQ(screen.date.shownText(), "");
    EXPECT_TRUE(user::setMark(screen.date, true, today));
    EXPECT_EQ(screen.date.text(), "05/03/2026");
    EXPECT_TRUE(user::pickDate(screen.date, Null{}));
    EXPECT_TRUE(user::put(screen.date, "1.2.2026"));
    EXPECT_EQ(screen.date.text(), "01/02/2026");
    EXPECT_FALSE(user::put(screen.date, "olmaz"));
    EXPECT_EQ(numberRaised([&] { screen.date.setValue("olmaz"); }), 13);
    EXPECT_EQ(screen.date.text(), "01/02/2026");
    EXPECT_FALSE(user::pickDate(plain, Null{}));
    EXPECT_FALSE(user::setMark(plain, true, today));
}

TEST(Lists, AnswerBeyondTheirEndAndKeepTheSelectionOnItsRow) {
    Stage stage;
    ListBox& list = stage.shown().list;
    for (const char* row : {"a", "b", "c"})
        list.add(row);
    list.onClick = [] { FAIL() << "code clicked"; };
    list.setListIndex(1);
    EXPECT_EQ(list.list(-1) + list.list(3), "");
    EXPECT_EQ(numberRaised([&] { list.setList(3, "x"); }), 381);
    EXPECT_EQ(numberRaised([&] { list.remove(3); }), 5);
    EXPECT_EQ(numberRaised([&] { list.setListIndex(3); }), 380);
    list.remove(0);
    EXPECT_EQ(list.listIndex(), 0);
    list.remove(1);
    EXPECT_EQ(list.text(), "b");
    list.remove(0);
    EXPECT_EQ(list.listIndex(), -1);
}

TEST(Sheets, KeepTheCurrentCellInside) {
    Stage stage;
    FlexGrid& sheet = stage.shown().sheet;
    sheet.setTextMatrix(2, 2, "x");
    sheet.setRow(2);
    sheet.setCol(2);
    EXPECT_EQ(sheet.text(), "x");
    sheet.setRows(2);
    sheet.setRows(3);
    EXPECT_EQ(sheet.row(), 1);
    EXPECT_EQ(sheet.textMatrix(2, 2), "");
    EXPECT_EQ(numberRaised([&] { sheet.setRow(3); }), 30009);
    EXPECT_EQ(numberRaised([&] { sheet.setTextMatrix(0, 3, ""); }), 381);
    EXPECT_FALSE(user::clickCell(sheet, 3, 0));
    EXPECT_TRUE(user::clickCell(sheet, 2, 1));
    EXPECT_EQ(sheet.row() * 10 + sheet.col(), 21);
}

struct Customers : RowSource {
    int rowCount() const override { return 20; }
    std::string cell(int row, std::string_view field) const override {
        return std::string(field) + std::to_string(row);
    }
    int currentRow() const override { return row_; }
    void moveTo(int row) override { row_ = row; }
    int row_ = 0;
};

TEST(DataGrids, MoveTheirSource) {
    Stage stage;
    Screen& screen = stage.shown();
    DataGrid& grid = screen.grid;
    grid.setColumns({{"CariNo", "HSTNO"}, {"Adı", "AD"}});
    EXPECT_EQ(numberRaised([&] { static_cast<void>(grid.currentText("CariNo")); }), 3021);
    Customers customers;
    grid.bind(&customers);
    grid.onRowChange = [&] { stage.host.log(grid.currentText("carino")); };
    grid.onClick = [&] { stage.host.log("click"); };
    grid.onHeadClick = [&](int column) { stage.host.log("head" + std::to_string(column)); };
    EXPECT_TRUE(user::clickRow(grid, 0)); // the current one too: its row is what was asked for
    for (const Key key : {Key::Up, Key::Down, Key::PageDown, Key::PageDown})
        user::pressKey(screen, keyOf(key));
    user::clickHead(grid, 1);
    EXPECT_FALSE(user::clickRow(grid, 20));
    EXPECT_EQ(stage.host.log.take(), "HSTNO0 click HSTNO1 HSTNO11 HSTNO19 head1");
    EXPECT_EQ(grid.columnOf("ADI"), 1);
    EXPECT_EQ(grid.shownText(), "HSTNO19|AD19");
    grid.bind(nullptr);
    EXPECT_EQ(grid.cell(0, 0), "");
}

} // namespace
} // namespace veldona
