// Two tills on one file: both keep all they wrote, nobody waits beyond the time-out, and its end is told.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <stdexcept>
#include <utility>

#include <gtest/gtest.h>

#include "core/delivered.h"
#include "core/reporting.h"
#include "core/session.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "platform/store/faces/adodb.h"
#include "tests/faults/day.h"
#include "tests/faults/program.h"

namespace veldona::faults {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kLongestWait(60000); // the session's time-out

enum TillExit { AllDone, WaitedTooLong, NotTold };

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

void playBoth(int rounds) {
    const Drive drive;
    copyShop(drive);
    std::vector<pid_t> tills;
    for (const int customer : {7, 8})
        tills.push_back(inChild([&] { return work(drive, customer, rounds); }));
    for (const pid_t till : tills)
        EXPECT_EQ(exitOf(till), AllDone);
    const int posted = rounds * (rounds + 1) / 2, corrected = 1000 + rounds / 5 * 5;
    const std::string rows = std::to_string(rounds + 1);
    const std::string all = rows + '|' + std::to_string(posted + corrected) + '|' + rows;
    EXPECT_EQ(drive.answer("SELECT COUNT(*), CAST(SUM(ODMIKTAR) / 1000000 AS INTEGER), COUNT(DISTINCT "
                           "ODMIKTAR) FROM TAKSITODENEN GROUP BY ISLEMNO"),
              all + '\n' + all);
    std::string faults;
    static_cast<void>(contentOf(drive, faults));
    EXPECT_EQ(faults, "");
}

TEST(TwoTills, KeepAllThatBothWrote) {
    constexpr int rounds = 60; // a sale's lists count to some hundreds
    for (int day = 0; day < effort() && !HasFailure(); ++day)
        playBoth(rounds);
}

// Both find books that keep no journal yet, as a backup put back does not, and each begins one.
TEST(TwoTills, OpenBooksWithoutAJournalAtOnce) {
    const Drive drive;
    copyShop(drive);
    const std::string books = drive.books().string();
    for (int round = 0; round < 25 * effort() && !HasFailure(); ++round) {
        drive.engine()->keepNoJournal();
        int arrived[2], gate[2];
        ASSERT_EQ(pipe(arrived) | pipe(gate), 0);
        const auto awaitOther = [&, hasWaited = false](store::Engine&) mutable {
            char none = 0;
            if (!std::exchange(hasWaited, true) &&
                (write(arrived[1], "+", 1) != 1 || read(gate[0], &none, 1) != 0))
                throw std::runtime_error("the gate is broken");
        };
        pid_t tills[2];
        for (pid_t& till : tills)
            till = inChild([&] {
                close(gate[1]);
                store::openSqlcipher(books, kDeliveredPassword, kLongestWait, {}, awaitOther)
                    ->execute("INSERT INTO TAKSITODENEN (MUSTNO, ODMIKTAR) VALUES ('7', 1)");
                return 0;
            });
        char both[2];
        EXPECT_EQ(read(arrived[0], both, 1) + read(arrived[0], both, 1), 2);
        for (const int end : {arrived[0], arrived[1], gate[0], gate[1]})
            close(end);
        for (const pid_t till : tills)
            EXPECT_EQ(exitOf(till), 0) << "a till did not get in";
    }
    std::string faults;
    static_cast<void>(contentOf(drive, faults));
    EXPECT_EQ(faults, "");
}

// A till in the middle of a save, until it is let go.
class Holder {
public:
    explicit Holder(const Drive& drive) {
        int ends[2];
        if (pipe(ends) != 0 || (id_ = fork()) < 0) throw std::runtime_error("no child process");
        if (id_ == 0) {
            const auto books = drive.engine();
            books->begin();
            if (write(ends[1], "+", 1) == 1) pause();
            _exit(0);
        }
        char held = 0;
        if (read(ends[0], &held, 1) != 1) throw std::runtime_error("the lock was not taken");
        ::close(ends[0]);
        ::close(ends[1]);
    }
    ~Holder() { letGo(); }
    Holder(const Holder&) = delete;
    Holder& operator=(const Holder&) = delete;
    void letGo() {
        if (id_ <= 0) return;
        kill(id_, SIGKILL);
        waitpid(std::exchange(id_, 0), nullptr, 0);
    }

private:
    pid_t id_ = 0;
};

TEST(TwoTills, TheEndOfAWaitIsTold) {
    const Drive drive;
    copyShop(drive);
    Till till(drive);
    till.play(openingLines());
    till.session().gBaglanti->commandTimeout = 1;
    Holder other(drive);
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
        other.letGo();
    };
    till.play(
        "click cmdSatis\nput MskToplamUcret \"1000\"\nput MskTaksitAdedi \"4\"\nkey F2\n@told\nkey F2\n");
    const auto said = till.said();
    EXPECT_NE(std::find(said.begin(), said.end(), "İşlem Tamamlandı"), said.end())
        << ::testing::PrintToString(said);
}

constexpr const char* kSaleKey = "SELECT sql FROM sqlite_master WHERE name = 'ISLEMNOTABLO_ISLEMNO'";

void makeOlder(const Drive& drive, const std::string& more) {
    const auto books = drive.engine();
    books->execute("DROP INDEX ISLEMNOTABLO_ISLEMNO");
    books->execute("CREATE INDEX \"ISLEMNOTABLO_ISLEMNO\" ON \"ISLEMNOTABLO\" (\"ISLEMNO\")");
    if (!more.empty()) books->execute(more);
}

// Both screens were given the number 6 before either was saved.
TEST(TwoTills, OneNumberIsGivenToOneSale) {
    const Drive drive;
    copyShop(drive);
    makeOlder(drive, ""); // the first opening makes the number a key
    Till one(drive), other(drive);
    one.play(openingLines(7));
    other.play(openingLines(8));
    const std::string sale = "click cmdSatis\nput MskToplamUcret \"1000\"\nput MskAlinanPesinat \"200\"\nput "
                             "MskTaksitAdedi \"4\"\n";
    one.atMark = [&](const std::string&) {
        other.play(sale + "key F2\nkey F4\nclick cmdCikis\n");
        static_cast<void>(other.said());
    };
    one.play(sale + "@meanwhile\nclick cmdKaydet\nexpect txtIslemNo \"7\"\nexpect MskToplamUcret "
                    "\"1.000,00\"\nexpect-rows grdYapilacakOdeme 8\nkey F2\nclick cmdCikis\n");
    const auto said = one.said();
    ASSERT_EQ(said.size(), 4U) << ::testing::PrintToString(said);
    EXPECT_NE(said[2].find("6 numaralı satış"), std::string::npos) << said[2];
    EXPECT_EQ(said[3], "İşlem Tamamlandı");
    // Deleting the one leaves the other whole.
    other.play("type Text1 \"8\"\ndblclick L3 0\nanswer yes\nclick cmdIslemNoSil\n");
    EXPECT_EQ(drive.answer("SELECT MUSTNO, ISLEMNO FROM ISLEMNOTABLO ORDER BY ISLEMNO"), "8|4\n7|5\n7|7");
    EXPECT_EQ(drive.answer("SELECT count(*) || '|' || min(ISLEMNO) FROM URUNSAT WHERE ISLEMNO > 5"), "5|7");
    EXPECT_EQ(drive.answer("SELECT count(*) FROM TAKSITODENEN WHERE MUSTNO = '7' AND ISLEMNO = 7"), "1");
    EXPECT_EQ(drive.answer(kSaleKey).find("CREATE UNIQUE INDEX"), 0U);
}

TEST(TwoTills, OlderBooksWithANumberTwiceOpenAndWork) {
    const Drive drive;
    copyShop(drive);
    makeOlder(drive, "INSERT INTO ISLEMNOTABLO (MUSTNO, ISLEMNO) VALUES ('8', 5)");
    const std::string before = drive.answer(kSaleKey);
    Till till(drive);
    till.play(openingLines() + post(5).lines);
    EXPECT_EQ(till.said(), std::vector<std::string>{post(5).doneMessage});
    EXPECT_EQ(drive.answer(kSaleKey), before);
}

// Each prints over and over what it printed when it was alone.
TEST(TwoTills, PrintEachTheirOwn) {
    const Drive drive;
    copyShop(drive);
    installLayouts(Paths(drive.path().string()));
    std::vector<pid_t> tills;
    for (const int customer : {7, 8}) {
        const std::string lines[] = {
            "click cmdGunuGecenOdemeler\ndate dtRaporTarihiSon \"01/01/2027\"\nclick cmdRapor\nkey Esc\n",
            "type Text1 \"" + std::to_string(customer) + "\"\ndblclick L3 0\nclick cmdSozlesme\nkey Esc\n"};
        std::string alone[2];
        {
            Till till(drive);
            till.play(openingLines(customer) + "sql \"UPDATE URUNSAT SET PESINAT=0\"\n");
            for (const int paper : {0, 1}) {
                till.play(lines[paper]);
                alone[paper] = till.lastReport();
                ASSERT_FALSE(alone[paper].empty());
            }
        }
        tills.push_back(inChild([&] {
            Till till(drive);
            till.play(openingLines(customer));
            int wrong = 0;
            for (int round = 0; round < 12 * effort(); ++round)
                for (const int paper : {0, 1}) {
                    till.play(lines[paper]);
                    if (till.lastReport() != alone[paper]) ++wrong;
                }
            return std::min(wrong, 100);
        }));
    }
    for (const pid_t till : tills)
        EXPECT_EQ(exitOf(till), 0) << "wrong papers";
}

} // namespace
} // namespace veldona::faults
