// What is nobody's business stands in no file, no message and no list of processes, and files are their
// owner's alone, whatever the shell that started the program allows.
#include <signal.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "core/delivered.h"
#include "tests/faults/damagedfiles.h"
#include "tests/faults/day.h"
#include "tests/faults/program.h"

namespace veldona::faults {
namespace {

namespace fs = std::filesystem;

unsigned modeOf(const fs::path& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 0777U;
}

// A shell that lets everybody read and write what its programs make.
class OpenShell {
public:
    OpenShell() : before_(umask(0)) {}
    ~OpenShell() { umask(before_); }
    OpenShell(const OpenShell&) = delete;
    OpenShell& operator=(const OpenShell&) = delete;

private:
    mode_t before_;
};

int expectOwnersAlone(const fs::path& folder) {
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        ++files;
        EXPECT_EQ(modeOf(entry.path()) & 0077U, 0U) << entry.path();
    }
    return files;
}

std::string procText(pid_t id, const char* name) {
    return bytesOf("/proc/" + std::to_string(id) + '/' + name);
}

TEST(Secrets, ThePasswordAndTheNamesStandNowhere) {
    const Drive drive;
    copyShop(drive);
    std::vector<std::string> said;
    {
        Till till(drive);
        till.play(openingLines() + post(10).lines + saveSale().lines + "sql \"SELECT * FROM YOK\"\n");
        said = till.said();
        int files = 0;
        for (const auto& entry : fs::recursive_directory_iterator(drive.path())) {
            if (!entry.is_regular_file()) continue;
            ++files;
            const std::string bytes = bytesOf(entry.path());
            EXPECT_EQ(bytes.find(kDeliveredPassword), std::string::npos) << entry.path();
            EXPECT_EQ(bytes.find("Yılmaz"), std::string::npos) << entry.path();
            if (entry.path().filename().string().starts_with("vorel.mdb")) {
                EXPECT_EQ(modeOf(entry.path()), 0600U) << entry.path();
            }
        }
        EXPECT_GE(files, 3) << "books, journal and index";
    }
    writeBytes(drive.books(), std::string(kPage, 'x'));
    Till failing(drive);
    failing.play("start\n");
    const auto more = failing.said();
    said.insert(said.end(), more.begin(), more.end());
    EXPECT_GT(said.size(), 2U);
    for (const std::string& text : said)
        EXPECT_EQ(text.find(kDeliveredPassword), std::string::npos) << text;
}

TEST(Secrets, WhatTheProgramsMakeIsTheirOwnersAlone) {
    const OpenShell shell;
    const Drive drive;
    const Program::Words where = {"--kok", drive.path()};
    const auto with = [&](Program::Words words) {
        words.insert(words.begin(), where.begin(), where.end());
        return words;
    };
    fs::remove_all(drive.path() / "VELDONA"); // of this test's own making
    ASSERT_EQ(runProgram("vorel-hazirla", with({"--ornek", "--musteri", "5", "--satis", "5"})).code, 0);
    ASSERT_EQ(runProgram("vorel-yedek", where).code, 0);
    const Outcome nameless = runProgram("vorel-anonim", with({(drive.path() / "adsiz.mdb").string()}));
    ASSERT_EQ(nameless.code, 0) << nameless.said;
    const std::string report = drive.path() / "rapor.pdf";
    std::ofstream(drive.path() / "gun.op")
        << "sql \"UPDATE FIRMABILGISI SET DEGER='1'\"\n"
        << openingLines(1) << "click cmdGunuGecenOdemeler\nclick cmdRapor\nkey Esc\nreport-save \"" << report
        << "\"\n";
    chmod((drive.path() / "gun.op").c_str(), 0600);
    const Outcome day = runProgram("vorel-operator", with({drive.path() / "gun.op"}));
    EXPECT_EQ(day.code, 0) << day.said;
    EXPECT_TRUE(fs::exists(report));
    EXPECT_GT(expectOwnersAlone(drive.path()), 15);
}

TEST(Secrets, ARunningProgramShowsNoPassword) {
    const OpenShell shell;
    const Drive drive;
    copyShop(drive);
    Program program("veldona", {"--kok", drive.path()},
                    {{"QT_QPA_PLATFORM", "offscreen"},
                     {"QT_QPA_GENERIC_PLUGINS", "onlooker"},
                     {"QT_PLUGIN_PATH", VELDONA_PLUGINS}});
    program.awaitWords("window: frmMainVeldona");
    EXPECT_EQ(modeOf(drive.books().string() + "-wal"), 0600U);
    EXPECT_EQ(modeOf(drive.books().string() + "-shm"), 0600U);
    EXPECT_EQ(modeOf(drive.path() / "ODBC.INI"), 0600U);
    for (const char* what : {"cmdline", "environ", "comm"})
        EXPECT_EQ(procText(program.id(), what).find(kDeliveredPassword), std::string::npos) << what;
    const std::string limits = procText(program.id(), "limits");
    EXPECT_NE(limits.find("Max core file size        0 "), std::string::npos) << limits;
    kill(program.id(), SIGSEGV);
    const Outcome crash = program.finish();
    EXPECT_NE(crash.code, 0);
    EXPECT_EQ(crash.said.find(kDeliveredPassword), std::string::npos) << crash.said;
}

// It waits for the second password.
TEST(Secrets, APasswordGivenToAToolStandsInNoListOfProcesses) {
    const Drive drive;
    const Program tool("vorel-aktar",
                       {"eski.mdb", "--parola", "gizli-parola", "--parola", "-", "--kok", drive.path()});
    std::string shown;
    for (int i = 0; i < 500 && shown.find("******") == shown.npos; ++i) {
        usleep(10'000); // it is about to begin
        shown = procText(tool.id(), "cmdline");
    }
    EXPECT_NE(shown.find("************"), shown.npos) << shown;
    EXPECT_EQ(shown.find("gizli"), shown.npos) << shown;
}

} // namespace
} // namespace veldona::faults
