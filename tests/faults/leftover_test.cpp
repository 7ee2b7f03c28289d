// A report that was killed leaves rows in its scratch table; the next one is as if it had not.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

#include <gtest/gtest.h>

#include "tests/faults/day.h"

namespace veldona::faults {
namespace {

constexpr std::uint32_t kSeed = 5;

const std::string kOpenReport = "click cmdGunuGecenOdemeler\ndate dtRaporTarihiSon \"01/01/2027\"\n";

std::string reportOf(Till& till) {
    till.play(kOpenReport + "click cmdRapor\nkey Esc\n");
    return till.lastReport();
}

std::string freshReport(const Drive& drive) {
    Till till(drive);
    till.play(openingLines());
    return reportOf(till);
}

[[noreturn]] void reportForEver(const Drive& drive) {
    try {
        Till till(drive);
        till.play(openingLines());
        for (;;)
            static_cast<void>(reportOf(till));
    } catch (const std::runtime_error&) {
        _exit(1);
    }
}

TEST(Kill, WhatAReportLeftBehindIsInNoOtherReport) {
    const Drive drive;
    copyShop(drive);
    const std::string clean = freshReport(drive);
    ASSERT_NE(clean.find("Yılmaz"), clean.npos) << clean;
    Till till(drive);
    till.play(openingLines() + "sql \"INSERT INTO GUNUGECENODM (MUSTNO,AD_SOYAD,ISLEMNO,ODTRH,KALAN) VALUES "
                               "('7','eski',5,'01/01/2020',123000000)\"\n");
    EXPECT_EQ(reportOf(till), clean);
}

TEST(Kill, AReportThatIsKilledDoesNoHarm) {
    const Drive drive;
    copyShop(drive);
    const std::string clean = freshReport(drive);
    std::string faults;
    const std::string before = contentOf(drive, faults);
    std::mt19937 random(kSeed);
    for (int round = 0; round < 5 * effort(); ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) reportForEver(drive);
        usleep(50'000 + static_cast<useconds_t>(random() % 100'000));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the report ended by itself";
        ASSERT_EQ(freshReport(drive), clean) << "seed " << kSeed << ", round " << round;
        ASSERT_EQ(contentOf(drive, faults), before);
        ASSERT_EQ(faults, "");
    }
}

} // namespace
} // namespace veldona::faults
