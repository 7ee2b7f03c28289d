#include "tests/ui/manners.h"

#include <algorithm>
#include <map>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenuBar>
#include <QTabBar>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

namespace veldona::test {

namespace {

QString nameOf(const QWidget& widget) {
    QString name = widget.objectName();
    for (const QWidget* holder = widget.parentWidget(); name.isEmpty() && holder;
         holder = holder->parentWidget())
        name = holder->objectName() + " / " + widget.metaObject()->className();
    return name;
}

QList<QWidget*> shownIn(const QWidget& window) {
    QList<QWidget*> shown;
    for (QWidget* each : window.findChildren<QWidget*>())
        if (each->window() == &window && each->isVisible()) shown << each;
    return shown;
}

bool isPart(const QWidget& widget) { // of a control that answers for it
    return qobject_cast<const QAbstractItemView*>(widget.parentWidget()) ||
           (qobject_cast<const QLineEdit*>(&widget) &&
            (qobject_cast<const QComboBox*>(widget.parentWidget()) ||
             qobject_cast<const QAbstractSpinBox*>(widget.parentWidget())));
}

bool isControl(const QWidget& widget) {
    if (widget.objectName().startsWith("qt_") || isPart(widget)) return false;
    return widget.focusPolicy() != Qt::NoFocus || qobject_cast<const QAbstractButton*>(&widget);
}

QString plain(QString text) {
    text.replace("&&", QChar(1)).remove('&');
    return text.replace(QChar(1), "&");
}

using Words = std::pair<const QWidget*, QString>;

// Every text of the window in which a letter may be marked.
QList<Words> markedWords(const QWidget& window) {
    QList<Words> found;
    for (QWidget* each : shownIn(window)) {
        if (const auto* label = qobject_cast<QLabel*>(each); label && label->buddy())
            found << Words(each, label->text());
        if (const auto* button = qobject_cast<QAbstractButton*>(each)) found << Words(each, button->text());
        if (const auto* group = qobject_cast<QGroupBox*>(each)) found << Words(each, group->title());
        if (const auto* tabs = qobject_cast<QTabBar*>(each))
            for (int i = 0; i < tabs->count(); ++i)
                found << Words(each, tabs->tabText(i));
        if (qobject_cast<QMenuBar*>(each))
            for (const QAction* action : each->actions())
                found << Words(each, action->text());
    }
    return found;
}

void checkWidth(QStringList& faults, const QWidget& widget, const QString& words, int needed, int room) {
    if (needed > room)
        faults
            << QString("%1: \"%2\" needs %3, has %4").arg(nameOf(widget), plain(words)).arg(needed).arg(room);
}

} // namespace

QStringList namelessControls(const QWidget& window) {
    QStringList faults;
    for (QWidget* each : shownIn(window)) {
        if (!isControl(*each)) continue;
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(each);
        if (!spoken || spoken->text(QAccessible::Name).trimmed().isEmpty()) faults << nameOf(*each);
    }
    return faults;
}

QStringList mnemonicClashes(const QWidget& window) {
    QStringList faults;
    std::map<QString, QString> taken;
    for (const auto& [widget, words] : markedWords(window)) {
        const QString letter = QKeySequence::mnemonic(words).toString();
        if (letter.isEmpty()) continue;
        const auto [first, isNew] = taken.emplace(letter, plain(words));
        if (!isNew) faults << letter + ": " + first->second + ", " + plain(words);
    }
    return faults;
}

QStringList strayLabels(const QWidget& window) {
    QStringList faults;
    std::map<const QWidget*, QString> led;
    for (QWidget* each : shownIn(window)) {
        const auto* label = qobject_cast<QLabel*>(each);
        if (!label) continue;
        const QWidget* buddy = label->buddy();
        if (buddy) {
            if (!buddy->isVisibleTo(buddy->window()) || buddy->window() != &window)
                faults << plain(label->text()) + ": its field is not shown";
            if (!led.emplace(buddy, label->text()).second)
                faults << plain(label->text()) + ": a second label of " + nameOf(*buddy);
        } else if (!QKeySequence::mnemonic(label->text()).isEmpty() && label->textFormat() != Qt::PlainText) {
            faults << label->text() + ": marks a letter and leads nowhere";
        }
    }
    return faults;
}

QStringList overSize(const QWidget& window, const QSize& screen) {
    const QSize needed = window.minimumSizeHint().expandedTo(window.minimumSize()).expandedTo(window.size());
    if (needed.width() <= screen.width() && needed.height() <= screen.height()) return {};
    return {QString("%1x%2").arg(needed.width()).arg(needed.height())};
}

QStringList clippedWords(const QWidget& window) {
    QStringList faults;
    for (QWidget* each : shownIn(window)) {
        if (const auto* label = qobject_cast<QLabel*>(each); label && !label->text().isEmpty()) {
            if (!label->wordWrap())
                checkWidth(faults, *each, label->text(), label->sizeHint().width(), each->width());
            const int high =
                label->wordWrap() ? label->heightForWidth(each->width()) : label->sizeHint().height();
            if (high > each->height())
                faults << nameOf(*each) + ": \"" + plain(label->text()) + "\" is cut below";
        }
        if (const auto* button = qobject_cast<QAbstractButton*>(each);
            button && !button->text().isEmpty() && !button->objectName().startsWith("qt_"))
            checkWidth(faults, *each, button->text(), button->minimumSizeHint().width(), each->width());
        if (const auto* group = qobject_cast<QGroupBox*>(each); group && !group->title().isEmpty())
            checkWidth(faults, *each, group->title(),
                       group->fontMetrics().horizontalAdvance(plain(group->title())) + 18, each->width());
        if (const auto* head = qobject_cast<QHeaderView*>(each);
            head && head->orientation() == Qt::Horizontal)
            for (int i = 0; i < head->count(); ++i) {
                const QString words = head->model()->headerData(i, Qt::Horizontal).toString();
                if (!head->isSectionHidden(i) && !words.isEmpty())
                    checkWidth(faults, *each, words, head->sectionSizeHint(i), head->sectionSize(i));
            }
        if (const auto* tabs = qobject_cast<QTabBar*>(each))
            for (int i = 0; i < tabs->count(); ++i)
                checkWidth(faults, *each, tabs->tabText(i),
                           tabs->fontMetrics().horizontalAdvance(plain(tabs->tabText(i))),
                           tabs->tabRect(i).width());
        if (const auto* edit = qobject_cast<QLineEdit*>(each); edit && !isPart(*each))
            checkWidth(faults, *each, edit->text(), edit->fontMetrics().horizontalAdvance(edit->text()) + 6,
                       each->width());
        // A name may end in dots, an amount may not.
        if (const auto* list = qobject_cast<QListView*>(each);
            list && list->property("rightAligned").toBool())
            checkWidth(faults, *each, "an amount", list->sizeHintForColumn(0), list->viewport()->width());
        if (const auto* combo = qobject_cast<QComboBox*>(each); combo && !combo->currentText().isEmpty())
            checkWidth(faults, *each, combo->currentText(),
                       combo->fontMetrics().horizontalAdvance(combo->currentText()) + combo->height(),
                       each->width());
    }
    return faults;
}

QStringList tabFaults(QWidget& window) {
    std::map<const QWidget*, int> reached;
    for (QWidget* each : shownIn(window)) {
        const bool takesTab = (each->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && each->isEnabled();
        if (takesTab && !each->focusProxy() && !isPart(*each)) reached[each] = 0;
    }
    QStringList faults;
    if (reached.empty()) return faults;
    QWidget* const start = window.focusWidget();
    if (!start) return {"nothing has the focus"};
    for (std::size_t step = 0; step <= reached.size(); ++step) {
        QWidget* at = window.focusWidget();
        if (!at || (step > 0 && at == start)) break;
        if (isPart(*at)) at = at->parentWidget();
        ++reached[at];
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    }
    for (const auto& [widget, times] : reached)
        if (times != 1) faults << QString("%1: %2 times").arg(nameOf(*widget)).arg(times);
    return faults;
}

} // namespace veldona::test
