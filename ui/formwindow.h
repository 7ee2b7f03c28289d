// The window of one form: its drawing, a binder for every control, and the way of keys and focus between the
// two.
//
// A key goes to the screen first, then to the control, and to the widget only where nobody swallowed it. The
// focus follows the operator into the model once, and the model out to the widgets after each event. Once the
// form has unloaded, the window is deaf and waits for its end.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <QWidget>

#include "platform/controls/forms.h"
#include "platform/runtime/datetime.h"
#include "ui/drawnsizes.h"

class QContextMenuEvent;
class QFocusEvent;

namespace veldona {

class Binder;
class TightGrid;
class WindowHost;

// Puts the widgets of a .ui file into an empty window.
using Drawing = std::function<void(QWidget&)>;

class FormWindow : public QWidget {
public:
    // Ends the program with the list of names where a control has no widget, or one of a type that cannot
    // show it.
    FormWindow(WindowHost& host, Form& form, const Drawing& draw);
    ~FormWindow() override;

    // Brings what it shows and its size up to date, before it is shown for the first time.
    void prepare();
    void setVisible(bool visible) override;

    [[nodiscard]] Form& form() const { return form_; }
    [[nodiscard]] WindowHost& host() const { return host_; }
    [[nodiscard]] bool isBound() const { return bound_; }
    // Bound, and not being brought up to date just now, nor in the middle of a statement: what widgets say
    // comes from the operator.
    [[nodiscard]] bool listens() const;
    // The form has unloaded. A procedure of it may still run below us, having let events run: the end waits
    // for it.
    void retire();

    // Something of it changed in the model; shown by the next refresh.
    void touch(Control& control);
    void touchFocus() { focusMoved_ = true; }
    void touchForm();
    void refresh();

    // Runs an act of the operator on `control`, then shows what came of it.
    void act(Control& control, const std::function<void()>& event);
    // The binder whose widget this is or stands in; nullptr: none.
    [[nodiscard]] Binder* binderAt(const QWidget* widget) const;
    [[nodiscard]] Binder* binderOf(const Control& control) const;

    // Sees an event before the widget it goes to. True: the widget doesn't get it.
    bool filter(QWidget& receiver, QEvent& event);
    // Tells the model where the focus stands, where it has been moved past us.
    void followFocus();
    void turnTo();
    void showKeysOfScreen();

    [[nodiscard]] DateTime today() const;
    [[nodiscard]] bool timersRun() const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    // An event of the window is under way.
    class Busy {
    public:
        explicit Busy(FormWindow& window);
        ~Busy();
        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;

    private:
        FormWindow& window_;
        Forms::Hold hold_;
    };

    void bind();
    void unbind();
    void bindControl(Control& control, const QStringList& withoutWidget, QStringList& faults);
    void arrangeTabs();
    void followLetters();
    void showFocus();
    bool keyPressed(QKeyEvent& event);
    [[nodiscard]] bool concernsScreen(const KeyEvent& key) const;
    bool sentOn(QKeyEvent& event, const KeyEvent& key);
    bool pressedByEnter();
    bool toldOfKey(Control* control, const KeyEvent& key, const std::optional<KeyPress>& press);
    void keyReleased(const QKeyEvent& event);
    void focusEntered(QWidget& widget, const QFocusEvent& event);
    bool mouseEvent(QWidget& receiver, const QEvent& event);
    bool openMenu(const QWidget& receiver, const QContextMenuEvent& event);

    WindowHost& host_;
    Form& form_;
    std::unique_ptr<DrawnSizes> drawn_;
    TightGrid* tight_ = nullptr;
    std::vector<std::unique_ptr<Binder>> binders_; // in the order of the controls
    std::unordered_map<const QWidget*, Binder*> byWidget_;
    std::unordered_map<const Control*, Binder*> byControl_;
    std::vector<Binder*> touched_;
    int busy_ = 0;
    bool bound_ = false;
    bool prepared_ = false;
    bool refreshing_ = false;
    bool focusMoved_ = false;
    bool keyWorks_ = false; // the widget has got a key and works on it
};

} // namespace veldona
