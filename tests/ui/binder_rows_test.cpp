// Lists, grids, tabs, tools and menus.
#include <QHeaderView>
#include <QListView>
#include <QMenu>
#include <QScrollBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolBar>

#include "tests/ui/trialform.h"
#include "tests/ui/window_tests.h"

namespace veldona::test {

namespace {

using Told = std::vector<std::string>;

QPoint middleOf(const QAbstractItemView& view, int row, int column = 0) {
    return view.visualRect(view.model()->index(row, column)).center();
}

class Lists : public TrialWindow {
protected:
    Lists() {
        for (int i = 0; i < 40; ++i)
            form->Sol.add("sol " + std::to_string(i));
        for (int i = 0; i < 30; ++i)
            form->Sag.add("sağ " + std::to_string(i));
        form->Sol.onClick = [this] { note("click " + form->Sol.text()); };
        form->Sol.onDblClick = [this] { note("dblclick"); };
        host.flush();
        settle();
    }
    QListView& left() { return at<QListView>("Sol"); }
    QListView& right() { return at<QListView>("Sag"); }
};

} // namespace

TEST_F(Lists, AClickSelectsAndRepeats) {
    QTest::mouseClick(left().viewport(), Qt::LeftButton, {}, middleOf(left(), 1));
    EXPECT_EQ(form->activeControl(), &form->Sol);
    QTest::mouseClick(left().viewport(), Qt::LeftButton, {}, middleOf(left(), 1));
    EXPECT_EQ(told(), (Told{"click sol 1", "click sol 1"}));
    pressKey(host, *form, Key::Down);
    EXPECT_EQ(told(), (Told{"click sol 2"}));
    QTest::mouseClick(left().viewport(), Qt::LeftButton, {}, middleOf(left(), 2));
    QTest::mouseDClick(left().viewport(), Qt::LeftButton, {}, middleOf(left(), 2));
    EXPECT_EQ(told(), (Told{"click sol 2", "dblclick"}));
}

TEST_F(Lists, AListEnteredByTabSelectsNoRow) {
    form->Iki.setFocus();
    host.flush();
    pressKey(host, *form, Key::Tab);
    settle();
    EXPECT_EQ(form->activeControl(), &form->Sol);
    EXPECT_EQ(form->Sol.listIndex(), -1);
    EXPECT_FALSE(left().currentIndex().isValid());
    pressKey(host, *form, Key::Down);
    EXPECT_EQ(form->Sol.listIndex(), 0);
}

TEST_F(Lists, ARowChosenByCodeIsNoClick) {
    form->Sol.setListIndex(3);
    form->Sol.remove(0);
    host.flush();
    EXPECT_EQ(left().currentIndex().row(), 2);
    EXPECT_EQ(left().model()->rowCount(), 39);
    form->Sol.clear();
    host.flush();
    EXPECT_EQ(left().model()->rowCount(), 0);
    EXPECT_TRUE(told().empty());
}

// The right list has no click of its own: its row is the left one's.
TEST_F(Lists, ParallelListsAreSelectedAndScrolledTogether) {
    QTest::mouseClick(right().viewport(), Qt::LeftButton, {}, middleOf(right(), 1));
    EXPECT_EQ(told(), (Told{"click sol 1"}));
    EXPECT_EQ(form->activeControl(), &form->Sol);
    EXPECT_EQ(right().currentIndex().row(), 1);
    EXPECT_EQ(left().currentIndex().row(), 1);
    left().verticalScrollBar()->setValue(30);
    EXPECT_EQ(right().verticalScrollBar()->value(), 30);
    // The shorter one stops at its end and holds nobody back.
    const int end = left().verticalScrollBar()->maximum();
    left().verticalScrollBar()->setValue(end);
    EXPECT_EQ(left().verticalScrollBar()->value(), end);
    EXPECT_EQ(right().verticalScrollBar()->value(), right().verticalScrollBar()->maximum());
}

TEST_F(Lists, EnterReachesTheScreen) {
    form->Sol.setFocus();
    form->Sol.onKeyDown = [this](KeyEvent& key) {
        if (key.key == Key::Enter) form->Text.setFocus();
    };
    host.flush();
    pressKey(host, *form, Key::Enter);
    EXPECT_EQ(form->activeControl(), &form->Text);
    EXPECT_EQ(host.window(*form)->focusWidget()->objectName(), "Metin");
}

TEST_F(Lists, MenuOfTheRightButton) {
    form->mnuSil.onClick = [this] { note("sil " + form->Sol.text()); };
    QTimer::singleShot(0, [] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        ASSERT_EQ(menu->actions().size(), 1);
        EXPECT_EQ(menu->actions().front()->text(), "Satır Sil\tCtrl+D");
        menu->actions().front()->trigger();
        menu->close();
    });
    QTest::mouseClick(left().viewport(), Qt::RightButton, {}, middleOf(left(), 2));
    const QPoint where = middleOf(left(), 2);
    QContextMenuEvent ask(QContextMenuEvent::Mouse, where, left().viewport()->mapToGlobal(where));
    QCoreApplication::sendEvent(left().viewport(), &ask);
    EXPECT_EQ(told(), (Told{"click sol 2", "sil sol 2"}));
    QTest::keyClick(left().viewport(), Qt::Key_D, Qt::ControlModifier); // by its key, too
    EXPECT_EQ(told(), (Told{"sil sol 2"}));
}

TEST_F(TrialWindow, OfTwentyThousandRowsOnlyTheVisibleAreAskedFor) {
    form->Grid.setColumns({{"No", "NO", 60}, {"Ad", "AD", 100}});
    form->Grid.onRowChange = [this] { note("row " + form->Grid.currentText("Ad")); };
    form->Grid.onDblClick = [this] { note("dblclick"); };
    form->Grid.bind(&rows);
    host.flush();
    auto& grid = at<QTableView>("Izgara");
    settle();
    grid.grab();
    EXPECT_EQ(grid.model()->rowCount(), 20'000);
    EXPECT_LT(rows.asked, 500);
    grid.scrollToBottom();
    grid.grab();
    EXPECT_LT(rows.asked, 1'000);
    grid.scrollToTop();
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, middleOf(grid, 1));
    EXPECT_EQ(told(), (Told{"row AD1"}));
    pressKey(host, *form, Key::Down);
    EXPECT_EQ(told(), (Told{"row AD2"}));
    rows.current = 19'000;
    form->Grid.refresh();
    host.flush();
    EXPECT_EQ(grid.currentIndex().row(), 19'000);
    form->Grid.bind(nullptr);
    host.flush();
    EXPECT_EQ(grid.model()->rowCount(), 0);
    EXPECT_TRUE(told().empty());
}

TEST_F(TrialWindow, SheetCell) {
    form->Tablo.setTextMatrix(1, 2, "620,83");
    form->Tablo.onClick = [this] { note("cell " + form->Tablo.text()); };
    host.flush();
    auto& sheet = at<QTableView>("Tablo");
    EXPECT_EQ(sheet.model()->index(1, 2).data().toString(), "620,83");
    QTest::mouseClick(sheet.viewport(), Qt::LeftButton, {}, middleOf(sheet, 1, 2));
    EXPECT_EQ(told(), (Told{"cell 620,83"}));
    form->Tablo.addRow();
    host.flush();
    EXPECT_EQ(sheet.model()->rowCount(), 4);
}

TEST_F(TrialWindow, ToolsAndTabs) {
    form->Bar.add("cmdYeni", "Yeni");
    form->Bar.add("cmdSil", "Sil");
    form->Bar.setToolVisible("cmdSil", false);
    form->Bar.onToolClick = [this](const std::string& key) { note(key); };
    form->Tabs.onClick = [this] { note("tab"); };
    host.flush();
    const auto actions = at<QToolBar>("Cubuk").actions();
    ASSERT_EQ(actions.size(), 2);
    EXPECT_FALSE(actions[1]->isVisible());
    actions[0]->trigger();
    at<QTabWidget>("Sekmeler").setCurrentIndex(1);
    EXPECT_TRUE(form->OnPage.isShown());
    form->Tabs.setTab(0);
    host.flush();
    EXPECT_EQ(at<QTabWidget>("Sekmeler").currentIndex(), 0);
    EXPECT_EQ(at<QTabWidget>("Sekmeler").tabText(1), "İki");
    EXPECT_EQ(told(), (Told{"cmdYeni", "tab"}));
}

} // namespace veldona::test
