#include "ui/floatingpanel.h"

#include <algorithm>

#include <QEvent>

namespace veldona {

FloatingPanel::FloatingPanel(QWidget* parent) : QGroupBox(parent) {
    if (parent) parent->installEventFilter(this);
}

void FloatingPanel::showEvent(QShowEvent* event) {
    QGroupBox::showEvent(event);
    place();
    raise();
}

// A part of it came or went.
bool FloatingPanel::event(QEvent* event) {
    const bool done = QGroupBox::event(event);
    if (event->type() == QEvent::LayoutRequest) place();
    return done;
}

bool FloatingPanel::eventFilter(QObject* watched, QEvent* event) {
    const bool moves = event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest;
    if (moves && isVisible())
        QMetaObject::invokeMethod(
            this, [this] { place(); }, Qt::QueuedConnection);
    return QGroupBox::eventFilter(watched, event);
}

void FloatingPanel::place() {
    const QWidget* window = parentWidget();
    const auto* anchor = window->findChild<QWidget*>(property("anchor").toString());
    if (!anchor) return;
    const QSize wanted = sizeHint().expandedTo(minimumSizeHint());
    // No wider than it needs by half: fields as long as a large screen are hard to read.
    // As high as the anchor where that is little more, so that no half row looks out below it.
    const QSize size(std::clamp(anchor->width(), wanted.width(), wanted.width() * 3 / 2),
                     anchor->height() <= wanted.height() * 3 / 2 ? std::max(wanted.height(), anchor->height())
                                                                 : wanted.height());
    const QPoint corner = anchor->mapTo(window, QPoint((anchor->width() - size.width()) / 2, 0));
    const int left = std::clamp(corner.x(), 0, std::max(0, window->width() - size.width()));
    const int top = std::clamp(corner.y(), 0, std::max(0, window->height() - size.height()));
    setGeometry(QRect(QPoint(left, top), size));
}

} // namespace veldona
