// Ties one control of a form to the widget of its name.
//
// From the model to the widget: refresh() shows what the control holds; while the window refreshes, it does
// not listen to its widgets. From the widget to the model: what the operator does becomes one event, run by
// act(), after which all that changed is shown. The form may be gone behind act(), so it is the last thing a
// binder does.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <QString>

#include "platform/controls/control.h"

class QEvent;
class QKeyEvent;
class QLineEdit;
class QWidget;

namespace veldona {

class Captioned;
class FormWindow;

class Binder {
public:
    Binder(FormWindow& window, Control& control, QWidget* widget);
    virtual ~Binder();
    Binder(const Binder&) = delete;
    Binder& operator=(const Binder&) = delete;

    [[nodiscard]] Control& control() const { return control_; }
    [[nodiscard]] QWidget* widget() const { return widget_; } // nullptr where no drawing has it

    // Enabled, shown, tool tip, colours; a kind of its own adds what it holds.
    virtual void refresh();
    // The widget that takes the keyboard.
    [[nodiscard]] virtual QWidget* focusTarget() const { return widget_; }
    // The control that answers for the operator's act on this widget.
    [[nodiscard]] virtual Control& target() { return control_; }
    // Where digits go that this widget has no use for just now; nullptr: nowhere else.
    [[nodiscard]] virtual QWidget* takerOfDigits() { return nullptr; }
    // A key that no handler swallowed, before the widget gets it. True: it doesn't.
    virtual bool keyPassed(const QKeyEvent&) { return false; }
    // The operator's mouse or key is about to work on the widget.
    virtual void handOn() {}
    // The widget took the focus, which is no act on what it holds.
    virtual void focusTaken() {}
    virtual void mouseReleased() {}
    virtual void doubleClicked() {}
    // Font and sizes of the window are others now.
    virtual void restyled() {}
    // The form is going; the widget may stand a moment longer.
    virtual void leave() {}

protected:
    void act(const std::function<void()>& event);
    [[nodiscard]] bool listens() const;
    [[nodiscard]] FormWindow& window() const { return window_; }

private:
    FormWindow& window_;
    Control& control_;
    QWidget* widget_;
};

template <class ControlKind, class WidgetKind> class BinderOf : public Binder {
public:
    using ControlType = ControlKind;
    using WidgetType = WidgetKind;
    BinderOf(FormWindow& window, ControlKind& control, WidgetKind& widget)
        : Binder(window, control, &widget), bound(control), view(widget) {}

protected:
    ControlKind& bound;
    WidgetKind& view;
};

// The binder of this kind where control and widget are of its types, else nullptr.
template <class Kind> std::unique_ptr<Binder> bindAs(FormWindow& window, Control& control, QWidget& widget) {
    auto* itsControl = dynamic_cast<typename Kind::ControlType*>(&control);
    auto* itsWidget = dynamic_cast<typename Kind::WidgetType*>(&widget);
    if (!itsControl || !itsWidget) return nullptr;
    return std::make_unique<Kind>(window, *itsControl, *itsWidget);
}

// nullptr where the widget is of no type that shows such a control.
[[nodiscard]] std::unique_ptr<Binder> makeBinder(FormWindow& window, Control& control, QWidget& widget);
[[nodiscard]] std::unique_ptr<Binder> bindField(FormWindow& window, Control& control, QWidget& widget);
[[nodiscard]] std::unique_ptr<Binder> bindButton(FormWindow& window, Control& control, QWidget& widget);
[[nodiscard]] std::unique_ptr<Binder> bindHolder(FormWindow& window, Control& control, QWidget& widget);
[[nodiscard]] std::unique_ptr<Binder> bindRows(FormWindow& window, Control& control, QWidget& widget);
// Of a control that no drawing has: a timer, a menu, an entry of one. nullptr for any other.
[[nodiscard]] std::unique_ptr<Binder> bindUndrawn(FormWindow& window, Control& control);
[[nodiscard]] std::unique_ptr<Binder> bindTimer(FormWindow& window, Control& control);
[[nodiscard]] std::unique_ptr<Binder> bindMenu(FormWindow& window, Control& control);

[[nodiscard]] QString toQt(const std::string& text);
[[nodiscard]] std::string fromQt(const QString& text);
// The words of a drawn text as they are read.
[[nodiscard]] QString withoutMnemonic(QString text);
// The blanks around a caption are part of its words, but what is shown of them stands in line.
void alignCaptions(const QWidget& window);
// What a widget of it shows.
[[nodiscard]] QString wordsOf(const Captioned& control);
// The caret and the selection of a text, in characters.
void showSelection(QLineEdit& edit, int start, int length);

} // namespace veldona
