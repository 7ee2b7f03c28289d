// Backups while a till posts: each one is the books at one moment, not earlier than what its beginning found
// confirmed, and can be worked on where it is put back.
#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <set>

#include <gtest/gtest.h>

#include "backup/keeping.h"
#include "backup/refusal.h"
#include "backup/restore.h"
#include "core/delivered.h"
#include "platform/runtime/format.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "tests/faults/day.h"
#include "tests/faults/program.h"

namespace veldona::faults {
namespace {

namespace fs = std::filesystem;

constexpr int kFirstCustomer = 100;
constexpr int kPostingsOfACustomer = 100; // a sale's lists count to some hundreds

Act openCustomers(int count) {
    std::string lines;
    for (int customer = kFirstCustomer; customer < kFirstCustomer + count; ++customer) {
        const std::string number = std::to_string(customer);
        const std::string sale = "\"'" + number + "'," + number + ",";
        lines += "insert \"MUSTKAYIT (HSTNO,AD)\" \"'" + number + "','Gül'\"\n";
        lines += "insert \"ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC)\" " + sale + "9000000000000\"\n";
        lines += "insert \"URUNAL (MUSTNO,ISLEMNO,URKOD,ADET,FIYAT)\" " + sale + "'1',1,9000000000000\"\n";
        lines +=
            "insert \"URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)\" " + sale + "'20/12/2026',9000000000000\"\n";
    }
    return {lines, ""};
}

// Postings of 1, 2, 3 … lira, and now and then a sale that is made and deleted again.
std::vector<Act> busyDay(int postings) {
    std::vector<Act> acts{openCustomers(1 + postings / kPostingsOfACustomer)};
    for (int i = 1; i <= postings; ++i) {
        Act posting = post(i);
        posting.lines = "type Text1 \"" + std::to_string(kFirstCustomer + i / kPostingsOfACustomer) +
                        "\"\ndblclick L3 0\n" + posting.lines;
        acts.push_back(posting);
        if (i % 50 != 0) continue;
        Act sale = saveSale();
        sale.lines = "type Text1 \"7\"\ndblclick L3 0\n" + sale.lines;
        acts.push_back(sale);
        acts.push_back(deleteSale());
    }
    return acts;
}

struct Backup {
    int confirmed; // acts, before it began
    std::string file;
};

fs::path backUp(const Drive& drive, int number) {
    const fs::path folder = drive.path() / std::to_string(number); // two of one second have one name
    const Outcome outcome = runProgram("vorel-yedek", {"--kok", drive.path(), "--klasor", folder});
    if (outcome.code != 0) throw std::runtime_error(outcome.said);
    return fs::directory_iterator(folder)->path();
}

// The sums of the tables, said by the screens.
void expectBalancesOf(const Drive& drive) {
    struct Account {
        std::string number;
        double paid;
    };
    std::vector<Account> accounts;
    {
        const auto engine = drive.engine();
        const auto rows = engine->prepare("SELECT MUSTNO, SUM(ODMIKTAR) / 1000000 FROM TAKSITODENEN "
                                          "WHERE ISLEMNO >= 100 GROUP BY MUSTNO");
        while (rows->step())
            accounts.push_back({std::string(rows->text(0)), rows->number(1)});
    }
    EXPECT_FALSE(accounts.empty());
    Till till(drive);
    till.play("clock \"22/11/2026 10:30:00\"\nstart\n");
    for (const Account& account : accounts) {
        const std::string paid = format(Value(account.paid), "#,##0.00");
        const std::string left = format(Value(9000000 - account.paid), "#,##0.00");
        till.play("type Text1 \"" + account.number + "\"\ndblclick L3 0\nexpect Label8 \"" + paid +
                  "\"\nexpect Label9 \"" + left + "\"\n");
    }
    till.play(post(1).lines);
    EXPECT_EQ(till.said(), std::vector<std::string>{"KAYIT İŞLEMİ TAMAMLANDI"});
}

TEST(Backup, TakenWhileATillPostsIsOneMomentOfTheBooks) {
    const int backups = effort() > 1 ? 12 : 3;
    const Day day(busyDay(effort() > 1 ? 1000 : 200));
    const Drive drive;
    copyShop(drive);
    std::vector<Backup> taken;
    const auto ending = day.play(drive, {}, {}, [&](pid_t, const Day::AwaitActs& awaitActs) {
        for (int i = 0; i < backups; ++i) {
            const int confirmed = 1 + i * day.length() / backups;
            awaitActs(confirmed);
            taken.push_back({confirmed, backUp(drive, i)});
        }
    });
    EXPECT_EQ(day.wrongWith(drive, ending), "");
    EXPECT_EQ(ending.done, day.length()) << "the till was held up";
    int whileAtWork = 0;
    for (const Backup& backup : taken) {
        SCOPED_TRACE("behind act " + std::to_string(backup.confirmed));
        std::string faults;
        const int held = day.actsIn(contentOf(fs::path(backup.file), faults));
        EXPECT_EQ(faults, "");
        EXPECT_GE(held, backup.confirmed)
            << (held < 0 ? "no moment of the books" : "a confirmed act is missing");
        if (held < day.length()) ++whileAtWork;
        const Drive other;
        const Outcome putBack =
            runProgram("vorel-yedek", {"--kok", other.path(), "--geri-yukle", backup.file, "--evet"});
        ASSERT_EQ(putBack.code, 0) << putBack.said;
        std::string faultsThere;
        EXPECT_EQ(day.actsIn(contentOf(other, faultsThere)), held);
        EXPECT_EQ(faultsThere, "");
        expectBalancesOf(other);
    }
    std::cout << whileAtWork << " of " << backups << " backups were taken while the till posted\n";
    EXPECT_GT(whileAtWork, 0);
}

// Opens the books, posts one payment and closes them, over and over, and tells each that was confirmed.
int comeAndGo(const Drive& drive, int till, int confirmed) {
    for (int i = 0;; ++i) {
        const int payment = till * 100'000 + i;
        store::openSqlcipher(drive.books().string(), kDeliveredPassword, std::chrono::seconds(60))
            ->execute("INSERT INTO TAKSITODENEN (MUSTNO, ODMIKTAR) VALUES ('7', " + std::to_string(payment) +
                      ")");
        if (write(confirmed, &payment, sizeof payment) != sizeof payment) return 0; // nobody listens any more
        usleep(static_cast<useconds_t>(i * 7919 % 40'000));
    }
}

std::multiset<std::int64_t> paymentsIn(const fs::path& file) {
    std::multiset<std::int64_t> payments;
    const auto engine =
        store::openSqlcipherToRead(file.string(), kDeliveredPassword, std::chrono::seconds(60));
    const auto rows =
        engine->prepare("SELECT ODMIKTAR FROM TAKSITODENEN WHERE ODMIKTAR BETWEEN 100000 AND 999999");
    while (rows->step())
        payments.insert(rows->whole(0));
    return payments;
}

TEST(Backup, PutBackWhileTillsComeAndGoLosesNothing) {
    const Drive drive;
    copyShop(drive);
    const fs::path backup = backUp(drive, 0);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    std::vector<pid_t> tills;
    for (const int till : {1, 2})
        tills.push_back(inChild([&] {
            signal(SIGPIPE, SIG_IGN);
            close(ends[0]);
            return comeAndGo(drive, till, ends[1]);
        }));
    close(ends[1]);
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    std::multiset<std::int64_t> confirmed;
    const auto listen = [&] {
        for (int payment = 0; read(ends[0], &payment, sizeof payment) == sizeof payment;)
            confirmed.insert(payment);
    };
    const int rounds = effort() > 1 ? 100 : 8;
    int done = 0, refused = 0;
    const DateTime now = DateTime::of(2026, 11, 22, 10, 30, 0); // many within one second
    for (int tries = 0; done < rounds && tries < rounds * 20; ++tries) {
        listen();
        try {
            backup::restore(backup.string(), drive.books().string(), now);
            ++done;
        } catch (const backup::Refusal&) {
            ++refused; // a till was at work
        }
    }
    EXPECT_EQ(done, rounds);
    listen();
    close(ends[0]);
    for (const pid_t till : tills)
        EXPECT_EQ(exitOf(till), 0) << "a till did not get in";
    std::multiset<std::int64_t> held = paymentsIn(drive.books());
    std::string faults;
    static_cast<void>(contentOf(drive, faults));
    for (const backup::Restorable& kept : backup::listRestorable({}, drive.books().string())) {
        const auto there = paymentsIn(kept.file);
        held.insert(there.begin(), there.end());
        static_cast<void>(contentOf(fs::path(kept.file), faults));
    }
    EXPECT_EQ(faults, "");
    EXPECT_TRUE(std::includes(held.begin(), held.end(), confirmed.begin(), confirmed.end()))
        << confirmed.size() << " confirmed, " << held.size() << " there";
    std::cout << confirmed.size() << " payments around " << done << " restorings, " << refused
              << " refused\n";
    EXPECT_GT(confirmed.size(), 10U);
}

} // namespace
} // namespace veldona::faults
