// Long work beside the windows: it runs on a thread of its own while they are painted and say that they wait.
#pragma once

#include <functional>

#include <QString>

#include "platform/desktop/sidework.h"

namespace veldona {

class WindowHost;

// Returns when `work` is done, and raises what left it. The work must touch neither windows nor screens, and
// no connection to the books but its own. The operator's input waits.
void runBeside(WindowHost& host, const QString& words, const std::function<void()>& work);

// The same with how far it is, and with a button that gives it up, as Esc does.
class WindowSideWork : public SideWork {
public:
    explicit WindowSideWork(WindowHost& host) : host_(host) {}
    void run(const std::string& words, const std::function<void(const Progress&)>& work) override;

private:
    WindowHost& host_;
};

} // namespace veldona
