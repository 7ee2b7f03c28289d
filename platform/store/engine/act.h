// Who writes, and at what: what the journal of the books says of an entry beside the rows.
//
// An act is one pressed button, one chosen entry of a menu, one run of a tool; its writes may be several
// transactions. Acts belong to the thread that runs them, and whoever names none works on one of the whole
// run.
#pragma once

#include <string>
#include <string_view>

namespace veldona::store {

// Of the process.
struct Actor {
    std::string program, machine, user;
};
[[nodiscard]] const Actor& thisActor();

struct Act {
    std::string number; // nobody else gives it, on any machine
    std::string screen, name;
};
// The one that runs; its number is given when it is first asked for.
[[nodiscard]] const Act& runningAct();
// Where an act learns on its way what it is.
void nameAct(std::string_view name);

// An act inside another one, the button of a window that a procedure waits for, is one of its own.
class ActScope {
public:
    ActScope(std::string screen, std::string name);
    ~ActScope();
    ActScope(const ActScope&) = delete;
    ActScope& operator=(const ActScope&) = delete;

private:
    Act before_;
};

} // namespace veldona::store
