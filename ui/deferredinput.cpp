#include "ui/deferredinput.h"

#include <utility>

#include <QCoreApplication>

namespace veldona {

namespace {

bool goesToFocus(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::InputMethod;
}

bool isOfHand(QEvent::Type type) {
    return goesToFocus(type) || type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease ||
           type == QEvent::MouseButtonDblClick || type == QEvent::Wheel || type == QEvent::ContextMenu;
}

} // namespace

bool DeferredInput::take(QWidget& receiver, const QEvent& event) {
    if (!isOfHand(event.type())) return false;
    deferred_.push_back({&receiver, std::unique_ptr<QEvent>(event.clone())});
    return true;
}

void DeferredInput::giveOne() {
    const Deferred oldest = std::exchange(deferred_.front(), {});
    deferred_.pop_front();
    if (!oldest.receiver) return;
    QWidget* target = oldest.receiver;
    if (QWidget* focused = target->window()->focusWidget(); focused && goesToFocus(oldest.event->type()))
        target = focused;
    QCoreApplication::sendEvent(target, oldest.event.get());
}

} // namespace veldona
