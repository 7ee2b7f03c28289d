// No room from the start: for the opening, for the engine's files beside the books. And a file system that is
// really small.
#include <sched.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <iostream>

#include <gtest/gtest.h>

#include "tests/faults/day.h"
#include "tests/faults/faultvfs.h"

namespace veldona::faults {
namespace {

namespace fs = std::filesystem;

bool isClear(const std::string& text) {
    const auto has = [&](const char* words) { return text.find(words) != text.npos; };
    return has("Diskte yer kalmadı") || has("okunamadı ya da yazılamadı") || has("Diskteki yeri");
}

bool hasTold(Till& till, const std::function<bool(const std::string&)>& what) {
    const auto said = till.said();
    return std::any_of(said.begin(), said.end(), what);
}

// As far as the screens let an operator go.
void save(Till& till) {
    try {
        till.play(
            "type Text1 \"7\"\ndblclick L3 0\nclick cmdSatis\nput MskToplamUcret \"1000\"\n"
            "put MskAlinanPesinat \"200\"\nput MskTaksitAdedi \"4\"\nclick cmdKaydet\nclick cmdCikis\n");
    } catch (const console::Shortfall&) {
        return; // a list stayed empty, or a screen did not open
    }
}

void startAndSave(Till& till) {
    till.play("clock \"22/11/2026 10:30:00\"\nstart\n");
    if (!till.hasEnded()) save(till);
}

bool isSaved(const std::string& text) {
    return text == saveSale().doneMessage;
}

// Plays where there is no room, makes room, and plays again; what is wrong, or "".
std::string wrongWithoutRoom(const Drive& drive, const std::function<void()>& takeRoom,
                             const std::function<void()>& makeRoom, const std::string& saved) {
    std::string faults;
    const std::string before = contentOf(drive, faults);
    {
        Till till(drive);
        takeRoom();
        startAndSave(till);
        makeRoom();
        const auto said = till.said();
        const bool done = std::any_of(said.begin(), said.end(), isSaved);
        if (!done && !std::any_of(said.begin(), said.end(), isClear))
            return "no clear word: " + ::testing::PrintToString(said);
        const std::string held = contentOf(drive, faults);
        if (held != (done ? saved : before))
            return done ? "told as done, and not whole" : "half a sale is there";
        if (!till.hasEnded() && !done) {
            while (till.screenInFront() != "frmMainVeldona")
                till.perform("key Esc");
            save(till);
            if (!hasTold(till, isSaved)) return "it does not save once there is room";
        } else if (!done) {
            Till next(drive);
            startAndSave(next);
            if (!hasTold(next, isSaved)) return "it does not start once there is room";
        }
    }
    if (contentOf(drive, faults) != saved) return "once there is room, the books hold something else";
    return faults;
}

std::string contentOfSaved() {
    const Drive drive;
    copyShop(drive);
    Till till(drive);
    startAndSave(till);
    std::string faults;
    return contentOf(drive, faults);
}

TEST(DiskFromTheStart, IsToldAndTheNextStartWorks) {
    install();
    const std::string saved = contentOfSaved();
    bool struck = true;
    int nth = 1, tried = 0;
    for (; struck && !HasFailure(); nth += effort() > 1 ? 1 : 3, ++tried) {
        const Drive drive;
        copyShop(drive);
        const auto makeRoom = [&] {
            struck = hasStruck();
            disarm();
        };
        EXPECT_EQ(wrongWithoutRoom(
                      drive, [&] { arm(Fault::DiskFull, nth); }, makeRoom, saved),
                  "")
            << "at write " << nth;
    }
    disarm();
    std::cout << "full at " << tried - 1 << " writes from the start\n";
    EXPECT_GT(tried, 5);
}

// A file system of our own that only this process and its children see.
bool mountSmall(const fs::path& at) {
    const int own = geteuid() == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER;
    return unshare(own) == 0 && mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("none", at.c_str(), "tmpfs", 0, "size=2m") == 0;
}

constexpr std::size_t kPage = 4096;

// Takes all room but so many pages.
void fill(const fs::path& file, std::size_t pagesLeft) {
    std::ofstream filler(file, std::ios::binary);
    const std::string page(kPage, 'x');
    std::size_t pages = 0;
    while (filler.write(page.data(), static_cast<std::streamsize>(page.size())).flush())
        ++pages;
    filler.close();
    fs::resize_file(file, (pages - std::min(pages, pagesLeft)) * kPage);
}

std::string wrongOnSmallDisk(const Drive& drive, const std::string& saved) {
    for (const std::size_t pagesLeft : {0, 1, 4, 8, 9, 10, 12, 16, 20, 32, 64}) {
        fs::create_directories(drive.books().parent_path());
        copyShop(drive);
        const fs::path filler = drive.path() / "dolgu";
        const std::string wrong = wrongWithoutRoom(
            drive, [&] { fill(filler, pagesLeft); }, [&] { fs::remove(filler); }, saved);
        if (!wrong.empty()) return std::to_string(pagesLeft) + " pages left: " + wrong;
        for (const auto& entry : fs::directory_iterator(drive.path()))
            fs::remove_all(entry.path());
    }
    return {};
}

TEST(DiskFromTheStart, ASmallFileSystemIsNoOtherThing) {
    enum Exit { Right, Wrong, NoFileSystem };
    const std::string saved = contentOfSaved();
    const Drive drive;
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        if (!mountSmall(drive.path())) _exit(NoFileSystem);
        std::string wrong;
        try {
            wrong = wrongOnSmallDisk(drive, saved);
        } catch (const std::exception& failure) {
            wrong = failure.what();
        }
        std::cerr << wrong << (wrong.empty() ? "" : "\n");
        _exit(wrong.empty() ? Right : Wrong);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
    if (WEXITSTATUS(status) == NoFileSystem) {
        std::cout
            << "SKIPPED: no small file system is to be had here, neither by root nor by a user namespace\n";
        GTEST_SKIP();
    }
    EXPECT_EQ(WEXITSTATUS(status), Right);
}

} // namespace
} // namespace veldona::faults
