// The disk is full, or fails, at each write in turn of one act. The act is kept whole or not at all, the
// screen goes on, and the next act works.
#include <algorithm>
#include <functional>
#include <iostream>
#include <optional>

#include <gtest/gtest.h>

#include "core/delivered.h"
#include "core/session.h"
#include "ledger/mainscreen.h"
#include "platform/controls/forms.h"
#include "platform/store/faces/adodb.h"
#include "platform/store/faces/database.h"
#include "tests/faults/day.h"
#include "tests/faults/faultvfs.h"
#include "tests/faults/smalldisk.h"

namespace veldona::faults {
namespace {

namespace fs = std::filesystem;

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

class OnFaultyDisk : public ::testing::Test {
protected:
    OnFaultyDisk() {
        copyShop(drive);
        install();
        till.emplace(drive);
        till->play(openingLines());
    }
    ~OnFaultyDisk() override { disarm(); }

    Drive drive;
    std::optional<Till> till;
};

class Disk : public OnFaultyDisk, public ::testing::WithParamInterface<FaultyAct> {
protected:
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

// No room from the start, for the opening and the engine's files; and a file system that is really small.
bool hasShown(Till& till, const std::function<bool(const std::string&)>& what) {
    const auto said = till.said();
    return std::any_of(said.begin(), said.end(), what);
}

// As far as the screens let an operator go.
void save(Till& till) {
    try {
        till.play(
            "type Text1 \"7\"\ndblclick L3 0\nclick cmdSatis\nput MskToplamUcret \"1000\"\n"
            "put MskAlinanPesinat \"200\"\nput MskTaksitAdedi \"4\"\nclick cmdKaydet\nclick cmdCikis\n");
    } catch (const console::Shortfall&) {
        return; // a list stayed empty, or a screen did not open
    }
}

void startAndSave(Till& till) {
    till.play("clock \"22/11/2026 10:30:00\"\nstart\n");
    if (!till.hasEnded()) save(till);
}

bool isSaved(const std::string& text) {
    return text == saveSale().doneMessage;
}

// Plays where there is no room, makes room, and plays again; what is wrong, or "".
std::string wrongWithoutRoom(const Drive& drive, const std::function<void()>& takeRoom,
                             const std::function<void()>& makeRoom, const std::string& saved) {
    std::string faults;
    const std::string before = contentOf(drive, faults);
    {
        Till till(drive);
        takeRoom();
        startAndSave(till);
        makeRoom();
        const auto said = till.said();
        const bool done = std::any_of(said.begin(), said.end(), isSaved);
        if (!done && !std::any_of(said.begin(), said.end(), tellsOfRoom))
            return "no clear word: " + ::testing::PrintToString(said);
        const std::string held = contentOf(drive, faults);
        if (held != (done ? saved : before))
            return done ? "told as done, and not whole" : "half a sale is there";
        if (!till.hasEnded() && !done) {
            while (till.screenInFront() != "frmMainVeldona")
                till.perform("key Esc");
            save(till);
            if (!hasShown(till, isSaved)) return "it does not save once there is room";
        } else if (!done) {
            Till next(drive);
            startAndSave(next);
            if (!hasShown(next, isSaved)) return "it does not start once there is room";
        }
    }
    if (contentOf(drive, faults) != saved) return "once there is room, the books hold something else";
    return faults;
}

std::string contentOfSaved() {
    const Drive drive;
    copyShop(drive);
    Till till(drive);
    startAndSave(till);
    std::string faults;
    return contentOf(drive, faults);
}

TEST(DiskFromTheStart, IsToldAndTheNextStartWorks) {
    install();
    const std::string saved = contentOfSaved();
    bool struck = true;
    int nth = 1, tried = 0;
    for (; struck && !HasFailure(); nth += effort() > 1 ? 1 : 3, ++tried) {
        const Drive drive;
        copyShop(drive);
        const auto makeRoom = [&] {
            struck = hasStruck();
            disarm();
        };
        EXPECT_EQ(wrongWithoutRoom(
                      drive, [&] { arm(Fault::DiskFull, nth); }, makeRoom, saved),
                  "")
            << "at write " << nth;
    }
    disarm();
    std::cout << "full at " << tried - 1 << " writes from the start\n";
    EXPECT_GT(tried, 5);
}

std::string wrongOnSmallDisk(const Drive& drive, const std::string& saved) {
    for (const std::size_t pagesLeft : {0U, 1U, 4U, 8U, 9U, 10U, 12U, 16U, 20U, 32U, 64U}) {
        fs::create_directories(drive.books().parent_path());
        copyShop(drive);
        std::optional<NoRoom> full;
        const std::string wrong = wrongWithoutRoom(
            drive, [&] { full.emplace(DiskKind::Own, drive.path(), pagesLeft); }, [&] { full.reset(); },
            saved);
        if (!wrong.empty()) return std::to_string(pagesLeft) + " pages left: " + wrong;
        for (const auto& entry : fs::directory_iterator(drive.path()))
            fs::remove_all(entry.path());
    }
    return {};
}

TEST(DiskFromTheStart, ASmallFileSystemIsNoOtherThing) {
    const std::string saved = contentOfSaved();
    const Drive drive;
    const auto wrong = onDisk(DiskKind::Own, drive.path(), [&] { return wrongOnSmallDisk(drive, saved); });
    if (!wrong) GTEST_SKIP() << "no file system is to be had here, neither by root nor by a user namespace";
    EXPECT_EQ(*wrong, "");
}

// The disk fails at each read in turn of a step, or answers half of it: that is told of, or what is shown is
// right all the same; the screen goes on, nothing wrong is written, and the step works again.
struct Step {
    const char* name;
    std::string before;
    std::string lines;
    bool writes = false;
};

void PrintTo(const Step& step, std::ostream* out) {
    *out << step.name;
}

// What the operator sees of a customer and a sale.
std::string ledgerShown(Till& till) {
    const auto* screen = dynamic_cast<FrmMainVeldona*>(till.session().forms.loaded("frmMainVeldona"));
    if (screen == nullptr) return "no screen";
    std::string text = screen->txtAdres.text() + '|';
    for (const Label* label :
         {&screen->Label7, &screen->Label8, &screen->Label9, &screen->Label11, &screen->Label21})
        text += label->caption() + '|';
    for (const ListBox* list : {&screen->L1, &screen->L2, &screen->L3, &screen->L4, &screen->L5,
                                &screen->List1, &screen->List2, &screen->List6}) {
        text += '\n';
        for (int row = 0; row < list->count(); ++row)
            text += list->list(row) + '|';
    }
    return text;
}

bool tellsOfReading(const std::string& text) {
    return text.find("okunamadı") != text.npos || text.find("bozuk") != text.npos;
}

class Reading : public OnFaultyDisk, public ::testing::WithParamInterface<Step> {
protected:
    // Nothing is in memory, so that a step reads all it needs.
    void forgetPages() {
        till->pragma("cache_size = 1");
        till->pragma("shrink_memory");
    }

    std::string playUndisturbed(const Step& step) {
        till->play(step.before + step.lines);
        static_cast<void>(till->said());
        return till->lastReport() + ledgerShown(*till);
    }

    std::string content() {
        std::string faults;
        std::string held = contentOf(drive, faults);
        EXPECT_EQ(faults, "");
        return held;
    }
};

TEST_P(Reading, IsToldAndWorksAgain) {
    const Step& step = GetParam();
    int failed = 0;
    for (const Fault fault : {Fault::FailedRead, Fault::ShortRead}) {
        const std::string right = playUndisturbed(step);
        const std::string held = content();
        for (int nth = 1; !HasFailure(); ++nth) {
            SCOPED_TRACE("at read " + std::to_string(nth));
            till->play(step.before);
            static_cast<void>(till->said());
            forgetPages();
            arm(fault, nth);
            till->play(step.lines);
            const bool struck = hasStruck();
            disarm();
            const std::string shown = till->lastReport() + ledgerShown(*till);
            const auto said = till->said();
            EXPECT_TRUE(shown == right || std::any_of(said.begin(), said.end(), tellsOfReading))
                << ::testing::PrintToString(said) << '\n'
                << shown;
            EXPECT_EQ(till->screenInFront(), "frmMainVeldona");
            EXPECT_EQ(content(), held);
            EXPECT_EQ(playUndisturbed(step), right) << "it does not work again";
            if (!struck) break;
            ++failed;
        }
    }
    std::cout << step.name << ": " << failed << " reads failed\n";
    EXPECT_GT(failed, 2);
}

std::vector<Step> steps() {
    return {
        {"Customer", "type Text1 \"8\"\n", "type Text1 \"7\"\n"},
        {"Sale", "type Text1 \"8\"\ntype Text1 \"7\"\n", "dblclick L3 0\n"},
        {"Report", "",
         "click cmdGunuGecenOdemeler\ndate dtRaporTarihiSon \"01/01/2027\"\nclick cmdRapor\nkey Esc\n"},
    };
}

INSTANTIATE_TEST_SUITE_P(Steps, Reading, ::testing::ValuesIn(steps()),
                         [](const auto& step) { return std::string(step.param.name); });

} // namespace
} // namespace veldona::faults
