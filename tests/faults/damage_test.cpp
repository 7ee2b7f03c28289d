// Files that are no books of ours, or damaged ones: the start says what may be wrong and what to do, and
// leaves the file as it is.
#include <algorithm>
#include <fstream>

#include <gtest/gtest.h>

#include "backup/restore.h"
#include "core/books.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/createdatabase.h"
#include "tests/faults/damagedfiles.h"
#include "tests/faults/day.h"

namespace veldona::faults {
namespace {

namespace fs = std::filesystem;

bool hasHelpful(const std::vector<std::string>& said) {
    return std::any_of(said.begin(), said.end(), isHelpful);
}

std::string ourBytes() {
    const Drive drive;
    copyShop(drive);
    return bytesOf(drive.books());
}

TEST(Damage, AStartOnWhatIsNotOursFailsInWords) {
    const std::string ours = ourBytes();
    struct Case {
        const char* what;
        std::string bytes;
    };
    const Case cases[] = {
        {"empty", ""},
        {"plain", plainFile()},
        {"noise", std::string(3 * kPage, 'x')},
        {"cut inside the first page", ours.substr(0, 1000)},
        {"the first byte flipped", flipped(ours.substr(0, kPage), 0) + ours.substr(kPage)},
        {"the first page flipped", flipped(ours.substr(0, kPage), 2000) + ours.substr(kPage)}};
    for (const Case& wrong : cases) {
        SCOPED_TRACE(wrong.what);
        const Drive drive;
        writeBytes(drive.books(), wrong.bytes);
        Till till(drive);
        till.play("start\n");
        const auto said = till.said();
        EXPECT_TRUE(till.hasEnded());
        ASSERT_EQ(said.size(), 1U);
        EXPECT_TRUE(isHelpful(said[0])) << said[0];
        EXPECT_EQ(bytesOf(drive.books()), wrong.bytes) << "the file was touched";
        EXPECT_FALSE(fs::exists(drive.books().string() + "-wal"));
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
        const std::string bytes = booksWith(statements);
        writeBytes(drive.books(), bytes);
        Till till(drive);
        till.play("start\n");
        EXPECT_TRUE(till.hasEnded());
        const auto said = till.said();
        ASSERT_EQ(said.size(), 1U);
        EXPECT_TRUE(isHelpful(said[0])) << said[0];
        EXPECT_THROW(static_cast<void>(openBooksToRead(drive.books().string(), std::chrono::seconds(1))),
                     store::StoreError);
        const std::string elsewhere = (drive.path() / "yok.mdb").string();
        EXPECT_THROW(static_cast<void>(backup::lossOfRestoring(drive.books().string(), elsewhere)),
                     store::StoreError);
        EXPECT_TRUE(backup::areDamaged(drive.books().string())) << "the start offers the last backup";
        EXPECT_EQ(bytesOf(drive.books()), bytes) << "the file was touched";
    }
}

TEST(Damage, OlderBooksThatLackSomethingOpen) {
    const Drive drive;
    writeBytes(drive.books(),
               booksWith({"DROP VIEW S_T_KASA_HAREKETLERI", "DROP INDEX URUNSAT_ODTRH", "DROP TABLE ADRESSOK",
                          "DROP TABLE GRUPLAR",
                          "CREATE TABLE \"GRUPLAR\" (\"ID\" INTEGER PRIMARY KEY AUTOINCREMENT, "
                          "\"GRUP_KOD\" TEXT COLLATE TURKISH)"}));
    Till till(drive);
    till.play(openingLines() + post(5).lines);
    EXPECT_EQ(till.said(), std::vector<std::string>{post(5).doneMessage});
}

TEST(Damage, AFolderOrAnotherPasswordFailsInWords) {
    const Drive folder;
    fs::create_directory(folder.books());
    Till atFolder(folder);
    atFolder.play("start\n");
    EXPECT_TRUE(atFolder.hasEnded());
    EXPECT_TRUE(hasHelpful(atFolder.said()));

    const Drive drive;
    store::createDatabase(drive.books().string(), "başka parola", {}, {});
    const std::string before = bytesOf(drive.books());
    Till till(drive);
    till.play("start\n");
    EXPECT_TRUE(till.hasEnded());
    const auto said = till.said();
    ASSERT_EQ(said.size(), 1U);
    EXPECT_NE(said[0].find("parola yanlış"), std::string::npos) << said[0];
    EXPECT_EQ(bytesOf(drive.books()), before);
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
        EXPECT_TRUE(hasHelpful(said)) << ::testing::PrintToString(said);
        EXPECT_EQ(bytesOf(drive.books()), bytes) << "the file was touched";
    }
}

TEST(Damage, APageThatGoesBadInTheMiddleOfWork) {
    const Drive drive;
    copyShop(drive);
    addCustomers(drive);
    const std::string ours = bytesOf(drive.books());
    const std::size_t half = ours.size() / kPage / 2 * kPage;
    Till till(drive);
    till.play("start\n");
    {
        std::fstream file(drive.books(), std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(static_cast<std::streamoff>(half));
        file << flipped(ours.substr(half), 1000);
    }
    till.pragma("shrink_memory"); // what was read before is not asked for again otherwise
    till.play("put Text1 \"4900\"\n");
    const auto said = till.said();
    EXPECT_TRUE(hasHelpful(said)) << ::testing::PrintToString(said);
    EXPECT_EQ(till.screenInFront(), "frmMainVeldona");
}

} // namespace
} // namespace veldona::faults
