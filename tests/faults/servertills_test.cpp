// Several tills on one server, and tills that it turns away.
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "journal/takeback.h"
#include "journal/words.h"
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

// The exit codes of `work` at both tills, each in a process of its own; 255 where it raised.
std::vector<int> atOnce(const Drive& here, const Drive& there, const std::function<int(const Drive&)>& work) {
    std::vector<pid_t> tills;
    for (const Drive* drive : {&here, &there}) {
        tills.push_back(fork());
        if (tills.back() != 0) continue;
        try {
            _exit(work(*drive));
        } catch (const std::exception& failure) { // a child that went on would be a second test
            fprintf(stderr, "%s\n", failure.what());
            _exit(255);
        }
    }
    std::vector<int> codes;
    for (const pid_t till : tills) {
        int status = 0;
        const bool ended = waitpid(till, &status, 0) == till && WIFEXITED(status);
        codes.push_back(ended ? WEXITSTATUS(status) : 255);
    }
    return codes;
}

TEST(ServerTills, KeepAllThatBothWrote) {
    const ServerShop shop;
    const Drive other;
    putAddress(other, shop.addressOf("kasa2"));
    const int rounds = 40 * std::min(effort(), 25);
    shop.sql("INSERT INTO \"MSysKASA\" VALUES ('eski', 1, NULL, now() - interval '31 days')");
    const auto codes = atOnce(shop, other, [&](const Drive& drive) {
        return work(drive, &drive == &shop ? 7 : 8, rounds) ? 0 : 1;
    });
    EXPECT_EQ(codes, (std::vector<int>{0, 0}));
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

// A till has a card, an account with a panel and the list of acts open while another one takes back what was
// done to them.
void takeBackBeside(const Drive& here, const Drive& there) {
    Till one(here), other(there);
    one.play(openingLines(7));
    other.play(openingLines(7) + "dblclick grdList 0\nput txtGSM \"532\"\nkey F2\nkey Esc\n");
    const std::string back = "key Ctrl+Z\nanswer yes\nkey F4\nkey Esc\n";
    one.atMark = [&](const std::string&) { other.play(back); };
    const auto lastSaid = [&one] {
        const auto said = one.said();
        return said.empty() ? std::string() : said.back();
    };
    one.play("dblclick grdList 0\nexpect txtGSM \"532\"\nput txtSoyad \"Işık\"\n@back\nkey F2\nexpect txtGSM "
             "\"\" txtSoyad \"Işık\"\nexpect-sql \"SELECT GSM,SOYAD FROM MUSTKAYIT WHERE HSTNO='7'\" "
             "\"NULL|Yılmaz\"\nkey F2\nexpect-sql \"SELECT GSM,SOYAD FROM MUSTKAYIT WHERE HSTNO='7'\" "
             "\"|Işık\"\nkey Esc\n");
    EXPECT_NE(lastSaid().find("Bu kart açıkken bir işlem geri alındı."), std::string::npos);
    one.play("type Text1 \"7\"\ndblclick L3 0\n" + post(50).lines +
             "menu mnuUrunEkle\nput txtUrunAdi \"Tepsi\"\nput MskToplamUcret \"300\"\n@back\n"
             "click cmdUrunKaydet\nexpect-visible frmUrunEkle no\nexpect-list L2 \"100,00\"\nexpect-sql "
             "\"SELECT COUNT(*) FROM URUNAL WHERE FIYAT=300000000\" \"0\"\n");
    EXPECT_NE(lastSaid().find("Bu hesapta bir işlem geri alındı."), std::string::npos);
    one.play(post(60).lines +
             "key Ctrl+Z\n@back\nkey F4\nexpect-cell grdListe 1 \"DURUM\" \"geri alındı\"\n"
             "expect-sql \"SELECT COUNT(*) FROM TAKSITODENEN WHERE MUSTNO='7'\" \"1\"\nkey Esc\n");
    EXPECT_NE(lastSaid().find("Bu işlem zaten geri alınmış"), std::string::npos);
}

// How many of the newest acts this till took back; the others must have been the other till's.
int takeBackAll(const Drive& drive, std::size_t acts) {
    Till till(drive);
    till.play(openingLines());
    adodb::Connection& books = *till.session().gBaglanti;
    int taken = 0;
    std::size_t met = 0;
    for (const journal::Act& act : journal::ActReader(books).more(2 * acts)) {
        if (journal::kindOf(act) != journal::ActKind::Collection || met++ == acts) continue;
        const auto obstacle = journal::takeBack(books, act);
        if (obstacle && (!obstacle->act || journal::takenBackBy(*obstacle->act) != act.id)) return -1;
        taken += obstacle ? 0 : 1;
    }
    return taken;
}

void takeBackAtOnce(const Drive& here, const Drive& there) {
    constexpr int kActs = 20;
    {
        Till till(here);
        till.play(openingLines());
        for (int i = 1; i <= kActs; ++i)
            till.play(post(i).lines);
    }
    const auto taken = atOnce(here, there, [](const Drive& drive) { return takeBackAll(drive, kActs); });
    std::cout << taken[0] << " acts were taken back at one till, " << taken[1] << " at the other\n";
    EXPECT_EQ(taken[0] + taken[1], kActs);
    Till till(here);
    till.play(openingLines() + "expect-list L2 \"100,00\"\n");
}

// On a file and on a server.
TEST(ServerTills, SeeWhatWasTakenBackAtAnotherAndNeverTwice) {
    {
        const Drive file;
        copyShop(file);
        takeBackBeside(file, file);
        takeBackAtOnce(file, file);
    }
    const ServerShop shop;
    const Drive other;
    putAddress(other, shop.addressOf("kasa2"));
    takeBackBeside(shop, other);
    takeBackAtOnce(shop, other);
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
