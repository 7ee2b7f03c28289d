// The journal of the books: what the engine itself leaves of each row that is added, changed or removed.
#include <gtest/gtest.h>

#include <chrono>
#include <map>

#include "core/books.h"
#include "core/delivered.h"
#include "journal/chain.h"
#include "journal/seen.h"
#include "journal/thinning.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/act.h"
#include "platform/store/engine/createdatabase.h"
#include "platform/store/engine/inquiry.h"
#include "platform/store/engine/journalseal.h"
#include "platform/store/engine/openfile.h"
#include "schema/tables.h"
#include "tests/support/files.h"

namespace veldona {
namespace {

struct Read {
    std::string act, program, table, kind, key, before, after;
    auto operator<=>(const Read&) const = default;
};

class Journal : public ::testing::Test {
protected:
    void SetUp() override {
        store::createDatabase(file, kDeliveredPassword, schema::tables(), schema::savedQueries());
        open();
    }
    void open() {
        engine =
            store::openFileToWork(file, kDeliveredPassword,
                                  {std::chrono::seconds(1), [this] { return now; }, {}}, schema::delivered());
    }
    [[nodiscard]] std::vector<Read> entries() const {
        std::vector<Read> all;
        const auto rows = store::Inquiry(*engine).prepare(
            "SELECT ISLEM, PROGRAM, TABLO, TUR, ANAHTAR, ESKI, YENI FROM GUNLUK ORDER BY ID");
        while (rows->step()) {
            const auto text = [&](int column) { return std::string(rows->text(column)); };
            all.push_back({text(0), text(1), text(2), text(3), text(4), text(5), text(6)});
        }
        return all;
    }
    void run(std::string_view sql) const { engine->execute(sql); }
    [[nodiscard]] std::map<std::string, std::string> triggers() const {
        std::map<std::string, std::string> statements;
        const auto rows = engine->prepare("SELECT name, sql FROM sqlite_master WHERE type = 'trigger'");
        while (rows->step())
            statements.emplace(rows->text(0), rows->text(1));
        return statements;
    }
    void switchOff(const std::map<std::string, std::string>& triggers) const {
        for (const auto& [name, statement] : triggers)
            run("DROP TRIGGER \"" + name + '"');
    }

    DateTime now = DateTime::of(2026, 11, 22, 10, 30);
    test::TemporaryFolder folder;
    std::string file = folder / "vorel.mdb";
    std::unique_ptr<store::Engine> engine;
};

TEST_F(Journal, AnActBeginsWithWhoAndWhere) {
    {
        const store::ActScope act("Ana ekran", "Tahsilat");
        run("INSERT INTO TAKSITODENEN (MUSTNO) VALUES ('1')");
        run("INSERT INTO TAKSITODENEN (MUSTNO) VALUES ('2')");
        EXPECT_THROW(run("INSERT INTO ISLEMNOTABLO (ISLEMNO) VALUES (1), (1)"), store::StoreError);
    }
    {
        const store::ActScope act("Ana ekran", "Satışı Sil");
        engine->begin();
        run("DELETE FROM TAKSITODENEN");
        engine->rollback();
        run("DELETE FROM TAKSITODENEN WHERE MUSTNO = '1'"); // the first entry that stands
    }
    const auto rows = store::Inquiry(*engine).prepare(
        "SELECT ID, EKRAN, ADIM, KULLANICI FROM GUNLUK WHERE NOT ADIM IS NULL ORDER BY ID");
    std::vector<std::string> acts;
    while (rows->step())
        acts.push_back(std::string(rows->text(0)) + ' ' + std::string(rows->text(1)) + '/' +
                       std::string(rows->text(2)));
    EXPECT_EQ(acts, (std::vector<std::string>{"1 Ana ekran/Tahsilat", "3 Ana ekran/Satışı Sil"}));
    EXPECT_EQ(entries().size(), 3U);
}

TEST_F(Journal, BooksOfTheReleaseBeforeGetTheirs) {
    const auto known = triggers();
    switchOff(known);
    // What is gone of a journal that stood there is told of, and the next write has its entry.
    for (const char* sql :
         {"SELECT 1", "DELETE FROM MSysGUNLUK", "DROP TABLE MSysGUNLUK", "DROP TABLE GUNLUK"}) {
        SCOPED_TRACE(sql);
        run(sql);
        engine.reset();
        open();
        EXPECT_EQ(entries().back().after, store::kMendedNote);
        run("INSERT INTO ARAMA_NOTU (MUSTNO) VALUES ('1')");
        EXPECT_EQ(entries().back().table, "ARAMA_NOTU");
    }
    // A tail that was cut off stays told of behind what is written next.
    run("DELETE FROM GUNLUK WHERE ID > 1");
    engine.reset();
    open();
    EXPECT_EQ(entries().back().after, store::kTailNote);
    run("INSERT INTO ARAMA_NOTU (MUSTNO) VALUES ('1'), ('2'), ('3')");
    engine.reset();
    open();
    EXPECT_EQ(entries().size(), 5U);
    EXPECT_EQ(journal::examine(*engine, {}).broken.value().breach, journal::Breach::TailGone);
    switchOff(known);
    for (const char* sql : {"DROP TABLE GUNLUK", "DROP TABLE MSysGUNLUK", "PRAGMA user_version = 5",
                            "INSERT INTO TAKSITODENEN (MUSTNO) VALUES ('1')"})
        run(sql);
    engine.reset();
    open();
    run("DELETE FROM TAKSITODENEN");
    EXPECT_EQ(entries().size(), 2U);
    EXPECT_EQ(entries().front().after, store::kBegunNote);
}

// Letter for letter what was delivered: who changes a trigger's words adds a row to those that are known, and
// here.
TEST_F(Journal, TriggersOfEarlierReleasesAreKnownAndRenewed) {
    const auto statement = [](const std::string& when, const std::string& before, const std::string& values,
                              const std::string& insert, const std::string& from, const std::string& behind) {
        std::string parts;
        for (int part = 0; part <= 13; ++part)
            parts += (part == 0 ? "vd_entry_part(" : ", vd_entry_part(") + std::to_string(part) + ')';
        return "CREATE TRIGGER \"GUNLUK_D_T_KASA_TANITIM\" AFTER UPDATE ON \"T_KASA_TANITIM\"" + when +
               " BEGIN " + before +
               "SELECT vd_entry(k.\"ANAHTAR\", h.\"ID\", h.\"ISLEM\", h.\"OZET\", 'D', 'T_KASA_TANITIM', "
               "'[ID,KASA_NO,KASA_ADI]'" +
               values +
               ") FROM (SELECT 1) LEFT JOIN \"MSysGUNLUK\" k LEFT JOIN \"GUNLUK\" h ON h.\"ID\" = (SELECT "
               "max(\"ID\") FROM \"GUNLUK\"); " +
               insert +
               " INTO \"GUNLUK\" (\"ID\", \"ISLEM\", \"AN\", \"PROGRAM\", \"MAKINE\", \"KULLANICI\", "
               "\"EKRAN\", \"ADIM\", \"TABLO\", \"TUR\", \"ANAHTAR\", \"ESKI\", \"YENI\", \"OZET\") " +
               from + parts + behind + "; END";
    };
    const std::string before = R"(SELECT vd_entry_before(OLD."ID", OLD."KASA_NO", OLD."KASA_ADI"); )",
                      row = R"(, NEW."ID", NEW."KASA_NO", NEW."KASA_ADI")",
                      where = " WHERE vd_entry_part(0) IS NOT NULL", name = "GUNLUK_D_T_KASA_TANITIM";
    const std::string today = statement(
        R"( WHEN vd_changed('ID,KASA_NO,KASA_ADI', OLD."ID", NEW."ID", OLD."KASA_NO", NEW."KASA_NO", )"
        R"(OLD."KASA_ADI", NEW."KASA_ADI"))",
        "", "", "INSERT OR ROLLBACK", "VALUES (", ")");
    const auto shape = engine->prepare("PRAGMA user_version");
    ASSERT_TRUE(shape->step());
    const std::int64_t newest = shape->whole(0);
    shape->reset();
    run("INSERT INTO T_KASA_TANITIM (KASA_NO, KASA_ADI) VALUES ('1', 'Merkez')");
    EXPECT_EQ(triggers()[name], today);
    int behind = 0;
    for (const char* insert : {"INSERT OR ROLLBACK", "INSERT"}) {
        run("DROP TRIGGER \"" + name + '"');
        run(statement("", before, row, insert, "SELECT ", where));
        run("PRAGMA user_version = " + std::to_string(newest - ++behind));
        engine.reset();
        open();
        EXPECT_EQ(triggers()[name], today);
        run("UPDATE T_KASA_TANITIM SET KASA_NO = '1', KASA_ADI = 'Şube" + std::to_string(behind) + '\'');
        EXPECT_EQ(entries().back().after, R"({"ID":1,"KASA_ADI":"Şube)" + std::to_string(behind) + "\"}");
    }
    EXPECT_EQ(entries().size(), 3U); // and no note
    run("DROP TRIGGER \"" + name + '"');
    run(statement("", before, row, "INSERT OR IGNORE", "SELECT ", where));
    engine.reset();
    EXPECT_THROW(open(), store::StoreError);
}

std::string verdict(const journal::Chain& chain) {
    constexpr const char* kWords[] = {"removed", "changed", "inserted", "tail", "copied back", "missing"};
    if (!chain.broken) return "whole " + std::to_string(chain.entries);
    return kWords[static_cast<int>(chain.broken->breach)] + (' ' + std::to_string(chain.broken->id));
}

TEST_F(Journal, TheFirstBrokenEntryIsNamed) {
    for (int i = 1; i <= 6; ++i) {
        const store::ActScope act("Ana ekran", "Tahsilat");
        run("INSERT INTO TAKSITODENEN (MUSTNO) VALUES ('" + std::to_string(i) + "')");
    }
    const journal::Chain sound = journal::examine(*engine);
    const journal::Seen sixth{6, sound.seal, sound.moment}, other{6, std::string(32, '0'), sound.moment};
    const std::string noCounter = "UPDATE main.sqlite_sequence SET seq = 4 WHERE name = 'GUNLUK'";
    const std::string copied = "INSERT INTO GUNLUK SELECT ID + 1, ISLEM, AN, PROGRAM, MAKINE, KULLANICI, "
                               "EKRAN, ADIM, TABLO, TUR, ANAHTAR, "
                               "ESKI, YENI, OZET FROM GUNLUK WHERE ID = 6";
    struct Case {
        std::vector<std::string> statements;
        std::vector<journal::Seen> seen;
        std::string expected;
    };
    const Case cases[] = {
        {{}, {sixth}, "whole 6"},
        {{"DELETE FROM GUNLUK WHERE ID = 1"}, {}, "removed 1"},
        {{"DELETE FROM GUNLUK WHERE ID IN (3, 5)"}, {}, "removed 3"},
        {{"UPDATE GUNLUK SET YENI = replace(YENI, '3', '4') WHERE ID = 3"}, {}, "changed 3"},
        {{"UPDATE GUNLUK SET EKRAN = NULL WHERE ID = 6"}, {sixth}, "changed 6"},
        {{"UPDATE GUNLUK SET ESKI = '' WHERE ID = 2"}, {}, "changed 2"},
        {{copied}, {sixth}, "inserted 7"},
        {{"DELETE FROM GUNLUK WHERE ID > 4"}, {}, "tail 5"},
        {{"DELETE FROM GUNLUK WHERE ID > 4", noCounter}, {sixth}, "copied back 5"},
        {{}, {other}, "copied back 6"},
        {{"DELETE FROM GUNLUK"}, {}, "tail 1"},
        {{"UPDATE MSysGUNLUK SET ANAHTAR = 'x'"}, {sixth}, "changed 1"},
        {{"UPDATE GUNLUK SET ID = -5 WHERE ID = 3"}, {}, "inserted -5"},
        {{"DELETE FROM MSysGUNLUK"}, {}, "missing 6"},
        {{"DROP TABLE MSysGUNLUK"}, {sixth}, "missing 6"}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.statements.empty() ? each.expected : each.statements.front());
        engine->begin();
        for (const std::string& statement : each.statements)
            run(statement);
        EXPECT_EQ(verdict(journal::examine(*engine, each.seen)), each.expected);
        engine->rollback();
    }
    // A backup put back by the program says so; one of before that time says nothing of a later copy.
    engine->begin();
    run("DELETE FROM GUNLUK WHERE ID > 4");
    run(noCounter);
    engine->noteInJournal(store::kRestoredNote);
    EXPECT_EQ(verdict(journal::examine(*engine, {sixth})), "whole 5");
    EXPECT_EQ(verdict(journal::examine(*engine, {{6, sound.seal, "2026-11-23 09:00:00"}})), "copied back 6");
    engine->rollback();
}

TEST_F(Journal, ARowWrittenWhileTheTriggersWereOffIsNamed) {
    run("INSERT INTO TAKSITODENEN (ISLEMNO, ODMIKTAR) VALUES (219, 150000000), (219, -0.0), (8, 0.1), (8, "
        "NULL)");
    run("UPDATE TAKSITODENEN SET ODMIKTAR = 90000000.25, MUSTNO = 'ş\"\\' WHERE ID IN (2, 4)");
    run("DELETE FROM TAKSITODENEN WHERE ID = 3");
    const auto told = [&] {
        journal::Strays strays;
        EXPECT_EQ(verdict(journal::examine(*engine, {}, &strays)).substr(0, 5), "whole");
        return describe(strays);
    };
    EXPECT_EQ(told(), "Defter günlüğe uyuyor: günlüğün anlattığı 4 kayda bakıldı.\n");
    struct Case {
        const char *off, *on, *expected; // what is done while the triggers are off, and behind it
    };
    constexpr Case kCases[] = {
        {"UPDATE TAKSITODENEN SET ODMIKTAR = 1000000 WHERE ID = 1", "SELECT 1",
         "1, 219 numaralı satışın ödemesi (1,00): günlüğe yazılmadan değiştirilmiş."},
        {"UPDATE TAKSITODENEN SET ODMIKTAR = NULL WHERE ID = 1",
         "UPDATE TAKSITODENEN SET ODMIKTAR = 150000000 WHERE ID = 1",
         "1, 219 numaralı satışın ödemesi (150,00): günlüğe yazılmadan değiştirilmiş."},
        {"UPDATE TAKSITODENEN SET ISLEMNO = 9 WHERE ID = 2", "DELETE FROM TAKSITODENEN WHERE ID = 2",
         "2: günlüğe yazılmadan değiştirilmiş."},
        {"DELETE FROM TAKSITODENEN WHERE ID = 2", "SELECT 1", "2: günlüğe yazılmadan silinmiş."},
        {"INSERT INTO TAKSITODENEN (ID, ISLEMNO) VALUES (3, 8)", "SELECT 1",
         "3, 8 numaralı satışın ödemesi (0,00): günlüğe yazılmadan geri konmuş."},
        {"INSERT INTO TAKSITODENEN (ISLEMNO) VALUES (8)", "SELECT 1",
         "5, 8 numaralı satışın ödemesi (0,00): günlüğe yazılmadan eklenmiş."}};
    const auto known = triggers();
    for (const Case& each : kCases) {
        SCOPED_TRACE(each.off);
        engine->begin();
        switchOff(known);
        run(each.off);
        for (const auto& [name, statement] : known)
            run(statement);
        run(each.on);
        EXPECT_EQ(told(), std::string("DEFTER GÜNLÜĞE UYMUYOR: 1 kayıt.\n  TAKSITODENEN tablosunda ") +
                              each.expected + '\n');
        engine->rollback();
    }
}

TEST_F(Journal, WhatIsTakenOutByAgeLeavesAChain) {
    run("INSERT INTO TAKSITODENEN (MUSTNO) VALUES ('1'), ('2')");
    now = DateTime::of(2027, 5, 1);
    run("DELETE FROM TAKSITODENEN WHERE MUSTNO = '1'");
    for (const auto& [before, left] : {std::pair{DateTime::of(2026, 1, 1), "whole 3"},
                                       {DateTime::of(2027, 1, 1), "whole 2"},
                                       {DateTime::of(2027, 6, 1), "whole 1"}}) {
        journal::thin(*engine, journal::planThinning(*engine, before));
        EXPECT_EQ(verdict(journal::examine(*engine)), left);
    }
    run("DELETE FROM TAKSITODENEN");
    EXPECT_EQ(verdict(journal::examine(*engine)), "whole 2");
    run("DELETE FROM GUNLUK WHERE ID = (SELECT min(ID) FROM GUNLUK)");
    EXPECT_EQ(verdict(journal::examine(*engine)), "removed 1");
}

} // namespace
} // namespace veldona
