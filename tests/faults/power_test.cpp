// A writer that is killed at random moments, or whose power goes at each call in turn that changes a file,
// keeps what its screens have told of as done.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "tests/faults/day.h"
#include "tests/faults/faultvfs.h"

namespace veldona::faults {
namespace {

constexpr std::uint32_t kSeed = 20261122;
constexpr unsigned kLongestAct = 15'000; // microseconds; a kill may fall into any moment of the next act

TEST(Kill, WhatWasToldAsDoneStands) {
    const Day day(fullDay(4));
    const int rounds = 40 * effort();
    std::cout << "seed " << kSeed << ", " << rounds << " rounds\n";
    std::mt19937 random(kSeed);
    {
        const Drive drive;
        copyShop(drive);
        ASSERT_EQ(day.wrongWith(drive, day.play(drive, {})), "") << "undisturbed";
    }
    int killed = 0;
    for (int round = 0; round < rounds; ++round) {
        const Drive drive;
        copyShop(drive);
        const int acts = static_cast<int>(random() % static_cast<unsigned>(day.length()));
        const auto then = static_cast<useconds_t>(random() % kLongestAct);
        const bool checkpoints = round % 2 == 1; // the journal goes into the file all the time
        const auto ending = day.play(
            drive, {},
            [&](Till& till) {
                if (checkpoints) till.pragma("wal_autocheckpoint = 5");
            },
            [&](pid_t child, const Day::AwaitActs& awaitActs) {
                awaitActs(acts);
                usleep(then);
                kill(child, SIGKILL);
            });
        if (WIFSIGNALED(ending.status)) ++killed;
        ASSERT_EQ(day.wrongWith(drive, ending), "")
            << "round " << round << ", killed " << then << " us behind act " << acts;
    }
    EXPECT_GT(killed, rounds / 2) << "hardly any kill came before the end of the day";
}

// What was not synced is lost.
struct Cut {
    int nth;
    Tail tail;
    std::uint32_t seed; // of what is kept
    const char* weaker; // a pragma that makes less sure; "" for the program's own way
};

struct AfterCut {
    std::string wrong;
    bool happened = false;
    int done = 0; // acts
};

bool hasManyCheckpoints(const Cut& cut) {
    return cut.nth % 3 == 0;
}

AfterCut cutAt(const Day& day, const Cut& cut) {
    const Drive drive;
    copyShop(drive);
    const auto ending = day.play(
        drive,
        [&] {
            install();
            arm(Fault::PowerCut, cut.nth, cut.tail, cut.seed);
        },
        [&](Till& till) {
            if (*cut.weaker != '\0') till.pragma(cut.weaker);
            if (hasManyCheckpoints(cut)) till.pragma("wal_autocheckpoint = 5");
        });
    return {day.wrongWith(drive, ending),
            WIFEXITED(ending.status) && WEXITSTATUS(ending.status) == kPowerCutExit, ending.done};
}

std::vector<Cut> cutsAt(int nth, int turn) {
    const auto seed = static_cast<std::uint32_t>(nth);
    const std::vector<Cut> all = {{nth, Tail::Lost, 0, ""},
                                  {nth, Tail::PartlyKept, seed, ""},
                                  {nth, Tail::PartlyKept, seed + 7919, ""}};
    if (effort() > 1) return all;
    return {all[static_cast<std::size_t>(turn % 2)]};
}

TEST(Power, WhatWasToldAsDoneStands) {
    const Day day(fullDay(effort() > 1 ? 4 : 2));
    const int step = effort() > 1 ? 1 : 4;
    int cuts = 0;
    int inTheWork = 0;
    bool isOver = false;
    for (int nth = 1; !isOver; nth += step) {
        for (const Cut& cut : cutsAt(nth, cuts)) {
            const AfterCut after = cutAt(day, cut);
            ASSERT_EQ(after.wrong, "") << "at call " << nth << ", seed " << cut.seed;
            if (after.happened) ++cuts;
            if (after.happened && after.done > 0) ++inTheWork;
            // A day has less calls where its journal goes into the file at the end only.
            isOver = isOver || (!after.happened && !hasManyCheckpoints(cut));
        }
    }
    std::cout << cuts << " power cuts, " << inTheWork << " of them in the work\n";
    EXPECT_GT(inTheWork, 20);
}

// What proves that the test above would find a lost row.
TEST(Power, AWeakerSyncLosesRows) {
    const Day day(fullDay(2));
    for (int nth = 40; nth < 200; nth += 20) {
        const std::string wrong = cutAt(day, {nth, Tail::Lost, 0, "synchronous = NORMAL"}).wrong;
        if (wrong.empty()) continue;
        std::cout << "with less syncs: " << wrong << '\n';
        return;
    }
    FAIL() << "a power cut was survived without the syncs that keep the rows";
}

} // namespace
} // namespace veldona::faults
