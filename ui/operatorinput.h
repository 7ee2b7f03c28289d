// What an operator does to a window, its closing included.
#pragma once

#include <QEvent>

namespace veldona {

[[nodiscard]] inline bool isOfOperator(QEvent::Type type) {
    switch (type) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::InputMethod:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

} // namespace veldona
