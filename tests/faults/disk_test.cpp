// The disk is full, or fails, at each write in turn of one act. The act is kept whole or not at all, the
// screen goes on, and the next act works.
#include <algorithm>
#include <iostream>
#include <optional>

#include <gtest/gtest.h>

#include "core/delivered.h"
#include "core/session.h"
#include "platform/store/faces/adodb.h"
#include "platform/store/faces/database.h"
#include "tests/faults/day.h"
#include "tests/faults/faultvfs.h"

namespace veldona::faults {
namespace {

constexpr const char* kFullWords = "Diskte yer kalmadı, kayıt yazılmadı. Yer açıp yeniden deneyin.";
constexpr const char* kFailedWords = "Veritabanı dosyası okunamadı ya da yazılamadı.";
constexpr const char* kUndoneWords = "Bir yazma hatası nedeniyle işlem geri alındı";

using Figures = std::vector<double>; // counts and sums; an act moves them by the same whatever stood before

Figures figuresOf(Till& till) {
    Figures figures;
    for (const char* question :
         {"SELECT COUNT(*), SUM(TOPBORC) FROM ISLEMNOTABLO", "SELECT COUNT(*), SUM(FIYAT) FROM URUNAL",
          "SELECT COUNT(*), SUM(ODMIKTAR) FROM URUNSAT", "SELECT COUNT(*), SUM(ODMIKTAR) FROM TAKSITODENEN",
          "SELECT SUM(TOPLAM_SATILAN), SUM(KALAN) FROM URUNTANITIM",
          "SELECT COUNT(*), COUNT(*) FROM MUSTKAYIT"}) {
        const auto rows = till.session().workspace.open(kDatabasePath, "")->engine().prepare(question);
        if (!rows->step()) throw std::logic_error("a sum without a row");
        figures.push_back(rows->number(0));
        figures.push_back(rows->number(1));
    }
    return figures;
}

Figures moved(const Figures& from, const Figures& to) {
    Figures by(from.size());
    std::transform(to.begin(), to.end(), from.begin(), by.begin(), std::minus<>());
    return by;
}

bool isNothing(const Figures& by) {
    return std::all_of(by.begin(), by.end(), [](double figure) { return figure == 0; });
}

struct FaultyAct {
    const char* name;
    std::string before; // brings the screens to where the act begins; "%": another amount with each pass
    std::string lines;
    std::string doneMessage;
    bool saysDoneOnlyWhenDone; // a posting and a plan say so whatever came of it: their screen's rule; the
                               // error's surface follows there
};

void PrintTo(const FaultyAct& act, std::ostream* out) {
    *out << act.name;
}

std::vector<FaultyAct> faultyActs() {
    const std::string sale = "click cmdSatis\nput MskToplamUcret \"1000\"\nput MskAlinanPesinat \"200\"\n"
                             "put MskTaksitAdedi \"4\"\n";
    return {
        {"Posting", "", "put mskOdenenPara \"10\"\nclick Command1\n", "KAYIT İŞLEMİ TAMAMLANDI", false},
        {"Correcting", "dblclick L1 0\nput Text1 \"%\"\n", "click Command1\n", "DÜZELTME İŞLEMİ GERÇEKLEŞTİ",
         true},
        {"Saving", sale, "click cmdKaydet\n", "İşlem Tamamlandı", true},
        {"Deleting", "", "answer yes\nclick cmdIslemNoSil\n", "", true},
        {"TakingBack", saveSale().lines + deleteSale().lines + "key Ctrl+Z\nanswer yes\n", "key F4\n", "",
         true},
        {"Planning",
         "sql \"DELETE FROM URUNSAT WHERE ISLEMNO=5 AND ID>2\"\n" // those of the plan before
         "type Text1 \"7\"\ndblclick L3 0\nmenu mnuTaksitlendirmeYap\nput mskBorc \"900\"\n"
         "date dtBaslangicTarihi \"31/12/2026\"\nput MskTaksitAdedi \"30\"\n",
         "click cmdTaksitKaydet\n", "İşlem Tamamlandı", false},
        {"Card", "click cmdMusteriKaydi\nput txtAd \"Can\"\n", "key F2\n", "", true},
    };
}

struct Trial {
    bool struck = false;
    Figures by;
    std::vector<std::string> said;
};

class Disk : public ::testing::TestWithParam<FaultyAct> {
protected:
    Disk() {
        copyShop(drive);
        install();
        till.emplace(drive);
        till->play(openingLines());
    }
    ~Disk() override { disarm(); }

    // The act once, with the fault at its nth write.
    Trial play(const FaultyAct& act, Fault fault, int nth) {
        Trial trial;
        Figures from;
        till->atMark = [&](const std::string& mark) {
            if (mark == "fault") {
                from = figuresOf(*till);
                static_cast<void>(till->said());
                arm(fault, nth);
            } else {
                trial.struck = hasStruck();
                disarm();
                trial.by = moved(from, figuresOf(*till));
                trial.said = till->said();
                leaveScreens();
            }
        };
        std::string before = act.before;
        if (const auto at = before.find('%'); at != before.npos)
            before.replace(at, 1, std::to_string(101 + passes));
        till->play(before + "@fault\n" + act.lines + "@room\n");
        return trial;
    }

    // Cancels what is being typed, and closes.
    void leaveScreens() {
        for (const char* key : {"key F4", "key Esc"})
            if (till->screenInFront() != "frmMainVeldona") till->perform(key);
    }

    void expectNextActWorks() {
        const Figures from = figuresOf(*till);
        till->play("type Text1 \"8\"\ndblclick L3 0\n" + post(1).lines + "type Text1 \"7\"\ndblclick L3 0\n");
        EXPECT_EQ(moved(from, figuresOf(*till)), (Figures{0, 0, 0, 0, 0, 0, 1, 1000000, 0, 0, 0, 0}));
    }

    // Until the act has no more writes to fail at.
    std::vector<Trial> playAtEachWrite(const FaultyAct& act, Fault fault) {
        constexpr int kBeyondAnyAct = 300;
        std::vector<Trial> trials;
        for (int nth = 1; nth < kBeyondAnyAct && !HasFailure(); ++nth) {
            SCOPED_TRACE("at write " + std::to_string(nth));
            if (std::string(act.name) == "Deleting") till->play(saveSale().lines + "dblclick L3 0\n");
            trials.push_back(play(act, fault, nth));
            expectNextActWorks();
            if (!trials.back().struck) return trials;
        }
        ADD_FAILURE() << "the act did not come to its end";
        return trials;
    }

    int passes = 0;
    Drive drive;
    std::optional<Till> till;
};

bool saysWhy(const std::vector<std::string>& said) {
    return std::any_of(said.begin(), said.end(), [](const std::string& text) {
        return text.find(kFullWords) != text.npos || text.find(kFailedWords) != text.npos ||
               text.find(kUndoneWords) != text.npos;
    });
}

bool saysDone(const std::vector<std::string>& said, const std::string& words) {
    return !words.empty() && std::find(said.begin(), said.end(), words) != said.end();
}

void expectWholeOrNothing(const FaultyAct& act, const std::vector<Trial>& trials) {
    const Figures whole = trials.back().by; // nothing failed there
    EXPECT_FALSE(isNothing(whole)) << "the act wrote nothing though nothing failed";
    EXPECT_GT(trials.size(), 2U) << "no write failed";
    for (const Trial& trial : trials) {
        SCOPED_TRACE("at write " + std::to_string(&trial - trials.data() + 1));
        if (!isNothing(trial.by)) {
            EXPECT_EQ(trial.by, whole) << "half an act was kept";
        } else {
            EXPECT_TRUE(saysWhy(trial.said)) << ::testing::PrintToString(trial.said);
            EXPECT_FALSE(act.saysDoneOnlyWhenDone && saysDone(trial.said, act.doneMessage))
                << "told as done, and lost";
        }
    }
}

// Without room to keep pages, the engine writes in the middle of an act too, and takes back all of it there.
TEST_P(Disk, KeepsAnActWholeOrNotAtAll) {
    const FaultyAct& act = GetParam();
    for (const char* cache : {"cache_size = -65536", "cache_size = 1"}) {
        for (const Fault fault : {Fault::DiskFull, Fault::InputOutput}) {
            till->pragma(cache);
            const std::vector<Trial> trials = playAtEachWrite(act, fault);
            std::cout << act.name << ", " << cache << ": failed at " << trials.size() - 1 << " writes\n";
            expectWholeOrNothing(act, trials);
            ++passes;
        }
    }
    till.reset();
    std::string faults;
    static_cast<void>(contentOf(drive, faults));
    EXPECT_EQ(faults, "");
}

// A handler that resumes at the next statement must not write the rest of an act that the engine took back.
TEST(DiskInTransaction, NothingIsWrittenBehindWhatWasTakenBack) {
    const Drive drive;
    copyShop(drive);
    install();
    Till till(drive);
    till.play(openingLines());
    till.pragma("cache_size = 1");
    const Figures before = figuresOf(till);
    adodb::Connection& books = *till.session().gBaglanti;
    books.beginTrans();
    arm(Fault::DiskFull, 1);
    bool hasFailed = false;
    int writtenBehind = 0;
    for (int row = 0; row < 300; ++row) {
        try {
            books.execute("INSERT INTO MUSTKAYIT (HSTNO, AD) VALUES ('" + std::to_string(1000 + row) +
                          "', '" + std::string(200, 'x') + "')");
            if (hasFailed) ++writtenBehind;
        } catch (const RuntimeError&) {
            hasFailed = true;
            disarm(); // there is room again, and no transaction any more
        }
    }
    EXPECT_TRUE(hasFailed);
    EXPECT_EQ(writtenBehind, 0);
    EXPECT_THROW(books.commitTrans(), RuntimeError);
    books.rollbackTrans();
    EXPECT_EQ(figuresOf(till), before);
    books.execute("INSERT INTO MUSTKAYIT (HSTNO) VALUES ('1000')");
    EXPECT_NE(figuresOf(till), before);
}

INSTANTIATE_TEST_SUITE_P(Acts, Disk, ::testing::ValuesIn(faultyActs()),
                         [](const auto& act) { return std::string(act.param.name); });

} // namespace
} // namespace veldona::faults
