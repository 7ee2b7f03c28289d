#include "apps/aktar/apart.h"

#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <new>

namespace veldona::aktar {
namespace {

constexpr int kNoMemory = 100; // a code of the child that no work returns

// At the hard limit of time a process is killed without a word; at the soft one the signal tells what it was.
constexpr std::uint64_t kBehindSoft = 2;

// Limits that are narrower already stay.
void narrow(__rlimit_resource what, std::uint64_t most) {
    rlimit limit{};
    if (getrlimit(what, &limit) != 0) return;
    limit.rlim_cur = std::min<rlim_t>(limit.rlim_cur, most);
    limit.rlim_max = std::min<rlim_t>(limit.rlim_max, most + kBehindSoft);
    static_cast<void>(setrlimit(what, &limit));
}

std::uint64_t ownBytes() {
    std::uint64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

void setLimits(const Limits& limits) {
#ifndef __SANITIZE_ADDRESS__ // whose shadow alone is larger
    narrow(RLIMIT_AS, ownBytes() + (limits.megabytes << 20));
#endif
    narrow(RLIMIT_CPU, limits.seconds);
    alarm(static_cast<unsigned>(2 * limits.seconds)); // it may sit still too
}

[[noreturn]] void beChild(pid_t parent, const Limits& limits, const std::function<int()>& work) {
    // Who ends this program means the work too, and would not know of a child that goes on.
    if (prctl(PR_SET_PDEATHSIG, SIGKILL) != 0 || getppid() != parent) _exit(1);
    setLimits(limits);
    int code = kNoMemory;
    try {
        code = work();
    } catch (const std::bad_alloc&) {
        code = kNoMemory;
    }
    std::fflush(nullptr);
    _exit(code);
}

Ending endedBy(int signal) {
    switch (signal) {
    case SIGKILL:
    case SIGTERM:
    case SIGINT:
    case SIGHUP:
        return {1, ": aktarma yarıda kesildi."};
    case SIGXCPU:
    case SIGALRM:
        return {1, " bozuk olmalı: okunması bu boyda bir dosya için çok uzun sürdü."};
    default:
        return {1, " bozuk: okunurken program durdu."};
    }
}

// The child's status.
int waitFor(pid_t child, const std::function<bool()>& goOn) {
    constexpr useconds_t kBetweenLooks = 50'000;
    int status = 0;
    for (;;) {
        const pid_t ended = waitpid(child, &status, goOn ? WNOHANG : 0);
        if (ended == child || (ended < 0 && errno != EINTR)) return status;
        if (ended != 0) continue;
        usleep(kBetweenLooks);
        if (!goOn()) kill(child, SIGKILL);
    }
}

} // namespace

Limits limitsFor(std::uint64_t fileBytes) {
    const std::uint64_t megabytes = fileBytes >> 20;
    return {1024 + 4 * megabytes, 600 + 2 * megabytes};
}

Ending runApart(const Limits& limits, const std::function<int()>& work, const std::function<bool()>& goOn) {
    const pid_t parent = getpid();
    std::fflush(nullptr); // else the child writes it once more
    const pid_t child = fork();
    if (child < 0) return {1, ": okunması için ayrı bir süreç başlatılamadı."};
    if (child == 0) beChild(parent, limits, work);
    const int status = waitFor(child, goOn);
    if (!WIFEXITED(status)) return endedBy(WTERMSIG(status));
    if (WEXITSTATUS(status) != kNoMemory) return {WEXITSTATUS(status), {}};
    return {1, " bozuk olmalı: okunması bu boyda bir dosya için çok fazla bellek istedi."};
}

} // namespace veldona::aktar
