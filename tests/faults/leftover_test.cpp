// A report or a contract that was killed leaves rows in its scratch table; the next one is as if it had not.
#include <signal.h>
#include <unistd.h>

#include <random>

#include <gtest/gtest.h>

#include "core/reporting.h"
#include "platform/store/engine/sqlcipher/definitionsql.h"
#include "schema/tables.h"
#include "tests/faults/day.h"
#include "tests/faults/program.h"

namespace veldona::faults {
namespace {

constexpr std::uint32_t kSeed = 5;

struct Paper {
    const char* name;
    std::string lines;
    std::string leftover; // of a run that was killed
};

void PrintTo(const Paper& paper, std::ostream* out) {
    *out << paper.name;
}

std::string paperOf(Till& till, const Paper& paper) {
    till.play(paper.lines);
    return till.lastReport();
}

std::string freshPaper(const Drive& drive, const Paper& paper) {
    Till till(drive);
    till.play(openingLines());
    return paperOf(till, paper);
}

int printForEver(const Drive& drive, const Paper& paper) {
    Till till(drive);
    till.play(openingLines());
    for (;;)
        static_cast<void>(paperOf(till, paper));
}

// Books of the release before carry the scratch tables, with what a paper that was killed left in them.
void leaveBehind(const Drive& drive, const std::string& row) {
    const auto books = drive.engine();
    for (const store::TableDef& table : schema::scratchTables())
        books->execute(store::tableStatement(table, store::Lifetime::File));
    books->execute(row);
}

class KillOfAPaper : public ::testing::TestWithParam<Paper> {
protected:
    KillOfAPaper() {
        copyShop(drive);
        installLayouts(Paths(drive.path().string()));
    }
    Drive drive;
};

TEST_P(KillOfAPaper, WhatItLeftBehindIsOnNoOtherPaper) {
    const Paper& paper = GetParam();
    const std::string clean = freshPaper(drive, paper);
    ASSERT_NE(clean.find("Yılmaz"), clean.npos) << clean;
    leaveBehind(drive, paper.leftover);
    Till till(drive);
    till.play(openingLines());
    EXPECT_EQ(paperOf(till, paper), clean);
}

TEST_P(KillOfAPaper, DoesNoHarm) {
    const Paper& paper = GetParam();
    const std::string clean = freshPaper(drive, paper);
    std::string faults;
    const std::string before = contentOf(drive, faults);
    std::mt19937 random(kSeed);
    for (int round = 0; round < 3 * effort(); ++round) {
        const pid_t child = inChild([&] { return printForEver(drive, paper); });
        usleep(50'000 + static_cast<useconds_t>(random() % 100'000));
        kill(child, SIGKILL);
        ASSERT_EQ(exitOf(child), 128 + SIGKILL) << "the report ended by itself";
        ASSERT_EQ(freshPaper(drive, paper), clean) << "seed " << kSeed << ", round " << round;
        ASSERT_EQ(contentOf(drive, faults), before);
        ASSERT_EQ(faults, "");
    }
}

std::vector<Paper> papers() {
    return {{"Overdue",
             "click cmdGunuGecenOdemeler\ndate dtRaporTarihiSon \"01/01/2027\"\nclick cmdRapor\nkey Esc\n",
             "INSERT INTO GUNUGECENODM (MUSTNO,AD_SOYAD,ISLEMNO,ODTRH,KALAN) VALUES "
             "('7','eski',5,'2020-01-01 00:00:00',123000000)"},
            {"Expected",
             "click cmdBeklenenTaksitler\ndate dtRaporTarihi \"01/12/2026\"\n"
             "date dtRaporTarihiSon \"31/12/2026\"\nclick cmdRapor\nkey Esc\n",
             "INSERT INTO BEKLENENODM (MUSTNO,ISLEMNO,ODTRH,KALAN) VALUES ('7',5,'2026-12-20 00:00:00',1)"},
            {"Contract",
             "sql \"UPDATE ISLEMNOTABLO SET INDIRIM_YTL=0\"\nsql \"UPDATE URUNSAT SET PESINAT=0\"\ntype "
             "Text1 \"7\"\ndblclick L3 0\n"
             "click cmdSozlesme\nkey Esc\n",
             "INSERT INTO T_TEMP_GENEL (ALAN_1,ALAN_4,ID_1,SAYI_1) VALUES ('7','eski',5,1)"}};
}

INSTANTIATE_TEST_SUITE_P(Papers, KillOfAPaper, ::testing::ValuesIn(papers()),
                         [](const auto& paper) { return std::string(paper.param.name); });

} // namespace
} // namespace veldona::faults
