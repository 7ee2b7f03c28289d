// No look-up of the counter may read a large table from end to end. The scenarios are played, and each
// statement that the program sends meanwhile is held against the way in which the engine goes about it.
#include <filesystem>
#include <iostream>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include <sqlcipher/sqlite3.h>

#include "core/delivered.h"
#include "core/session.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/database.h"
#include "tests/faults/till.h"
#include "tests/support/shop.h"

namespace veldona::faults {
namespace {

namespace fs = std::filesystem;
using Statements = std::set<std::string>;

Statements sent;
bool isTheProgram = false; // and not a look of the scenario into the books

int note(unsigned, void*, void* statement, void*) {
    if (isTheProgram) sent.insert(sqlite3_sql(static_cast<sqlite3_stmt*>(statement)));
    return 0;
}

int watch(sqlite3* connection, const char**, const void*) {
    return sqlite3_trace_v2(connection, SQLITE_TRACE_STMT, note, nullptr);
}

void play(const fs::path& scenario) {
    std::istringstream lines(test::bytesOf(scenario));
    std::string all;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("expect-file ")) continue; // there is nobody here who draws a picture
        const bool looks = line == "database" || line.starts_with("sql ") || line.starts_with("insert ") ||
                           line.starts_with("expect-sql ");
        all += looks ? "@look\n" + line + "\n@work\n" : line + '\n';
    }
    const Drive drive;
    Till till(drive);
    till.atMark = [](const std::string& mark) { isTheProgram = mark == "work"; };
    till.play(all);
    isTheProgram = false;
}

// The tables that the engine reads from end to end for it.
Statements scannedBy(store::Engine& engine, const std::string& sql) {
    Statements scanned;
    try {
        const auto way = engine.prepare("EXPLAIN QUERY PLAN " + sql);
        while (way->step())
            if (const std::string step = replaceAll(way->text(3), "SCAN TABLE ", "SCAN ");
                step.starts_with("SCAN ")) // as the newer engine says it
                scanned.insert(step.substr(5, step.find(' ', 5) - 5));
    } catch (const store::StoreError&) { // of a file that has just been made, or of its journal
    }
    return scanned;
}

TEST(LookUps, GoThroughTheirIndex) {
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(watch));
    testing::internal::CaptureStdout();
    for (const auto& entry : fs::directory_iterator(VELDONA_SCENARIOS)) {
        const std::string name = entry.path().stem().string();
        if (name == "baslangic" || name == "antet" || name == "konsol" || name == "parola")
            continue; // several runs of the program
        EXPECT_NO_THROW(play(entry.path())) << name;
    }
    const std::string said = testing::internal::GetCapturedStdout();
    if (HasFailure()) std::cerr << said;
    sqlite3_reset_auto_extension();
    EXPECT_GT(sent.size(), 100U);

    test::Shop shop;
    store::Engine& engine = shop.session.workspace.open(kDatabasePath, "")->engine();
    Statements ofSales;
    for (const std::string& sql : sent)
        for (const std::string& table : scannedBy(engine, sql))
            if (table == "MUSTKAYIT")
                EXPECT_EQ(sql.find("\"HSTNO\" = ?"), std::string::npos) << sql;
            else if (Statements{"URUNAL", "URUNSAT", "TAKSITODENEN", "ISLEMNOTABLO"}.contains(table))
                ofSales.insert(sql.substr(0, sql.find(" WHERE")));
    EXPECT_EQ(
        ofSales,
        (Statements{
            R"(SELECT "ID" FROM "ISLEMNOTABLO" ORDER BY "ID")", // through which the sale screen walks,
            R"(SELECT COUNT(*) FROM "ISLEMNOTABLO")",           // and whether it still stands
            R"(SELECT "ISLEMNO", "TOPBORC" FROM "ISLEMNOTABLO" ORDER BY "ID")", // the spreadsheet
            // the index of the search
            R"(SELECT "ISLEMNO", "MUSTNO", "URKOD", "TRH", "ACIKLAMA" FROM "URUNAL" ORDER BY "ID")",
            // the reports and the call list, which compute in sets
            R"(SELECT "MUSTNO", "ISLEMNO", "ODTRH", "ODMIKTAR" FROM "URUNSAT" )"
            R"(ORDER BY 1, 2, 3, 4, "ID", "ID")",
            R"(SELECT "MUSTNO", "ISLEMNO", "ODTRH", "ODMIKTAR" FROM "TAKSITODENEN" ORDER BY 1 DESC, 2 DESC, )"
            R"(3 DESC, 4 DESC, "ID" DESC, "ID")",
            R"(SELECT "TRH", "ISLEMNO", "ADET" * "FIYAT" FROM "URUNAL" ORDER BY "ID", "ID")", // the charts
            // a backup's fingerprint
            R"(SELECT COUNT(*) FROM "URUNAL")",
            R"(SELECT COUNT(*) FROM "URUNSAT")",
            R"(SELECT COUNT(*) FROM "TAKSITODENEN")",
            R"(SELECT MAX("ODTRH"), MAX("ID") FROM "TAKSITODENEN")",
            R"(SELECT "MUSTNO", "ISLEMNO", SUM("ODMIKTAR") FROM "TAKSITODENEN")",
            R"(SELECT "MUSTNO", "ISLEMNO", SUM("ODMIKTAR"), MAX("ODTRH"), MIN("ODTRH") FROM "URUNSAT")",
        }));
}

} // namespace
} // namespace veldona::faults
