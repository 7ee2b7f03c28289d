// What the lines of one scenario work on: the folder, the clock, what was said and asked, the report shown
// last, and the present run of the program. All but the run outlive its end, so that a scenario can look at
// what it left.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "apps/operator/desk.h"
#include "apps/operator/process.h"
#include "apps/operator/reportsink.h"
#include "apps/operator/script.h"
#include "apps/operator/serverbooks.h"
#include "apps/operator/windows.h"
#include "platform/desktop/clock.h"
#include "platform/desktop/dialogs.h"

namespace veldona::console {

// An expectation that does not hold, or an act that the program refuses.
class Shortfall : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Keeps what was said, and tells at once of a question that the scenario has no answer for.
class AskedDialogs : public RecordingDialogs {
public:
    std::function<void(const std::string& question)> onUnanswered;
    std::function<void(const std::string& text)> onShown; // before anything is kept of it
    Answer show(const Message& message) override;
    std::optional<std::string> input(const std::string& prompt, const std::string& title) override;
    void runtimeError(const RuntimeError& error) override;

private:
    void tellUnanswered(int before, const std::string& question) const;
};

// What was said, on one line.
[[nodiscard]] std::string messageText(const RecordingDialogs::Said& said);

// Where a scenario is played.
struct Setting {
    std::string folder; // stands for drive C:
    RegisterScreens screens;
    OpenWindows windows = nullptr;                             // none are attached
    WritePdf writePdf = nullptr;                               // nobody can
    std::optional<store::ServerAddress> server = std::nullopt; // the books lie there and not in the folder
};

class Stage {
public:
    Stage(Setting setting, FormHost& host);

    [[nodiscard]] Process& process() { return *process_; }
    // In place of a run that has ended: the next one, not started yet.
    void renewProcess();
    // The books as delivered, without a row. Raises StoreError.
    void makeBooks();
    // Whatever screens still stand are gone for the host.
    void dropProcess();

    // The screen in front; a Shortfall where there is none.
    [[nodiscard]] Form& screen() const;
    // "NAME" on the screen in front, or "FORM.NAME" on a loaded one; a Shortfall where there is none.
    [[nodiscard]] Control& control(const Word& name) const;
    // The same where it must be of one kind, which the Shortfall calls `kind`.
    template <class T> [[nodiscard]] T& control(const Word& name, std::string_view kind) const {
        if (T* found = dynamic_cast<T*>(&control(name))) return *found;
        throw Shortfall(name.text + " is no " + std::string(kind));
    }

    ManualClock clock;
    AskedDialogs dialogs;
    ReportSink reports;

    [[nodiscard]] Windows* windows() const { return windows_.get(); } // nullptr: none are attached

private:
    Setting setting_;
    FormHost* host_;
    ConsoleDesk desk_;
    std::optional<ServerBooks> server_; // gone behind the process that has them open
    std::unique_ptr<Windows> windows_;
    std::unique_ptr<Process> process_;
};

} // namespace veldona::console
