#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "apps/operator/folders.h"
#include "apps/operator/script.h"
#include "apps/operator/sqlrows.h"
#include "apps/operator/verbs.h"
#include "platform/controls/keynames.h"

namespace veldona::console {

namespace {

TEST(OperatorLine, ReadsWordsAndEscapes) {
    const struct {
        std::string_view text;
        std::vector<std::string> words; // the verb first
    } cases[] = {
        {"start", {"start"}},
        {"  click\tL3  0 \r", {"click", "L3", "0"}},
        {R"(type Text1 "")", {"type", "Text1", ""}},
        {R"(expect Label7 "  Ayşe     Yılmaz")", {"expect", "Label7", "  Ayşe     Yılmaz"}},
        {R"(sql "a \"b\" # \\ c\nd")", {"sql", "a \"b\" # \\ c\nd"}},
        {R"(expect-file "VELDONA\Veldona_Taksit\firma.txt")",
         {"expect-file", R"(VELDONA\Veldona_Taksit\firma.txt)"}},
        {R"(key #)", {"key", "#"}},
    };
    for (const auto& each : cases) {
        const auto line = readLine(each.text);
        ASSERT_TRUE(line) << each.text;
        std::vector<std::string> words{line->verb};
        for (const Word& word : line->words)
            words.push_back(word.text);
        EXPECT_EQ(words, each.words) << each.text;
    }
    for (const char* nothing : {"", "  \t\r", "# start", "   # start \"", "#"})
        EXPECT_FALSE(readLine(nothing)) << nothing;
    EXPECT_TRUE(readLine("answer \"yes\"")->words[0].quoted);
    EXPECT_FALSE(readLine("answer yes")->words[0].quoted);
}

TEST(OperatorLine, RefusesWhatItCannotRead) {
    for (const char* text :
         {R"(sql "SELECT)", R"(sql "SELECT\")", R"(sql "a"b)", R"(sql a"b")", R"("start")"}) {
        EXPECT_THROW(static_cast<void>(readLine(text)), UnreadableLine) << text;
    }
    for (const char* text :
         {"strat", "start now", "type Text1", "expect-cell g 0 0", "database x", "expect a \"x\" b"}) {
        EXPECT_THROW(static_cast<void>(verbOf(*readLine(text))), UnreadableLine) << text;
    }
    for (const char* text : {"1a", "", "1.5", "99999999999"}) {
        EXPECT_THROW(static_cast<void>(wholeNumber({text, false})), UnreadableLine) << text;
    }
    for (const char* none : {"F13", "", "Ctrl+", "Ctrl+F13"})
        EXPECT_FALSE(keyNamed(none)) << none;
}

TEST(OperatorCell, WritesEachKindInOneWay) {
    const struct {
        Value value;
        const char* text;
    } cases[] = {
        {Null{}, "NULL"},
        {"", ""},
        {"Ayşe", "Ayşe"},
        {0, "0"},
        {-42, "-42"},
        {std::int64_t{9007199254740993}, "9007199254740993"},
        {0.0, "0"},
        {-0.0, "0"},
        {1500000.0, "1500000"},
        {0.1 + 0.2, "0.3"},
        {1234567890123456.0, "1234567890123456"},
        {1e21, "1000000000000000000000"},
        {0.000001, "0.000001"},
        {-2.50, "-2.5"},
        {Currency::ofTenThousandths(125000), "12.5"},
        {Currency::ofTenThousandths(-1), "-0.0001"},
        {Currency::ofTenThousandths(INT64_MIN), "-922337203685477.5808"},
        {true, "-1"},
        {false, "0"},
        {DateTime::of(2026, 11, 22, 10, 30), "2026-11-22 10:30:00"},
        {DateTime::of(2026, 1, 2), "2026-01-02 00:00:00"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(cellText(each.value), each.text);
}

// What the program itself answers to a file of lines.
struct Outcome {
    int exitCode;
    std::string printed;

    [[nodiscard]] std::string lastLine() const {
        const std::string text = printed.substr(0, printed.find_last_not_of('\n') + 1);
        return text.substr(text.rfind('\n') + 1);
    }
};

Outcome runOperator(const std::string& arguments) {
    FILE* pipe = popen((std::string(VOREL_OPERATOR) + " " + arguments + " 2>&1").c_str(), "r");
    std::string printed;
    for (int c = fgetc(pipe); c != EOF; c = fgetc(pipe))
        printed += static_cast<char>(c);
    return {WEXITSTATUS(pclose(pipe)), printed};
}

class OperatorProgram : public testing::Test {
protected:
    std::string file(const std::string& name, const std::string& lines) const {
        const std::string path = folder_.path() + "/" + name;
        std::ofstream(path) << lines;
        return path;
    }
    [[nodiscard]] const std::string& folder() const { return folder_.path(); }

private:
    DriveFolder folder_{std::nullopt};
};

TEST_F(OperatorProgram, TheExitCodeTellsWhatHappened) {
    const struct {
        const char* lines;
        int exitCode;
        const char* lastLine;
    } cases[] = {
        {"", 0, "0 passed, 0 failed"},
        {"expect-no-message\nexpect-closed \"frmSatis\"\n", 0, "2 passed, 0 failed"},
        {"expect-no-message\nexpect-message \"x\"\nexpect-no-message\n", 1, "2 passed, 1 failed"},
        {"expect-screen \"frmMainVeldona\"\n", 1, "0 passed, 1 failed"},
        {"click Command1\n", 1, "0 passed, 1 failed"},            // nothing is open
        {"sql \"SELECT * FROM YOK\"\n", 1, "0 passed, 1 failed"}, // an error left
        {"screenshot \"x.png\"\n", 1, "0 passed, 1 failed"},      // no windows
        {"report-save \"x.pdf\"\n", 1, "0 passed, 1 failed"},     // no report
        {"expect-report \"x\"\n", 1, "0 passed, 1 failed"},
        {"expect-no-message\nbrew tea\nexpect-message \"x\"\n", 2, "1 passed, 0 failed"},
        {"expect-message \"x\"\nclock \"yarın\"\n", 2, "0 passed, 1 failed"},
        {"answer maybe\n", 2, "0 passed, 0 failed"},
        {"click Command1 says\n", 2, "0 passed, 0 failed"},
    };
    for (const auto& each : cases) {
        const Outcome outcome = runOperator(file("denek.op", each.lines));
        EXPECT_EQ(outcome.exitCode, each.exitCode) << each.lines << outcome.printed;
        EXPECT_EQ(outcome.lastLine(), each.lastLine) << each.lines << outcome.printed;
    }
    EXPECT_EQ(runOperator(folder() + "/yok.op").exitCode, 2);
    EXPECT_EQ(runOperator("--bilinmeyen").exitCode, 2);
    EXPECT_EQ(runOperator("- < " + file("denek.op", "\n\nexpect-no-message\n")).printed,
              "1 passed, 0 failed\n");
}

// The main screen with a customer, and over it a new sale, whose lines follow.
const std::string kOnASale = R"op(database
sql "INSERT INTO MUSTKAYIT (HSTNO,AD) VALUES ('7','Ayşe')"
start
type Text1 "7"
click cmdSatis
)op";

// Each of these lines is one failure, and none of them stops the next. That lines hold which should is what
// every scenario shows.
const std::vector<std::string> kFailing = {
    "expect txtCariKod \"x\"",
    "expect Yok \"x\"",
    "expect frmCariEkle.txtAd \"\"",
    "expect-list frmMainVeldona.cboKasa \"Şube\" \"Merkez\"",
    "expect-list frmMainVeldona.cboKasa",
    "expect-list txtCariKod \"\"",
    "expect-selected frmMainVeldona.L3 0",
    "expect-visible mskTaksitTutari yes",
    "expect-enabled chkOtomatikTaksitHesapla yes",
    "expect-tools \"cmdKaydet\"",
    "expect-tools \"cmdKaydet\" \"cmdVazgec\" \"cmdSil\"",
    "expect-rows grdYapilacakOdeme 3",
    "expect-cell grdYapilacakOdeme 2 0 \"\"",
    "expect-cell grdYapilacakOdeme 1 9 \"\"",
    "expect-cell frmMainVeldona.grdList 2 0 \"\"",
    "expect-cell frmMainVeldona.grdList 0 \"Yok\" \"\"",
    "expect-message \"x\"",
    "expect-error 13",
    "expect-screen \"frmMainVeldona\"",
    "expect-closed \"frmSatis\"",
    "expect-sql \"SELECT DEGER FROM FIRMABILGISI\"",
    "expect-sql \"SELECT DEGER FROM FIRMABILGISI\" \"1\" \"1\"",
    "expect-sql \"SELECT\" \"1\"",
    "expect-report \"x\"",
    "expect-file \"yok.txt\"",
    "expect-file \"..\\ust.txt\"",
    "expect-file \"VELDONA\\Veldona_Taksit\\firma.txt\" \"başka\"",
    "click mskTaksitTutari",          // hidden
    "click chkOtomatikTaksitHesapla", // disabled
    "click frmMainVeldona.cmdCikis",  // behind a modal screen
    "click Yok",
    "cell grdYapilacakOdeme 9 9",
    "focus lblYapilanOdeme",
    "type lblYapilanOdeme \"x\"",
    "choose txtCariKod \"x\"",
    "check txtCariKod on",
    "date txtCariKod null",
    "menu cmdKaydet",
    "tool cmdSil",
    "tool cmdYok",
    "tick txtCariKod",
    "database",
    "report",
};

TEST_F(OperatorProgram, CountsWhatFellShortAndWhatWasRefused) {
    std::string all = kOnASale;
    for (const std::string& line : kFailing)
        all += line + "\nmessages\n";
    const Outcome outcome = runOperator(file("denek.op", all));
    for (std::size_t i = 0; i < kFailing.size(); ++i)
        EXPECT_NE(outcome.printed.find("denek.op:" + std::to_string(6 + 2 * i) + ": "), std::string::npos)
            << kFailing[i];
    EXPECT_EQ(outcome.lastLine(), "0 passed, " + std::to_string(kFailing.size()) + " failed")
        << outcome.printed;
}

TEST_F(OperatorProgram, CountsWhatWasLeftOutAndOnlyLooksBehindTheEnd) {
    const struct {
        const char* lines;
        const char* lastLine;
    } cases[] = {
        {"click cmdCikis\nclick Command1\nexpect-message \"ÖDENECEK MİKTAR 0 TL  OLAMAZ\"\n",
         "1 passed, 0 failed"},
        // A line of several steps, each of which counts.
        {"click cmdCikis\nexpect Text1 \"7\" Label7 \"x\"\n"
         "click Command1 says \"ÖDENECEK MİKTAR 0 TL  OLAMAZ\" nothing\nclick Command1 shows nothing\n",
         "4 passed, 1 failed"},
        {"click cmdCikis\nclick Command1 says nothing\n", "0 passed, 1 failed"},
        {"click cmdCikis\nclick Command1\n", "0 passed, 0 failed"}, // a box that is left is no failure
        {"click cmdCikis\nclick Command1\nexpect-error 13\n", "0 passed, 1 failed"},
        {"check chkTaksitAdetGir off\nput MskToplamUcret \"9\"\nput mskTaksitTutari \"on\"\n",
         "0 passed, 1 failed"}, // a run-time error that is left
        {"check chkTaksitAdetGir off\nput MskToplamUcret \"9\"\nput mskTaksitTutari \"on\"\n"
         "expect-message \"Tür uyuşmazlığı\"\n",
         "0 passed, 1 failed"},
        {"click cmdCikis\ndblclick grdList 0\nkey F6\n",
         "0 passed, 1 failed"}, // a question without an answer
        {"click cmdCikis\nclick cmdCikis\nclick Command1\nkey F2\nexpect-closed \"frmMainVeldona\"\n",
         "1 passed, 2 failed"},
    };
    for (const auto& each : cases) {
        const Outcome outcome = runOperator(file("denek.op", kOnASale + each.lines));
        EXPECT_EQ(outcome.lastLine(), each.lastLine) << each.lines << outcome.printed;
    }
    const Outcome shown =
        runOperator(file("denek.op", kOnASale + "click cmdCikis\nclick Command1\nmessages\n"
                                                "show cboKasa\nshow fraDuzelt\nshow L3\n"
                                                "sql \"SELECT HSTNO,SOYAD FROM MUSTKAYIT\"\n"));
    EXPECT_EQ(shown.printed, "\"ÖDENECEK MİKTAR 0 TL  OLAMAZ\" [Veldona]\n"
                             "frmMainVeldona.cboKasa: \"\"\n    Merkez\n"
                             "frmMainVeldona.fraDuzelt: \"Taksit Düzelt\" (hidden)\n"
                             "frmMainVeldona.L3: \"\"\n"
                             "7|NULL\n"
                             "0 passed, 0 failed\n");
}

TEST_F(OperatorProgram, EachFileRunsInAFolderOfItsOwn) {
    const std::string lines = "database\nsql \"INSERT INTO MUSTKAYIT (HSTNO) VALUES ('1')\"\n"
                              "expect-sql \"SELECT HSTNO FROM MUSTKAYIT\" \"1\"\n";
    const std::string both = file("bir.op", lines) + " " + file("iki.op", lines);
    const Outcome outcome = runOperator("--kok " + folder() + "/kok " + both);
    EXPECT_EQ(outcome.lastLine(), "2 passed, 0 failed") << outcome.printed;
    for (const char* each : {"/kok/1", "/kok/2"}) {
        EXPECT_TRUE(std::filesystem::exists(folder() + each + "/VELDONA/Veldona_Taksit/vorel.mdb")) << each;
    }
    // A folder that was given stays, and what lies in it is not written over.
    EXPECT_EQ(runOperator("--kok " + folder() + "/kok/1 " + file("bir.op", lines)).exitCode, 1);
}

TEST_F(OperatorProgram, WindowsArePictured) {
    const std::string picture = folder() + "/ekran.png";
    const Outcome outcome =
        runOperator("--pencere " + file("denek.op", "database\nstart\nscreenshot \"" + picture + "\"\n"));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.printed;
    EXPECT_GT(std::filesystem::file_size(picture), 1000u);
}

} // namespace

} // namespace veldona::console
