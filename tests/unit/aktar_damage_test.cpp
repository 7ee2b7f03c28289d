#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <map>
#include <random>
#include <thread>

#include "apps/aktar/apart.h"
#include "jetshop.h"

namespace veldona::aktar {
namespace {

// How a child that looks a damaged file through ends.
enum class End { Refused, Broken, Same, Changed, RowsLost, Hung };

class Damage : public MovingIn {
protected:
    // In a child, as vorel-aktar itself does: the reading library does not survive every damage.
    End lookApart(const Report& sound) {
        const Ending ending = runApart({1024, 10}, [&] {
            if (std::freopen("/dev/null", "w", stderr) == nullptr) return static_cast<int>(End::Hung);
            return static_cast<int>(compare(sound));
        });
        if (ending.why.empty()) return static_cast<End>(ending.code);
        return ending.why.find("çok") == std::string::npos ? End::Broken : End::Hung;
    }

private:
    End compare(const Report& sound) {
        try {
            const Examination seen = look();
            if (!seen.problems.empty()) return End::Refused;
            if (seen.report == sound) return End::Same;
            for (const char* table : {"MUSTKAYIT", "ISLEMNOTABLO", "URUNAL", "URUNSAT", "TAKSITODENEN"})
                if (rowsOf(seen.report, table) != rowsOf(sound, table)) return End::RowsLost;
            return End::Changed;
        } catch (const hazirla::Refusal&) {
            return End::Refused;
        }
    }
    static std::uint64_t rowsOf(const Report& report, const std::string& table) {
        for (const TableTally& tally : report.tables)
            if (tally.name == table) return tally.rows;
        return 0;
    }
};

std::size_t roundsOf(std::size_t byDefault) {
    const char* given = std::getenv("VELDONA_HASAR");
    return given == nullptr ? byDefault : std::strtoul(given, nullptr, 10);
}

// A changed figure or letter that is still one cannot be noticed, since the file has no check sums. Whatever
// else is damaged must end in a refusal, and no row may be lost without one.
TEST_F(Damage, NoDamageLosesARow) {
    const std::string whole = bytes;
    const Report sound = look().report;
    std::mt19937 random(1);
    std::map<End, int> ends;
    const std::size_t rounds = roundsOf(300);
    for (std::size_t i = 0; i < rounds; ++i) {
        bytes = whole;
        const std::size_t at = random() % whole.size();
        const bool block = i % 3 == 0;
        if (block)
            bytes.replace(at / 256 * 256, 256, std::string(256, static_cast<char>(random())));
        else
            bytes[at] = static_cast<char>(bytes[at] ^ 1 << random() % 8);
        const End end = lookApart(sound);
        ++ends[end];
        EXPECT_TRUE(end != End::Hung && end != End::RowsLost) << at << (block ? " block" : " bit");
    }
    EXPECT_GT(ends[End::Refused], static_cast<int>(rounds / 20)) << "the damage does not reach the file";
    EXPECT_GT(ends[End::Same], 0) << "a damaged place that holds nothing is no damage";
}

TEST(ProcessOfItsOwn, AReadingThatHangsOrNeverFillsEndsInASentence) {
    const auto why = [](const Limits& limits, const std::function<int()>& work) {
        return runApart(limits, work).why;
    };
    const std::string slow = " bozuk olmalı: okunması bu boyda bir dosya için çok uzun sürdü.";
    EXPECT_EQ(why({1024, 1},
                  [] {
                      for (const volatile bool goesOn = true; goesOn;) {
                      }
                      return 0;
                  }),
              slow);
    EXPECT_EQ(why({1024, 1}, pause), slow);
#ifndef __SANITIZE_ADDRESS__ // knows no limit
    EXPECT_EQ(why({512, 60},
                  [] {
                      std::vector<std::string> all;
                      for (;;)
                          all.emplace_back(1 << 20, 'x');
                      return 0;
                  }),
              " bozuk olmalı: okunması bu boyda bir dosya için çok fazla bellek istedi.");
#endif
    EXPECT_EQ(runApart({1024, 1}, [] { return 7; }).code, 7);
}

// Whoever ends the program in the middle finds no books and no rest of them at the next run.
TEST_F(Damage, AMoveThatIsCutOffLeavesNoTrace) {
    const std::string root = fs::path(source()).parent_path().string() + "/kok";
    const std::string jet = source();
    const auto start = [&] {
        const pid_t child = fork();
        if (child != 0) return child;
        if (std::freopen("/dev/null", "w", stdout) == nullptr) _exit(9);
        execl(VOREL_AKTAR, VOREL_AKTAR, jet.c_str(), "--kok", root.c_str(), nullptr);
        _exit(9);
    };
    const std::string folder = root + "/VELDONA/Veldona_Taksit";
    int interrupted = 0;
    for (int i = 0; i < 12; ++i) {
        const pid_t child = start();
        std::this_thread::sleep_for(std::chrono::milliseconds(15 * i));
        kill(child, i % 2 == 0 ? SIGKILL : SIGTERM);
        int status = 0;
        waitpid(child, &status, 0);
        std::this_thread::sleep_for(std::chrono::milliseconds(20)); // the worker goes with it
        if (WIFSIGNALED(status) && !fs::exists(folder + "/vorel.mdb")) ++interrupted;
        for (const char* name : {"/vorel.mdb", "/vorel.mdb-wal", "/vorel.mdb-shm"})
            fs::remove(folder + name);
    }
    EXPECT_GT(interrupted, 2);
    int status = 0;
    waitpid(start(), &status, 0);
    EXPECT_EQ(status, 0);
    std::ptrdiff_t files = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (entry.path().filename() != "Rapor") ++files;
    EXPECT_EQ(files, 1) << "beside the books";
}

} // namespace
} // namespace veldona::aktar
