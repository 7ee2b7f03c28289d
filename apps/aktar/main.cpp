// vorel-aktar: moves a shop's existing Jet file into the program's books.
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <exception>
#include <iostream>
#include <span>
#include <string>

#include "apps/aktar/examine.h"
#include "apps/aktar/jetheader.h"
#include "apps/aktar/movein.h"
#include "apps/aktar/options.h"
#include "core/reporting.h"
#include "core/session.h"
#include "platform/desktop/paths.h"

namespace {

using namespace veldona;
using namespace veldona::aktar;

// One line at a time on the error stream, seldom enough to cost nothing.
class ProgressLine {
public:
    explicit ProgressLine(const char* doing) : doing_(doing) {}

    void show(const std::string& table, std::uint64_t done, std::uint64_t all) {
        const auto now = std::chrono::steady_clock::now();
        if (now - last_ < std::chrono::seconds(1)) return;
        last_ = now;
        std::cerr << doing_ << ' ' << table << ": " << done << " / " << all << '\n';
    }

private:
    const char* doing_;
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
};

Progress progressOf(ProgressLine& line) {
    return [&line](const std::string& table, std::uint64_t done, std::uint64_t all) {
        line.show(table, done, all);
    };
}

int run(const Options& options) {
    checkJetHeader(options.source, options.password);
    const JetFile file(options.source);
    ProgressLine reading("Okunuyor");
    const Examination examined = examine(file, progressOf(reading));
    for (const std::string& remark : examined.remarks)
        std::cout << remark << '\n';
    for (const std::string& problem : examined.problems)
        std::cout << problem << '\n';
    print(std::cout, examined.report, options.trial ? Detail::Customers : Detail::Totals);
    if (!examined.problems.empty())
        throw hazirla::Refusal("Dosyada deftere sığmayan değerler var. Hiçbir şey aktarılmadı.");
    if (options.trial) return 0;
    const Paths paths(options.root ? *options.root : chooseRoot(executableFolder(), userDataFolder()));
    const std::string target = paths.toNative(kDatabasePath);
    ProgressLine writing("Yazılıyor");
    moveIn(file, examined, target, progressOf(writing));
    sablonlariKur(paths);
    std::cout << "Aktarıldı, toplamlar aynı: " << target << '\n';
    return 0;
}

int runGuarded(const Options& options) {
    try {
        return run(options);
    } catch (const std::exception& failure) {
        // Refusals, errors of the store and of the platform: each tells its own sentence.
        std::cout.flush();
        std::cerr << failure.what() << '\n';
        return 1;
    }
}

// A damaged file can bring the reading library down. The work is done by a child, so that this too ends in a
// sentence; what it was building has no name yet.
int runApart(const Options& options) {
    const pid_t child = fork();
    if (child < 0) return runGuarded(options);
    if (child == 0) {
        const int code = runGuarded(options);
        std::cout.flush();
        _exit(code);
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status)) return WEXITSTATUS(status);
    std::cerr << options.source << " bozuk: okunurken program durdu. Hiçbir şey aktarılmadı.\n";
    return 1;
}

} // namespace

int main(int count, char** arguments) {
    try {
        const std::span<const char* const> given(arguments, static_cast<std::size_t>(count));
        Options options = readOptions(given.subspan(1));
        if (options.help) {
            std::cout << usage();
            return 0;
        }
        if (options.passwordFromInput) std::getline(std::cin, options.password);
        return runApart(options);
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
