#include "tests/faults/smalldisk.h"

#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>

namespace veldona::faults {
namespace {

namespace fs = std::filesystem;

constexpr int kDone = 0, kNoDisk = 9;

bool mountSmall(const fs::path& at) {
    const int own = geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER;
    return unshare(own) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("none", at.c_str(), "tmpfs", 0, "size=16m") == 0;
}

void limitFiles(rlim_t bytes) {
    signal(SIGXFSZ, SIG_IGN); // the write then fails, also in the programs that are started
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = std::min(bytes, limit.rlim_max);
    setrlimit(RLIMIT_FSIZE, &limit);
}

[[noreturn]] void actInChild(DiskKind kind, const fs::path& at, const std::function<std::string()>& act,
                             int toParent) {
    if (kind == DiskKind::Own && !mountSmall(at)) _exit(kNoDisk);
    std::string wrong;
    try {
        wrong = act();
    } catch (const std::exception& failure) {
        wrong = failure.what();
    }
    static_cast<void>(!write(toParent, wrong.data(), wrong.size()));
    _exit(kDone);
}

} // namespace

std::optional<std::string> onDisk(DiskKind kind, const fs::path& at,
                                  const std::function<std::string()>& act) {
    int ends[2];
    if (pipe(ends) != 0) return "no pipe";
    const pid_t child = fork();
    if (child < 0) return "no child process";
    if (child == 0) actInChild(kind, at, act, ends[1]);
    ::close(ends[1]);
    std::string wrong;
    char some[4096];
    for (ssize_t count = 0; (count = read(ends[0], some, sizeof some)) > 0;)
        wrong.append(some, static_cast<std::size_t>(count));
    ::close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFSIGNALED(status)) return "ended by signal " + std::to_string(WTERMSIG(status));
    if (WEXITSTATUS(status) == kNoDisk) return std::nullopt;
    return wrong;
}

NoRoom::NoRoom(DiskKind kind, const fs::path& at, std::size_t pagesLeft)
    : kind_(kind), filler_(at / "dolgu") {
    if (kind_ == DiskKind::LimitedFiles) {
        limitFiles(pagesLeft * kDiskPage);
        return;
    }
    std::ofstream filler(filler_, std::ios::binary);
    const std::string page(kDiskPage, 'x');
    std::size_t pages = 0;
    while (filler.write(page.data(), static_cast<std::streamsize>(page.size())).flush())
        ++pages;
    filler.close();
    fs::resize_file(filler_, (pages - std::min(pages, pagesLeft)) * kDiskPage);
}

bool tellsOfRoom(const std::string& text) {
    const char* const words[] = {"yer kalmadı", "okunamadı ya da yazılamadı", "Diskteki yeri", "büyüklükte"};
    return std::ranges::any_of(words, [&](const char* each) { return text.find(each) != text.npos; });
}

NoRoom::~NoRoom() {
    std::error_code ignored;
    if (kind_ == DiskKind::LimitedFiles)
        limitFiles(RLIM_INFINITY);
    else
        fs::remove(filler_, ignored);
}

} // namespace veldona::faults
