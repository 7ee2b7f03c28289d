#include "ui/windowmemory.h"

#include <algorithm>
#include <cmath>

#include <QGuiApplication>
#include <QScreen>
#include <QVariant>
#include <QWidget>

#include "ui/drawnsizes.h"
#include "ui/housestyle.h"
#include "ui/usersettings.h"

namespace veldona {

namespace {

constexpr const char* kSize = "/boy";
constexpr const char* kPlace = "/yer";
constexpr const char* kFilled = "/tam";
constexpr const char* kOpenedAs = "openedAs";
constexpr int kTitleBar = 32; // about; a window that has not been shown doesn't know its own

// Without its frame, which isn't known before the first show.
QPoint middleOf(const QWidget& window) {
    return window.geometry().center();
}

QRect roomAt(const QPoint& point, const QWidget& window) {
    const QScreen* screen = QGuiApplication::screenAt(point);
    return (screen ? screen : window.screen())->availableGeometry();
}

QPoint drawn(const QPoint& point) {
    return (QPointF(point) / houseScale()).toPoint();
}

} // namespace

void WindowMemory::place(QWidget& window, const QString& name, const QWidget* owner) const {
    const QSize before = settings_.value(name + kSize).toSize();
    if (!before.isEmpty()) window.resize(sizeOnScreen(window, before * houseScale()));
    const QRect screen = window.screen()->availableGeometry();
    const QPoint origin = owner ? middleOf(*owner) : screen.center();
    const QPoint shift = settings_.value(name + kPlace).toPoint();
    const QPoint middle = origin + (QPointF(shift) * houseScale()).toPoint();
    const QRect room = roomAt(QGuiApplication::screenAt(middle) ? middle : origin, window);
    QRect place(QPoint(), window.size());
    place.moveCenter(middle);
    const int top = room.top() + scaled(kTitleBar);
    place.moveTo(std::clamp(place.left(), room.left(), std::max(room.left(), room.right() - place.width())),
                 std::clamp(place.top(), top, std::max(top, room.bottom() - place.height())));
    window.setGeometry(place);
    window.setProperty(kOpenedAs, window.size());
}

void WindowMemory::keep(const QWidget& window, const QString& name, const QWidget* owner) {
    if (window.isMinimized()) return;
    if (!owner) settings_.set(name + kFilled, window.isMaximized());
    if (window.isMaximized()) return; // size and place of before hold
    const QPoint origin = owner ? middleOf(*owner) : window.screen()->availableGeometry().center();
    settings_.set(name + kPlace, drawn(middleOf(window) - origin));
    // A size that nobody has changed stays the drawing's affair.
    if (window.property(kOpenedAs).toSize() != window.size())
        settings_.set(name + kSize, (QSizeF(window.size()) / houseScale()).toSize());
}

std::optional<bool> WindowMemory::filled(const QString& name) const {
    const QVariant value = settings_.value(name + kFilled);
    return value.isValid() ? std::optional(value.toBool()) : std::nullopt;
}

std::optional<int> WindowMemory::width(const QString& name) const {
    const int width = settings_.value(name).toInt();
    return width > 0 ? std::optional(scaled(width)) : std::nullopt;
}

void WindowMemory::keepWidth(const QString& name, int width) {
    settings_.set(name, static_cast<int>(std::lround(width / houseScale())));
}

} // namespace veldona
