// Long work that touches no screen and no connection to the books but its own: a backup, a proof.
#pragma once

#include <functional>
#include <string>

namespace veldona {

// Says how far the work is, which may come from any thread: what is done now, and the percentage of it, or -1
// where nobody knows. False: the operator gives it up.
using Progress = std::function<bool(const std::string& doing, int percent)>;

// Who runs it beside the windows, so that they are painted meanwhile and say what is waited for.
class SideWork {
public:
    virtual ~SideWork() = default;
    // Returns when it is done, and raises what left it.
    virtual void run(const std::string& words, const std::function<void(const Progress&)>& work) = 0;
};

// Where there is nobody who would (no window waits), it runs at once.
inline void runBeside(SideWork* beside, const std::string& words,
                      const std::function<void(const Progress&)>& work) {
    if (beside != nullptr)
        beside->run(words, work);
    else
        work([](const std::string&, int) { return true; });
}

} // namespace veldona
