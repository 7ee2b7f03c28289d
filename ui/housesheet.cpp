// The style sheet of the house. A widget's part on the screen is its dynamic property "role", set in the .ui
// file; its tone (focused, covered) comes from the colour that the model gives it.
#include <algorithm>
#include <cmath>

#include <QRegularExpression>

#include "ui/housestyle.h"

namespace veldona {

namespace {

constexpr const char* kSheet = R"(
QGroupBox, QFrame[role="card"] {
    background: #ffffff; border: 1px solid #d3dae2; border-radius: 6px;
}
QGroupBox { padding-top: 20px; font-weight: bold; color: #2b4c6f; }
QGroupBox::title { subcontrol-origin: border; subcontrol-position: top left; left: 9px; top: 5px; }
QGroupBox QWidget { font-weight: normal; color: #1f2933; }
veldona--FloatingPanel { background: #f5fafe; border: 2px solid #2c6e9b; }

QLabel { background: transparent; }
QLabel[role="caption"] { color: #5b6875; }
QLabel[role="name"] { font-size: 14pt; font-weight: bold; color: #16324f; }
QLabel[role="head"] {
    color: #4a5866; background: #eef2f6; padding: 3px 3px; border-bottom: 1px solid #d3dae2; font-size: 9pt;
}
QLabel[role="figure"] { font-size: 16pt; font-weight: bold; color: #1f2933; }
QLabel[role="debt"] {
    font-size: 22pt; font-weight: bold; color: #0f3d63; background: #e3eff8;
    border-radius: 5px; padding: 2px 6px;
}
QLabel[role="total"] { font-weight: bold; color: #1f2933; }
QLabel[role="overdue"] {
    color: #ffffff; background: #c62828; font-weight: bold; border-radius: 4px; padding: 3px 6px;
}
QLabel[role="alert"] {
    color: #3a2500; background: #ffb300; font-weight: bold; border-radius: 4px; padding: 2px 10px;
}
QLabel[role="note"] { color: #5b6875; font-size: 9pt; }
QLabel[role="warning"] { color: #9a4d00; font-size: 9pt; font-weight: bold; }
QLabel[role="hint"] { color: #5b6875; }
QLabel:disabled { color: #98a2ad; }

QLineEdit {
    background: #ffffff; border: 1px solid #b9c3ce; border-radius: 4px; padding: 2px 4px;
    selection-background-color: #2c6e9b; selection-color: #ffffff;
}
QLineEdit:focus { border: 1px solid #2c6e9b; background: #fffdf0; }
QLineEdit:disabled { background: #f1f3f6; color: #98a2ad; }
QLineEdit:read-only { background: #f4f7fa; border-color: #dde3ea; }
QLineEdit[unset="true"] { background: #f1f3f6; color: #98a2ad; }
QComboBox QLineEdit { border: 0; background: transparent; }
QLineEdit[role="idle"] { background: transparent; border: 0; color: #5b6875; }
QLineEdit[role="search"] { font-size: 13pt; padding: 4px 6px; }
QLineEdit[role="amount"] { font-size: 16pt; font-weight: bold; color: #0f3d63; }
QLineEdit[tone="focused"] { background: #fff3c4; }
QLineEdit[tone="unusual"] { background: #ffe2b8; border-color: #e08a00; }

veldona--DateField > QToolButton {
    background: #ffffff; border: 1px solid #b9c3ce; border-radius: 4px; padding: 0;
    font-size: 7pt; color: #4a5866;
}
veldona--DateField > QToolButton:hover { background: #eef6fb; border-color: #7ba7c4; }
veldona--DateField > QToolButton:disabled { background: #f1f3f6; color: #b9c3ce; }

QPushButton {
    background: #ffffff; border: 1px solid #b3bec9; border-radius: 4px; padding: 4px 10px; color: #1f2933;
}
QPushButton:hover { background: #eef6fb; border-color: #7ba7c4; }
QPushButton:pressed { background: #d9e9f4; }
QPushButton:focus { border: 1px solid #2c6e9b; background: #f2f8fc; }
QPushButton:disabled { background: #f1f3f6; color: #a3acb6; border-color: #d9dfe6; }
QPushButton[role="primary"] { background: #2c6e9b; border-color: #235a80; color: #ffffff; font-weight: bold; }
QPushButton[role="primary"]:hover { background: #337db0; }
QPushButton[role="primary"]:pressed { background: #235a80; }
QPushButton[role="primary"]:focus { border: 2px solid #ffb300; }
QPushButton[role="primary"]:disabled { background: #c3d2de; border-color: #b4c4d1; color: #f4f7fa; }
QPushButton[role="idle"], QPushButton[role="idle"]:hover, QPushButton[role="idle"]:pressed {
    background: transparent; border: 0; color: #98a2ad; padding: 2px 6px;
}
QPushButton[role="small"] { padding: 2px 6px; font-size: 9pt; }

QToolBar { background: transparent; border: 0; spacing: 4px; }
QToolBar QToolButton {
    background: #ffffff; border: 1px solid #b3bec9; border-radius: 4px; padding: 4px 10px; color: #1f2933;
}
QToolBar QToolButton:hover { background: #eef6fb; border-color: #7ba7c4; }
QToolBar QToolButton:pressed { background: #d9e9f4; }
QToolBar QToolButton:disabled { background: #f1f3f6; color: #a3acb6; border-color: #d9dfe6; }

QListView, QTableView, QTextBrowser {
    background: #ffffff; border: 1px solid #d3dae2; border-radius: 3px;
    selection-background-color: #cfe4f3; selection-color: #12344d;
}
QListView::item { padding: 2px 3px; border: 0; }
QListView::item:selected, QTableView::item:selected { background: #cfe4f3; color: #12344d; }
QListView::item:selected:focus, QTableView::item:selected:focus { background: #2c6e9b; color: #ffffff; }
QListView:focus, QTableView:focus { border: 1px solid #2c6e9b; }
QListView[tone="covered"] { color: #c04000; }
veldona--ParallelLists { background: #ffffff; border: 1px solid #d3dae2; border-radius: 3px; }
veldona--ParallelLists QListView { border: 0; border-radius: 0; border-right: 1px solid #eef2f6; }
veldona--ParallelLists QListView:focus { border: 0; border-right: 1px solid #eef2f6; }
veldona--ParallelLists QListView::item:selected:focus { background: #cfe4f3; color: #12344d; }
veldona--ParallelLists QListView[active="true"]::item:selected { background: #2c6e9b; color: #ffffff; }
QTableView { gridline-color: #eef2f6; }
QHeaderView::section {
    background: #eef2f6; color: #4a5866; border: 0; border-right: 1px solid #dde3ea;
    border-bottom: 1px solid #d3dae2; padding: 3px 4px; font-size: 9pt;
}
QCalendarWidget QWidget#qt_calendar_navigationbar { background: #2c6e9b; }
QCalendarWidget QToolButton {
    color: #ffffff; background: transparent; border: 0; border-radius: 3px; padding: 4px 8px;
    font-weight: bold;
}
QCalendarWidget QToolButton:hover { background: #337db0; }
QCalendarWidget QToolButton::menu-indicator { image: none; }
QCalendarWidget QSpinBox { color: #1f2933; background: #ffffff; }
QCalendarWidget QTableView {
    border: 0; alternate-background-color: #eef2f6;
    selection-background-color: #2c6e9b; selection-color: #ffffff;
}
QTabWidget::pane { border: 0; }
QTabBar::tab {
    background: #eef2f6; border: 1px solid #d3dae2; border-bottom: 0; padding: 4px 10px; color: #4a5866;
    border-top-left-radius: 4px; border-top-right-radius: 4px; margin-right: 2px;
}
QTabBar::tab:selected { background: #ffffff; color: #16324f; font-weight: bold; }
QToolTip { background: #fffbe6; color: #1f2933; border: 1px solid #d8cf9c; padding: 3px; }
)";

} // namespace

QString houseSheet(double scale, double letters) {
    static const QRegularExpression length("(\\d+)(px|pt)");
    const QString sheet = QString::fromUtf8(kSheet);
    QString grown;
    qsizetype end = 0;
    for (auto each = length.globalMatch(sheet); each.hasNext();) {
        const QRegularExpressionMatch match = each.next();
        const int size = match.captured(1).toInt();
        const bool isLetter = match.captured(2) == "pt";
        grown += sheet.mid(end, match.capturedStart() - end) +
                 (isLetter ? QString::number(size * letters)
                           : QString::number(std::max(1L, std::lround(size * scale)))) +
                 match.captured(2);
        end = match.capturedEnd();
    }
    return grown + sheet.mid(end);
}

} // namespace veldona
