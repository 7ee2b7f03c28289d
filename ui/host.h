// The forms of the process as windows of the desktop.
//
// It can stand alone as the host of the forms, or behind another one that forwards to it. A change of the
// model is shown by the next flush: behind each act of the operator, before anything that lets the operator
// look or act (a wait, a message, a modal screen), else as soon as the event loop comes round.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <QObject>

#include "platform/controls/forms.h"
#include "platform/desktop/clock.h"
#include "ui/deferredinput.h"
#include "ui/formwindow.h"
#include "ui/locknote.h"
#include "ui/usersettings.h"
#include "ui/windowmemory.h"

class QDialog;
class QEventLoop;

namespace veldona {

class WindowHost : public QObject, public FormHost {
public:
    // The clock says which day "today" is where an unset date is switched on.
    explicit WindowHost(Clock& clock);
    ~WindowHost() override;

    // How the window of this form is drawn; every form that is loaded needs one.
    void draw(const std::string& form, Drawing drawing);
    // Something of the program's around it, put into the window behind its own drawing.
    void addTo(const std::string& form, const std::function<void(FormWindow&)>& more);

    UserSettings settings;
    WindowMemory memory{settings};
    bool timersRun = true;             // false: timers tick only when told by somebody else
    std::function<void()> onAllClosed; // the last form has unloaded
    std::function<void()> onProcessEnded;
    // Shows the user's guide over a window, at the chapter of a screen; empty: there is none to show.
    std::function<void(QWidget* over, const std::string& screen)> showGuide;

    // FormHost
    void formLoaded(Form& form) override;
    void formShown(Form& form, Kip kip) override;
    void formUnloaded(Form& form) override;
    void formChanged(Form& form) override;
    void controlChanged(Control& control) override;
    void focusMoved(Form& form) override;
    void runModal(Form& form) override;
    void processEnded() override;

    [[nodiscard]] FormWindow* window(const Form& form) const; // nullptr: none
    // Shows in the windows what changed in the models; flushSoon when the event loop comes round.
    void flush();
    void flushSoon();
    // Draws the window of the form into a PNG file.
    [[nodiscard]] bool screenshot(Form& form, const std::string& path);
    // One key, down and up, through the widget that has the focus. False where the form has no window.
    bool typeKey(Form& form, const KeyEvent& key);

    // Lets what waits run, in the middle of a long procedure. The operator's input is let in only where it
    // cannot run past a key that is still on its way, what the key does to its widget included, nor pile up
    // inside itself; what is kept out waits for its turn.
    void letEventsRun();
    // The same with all of the input: for who has put a filter before it that takes it away.
    void letFilteredEventsRun();
    // Stands still for so long under the wait cursor; windows are painted, the operator's input waits.
    void standStill(int milliseconds);
    // For each look round of a statement that waits for another till; false where the operator gives it up.
    [[nodiscard]] bool goOnWaiting(std::chrono::milliseconds waited);
    [[nodiscard]] bool waitsForLock() const { return lockNote_.isWaiting(); }
    // A procedure stands still or lets events run; the operator's input waits for its end.
    [[nodiscard]] bool keepsInputOut() const { return standingStill_ || lettingEventsRun_; }
    [[nodiscard]] bool asks() const { return !dialogs_.empty(); } // a dialog is in front
    // Runs a dialog in front of all windows and gives back its result.
    int run(QDialog& dialog);
    [[nodiscard]] QWidget* frontWindow() const;
    [[nodiscard]] Clock& clock() const { return clock_; }

    class KeyUnderWay {
    public:
        explicit KeyUnderWay(WindowHost& host) : host_(host) { ++host_.keysUnderWay_; }
        ~KeyUnderWay() { --host_.keysUnderWay_; }
        KeyUnderWay(const KeyUnderWay&) = delete;
        KeyUnderWay& operator=(const KeyUnderWay&) = delete;

    private:
        WindowHost& host_;
    };

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Modal {
        const Form* form;
        QEventLoop* loop;
    };
    void open(FormWindow& window, Kip kip);
    [[nodiscard]] QWidget* behind(const FormWindow& window) const;
    void keepPlace(const FormWindow& window);
    // Runs a loop of Qt's, which no exception may cross.
    void runLoop(const std::function<void()>& loop);
    void followPointer();
    void giveHeldSoon();

    Clock& clock_;
    LockNote lockNote_{*this};
    std::map<std::string, Drawing> drawings_;
    std::map<std::string, std::function<void(FormWindow&)>> additions_;
    std::map<const Form*, FormWindow*> windows_;
    std::vector<FormWindow*> opened_; // the one that was opened last at the end
    std::vector<Modal> modals_;
    std::vector<QDialog*> dialogs_;
    int keysUnderWay_ = 0;
    bool lettingEventsRun_ = false;
    bool standingStill_ = false;
    bool inputKeptOut_ = false;
    DeferredInput deferred_;
    bool flushing_ = false;
    bool flushWaits_ = false;
    bool waitCursor_ = false;
};

} // namespace veldona
