// Two tills on one file: both keep all they wrote, nobody waits beyond the time-out, and its end is told.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <iostream>

#include <gtest/gtest.h>

#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "tests/faults/day.h"

namespace veldona::faults {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kLongestWait(60000); // the session's time-out

enum TillExit { AllDone, WaitedTooLong, NotTold, NotPlayed };

bool isToldAsDone(Till& till, const Act& act) {
    till.play(act.lines);
    const auto said = till.said();
    return std::find(said.begin(), said.end(), act.doneMessage) != said.end();
}

// Posts 1, 2, 3 … lira, and corrects the oldest payment in between.
TillExit work(const Drive& drive, int customer, int rounds) {
    Till till(drive);
    till.play(openingLines(customer));
    till.pragma("wal_autocheckpoint = 20");
    for (int i = 1; i <= rounds; ++i) {
        const auto begin = steady_clock::now();
        if (!isToldAsDone(till, post(i))) return NotTold;
        if (i % 5 == 0 && !isToldAsDone(till, correctPayment(1000 + i))) return NotTold;
        if (steady_clock::now() - begin > kLongestWait) return WaitedTooLong;
    }
    return AllDone;
}

[[noreturn]] void workAtTill(const Drive& drive, int customer, int rounds) {
    try {
        _exit(work(drive, customer, rounds));
    } catch (const std::runtime_error&) {
        _exit(NotPlayed);
    }
}

std::vector<std::int64_t> sums(const Drive& drive, int sale) {
    const auto engine =
        store::openSqlcipher(drive.books().string(), kDeliveredPassword, std::chrono::seconds(5));
    const auto row =
        engine->prepare("SELECT COUNT(*), SUM(ODMIKTAR) / 1000000, COUNT(DISTINCT ODMIKTAR) FROM "
                        "TAKSITODENEN WHERE ISLEMNO = " +
                        std::to_string(sale));
    if (!row->step()) return {};
    return {row->whole(0), static_cast<std::int64_t>(row->number(1)), row->whole(2)};
}

void playBoth(int rounds) {
    const Drive drive;
    copyShop(drive);
    std::vector<pid_t> tills;
    for (const int customer : {7, 8}) {
        tills.push_back(fork());
        ASSERT_GE(tills.back(), 0);
        if (tills.back() == 0) workAtTill(drive, customer, rounds);
    }
    for (const pid_t till : tills) {
        int status = 0;
        ASSERT_EQ(waitpid(till, &status, 0), till);
        ASSERT_TRUE(WIFEXITED(status)) << "ended by signal " << WTERMSIG(status);
        EXPECT_EQ(WEXITSTATUS(status), AllDone);
    }
    const std::int64_t posted = rounds * (rounds + 1) / 2;
    const std::int64_t corrected = 1000 + rounds / 5 * 5;
    for (const int sale : {4, 5})
        EXPECT_EQ(sums(drive, sale), (std::vector<std::int64_t>{rounds + 1, posted + corrected, rounds + 1}));
    std::string faults;
    static_cast<void>(contentOf(drive, faults));
    EXPECT_EQ(faults, "");
}

TEST(TwoTills, KeepAllThatBothWrote) {
    constexpr int rounds = 60; // a sale's lists count to some hundreds
    for (int day = 0; day < effort() && !HasFailure(); ++day)
        playBoth(rounds);
}

TEST(TwoTills, TheEndOfAWaitIsTold) {
    const Drive drive;
    copyShop(drive);
    Till till(drive);
    till.play(openingLines());
    till.session().gBaglanti->commandTimeout = 1;
    const auto other =
        store::openSqlcipher(drive.books().string(), kDeliveredPassword, std::chrono::seconds(1));
    other->begin();
    other->execute("UPDATE FIRMABILGISI SET DEGER = DEGER");
    const auto begin = steady_clock::now();
    // The screen stays; the other till ends, and the same save goes through.
    till.atMark = [&](const std::string&) {
        const auto waited = steady_clock::now() - begin;
        EXPECT_GE(waited, milliseconds(900));
        EXPECT_LT(waited, milliseconds(10000));
        const auto said = till.said();
        EXPECT_TRUE(std::any_of(said.begin(), said.end(), [](const std::string& text) {
            return text.find("başka bir bilgisayar tarafından kullanılıyor") != text.npos;
        })) << ::testing::PrintToString(said);
        EXPECT_EQ(till.screenInFront(), "frmSatis");
        other->rollback();
    };
    till.play(
        "click cmdSatis\nput MskToplamUcret \"1000\"\nput MskTaksitAdedi \"4\"\nkey F2\n@told\nkey F2\n");
    const auto said = till.said();
    EXPECT_NE(std::find(said.begin(), said.end(), "İşlem Tamamlandı"), said.end())
        << ::testing::PrintToString(said);
}

} // namespace
} // namespace veldona::faults
