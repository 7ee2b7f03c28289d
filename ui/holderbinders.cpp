// What holds others, or is not seen: frames, tabs, timers.
#include <QGroupBox>
#include <QTabWidget>
#include <QTimer>

#include "platform/controls/controls.h"
#include "platform/controls/lists.h"
#include "platform/controls/userinput.h"
#include "ui/binder.h"
#include "ui/formwindow.h"

namespace veldona {

namespace {

// Any widget can hold others; a group box shows the caption.
class FrameBinder : public BinderOf<Frame, QWidget> {
public:
    FrameBinder(FormWindow& window, Frame& frame, QWidget& widget)
        : BinderOf(window, frame, widget), group_(qobject_cast<QGroupBox*>(&widget)) {}
    void refresh() override {
        Binder::refresh();
        if (!group_) return;
        const QString title = wordsOf(bound);
        if (title != group_->title()) group_->setTitle(title);
    }

private:
    QGroupBox* group_;
};

class TabBinder : public BinderOf<TabControl, QTabWidget> {
public:
    TabBinder(FormWindow& window, TabControl& tabs, QTabWidget& widget) : BinderOf(window, tabs, widget) {
        QObject::connect(&widget, &QTabWidget::currentChanged, &widget, [this](int page) {
            if (listens()) act([&] { user::clickRow(bound, page); });
        });
    }
    void refresh() override {
        Binder::refresh();
        const auto& pages = bound.pages();
        for (int i = 0; i < view.count() && i < static_cast<int>(pages.size()); ++i)
            view.setTabText(i, wordsOf(*pages[static_cast<std::size_t>(i)]));
        view.setCurrentIndex(bound.tab());
    }
};

class TimerBinder : public Binder {
public:
    TimerBinder(FormWindow& window, Timer& timer) : Binder(window, timer, nullptr), bound_(timer) {
        QObject::connect(&ticker_, &QTimer::timeout, &ticker_, [this] {
            if (listens()) act([this] { user::tick(bound_); });
        });
    }
    void refresh() override {
        const bool runs = bound_.enabled() && bound_.interval > 0 && window().timersRun();
        if (!runs)
            ticker_.stop();
        else if (!ticker_.isActive() || ticker_.interval() != bound_.interval)
            ticker_.start(bound_.interval);
    }

private:
    Timer& bound_;
    QTimer ticker_;
};

} // namespace

std::unique_ptr<Binder> bindHolder(FormWindow& window, Control& control, QWidget& widget) {
    if (auto made = bindAs<TabBinder>(window, control, widget)) return made;
    return bindAs<FrameBinder>(window, control, widget);
}

std::unique_ptr<Binder> bindTimer(FormWindow& window, Control& control) {
    auto* timer = dynamic_cast<Timer*>(&control);
    return timer ? std::make_unique<TimerBinder>(window, *timer) : nullptr;
}

} // namespace veldona
