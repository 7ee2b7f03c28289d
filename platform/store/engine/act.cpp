#include "platform/store/engine/act.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <mutex>
#include <random>
#include <utility>
#include <vector>

namespace veldona::store {
namespace {

constexpr std::size_t kSessionLetters = 9; // 36 to that power: no two runs of a shop's life meet
constexpr std::size_t kMostOfUser = 4096;

std::string machineName() {
    std::array<char, 256> name{};
    return gethostname(name.data(), name.size() - 1) == 0 ? std::string(name.data()) : std::string();
}

std::string userName() {
    std::vector<char> room(kMostOfUser);
    passwd entry{};
    passwd* found = nullptr;
    const uid_t user = geteuid();
    if (getpwuid_r(user, &entry, room.data(), room.size(), &found) == 0 && found != nullptr)
        return found->pw_name;
    return std::to_string(user);
}

std::string sessionName() {
    constexpr std::string_view letters = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::random_device random;
    std::uniform_int_distribution<std::size_t> choice(0, letters.size() - 1);
    std::string name;
    for (std::size_t i = 0; i < kSessionLetters; ++i)
        name += letters[choice(random)];
    return name;
}

// A process that was forked is another one.
std::string nextNumber() {
    struct Session {
        pid_t process;
        std::string name;
    };
    static std::mutex guard;
    static Session session{0, {}};
    static std::int64_t given = 0;
    const std::lock_guard held(guard);
    if (session.process != getpid()) session = {getpid(), sessionName()};
    return session.name + '-' + std::to_string(++given);
}

Act& current() {
    thread_local Act act{{}, {}, thisActor().program};
    return act;
}

} // namespace

const Actor& thisActor() {
    static const Actor actor{program_invocation_short_name, machineName(), userName()};
    return actor;
}

const Act& runningAct() {
    Act& act = current();
    if (act.number.empty()) act.number = nextNumber();
    return act;
}

void nameAct(std::string_view name) {
    current().name = name;
}

ActScope::ActScope(std::string screen, std::string name)
    : before_(std::exchange(current(), Act{{}, std::move(screen), std::move(name)})) {}

ActScope::~ActScope() {
    current() = std::move(before_);
}

} // namespace veldona::store
