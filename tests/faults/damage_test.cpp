// Files that are no books of ours, or damaged ones: the start says what may be wrong and what to do, and
// leaves the file as it is.
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <utility>

#include <gtest/gtest.h>

#include "backup/keeping.h"
#include "backup/restore.h"
#include "core/books.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/createdatabase.h"
#include "tests/faults/damagedfiles.h"
#include "tests/faults/day.h"
#include "tests/faults/faultvfs.h"
#include "tests/faults/program.h"

namespace veldona::faults {
namespace {

namespace fs = std::filesystem;

// The one sentence of a start that fails on such a file, and leaves it as it is.
std::string saidOfStart(const Drive& drive, const std::string& bytes) {
    writeBytes(drive.books(), bytes);
    Till till(drive);
    till.play("start\n");
    EXPECT_TRUE(till.hasEnded());
    EXPECT_EQ(bytesOf(drive.books()), bytes) << "the file was touched";
    EXPECT_FALSE(fs::exists(drive.books().string() + "-wal"));
    const auto said = till.said();
    EXPECT_EQ(said.size(), 1U) << ::testing::PrintToString(said);
    return said.empty() ? "" : said[0];
}

TEST(Damage, AStartOnWhatIsNotOursFailsInWords) {
    for (const auto& [what, bytes] : damagedBooks()) {
        const std::string said = saidOfStart(Drive(), bytes);
        EXPECT_TRUE(isHelpful(said)) << what << ": " << said;
    }
}

const std::string kTrigger = "CREATE TRIGGER T AFTER INSERT ON TAKSITODENEN BEGIN UPDATE TAKSITODENEN SET "
                             "MUSTNO = '8' WHERE ID = NEW.ID; END";

// By the whole program, by who only looks, and by a restore: refused before anything is changed.
TEST(Damage, WhatAStrangerPutIntoTheBooksIsRefused) {
    const std::vector<std::string> foreign[] = {
        {kTrigger},
        {kTrigger, "PRAGMA writable_schema = ON",
         "UPDATE sqlite_master SET type = 'index', name = 'URUNSAT_ODTRH2' WHERE name = 'T'"},
        {"PRAGMA user_version = 99999", "CREATE TABLE YENI (A)", kTrigger},
        {"CREATE VIEW V AS SELECT * FROM MUSTKAYIT"},
        {"DROP VIEW S_TAKSITODENEN",
         "CREATE VIEW S_TAKSITODENEN AS SELECT ID AS UNVAN, ODTRH, ODMIKTAR, KONTROL_KIM, KASA_ID FROM "
         "TAKSITODENEN"},
        {"CREATE VIRTUAL TABLE F USING fts4(A)"},
        {"CREATE INDEX I ON URUNSAT (abs(ODMIKTAR))"},
        {"CREATE UNIQUE INDEX I ON URUNSAT (MUSTNO)"},
        {"CREATE TABLE Y (A)"},
        {"ALTER TABLE GRUPLAR ADD COLUMN Z TEXT DEFAULT 'x'"},
        {"DROP TABLE GRUPLAR", "CREATE TABLE \"GRUPLAR\" (\"ID\" INTEGER PRIMARY KEY AUTOINCREMENT, "
                               "\"GRUP_ADI\" TEXT COLLATE TURKISH CHECK (length(GRUP_ADI) < 3))"}};
    for (const auto& statements : foreign) {
        SCOPED_TRACE(statements.back());
        const Drive drive;
        const std::string bytes = booksWith(statements), said = saidOfStart(drive, bytes);
        EXPECT_TRUE(isHelpful(said)) << said;
        EXPECT_THROW(static_cast<void>(openBooksToRead(drive.books().string(), std::chrono::seconds(1))),
                     store::StoreError);
        const std::string elsewhere = (drive.path() / "yok.mdb").string();
        EXPECT_THROW(static_cast<void>(backup::lossOfRestoring(drive.books().string(), elsewhere)),
                     store::StoreError);
        EXPECT_TRUE(backup::areDamaged(drive.books().string())) << "the start offers the last backup";
        EXPECT_EQ(bytesOf(drive.books()), bytes) << "the file was touched";
    }
}

TEST(Damage, BooksOfANewerProgramAreLeftToIt) {
    const Drive drive;
    const std::string bytes =
        booksWith({"PRAGMA user_version = 99999", "CREATE TABLE YENI (A)", "CREATE INDEX YENI_A ON YENI (A)",
                   "CREATE VIEW S_YENI AS SELECT A FROM YENI"});
    const std::string said = saidOfStart(drive, bytes);
    EXPECT_NE(said.find("daha yeni bir sürümüyle açılmış"), std::string::npos) << said;
    EXPECT_FALSE(backup::areDamaged(drive.books().string())) << "no backup must take their place";
}

// The tables of the first release, and of one that lacked a column, tables, an index and a query.
const std::vector<std::string> kFirstRelease = {
    "DROP INDEX ISLEMNOTABLO_ISLEMNO",
    "CREATE INDEX \"ISLEMNOTABLO_ISLEMNO\" ON \"ISLEMNOTABLO\" (\"ISLEMNO\")", "PRAGMA user_version = 0",
    "PRAGMA writable_schema = ON",
    "UPDATE sqlite_master SET sql = replace(sql, ' DEFAULT 0', '') WHERE type = 'table'"};
const std::vector<std::string> kLacking = {
    "DROP VIEW S_T_KASA_HAREKETLERI",
    "DROP INDEX URUNSAT_ODTRH",
    "DROP TABLE ADRESSOK",
    "DROP TABLE GRUPLAR",
    "CREATE TABLE \"GRUPLAR\" (\"ID\" INTEGER PRIMARY KEY AUTOINCREMENT, \"GRUP_KOD\" TEXT COLLATE TURKISH)",
    "PRAGMA user_version = 1",
    "PRAGMA writable_schema = ON",
    ("UPDATE sqlite_master SET sql = replace(sql, ', \"UYARI\" MEMOTEXT COLLATE TURKISH', '') "
     "WHERE name = 'MUSTKAYIT'")};

// What stands of all that is delivered; "" where the books are unsound.
std::string catalogOf(const Drive& drive) {
    if (drive.answer("PRAGMA integrity_check") != "ok") return "";
    return drive.answer("SELECT name, sql FROM sqlite_master WHERE name NOT LIKE 'sqlite_%' ORDER BY name");
}

bool takesAPayment(Till& till) {
    till.play(openingLines() + post(5).lines);
    return till.said() == std::vector<std::string>{post(5).doneMessage};
}

bool savesACard(Till& till) {
    till.play("click cmdMusteriKaydi\nput txtAd \"Veli\"\nkey F2\nkey Esc\n"
              "expect-sql \"SELECT COUNT(*) FROM MUSTKAYIT WHERE AD = 'Veli'\" \"1\"\n");
    return till.said().empty();
}

std::size_t copiesBeside(const Drive& drive) {
    return backup::listRestorable({}, drive.books().string()).size();
}

enum OpeningExit { Opened, ToldWhy, NotTold };

int opensBehind(const Drive& drive, Fault fault, int nth) {
    return exitOf(inChild([&]() -> int {
        install();
        arm(fault, nth, Tail::PartlyKept, static_cast<std::uint32_t>(nth));
        Till till(drive);
        till.play("start\n");
        if (!till.hasEnded()) _exit(Opened); // nothing is closed
        const auto said = till.said();
        _exit(said.size() == 1 && said[0].find("yer kalmadı") != std::string::npos ? ToldWhy : NotTold);
    }));
}

// The power goes, or the disk is full, at each call in turn that changes a file in the middle of the opening.
TEST(Damage, OlderBooksAreBroughtUpToDateWholeOrNotAtAll) {
    const std::string older = booksWith(kLacking);
    std::string before;
    int cuts = 0, refusals = 0;
    bool isOver = false;
    for (int nth = 1, turn = 0; !isOver && !HasFailure(); nth += effort() > 1 ? 1 : 5, ++turn) {
        const Drive drive;
        writeBytes(drive.books(), older);
        if (before.empty()) {
            before = catalogOf(drive);
            const auto reader = openBooksToRead(drive.books().string(), std::chrono::seconds(1));
            reader->execute("SELECT UYARI, GRUP_ADI, SK FROM MUSTKAYIT, GRUPLAR, ADRESSOK");
        }
        const Fault fault = turn % 2 == 0 ? Fault::PowerCut : Fault::DiskFull;
        const int ending = opensBehind(drive, fault, nth);
        EXPECT_NE(ending, NotTold) << "at call " << nth;
        cuts += ending == kPowerCutExit ? 1 : 0;
        refusals += ending == ToldWhy ? 1 : 0;
        isOver = fault == Fault::PowerCut && ending == Opened;
        const std::string left = catalogOf(drive);
        EXPECT_NE(left, "") << "unsound at call " << nth;
        EXPECT_TRUE(left == before || copiesBeside(drive) == 1) << "changed without a copy, at call " << nth;
        EXPECT_TRUE(left != before || ending != Opened) << "at call " << nth;
        Till till(drive);
        EXPECT_TRUE(takesAPayment(till) && savesACard(till)) << "at call " << nth;
        EXPECT_TRUE(left == before || left == catalogOf(drive)) << "half of it, at call " << nth;
    }
    EXPECT_GT(cuts, 5);
    EXPECT_GT(refusals, 5);
}

TEST(Damage, TwoTillsOpenOlderBooksAtOnce) {
    for (const auto& [release, copies] : {std::pair{kFirstRelease, 0U}, {kLacking, 1U}}) {
        const Drive drive;
        writeBytes(drive.books(), booksWith(release));
        std::vector<pid_t> tills;
        for (int till = 0; till < 2; ++till)
            tills.push_back(inChild([&] {
                Till alone(drive);
                return takesAPayment(alone) ? 0 : 1;
            }));
        for (const pid_t till : tills)
            EXPECT_EQ(exitOf(till), 0);
        Till later(drive);
        EXPECT_TRUE(takesAPayment(later) && savesACard(later));
        EXPECT_EQ(copiesBeside(drive), copies);
        const std::string catalog = catalogOf(drive);
        for (const char* part : {"CREATE UNIQUE INDEX \"ISLEMNOTABLO_ISLEMNO\"", "DEFAULT 0", "UYARI",
                                 "GRUP_ADI", "ADRESSOK", "S_T_KASA", "URUNSAT_ODTRH"})
            EXPECT_NE(catalog.find(part), std::string::npos) << part;
    }
}

TEST(Damage, AnotherPasswordFailsInWords) {
    const Drive drive;
    store::createDatabase(drive.books().string(), "başka parola", {}, {});
    const std::string said = saidOfStart(drive, bytesOf(drive.books()));
    EXPECT_NE(said.find("parola yanlış"), std::string::npos) << said;
}

// At the start or where the work comes to the damaged place: in words, and never as if the books were empty.
TEST(Damage, ALaterPageIsToldWhereItIsRead) {
    const Drive whole;
    copyShop(whole);
    addCustomers(whole);
    const std::string ours = bytesOf(whole.books());
    ASSERT_GT(ours.size(), 100 * kPage);
    const std::size_t half = ours.size() / kPage / 2 * kPage;
    for (const std::string& bytes : {ours.substr(0, half), ours.substr(0, kPage),
                                     ours.substr(0, half) + flipped(ours.substr(half), 1000)}) {
        SCOPED_TRACE(std::to_string(bytes.size()) + " bytes");
        const Drive drive;
        writeBytes(drive.books(), bytes);
        Till till(drive);
        till.play("start\n");
        auto said = till.said();
        if (!till.hasEnded()) {
            till.play("sql \"SELECT COUNT(UYARI) FROM MUSTKAYIT\"\n");
            const auto more = till.said();
            said.insert(said.end(), more.begin(), more.end());
        }
        EXPECT_TRUE(std::ranges::any_of(said, isHelpful)) << ::testing::PrintToString(said);
        EXPECT_EQ(bytesOf(drive.books()), bytes) << "the file was touched";
    }
}

// The program as a shop starts it, with its windows: the box says what may be wrong and what to do, the
// process ends with a code of its own, and the file is left as it is.
const Program::Environment kOffscreen = {{"QT_QPA_PLATFORM", "offscreen"},
                                         {"QT_QPA_GENERIC_PLUGINS", "onlooker"},
                                         {"QT_PLUGIN_PATH", VELDONA_PLUGINS}};

Program::Words wordsFor(const Drive& drive) {
    return {"--kok", drive.path()};
}

// A start that fails: with one helpful box, a code, and the file untouched.
void expectRefused(const Drive& drive) {
    const std::string before = bytesOf(drive.books());
    const Outcome outcome = runProgram("veldona", wordsFor(drive), kOffscreen);
    EXPECT_EQ(outcome.code, 1) << outcome.said;
    EXPECT_TRUE(isHelpful(outcome.said)) << outcome.said;
    EXPECT_EQ(outcome.said.find("box: "), outcome.said.rfind("box: ")) << outcome.said;
    EXPECT_EQ(outcome.said.find("window: frm"), outcome.said.npos) << outcome.said;
    EXPECT_EQ(bytesOf(drive.books()), before) << "the file was touched";
    EXPECT_FALSE(fs::exists(drive.books().string() + "-wal"));
}

TEST(DamageOfTheProgram, AStartFailsInWordsAndWithACode) {
    auto cases = damagedBooks();
    cases.emplace_back("a view of a stranger's", booksWith({"CREATE VIEW V AS SELECT 1"}));
    for (const auto& [what, bytes] : cases) {
        SCOPED_TRACE(what);
        const Drive drive;
        writeBytes(drive.books(), bytes);
        expectRefused(drive);
    }
    SCOPED_TRACE("another password");
    const Drive drive;
    store::createDatabase(drive.books().string(), "başka parola", {}, {});
    expectRefused(drive);
    const Drive folder;
    fs::create_directory(folder.books());
    const Outcome outcome = runProgram("veldona", wordsFor(folder), kOffscreen);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(isHelpful(outcome.said)) << outcome.said;
}

TEST(DamageOfTheProgram, ALaterPageIsToldInTheMiddleOfWork) {
    const Drive drive;
    copyShop(drive);
    addCustomers(drive);
    const std::string ours = bytesOf(drive.books());
    Program program("veldona", wordsFor(drive), kOffscreen);
    program.awaitWords("window: frmMainVeldona");
    const std::size_t half = ours.size() / kPage / 2 * kPage;
    const std::string damaged = ours.substr(0, half) + flipped(ours.substr(half), 1000);
    std::fstream(drive.books(), std::ios::binary | std::ios::in | std::ios::out) << damaged;
    std::string said;
    for (int customer = 150; customer < 5100 && !isHelpful(said); customer += 200) {
        program.write("type Text1 " + std::to_string(customer));
        said += program.awaitWords("typed");
    }
    EXPECT_TRUE(isHelpful(said)) << said;
    program.write("type Text1 7"); // the screen goes on
    program.awaitWords("typed");
    program.write("quit");
    EXPECT_EQ(program.finish().code, 0);
    EXPECT_EQ(bytesOf(drive.books()).substr(kPage), damaged.substr(kPage)) << "the file was touched";
}

} // namespace
} // namespace veldona::faults
