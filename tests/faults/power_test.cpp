// The power goes at each call in turn that changes a file, and what was not synced is lost.
#include <sys/wait.h>

#include <iostream>

#include <gtest/gtest.h>

#include "tests/faults/day.h"
#include "tests/faults/faultvfs.h"

namespace veldona::faults {
namespace {

struct Cut {
    int nth;
    Tail tail;
    const char* weaker; // a pragma that makes less sure; "" for the program's own way
};

struct AfterCut {
    std::string wrong;
    bool happened = false;
    int done = 0; // acts
};

AfterCut cutAt(const Day& day, const Cut& cut) {
    const Drive drive;
    copyShop(drive);
    const auto ending = day.play(
        drive,
        [&] {
            install();
            arm(Fault::PowerCut, cut.nth, cut.tail, static_cast<std::uint32_t>(cut.nth));
        },
        [&](Till& till) {
            if (*cut.weaker != '\0') till.pragma(cut.weaker);
            if (cut.nth % 3 == 0) till.pragma("wal_autocheckpoint = 5");
        });
    return {day.wrongWith(drive, ending),
            WIFEXITED(ending.status) && WEXITSTATUS(ending.status) == kPowerCutExit, ending.done};
}

TEST(Power, WhatWasToldAsDoneStands) {
    const Day day(fullDay(2));
    const int step = effort() > 1 ? 1 : 4;
    int cuts = 0;
    int inTheWork = 0;
    for (int nth = 1;; nth += step) {
        const Tail tail = cuts % 2 == 0 ? Tail::Lost : Tail::PartlyKept;
        const AfterCut after = cutAt(day, {nth, tail, ""});
        ASSERT_EQ(after.wrong, "") << "at call " << nth;
        if (!after.happened && nth % 3 != 0) break; // the day has no more calls
        if (after.happened) ++cuts;
        if (after.done > 0) ++inTheWork;
    }
    std::cout << cuts << " power cuts\n";
    EXPECT_GT(inTheWork, 20);
}

// What proves that the test above would find a lost row.
TEST(Power, AWeakerSyncLosesRows) {
    const Day day(fullDay(2));
    for (int nth = 40; nth < 200; nth += 20)
        if (!cutAt(day, {nth, Tail::Lost, "synchronous = NORMAL"}).wrong.empty()) return;
    FAIL() << "a power cut was survived without the syncs that keep the rows";
}

} // namespace
} // namespace veldona::faults
