// No room from the start: for the opening, for the engine's files beside the books. And a file system that is
// really small.
#include <algorithm>
#include <functional>
#include <iostream>
#include <optional>

#include <gtest/gtest.h>

#include "tests/faults/day.h"
#include "tests/faults/faultvfs.h"
#include "tests/faults/smalldisk.h"

namespace veldona::faults {
namespace {

namespace fs = std::filesystem;

bool isClear(const std::string& text) {
    const auto has = [&](const char* words) { return text.find(words) != text.npos; };
    return has("Diskte yer kalmadı") || has("okunamadı ya da yazılamadı") || has("Diskteki yeri");
}

bool hasShown(Till& till, const std::function<bool(const std::string&)>& what) {
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
            if (!hasShown(till, isSaved)) return "it does not save once there is room";
        } else if (!done) {
            Till next(drive);
            startAndSave(next);
            if (!hasShown(next, isSaved)) return "it does not start once there is room";
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

std::string wrongOnSmallDisk(const Drive& drive, const std::string& saved) {
    for (const std::size_t pagesLeft : {0, 1, 4, 8, 9, 10, 12, 16, 20, 32, 64}) {
        fs::create_directories(drive.books().parent_path());
        copyShop(drive);
        std::optional<NoRoom> full;
        const std::string wrong = wrongWithoutRoom(
            drive, [&] { full.emplace(DiskKind::Own, drive.path(), pagesLeft); }, [&] { full.reset(); },
            saved);
        if (!wrong.empty()) return std::to_string(pagesLeft) + " pages left: " + wrong;
        for (const auto& entry : fs::directory_iterator(drive.path()))
            fs::remove_all(entry.path());
    }
    return {};
}

TEST(DiskFromTheStart, ASmallFileSystemIsNoOtherThing) {
    const std::string saved = contentOfSaved();
    const Drive drive;
    const auto wrong = onDisk(DiskKind::Own, drive.path(), [&] { return wrongOnSmallDisk(drive, saved); });
    if (!wrong) GTEST_SKIP() << "no file system is to be had here, neither by root nor by a user namespace";
    EXPECT_EQ(*wrong, "");
}

} // namespace
} // namespace veldona::faults
