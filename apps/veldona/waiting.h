// Long work beside the windows: it runs on a thread of its own while they are painted and say that they wait.
#pragma once

#include <functional>

#include <QString>

namespace veldona {

class WindowHost;

// Returns when `work` is done, and raises what left it. The work must touch neither windows nor screens, and
// no connection to the books but its own. The operator's input waits.
void runBeside(WindowHost& host, const QString& words, const std::function<void()>& work);

} // namespace veldona
