// The menu bar of a window and the menus that pop up in it, made of the screen's own.
#include <QAction>
#include <QLayout>
#include <QMenu>
#include <QMenuBar>

#include "platform/controls/menus.h"
#include "platform/controls/userinput.h"
#include "ui/binder.h"
#include "ui/formwindow.h"

namespace veldona {

namespace {

QMenuBar& barOf(FormWindow& window) {
    if (auto* bar = qobject_cast<QMenuBar*>(window.layout()->menuBar())) return *bar;
    auto* made = new QMenuBar(&window);
    window.layout()->setMenuBar(made);
    return *made;
}

class MenuBinder : public Binder {
public:
    MenuBinder(FormWindow& window, Menu& menu)
        : Binder(window, menu, nullptr), bar_(barOf(window)), view_(bar_.addMenu(QString())), bound_(menu) {
        view_->setObjectName(toQt(menu.name()));
    }
    void refresh() override {
        view_->setTitle(toQt(bound_.words()));
        view_->menuAction()->setEnabled(bound_.enabled());
        view_->menuAction()->setVisible(bound_.visible() && bound_.hasEntryToShow());
        // A bar that shows nothing takes no room.
        const auto menus = bar_.actions();
        bar_.setVisible(
            std::any_of(menus.begin(), menus.end(), [](auto* each) { return each->isVisible(); }));
    }
    [[nodiscard]] QMenu& view() const { return *view_; }

private:
    QMenuBar& bar_;
    QMenu* view_;
    Menu& bound_;
};

class MenuItemBinder : public Binder {
public:
    MenuItemBinder(FormWindow& window, MenuItem& item, MenuBinder& menu)
        : Binder(window, item, nullptr), menu_(menu), view_(menu.view().addAction(QString())), bound_(item) {
        view_->setObjectName(toQt(item.name()));
        QObject::connect(view_, &QAction::triggered, view_, [this] {
            if (listens()) act([this] { user::click(bound_); });
        });
    }
    void refresh() override {
        // The key is shown only: it comes the way of all keys, to the screen and its controls first.
        const QString key = toQt(bound_.keyName());
        view_->setText(toQt(bound_.words()) + (key.isEmpty() ? "" : "\t" + key));
        view_->setEnabled(bound_.enabled());
        view_->setVisible(bound_.visible());
        menu_.refresh();
    }

private:
    MenuBinder& menu_;
    QAction* view_;
    MenuItem& bound_;
};

} // namespace

std::unique_ptr<Binder> bindMenu(FormWindow& window, Control& control) {
    if (auto* menu = dynamic_cast<Menu*>(&control)) return std::make_unique<MenuBinder>(window, *menu);
    auto* item = dynamic_cast<MenuItem*>(&control);
    if (!item) return nullptr;
    auto& menu = dynamic_cast<MenuBinder&>(*window.binderOf(*item->holder()));
    return std::make_unique<MenuItemBinder>(window, *item, menu);
}

} // namespace veldona
