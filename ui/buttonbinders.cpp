// What is pressed: buttons, check boxes, options, the tools of a bar.
#include <QAction>
#include <QCheckBox>
#include <QKeyEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QToolBar>
#include <QToolButton>
#include <QVariant>

#include "platform/controls/controls.h"
#include "platform/controls/lists.h"
#include "platform/controls/userinput.h"
#include "ui/binder.h"
#include "ui/formwindow.h"

namespace veldona {

namespace {

bool isArrow(const QKeyEvent& event) {
    return event.key() >= Qt::Key_Left && event.key() <= Qt::Key_Down;
}

bool isEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

class ButtonBinder : public BinderOf<CommandButton, QPushButton> {
public:
    ButtonBinder(FormWindow& window, CommandButton& button, QPushButton& widget)
        : BinderOf(window, button, widget) {
        widget.setAutoDefault(false);
        QSizePolicy policy = widget.sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        widget.setSizePolicy(policy);
        QObject::connect(&widget, &QPushButton::clicked, &widget, [this] {
            if (listens()) act([this] { user::click(bound); });
        });
    }
    void refresh() override {
        Binder::refresh();
        const QString text = wordsOf(bound);
        if (text != view.text()) view.setText(text);
    }
    // Arrows belong to the screen; the widget would walk from button to button with them.
    bool keyPassed(const QKeyEvent& event) override {
        if (isEnter(event)) view.click();
        return isEnter(event) || isArrow(event);
    }
};

class CheckBinder : public BinderOf<CheckBox, QCheckBox> {
public:
    CheckBinder(FormWindow& window, CheckBox& box, QCheckBox& widget) : BinderOf(window, box, widget) {
        QObject::connect(&widget, &QCheckBox::clicked, &widget, [this](bool on) {
            if (listens()) act([&] { user::setMark(bound, on, this->window().today()); });
        });
    }
    void refresh() override {
        Binder::refresh();
        view.setText(wordsOf(bound));
        view.setChecked(bound.checked());
    }
    bool keyPassed(const QKeyEvent& event) override { return isArrow(event); }
};

class OptionBinder : public BinderOf<OptionButton, QRadioButton> {
public:
    OptionBinder(FormWindow& window, OptionButton& option, QRadioButton& widget)
        : BinderOf(window, option, widget) {
        QObject::connect(&widget, &QRadioButton::clicked, &widget, [this] {
            if (listens()) act([this] { user::click(bound); });
        });
    }
    void refresh() override {
        Binder::refresh();
        view.setText(wordsOf(bound));
        // One of a group that excludes each other could not be cleared, only another one set.
        view.setAutoExclusive(false);
        view.setChecked(bound.value());
        view.setAutoExclusive(true);
    }
    bool keyPassed(const QKeyEvent& event) override { return isArrow(event); }
};

class BarBinder : public BinderOf<ToolBar, QToolBar> {
public:
    using BinderOf::BinderOf;
    void refresh() override {
        Binder::refresh();
        const auto& tools = bound.tools();
        for (std::size_t i = actions_.size(); i < tools.size(); ++i)
            actions_.push_back(addTool(tools[i]));
        for (std::size_t i = 0; i < tools.size(); ++i) {
            actions_[i]->setText(toQt(tools[i].caption));
            // Spacers and marks carry no words.
            actions_[i]->setVisible(tools[i].visible && !tools[i].caption.empty());
            actions_[i]->setEnabled(tools[i].enabled);
        }
    }

    bool keyPassed(const QKeyEvent& event) override {
        auto* tool = qobject_cast<QToolButton*>(view.focusWidget());
        if (isEnter(event) && tool && tool->hasFocus()) tool->click();
        return isEnter(event) || isArrow(event);
    }

private:
    QAction* addTool(const ToolBar::Tool& tool) {
        QAction* action = view.addAction(toQt(tool.caption));
        action->setObjectName(toQt(tool.key));
        // Drawn with the bar: which keys press its tools, and whether Tab comes by.
        if (const QVariant key = view.property(tool.key.c_str()); key.isValid())
            action->setShortcut(QKeySequence(key.toString()));
        if (view.property("takesTab").toBool()) view.widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
        QObject::connect(action, &QAction::triggered, action, [this, key = tool.key] {
            if (listens()) act([&] { user::clickTool(bound, key); });
        });
        return action;
    }
    std::vector<QAction*> actions_;
};

} // namespace

std::unique_ptr<Binder> bindButton(FormWindow& window, Control& control, QWidget& widget) {
    for (const auto bind :
         {bindAs<ButtonBinder>, bindAs<CheckBinder>, bindAs<OptionBinder>, bindAs<BarBinder>})
        if (auto made = bind(window, control, widget)) return made;
    return nullptr;
}

} // namespace veldona
