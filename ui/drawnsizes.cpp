#include "ui/drawnsizes.h"

#include <utility>

#include <QLayout>
#include <QScreen>

#include "ui/housestyle.h"

namespace veldona {

namespace {

int grown(int drawn) {
    return drawn == QWIDGETSIZE_MAX ? drawn : scaled(drawn);
}

QSize grown(const QSize& drawn) {
    return {grown(drawn.width()), grown(drawn.height())};
}

} // namespace

DrawnSizes::DrawnSizes(QWidget& window) : window_(window) {
    for (auto* each : window.findChildren<QWidget*>()) {
        // The window's own lists, buttons and bars come from the toolkit, which counts in letters already.
        if (each->objectName().isEmpty() || each->objectName().startsWith("qt_")) continue;
        const QSize none(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        if (!each->minimumSize().isNull() || each->maximumSize() != none)
            limits_.push_back({each, each->minimumSize(), each->maximumSize()});
    }
}

void DrawnSizes::growLimits() {
    for (const Limits& each : limits_) {
        if (!each.widget) continue;
        each.widget->setMinimumSize(grown(each.least));
        each.widget->setMaximumSize(grown(each.most));
    }
}

void DrawnSizes::growWindow() {
    const double growth = houseScale() / std::exchange(scale_, houseScale());
    window_.resize(sizeOnScreen(window_, window_.size() * growth));
}

QSize sizeOnScreen(const QWidget& window, const QSize& wanted) {
    if (window.layout()) window.layout()->activate(); // its least size is the window's
    return wanted.boundedTo(window.screen()->availableSize()).expandedTo(window.minimumSize());
}

} // namespace veldona
