// Several tills on one server, and tills that it turns away.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/faults/day.h"
#include "tests/faults/servershop.h"
#include "tests/faults/smalldisk.h"

namespace veldona::faults {
namespace {

bool isAmong(const std::vector<std::string>& said, const std::string& words) {
    return std::find(said.begin(), said.end(), words) != said.end();
}

// Posts 1, 2, 3 … lira, and saves a sale now and then; where another till has taken its number meanwhile,
// that is told, and the next F2 saves it under the next one.
bool work(const Drive& drive, int customer, int rounds) {
    Till till(drive);
    bool isSaved = true;
    till.atMark = [&](const std::string&) {
        isSaved = isAmong(till.said(), "İşlem Tamamlandı");
        for (int tries = 0; !isSaved && tries < 5; ++tries) {
            till.perform("key F2");
            isSaved = isAmong(till.said(), "İşlem Tamamlandı");
        }
    };
    till.play(openingLines(customer));
    for (int i = 1; i <= rounds && isSaved; ++i) {
        till.play(post(i).lines);
        if (!isAmong(till.said(), post(i).doneMessage)) return false;
        if (i % 10 != 0) continue;
        till.play("click cmdSatis\nput MskToplamUcret \"1000\"\nput MskTaksitAdedi \"4\"\nclick cmdKaydet\n"
                  "@saved\nclick cmdCikis\ntype Text1 \"" +
                  std::to_string(customer) + "\"\ndblclick L3 " + std::to_string(i / 10) + "\n");
    }
    return isSaved;
}

[[noreturn]] void workAtTill(const Drive& drive, int customer, int rounds) {
    try {
        _exit(work(drive, customer, rounds) ? 0 : 1);
    } catch (const std::exception& failure) { // a child that went on would be a second test
        fprintf(stderr, "till of customer %d: %s\n", customer, failure.what());
        _exit(2);
    }
}

TEST(ServerTills, KeepAllThatBothWrote) {
    const ServerShop shop;
    const Drive other;
    putAddress(other, shop.addressOf("kasa2"));
    const int rounds = 40 * std::min(effort(), 25);
    shop.sql("INSERT INTO \"MSysKASA\" VALUES ('eski', 1, NULL, now() - interval '31 days')");
    std::vector<pid_t> tills;
    for (const auto& [drive, customer] : {std::pair<const Drive*, int>{&shop, 7}, {&other, 8}}) {
        tills.push_back(fork());
        ASSERT_GE(tills.back(), 0);
        if (tills.back() == 0) workAtTill(*drive, customer, rounds);
    }
    for (const pid_t till : tills) {
        int status = 0;
        ASSERT_EQ(waitpid(till, &status, 0), till);
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    }
    const std::string all =
        std::to_string(rounds + 1) + '/' + std::to_string(100 + rounds * (rounds + 1) / 2);
    for (const char* sale : {"4", "5"})
        EXPECT_EQ(shop.sql(std::string("SELECT count(*) || '/' || sum(\"ODMIKTAR\") / 1000000 FROM "
                                       "\"TAKSITODENEN\" WHERE \"ISLEMNO\" = ") +
                           sale),
                  all);
    EXPECT_EQ(shop.sql("SELECT count(*) - count(DISTINCT \"ISLEMNO\") FROM \"ISLEMNOTABLO\""), "0");
    // Each sale is whole, and counted in the stock.
    EXPECT_EQ(shop.sql("SELECT count(*) FROM \"ISLEMNOTABLO\" s WHERE s.\"ISLEMNO\" > 5 AND (SELECT count(*) "
                       "FROM \"URUNSAT\" u WHERE u.\"ISLEMNO\" = s.\"ISLEMNO\") <> 4"),
              "0");
    EXPECT_EQ(shop.sql("SELECT max(\"TOPLAM_SATILAN\") - (SELECT count(*) FROM \"ISLEMNOTABLO\" WHERE "
                       "\"ISLEMNO\" > 5) FROM \"URUNTANITIM\""),
              "0");
    EXPECT_NE(shop.sql("SELECT count(*) FROM \"ISLEMNOTABLO\""), "2");
    EXPECT_EQ(shop.sql("SELECT count(*) FROM \"MSysKASA\" WHERE \"KASA\" = 'eski'"), "0");
}

// What the start says, or the posting behind it.
std::string saidTo(const Drive& drive) {
    Till till(drive);
    till.play("clock \"22/11/2026 10:30:00\"\nstart\n");
    if (!till.hasEnded()) till.play("type Text1 \"7\"\ndblclick L3 0\n" + post(100).lines);
    std::string text;
    for (const std::string& each : till.said())
        text += each + '|';
    return text;
}

TEST(ServerTills, AreTurnedAwayInWordsAndWriteNothing) {
    const ServerShop shop;
    const TestServer& server = TestServer::get();
    server.sql("CREATE ROLE bakan LOGIN; CREATE ROLE "
               "sifreli LOGIN PASSWORD 'dogru' IN ROLE parolali, veldona_kasa");
    shop.sql("GRANT USAGE ON SCHEMA vorel TO bakan; GRANT SELECT ON ALL TABLES IN SCHEMA vorel TO bakan");
    const Drive drive;
    const auto expect = [&](const std::string& user, const std::string& words) {
        putAddress(drive, shop.addressOf(user));
        const std::string said = saidTo(drive);
        EXPECT_NE(said.find(words), said.npos) << user << ": " << said;
        EXPECT_EQ(said.find("dogru"), said.npos);
    };
    expect("bakan", "yazma izni yok");
    expect("sifreli", "parola");
    expect("yok", "kabul etmiyor");
    server.sql("CREATE ROLE yabanci LOGIN");
    expect("yabanci", "deftere girme izni yok");
    const std::string todays = shop.sql("SELECT obj_description('vorel'::regnamespace, 'pg_namespace')");
    const auto note = [&](const std::string& text) {
        shop.sql("COMMENT ON SCHEMA vorel IS '" + text + '\'');
    };
    note("veldona 0.9.0 1");
    expect("kasa1", "vorel-sunucu --yenile");
    note("veldona 99.0.0 1");
    expect("kasa1", "daha yeni bir sürümüyle");
    note(todays);
    shop.sql("ALTER TABLE \"ARAMA_NOTU\" RENAME TO \"BASKA\"");
    expect("kasa1", "ARAMA_NOTU eksik");
    shop.sql("ALTER TABLE \"MSysKASA\" RENAME TO \"BASKASI\"");
    expect("kasa1", "bu programın defteri yok");
    EXPECT_EQ(shop.sql("SELECT count(*) FROM \"TAKSITODENEN\" WHERE \"ISLEMNO\" = 5"), "1");
}

// Told as done and there, or told of, and not there; what is wrong, or "".
std::string wrongWithout(const ServerShop& shop, const std::filesystem::path& disk) {
    const auto payments = [&shop] { return std::stoi(shop.sql("SELECT count(*) FROM \"TAKSITODENEN\"")); };
    const Act sale{"click cmdSatis\nput MskToplamUcret \"1000\"\nput MskAlinanPesinat \"200\"\nput "
                   "MskTaksitAdedi \"4\"\nclick cmdKaydet\nclick cmdCikis\n",
                   saveSale().doneMessage};
    Till till(shop);
    till.play(openingLines());
    std::string refused;
    int told = payments();
    {
        const NoRoom full(DiskKind::Own, disk, 0);
        while (refused.empty() && told < 1000) { // some find room in what the tables have
            till.play(post(1).lines);
            const auto said = till.said(); // a posting says that it is done whatever came of it
            if (said == std::vector{post(1).doneMessage})
                ++told;
            else
                refused = said.empty() ? "nothing" : said.back();
        }
        if (refused.find("Sunucunun diskinde yer kalmadı") == refused.npos) return "told: " + refused;
        if (payments() != told) return "a payment is there that was refused, or the other way round";
        till.play(sale.lines);
        if (isAmong(till.said(), sale.doneMessage)) return "the sale found room";
    }
    const std::string rows =
        shop.sql("SELECT (SELECT count(*) FROM \"ISLEMNOTABLO\") || '/' || (SELECT count(*) "
                 "FROM \"URUNSAT\") || '/' || (SELECT count(*) FROM \"URUNAL\")");
    if (rows != "2/2/2" || payments() != told) return "half a sale: " + rows;
    till.play("type Text1 \"7\"\ndblclick L3 0\n" + post(1).lines);
    return isAmong(till.said(), post(1).doneMessage) && payments() == told + 1
               ? ""
               : "not done when there was room";
}

TEST(ServerTills, AreToldOfAFullServerAndKeepWhatTheyTold) {
    const test::TemporaryFolder disk;
    std::filesystem::permissions(disk.path(), std::filesystem::perms::others_exec,
                                 std::filesystem::perm_options::add);
    const auto wrong = onDisk(DiskKind::Own, disk.path(), [&]() -> std::string {
        TestServer server; // one that sees this disk
        const ServerShop shop(server, server.makeTablespace(disk.path() / "alan"));
        return wrongWithout(shop, disk.path());
    });
    if (!wrong) GTEST_SKIP() << "no small disk to be had here";
    EXPECT_EQ(*wrong, "");
}

} // namespace
} // namespace veldona::faults
