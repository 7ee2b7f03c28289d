// A writer that is killed at random moments keeps what its screens have told of as done.
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <iostream>
#include <random>

#include <gtest/gtest.h>

#include "tests/faults/day.h"

namespace veldona::faults {
namespace {

using std::chrono::microseconds;
using std::chrono::steady_clock;

constexpr std::uint32_t kSeed = 20261122;

TEST(Kill, WhatWasToldAsDoneStands) {
    const Day day(fullDay(12));
    const int rounds = 30 * effort();
    std::cout << "seed " << kSeed << ", " << rounds << " rounds\n";
    std::mt19937 random(kSeed);

    const auto begin = steady_clock::now();
    {
        const Drive drive;
        copyShop(drive);
        ASSERT_EQ(day.wrongWith(drive, day.play(drive, {})), "") << "undisturbed";
    }
    const auto whole = std::chrono::duration_cast<microseconds>(steady_clock::now() - begin);
    int cutOff = 0;
    for (int round = 0; round < rounds; ++round) {
        const Drive drive;
        copyShop(drive);
        std::uniform_int_distribution<long> moment(0, whole.count());
        const auto wait = static_cast<useconds_t>(moment(random));
        const bool checkpoints = round % 2 == 1; // the journal goes into the file all the time
        const auto ending = day.play(
            drive, {},
            [&](Till& till) {
                if (checkpoints) till.pragma("wal_autocheckpoint = 5");
            },
            [&](pid_t child) {
                usleep(wait);
                kill(child, SIGKILL);
            });
        if (ending.done > 0 && ending.done < day.length()) ++cutOff;
        ASSERT_EQ(day.wrongWith(drive, ending), "")
            << "round " << round << ", killed after " << wait << " us";
    }
    std::cout << cutOff << " of the kills fell into the work\n";
    EXPECT_GT(cutOff, rounds / 10) << "hardly any kill fell into the work";
}

} // namespace
} // namespace veldona::faults
