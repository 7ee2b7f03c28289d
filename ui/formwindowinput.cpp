// The operator's hand on a window: keys, focus, mouse and menus on their way to the model.
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QVariant>

#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "platform/controls/userinput.h"
#include "ui/binder.h"
#include "ui/datefield.h"
#include "ui/formwindow.h"
#include "ui/host.h"
#include "ui/keyoverview.h"
#include "ui/keytranslation.h"

namespace veldona {

namespace {

// The window system gave the window its focus back, or a list it opened closed: nobody moved between
// controls.
bool isMove(Qt::FocusReason reason) {
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
           reason != Qt::OtherFocusReason;
}

// A wheel that turns over a field on the way elsewhere must not change it.
bool isStrayWheel(const QWidget& receiver) {
    return qobject_cast<const QComboBox*>(&receiver) && !receiver.hasFocus();
}

// The widget is through with the key before.
bool endsKey(QEvent::Type type) {
    return type == QEvent::KeyPress || type == QEvent::KeyRelease || type == QEvent::Shortcut ||
           type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease;
}

} // namespace

bool FormWindow::filter(QWidget& receiver, QEvent& event) {
    // The keys of the menu bar are its own: the screen would take its arrows for a walk through the
    // customers.
    if (!bound_ || qobject_cast<QMenuBar*>(&receiver)) return false;
    const Busy busy(*this);
    const QWidget* focused = focusWidget() ? focusWidget() : this;
    if (endsKey(event.type())) keyWorks_ = false;
    switch (event.type()) {
    case QEvent::KeyPress:
        // One that a widget leaves alone comes again for each that holds it; it has been told once.
        return &receiver == focused && keyPressed(static_cast<QKeyEvent&>(event));
    case QEvent::KeyRelease:
        if (&receiver == focused) keyReleased(static_cast<QKeyEvent&>(event));
        return false;
    case QEvent::InputMethod:
        keyWorks_ = true;
        return false;
    case QEvent::FocusIn:
        focusEntered(receiver, static_cast<QFocusEvent&>(event));
        return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return mouseEvent(receiver, event);
    case QEvent::ContextMenu:
        return openMenu(receiver, static_cast<QContextMenuEvent&>(event));
    case QEvent::Wheel:
        return isStrayWheel(receiver);
    default:
        return false;
    }
}

bool FormWindow::keyPressed(QKeyEvent& event) {
    if (!listens()) return true;
    turnTo();
    followFocus();
    if (!isBound()) return true;
    const KeyEvent key = keyOf(event);
    if (!concernsScreen(key)) return false;
    if (sentOn(event, key)) return true;
    Binder* binder = binderAt(focusWidget());
    Control* control = binder ? &binder->control() : nullptr;
    if (!toldOfKey(control, key, characterOf(event)) || !isBound()) return true;
    // No rule has a use for it; one that had would have swallowed it.
    if (Control* called = user::calledBy(form_, key)) {
        act(*called, [called] { user::click(*called); });
        return true;
    }
    if (key.key == Key::F1) {
        showKeysOfScreen();
        return true;
    }
    if (!binder) return false;
    if (!control->isShown() || !control->isUsable()) return true;
    binder->handOn();
    // A button that it presses may start something long, which other keys reach.
    if (binder->keyPassed(event) || (key.key == Key::Enter && pressedByEnter())) return true;
    keyWorks_ = true;
    return false;
}

// Shift alone and its like are no key to anybody but the widget, nor are its own commands.
bool FormWindow::concernsScreen(const KeyEvent& key) const {
    const bool isCommandLetter = key.control && !key.alt && key.character >= U'a' && key.character <= U'z';
    if (isCommandLetter) return user::calledBy(form_, key) != nullptr;
    return key.key != Key::None || key.character != 0;
}

// A digit that the widget has no use for goes to the field that waits for one, in the place of its text.
bool FormWindow::sentOn(QKeyEvent& event, const KeyEvent& key) {
    const bool isDigit = key.character >= U'0' && key.character <= U'9' && !key.control && !key.alt;
    Binder* binder = isDigit ? binderAt(focusWidget()) : nullptr;
    auto* field = binder ? qobject_cast<QLineEdit*>(binder->takerOfDigits()) : nullptr;
    if (!field || !field->isEnabled() || !field->isVisible()) return false;
    field->setFocus(Qt::OtherFocusReason);
    followFocus();
    if (focusWidget() != field) return false;
    field->selectAll();
    QCoreApplication::sendEvent(field, &event);
    return true;
}

// The button that answers Enter in the fields around it. It takes the focus first, so that a date typed so
// far is read.
bool FormWindow::pressedByEnter() {
    for (const QWidget* around = focusWidget(); around; around = around->parentWidget()) {
        const QString name = around->property("enterPresses").toString();
        auto* button = name.isEmpty() ? nullptr : findChild<QPushButton*>(name);
        if (!button || !button->isVisible() || !button->isEnabled()) continue;
        button->setFocus(Qt::OtherFocusReason);
        button->click();
        return true;
    }
    return false;
}

// True: the widget is to get it, too. Until then no other key may run past it.
bool FormWindow::toldOfKey(Control* control, const KeyEvent& key, const std::optional<KeyPress>& press) {
    const WindowHost::KeyUnderWay underWay(host_);
    const bool goesOn =
        user::keyDown(form_, control, key) && (!press || user::keyPress(form_, control, *press));
    host_.flush();
    return goesOn;
}

void FormWindow::showKeysOfScreen() {
    if (!listens()) return;
    const Busy busy(*this);
    form_.forms().dispatch(
        [this] { showKeys(host_, this, windowTitle(), keysOfScreen(form_), form_.name()); });
}

void FormWindow::keyReleased(const QKeyEvent& event) {
    const KeyEvent key = keyOf(event);
    if (event.isAutoRepeat() || !listens() || !concernsScreen(key)) return;
    const Binder* binder = binderAt(focusWidget());
    Control* control = binder ? &binder->control() : form_.activeControl();
    const WindowHost::KeyUnderWay underWay(host_);
    user::keyUp(form_, control, key);
    host_.flush();
}

void FormWindow::focusEntered(QWidget& widget, const QFocusEvent& event) {
    Binder* binder = binderAt(&widget);
    if (!binder) return;
    binder->focusTaken();
    if (!listens()) return;
    // A view that takes the focus may mark a row of itself; what the model holds is shown again behind that.
    QMetaObject::invokeMethod(
        this,
        [this, binder] {
            if (!isBound()) return;
            touch(binder->control());
            host_.flush();
        },
        Qt::QueuedConnection);
    if (isMove(event.reason())) followFocus();
}

void FormWindow::followFocus() {
    const Binder* binder = binderAt(focusWidget());
    if (!binder || !listens() || !binder->control().takesFocus()) return;
    if (form_.activeControl() == &binder->control()) return;
    const Busy busy(*this);
    // Refused, or sent elsewhere by a handler: the widgets follow.
    if (!user::focus(binder->control()) || form_.activeControl() != &binder->control()) touchFocus();
    host_.flush();
}

// Two screens that stand side by side: the one that is used is the one in front.
void FormWindow::turnTo() {
    form_.forms().turnTo(form_);
    host_.flush();
}

bool FormWindow::mouseEvent(QWidget& receiver, const QEvent& event) {
    if (event.type() == QEvent::MouseButtonPress && listens()) turnTo();
    Binder* binder = binderAt(&receiver);
    if (!binder || !listens()) return false;
    if (event.type() == QEvent::MouseButtonRelease) {
        binder->mouseReleased();
    } else {
        binder->handOn();
        if (event.type() == QEvent::MouseButtonDblClick) binder->doubleClicked();
    }
    return !isBound();
}

bool FormWindow::openMenu(const QWidget& receiver, const QContextMenuEvent& event) {
    Binder* binder = binderAt(&receiver);
    if (!binder || !listens()) return false;
    const Control* menu = binder->control().popupMenu;
    if (!menu) menu = binder->target().popupMenu;
    if (!menu) return false;
    auto* popup = findChild<QMenu*>(toQt(menu->name()));
    if (!popup || popup->isEmpty()) return false;
    popup->exec(event.globalPos());
    return true;
}

} // namespace veldona
