// One run of the program on a folder that stands for drive C:, from before its start to its end.
//
// It ends as the real one does: when the program says so, when the start fails, or when no screen is left. A
// run that ended is thrown away whole; the next one begins from what lies in the folder.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/controls/forms.h"
#include "platform/desktop/desktop.h"
#include "platform/store/faces/adodb.h"

namespace veldona {
struct Session;
}

namespace veldona::console {

using RegisterScreens = std::function<void(Forms&, Session&)>;

class Process {
public:
    Process(const std::string& folder, const RegisterScreens& screens, Clock& clock, Dialogs& dialogs,
            FormHost& host);
    ~Process();
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    [[nodiscard]] Session& session() { return *session_; }
    [[nodiscard]] Forms& forms() { return *forms_; }
    [[nodiscard]] Desktop& desktop() { return desktop_; }
    [[nodiscard]] const Paths& paths() const { return desktop_.paths; }

    void start();
    // As closing the program does: every screen unloads, the front one first.
    void quit();
    [[nodiscard]] bool hasEnded() const;

    // The shared connection; before the start, one of our own on the same file.
    [[nodiscard]] adodb::Connection& connection();

private:
    class PrintingOpener : public Opener {
    public:
        bool open(const std::string& nativePath) override;
    };

    EventPump events_;
    PrintingOpener opener_;
    Desktop desktop_;
    std::unique_ptr<Forms> forms_;
    std::unique_ptr<Session> session_;
    std::unique_ptr<adodb::Connection> early_;
    bool started_ = false;
    bool failed_ = false;
};

} // namespace veldona::console
