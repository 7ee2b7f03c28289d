#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "apps/operator/folders.h"
#include "apps/operator/keynames.h"
#include "apps/operator/script.h"
#include "apps/operator/sqlrows.h"
#include "apps/operator/verbs.h"

namespace veldona::console {

namespace {

TEST(OperatorSatiri, SozcukleriVeKacislariOkur) {
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

TEST(OperatorSatiri, OkunamayaniReddeder) {
    for (const char* text :
         {R"(sql "SELECT)", R"(sql "SELECT\")", R"(sql "a"b)", R"(sql a"b")", R"("start")"}) {
        EXPECT_THROW(static_cast<void>(readLine(text)), UnreadableLine) << text;
    }
    for (const char* text : {"strat", "start now", "type Text1", "expect-cell g 0 0", "database x"}) {
        EXPECT_THROW(static_cast<void>(verbOf(*readLine(text))), UnreadableLine) << text;
    }
    for (const char* text : {"1a", "", "1.5", "99999999999"}) {
        EXPECT_THROW(static_cast<void>(wholeNumber({text, false})), UnreadableLine) << text;
    }
    EXPECT_THROW(static_cast<void>(keyNamed("F13")), UnreadableLine);
    EXPECT_THROW(static_cast<void>(keyNamed("")), UnreadableLine);
}

TEST(OperatorSatiri, TuslariAdiylaBulur) {
    EXPECT_EQ(keyNamed("f12").key, Key::F12);
    EXPECT_EQ(keyNamed("ESC").key, Key::Escape);
    EXPECT_EQ(keyNamed("ş").character, U'ş');
    EXPECT_EQ(keyNamed("ş").key, Key::None);
    EXPECT_EQ(keyNamed("7").character, U'7');
}

TEST(OperatorHucresi, HerTuruTekBicimdeYazar) {
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

class OperatorProgrami : public testing::Test {
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

TEST_F(OperatorProgrami, CikisKoduNeOlduysaOnuSoyler) {
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
    };
    for (const auto& each : cases) {
        const Outcome outcome = runOperator(file("denek.op", each.lines));
        EXPECT_EQ(outcome.exitCode, each.exitCode) << each.lines << outcome.printed;
        EXPECT_EQ(outcome.lastLine(), each.lastLine) << each.lines << outcome.printed;
    }
    EXPECT_EQ(runOperator(folder() + "/yok.op").exitCode, 2);
    EXPECT_EQ(runOperator("--bilinmeyen").exitCode, 2);
}

TEST_F(OperatorProgrami, HatayiDosyaVeSatirlaGosterir) {
    const std::string path = file("denek.op", "# first\n\nexpect-message \"x\"\n\nstrat\n");
    const std::string printed = runOperator(path).printed;
    EXPECT_NE(printed.find(path + ":3: expect-message"), printed.npos) << printed;
    EXPECT_NE(printed.find(path + ":5: "), printed.npos) << printed;
}

TEST_F(OperatorProgrami, HerDosyaKendiKlasorundeCalisir) {
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

TEST_F(OperatorProgrami, StandartGirdidenOkur) {
    const Outcome outcome = runOperator("- < " + file("denek.op", "expect-no-message\n"));
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.printed, "1 passed, 0 failed\n");
}

// The keys pass through the widgets, and the end of the process unwinds through none of them.
TEST_F(OperatorProgrami, PencerelerleDeAyniniGorur) {
    const std::string picture = folder() + "/ekran.png";
    const std::string lines = R"op(
database
sql "INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('7ş','Ayşe','Yılmaz')"
start
type Text1 "7ş"
expect Label7 "  Ayşe     Yılmaz"
screenshot ")op" + picture + R"op("
key Backspace
expect Text1 "7"
focus cmdCikis
key Enter
expect-closed "frmMainVeldona"
start
key Esc
expect-closed "frmMainVeldona"
)op";
    const Outcome outcome = runOperator("--pencere " + file("denek.op", lines));
    EXPECT_EQ(outcome.exitCode, 0) << outcome.printed;
    EXPECT_EQ(outcome.lastLine(), "4 passed, 0 failed");
    EXPECT_GT(std::filesystem::file_size(picture), 1000u);
}

} // namespace

} // namespace veldona::console
