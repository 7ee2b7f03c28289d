#include "ui/parallellists.h"

#include <algorithm>

#include <QApplication>
#include <QEvent>
#include <QGridLayout>
#include <QListView>
#include <QScrollBar>
#include <QStyle>
#include <QVariant>

namespace veldona {

ParallelLists::ParallelLists(QWidget* parent) : QFrame(parent), bar_(new QScrollBar(Qt::Vertical, this)) {}

void ParallelLists::link() {
    auto* grid = qobject_cast<QGridLayout*>(layout());
    Q_ASSERT(grid);
    for (int column = 0; column < grid->columnCount(); ++column) {
        const QLayoutItem* item = grid->itemAtPosition(1, column);
        if (auto* list = item ? qobject_cast<QListView*>(item->widget()) : nullptr) lists_.push_back(list);
    }
    // Always there, so that the columns do not move when a list grows long.
    grid->addWidget(bar_, 0, grid->columnCount(), 2, 1);
    for (QListView* list : lists_) {
        list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        // The heading says how narrow a column may be, unless the drawing does.
        if (list->minimumWidth() == 0) list->setMinimumWidth(1);
        list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        list->installEventFilter(this);
        QScrollBar* own = list->verticalScrollBar();
        connect(own, &QScrollBar::rangeChanged, this, [this] { followRange(); });
        connect(own, &QScrollBar::valueChanged, this, [this](int value) { scrollTo(value); });
    }
    connect(bar_, &QScrollBar::valueChanged, this, [this](int value) { scrollTo(value); });
    followRange();
}

// A short list stays at its end while the others go on; what it says about that is no wish of the operator's.
void ParallelLists::scrollTo(int value) {
    if (scrolling_) return;
    scrolling_ = true;
    bar_->setValue(value);
    for (QListView* list : lists_)
        list->verticalScrollBar()->setValue(value);
    scrolling_ = false;
}

bool ParallelLists::eventFilter(QObject* watched, QEvent* event) {
    // Behind the event, when the focus is where it goes.
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        QMetaObject::invokeMethod(
            this, [this] { showFocus(); }, Qt::QueuedConnection);
    return QFrame::eventFilter(watched, event);
}

void ParallelLists::showFocus() {
    const QWidget* focused = QApplication::focusWidget();
    const bool isActive = std::any_of(lists_.begin(), lists_.end(),
                                      [focused](const QListView* list) { return list == focused; });
    if (property("active").toBool() == isActive) return;
    setProperty("active", isActive);
    for (QListView* list : lists_) {
        list->setProperty("active", isActive);
        list->style()->unpolish(list);
        list->style()->polish(list);
    }
}

// The longest list rules.
void ParallelLists::followRange() {
    int most = 0;
    for (const QListView* list : lists_)
        most = std::max(most, list->verticalScrollBar()->maximum());
    bar_->setRange(0, most);
    if (lists_.empty()) return;
    bar_->setPageStep(lists_.front()->verticalScrollBar()->pageStep());
    bar_->setSingleStep(lists_.front()->verticalScrollBar()->singleStep());
}

} // namespace veldona
