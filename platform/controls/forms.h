// All screens of the process: known by name, loaded, shown, stacked, unloaded; and the dispatcher that runs
// events.
//
// A screen opens another by name, so that screens need not know each other. A modal one returns when it has
// unloaded; the screen below is then activated again. A form that unloads itself is destroyed only when no
// event is running.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls/form.h"
#include "platform/runtime/error.h"

namespace veldona {

enum class Kip { Modeless, Modal };

// Who shows the forms: a window system, or the operator console. Each call tells what has already happened in
// the model, but for runModal, which must handle the operator's events until the form is no longer loaded (or
// the process has ended). A form is told of before its onLoad, so that what onLoad changes is followed; a
// change may also come from a form that is only being made or has gone already, and is nobody's business
// then.
class FormHost {
public:
    virtual ~FormHost() = default;
    virtual void formLoaded(Form&) {}
    virtual void formShown(Form&, Kip) {}
    virtual void formUnloaded(Form&) {}
    virtual void formChanged(Form&) {} // caption, pointer, enabled
    virtual void controlChanged(Control&) {}
    virtual void focusMoved(Form&) {}
    virtual void runModal(Form& form) = 0;
    virtual void processEnded() {}
};

// Thrown by Forms::endProcess through whatever runs; no error, so no error handling swallows it.
struct ProcessEnd {};

// What an event is to whoever keeps a record of the operator's acts.
struct ActWords {
    const Form* form = nullptr; // nothing: the one in front
    std::string words;
};

class Forms {
public:
    using Factory = std::function<std::unique_ptr<Form>(Forms&)>;

    explicit Forms(FormHost& host) : host_(&host) {}
    ~Forms();
    Forms(const Forms&) = delete;
    Forms& operator=(const Forms&) = delete;

    // The last handler: what becomes of an error that no procedure caught. Set once at start-up.
    std::function<void(const RuntimeError&)> onUncaught;
    std::function<void()> onEventEnd; // behind each event that no other one of the same loop has begun
    // For whoever keeps a record of the operator's acts, in the words that the operator reads. Asked at the
    // beginning of each event that no other one of the same loop has begun; what it answers lives to the
    // event's end. A procedure that presses a button in a key's place says so by nameAct.
    std::function<std::shared_ptr<void>(const std::string& screen, const std::string& words)> beginAct;
    std::function<void(const std::string& words)> nameAct;

    void add(std::string name, Factory factory);
    [[nodiscard]] bool isKnown(std::string_view name) const;

    // The loaded form of this name; loads it (onLoad) where it is not. Error 424 for an unknown name, 364
    // where it unloaded itself while it was loaded. A load that fails removes the form again.
    Form& load(std::string_view name);
    // Loads where needed, shows, activates. Modal: returns when it has unloaded. One that stands shown
    // already comes to the front and is activated again; error 400 where it is asked to turn modal.
    void show(std::string_view name, Kip kip);
    // onUnload, then gone; where it was in front, the screen below is activated before this returns.
    void unload(Form& form);
    [[nodiscard]] Form* loaded(std::string_view name) const; // case-free; nullptr: none
    [[nodiscard]] std::vector<Form*> loadedForms() const;
    [[nodiscard]] Form* active() const; // the shown form in front; nullptr: none
    // Shown and enabled, with no modal one in front of it: the operator can turn to it.
    [[nodiscard]] bool isOpenToOperator(const Form& form) const;
    // The operator turns to it: where it stands behind another, it comes to the front and is activated.
    void turnTo(Form& form);

    // Runs one event. An uncaught RuntimeError ends it and goes to onUncaught (on to the caller where none is
    // set), and so does memory that ran out, as error 7. ProcessEnd unwinds the events on the stack down to
    // the first one. Nothing runs once the process has ended.
    void dispatch(const std::function<void()>& event, const ActWords& act = {});
    // The act that runs is the press of this one.
    void pressesFor(const Control& control) const;
    void pressesFor(const std::string& caption) const;
    // For a host whose own event loop no exception may cross: ProcessEnd stops at the events that `loop`
    // runs, and is thrown again when `loop` has returned.
    void runLoop(const std::function<void()>& loop);

    // Ends the process at once: nothing behind the call runs.
    [[noreturn]] void endProcess();
    [[nodiscard]] bool ended() const { return ended_; }

    [[nodiscard]] FormHost& host() const { return *host_; }

    // Forms that unload live on as long as one of these stands; every event has one.
    class Hold {
    public:
        explicit Hold(Forms& forms) : forms_(&forms) { ++forms_->holds_; }
        ~Hold();
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

    private:
        Forms* forms_;
    };

private:
    struct Open {
        std::unique_ptr<Form> form;
        bool shown = false;
        Kip kip = Kip::Modeless;
        bool unloading = false;
    };
    [[nodiscard]] std::vector<Open>::iterator place(const Form& form);
    Form* ensureLoaded(std::string_view name); // nullptr: it unloaded itself
    void bringToFront(const Form& form);
    void activate(Form& form);
    void focusFirst(Form& form);
    void remove(Form& form);
    void runCaught(const std::function<void()>& event);
    [[nodiscard]] std::shared_ptr<void> begunAct(const ActWords& act) const;

    FormHost* host_;
    std::map<std::string, Factory, std::less<>> factories_; // keys in upper case
    std::vector<Open> open_;                                // the front one last
    std::vector<std::unique_ptr<Form>> graveyard_;
    int running_ = 0; // events on the stack
    int edge_ = 0;    // those below the innermost loop of runLoop
    int holds_ = 0;
    bool ended_ = false;
};

} // namespace veldona
