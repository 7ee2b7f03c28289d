// A writer that is killed at random moments keeps what its screens have told of as done.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <random>

#include <gtest/gtest.h>

#include "tests/faults/day.h"

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

} // namespace
} // namespace veldona::faults
