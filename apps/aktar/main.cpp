// vorel-aktar: moves a shop's existing Jet file into the program's books.
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <filesystem>
#include <iostream>
#include <new>
#include <span>
#include <string>

#include "apps/aktar/apart.h"
#include "apps/aktar/examine.h"
#include "apps/aktar/jetheader.h"
#include "apps/aktar/movein.h"
#include "apps/aktar/options.h"
#include "apps/denetle/check.h"
#include "apps/tool/toolmain.h"
#include "core/books.h"
#include "core/reporting.h"
#include "core/session.h"
#include "platform/desktop/paths.h"
#include "platform/runtime/text.h"

namespace {

using namespace veldona;
using namespace veldona::aktar;

// The error stream, kept for our own sentences: the reading library writes there too, of pages and offsets.
class ErrorStream {
public:
    ErrorStream() : own_(dup(STDERR_FILENO)) {
        const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (nowhere < 0) return;
        dup2(nowhere, STDERR_FILENO);
        ::close(nowhere);
    }
    ~ErrorStream() { ::close(own_); }
    ErrorStream(const ErrorStream&) = delete;
    ErrorStream& operator=(const ErrorStream&) = delete;

    void say(const std::string& sentence) const { dprintf(own_, "%s\n", visibleText(sentence).c_str()); }

private:
    int own_;
};

// One line at a time, seldom enough to cost nothing.
class ProgressLine {
public:
    ProgressLine(const ErrorStream& errors, const char* doing) : errors_(errors), doing_(doing) {}

    void show(const std::string& table, std::uint64_t done, std::uint64_t all) {
        const auto now = std::chrono::steady_clock::now();
        if (now - last_ < std::chrono::seconds(1)) return;
        last_ = now;
        errors_.say(doing_ + (' ' + table) + ": " + std::to_string(done) + " / " + std::to_string(all));
    }

private:
    const ErrorStream& errors_;
    std::string doing_;
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
};

Progress progressOf(ProgressLine& line) {
    return [&line](const std::string& table, std::uint64_t done, std::uint64_t all) {
        line.show(table, done, all);
    };
}

// What did not add up in the old file does not in the new one either; the owner should hear of it on this
// day.
void tellFindings(const std::string& books) {
    const auto engine = openBooksToRead(books, std::chrono::seconds(1));
    const std::size_t count = denetle::checkBooks(*engine).all.size();
    if (count == 0) return;
    std::cout << "Defterde birbirini tutmayan " << count
              << " kayıt var; eski dosyadan olduğu gibi geldi. Listesi: vorel-denetle\n";
}

int run(const Options& options, const ErrorStream& errors) {
    checkJetHeader(options.source, options.password);
    const JetFile file(options.source);
    ProgressLine reading(errors, "Okunuyor");
    const Examination examined = examine(file, progressOf(reading));
    for (const auto* lines : {&examined.remarks, &examined.doubts, &examined.problems})
        for (const std::string& line : *lines)
            std::cout << visibleText(line) << '\n';
    print(std::cout, examined.report, options.trial ? Detail::Customers : Detail::Totals);
    if (!examined.problems.empty())
        throw hazirla::Refusal("Dosyada deftere sığmayan değerler var. Hiçbir şey aktarılmadı.");
    if (options.trial) return 0;
    const Paths paths(options.root ? *options.root : chooseRoot(executableFolder(), userDataFolder()));
    const std::string target = paths.toNative(kDatabasePath);
    ProgressLine writing(errors, "Yazılıyor");
    moveIn(file, examined, target, progressOf(writing));
    sablonlariKur(paths);
    std::cout << "Aktarıldı, toplamlar aynı: " << target << '\n';
    tellFindings(target);
    return 0;
}

int runGuarded(const Options& options) {
    const ErrorStream errors;
    try {
        const int code = run(options, errors);
        std::cout.flush();
        return code;
    } catch (const std::bad_alloc&) {
        throw; // told by the parent, who has the memory for it
    } catch (const std::exception& failure) {
        // Refusals, errors of the store and of the platform: each tells its own sentence.
        std::cout.flush();
        errors.say(failure.what());
        return 1;
    }
}

// Whoever lists the processes of the machine reads their command lines.
void hidePassword(const Options& options, std::span<char*> arguments) {
    for (char* const word : arguments.subspan(1))
        if (!options.password.empty() && word == options.password)
            std::fill_n(word, options.password.size(), '*');
}

} // namespace

int main(int count, char** arguments) {
    return toolMain({"vorel-aktar", usage()}, count, arguments, [&](std::span<const char* const> given) {
        Options options = readOptions(given);
        hidePassword(options, std::span(arguments, static_cast<std::size_t>(count)));
        if (options.passwordFromInput) std::getline(std::cin, options.password);
        std::error_code missing; // is told of by the child
        const std::uintmax_t size = std::filesystem::file_size(options.source, missing);
        const Ending ending = runApart(limitsFor(missing ? 0 : size), [&] { return runGuarded(options); });
        if (!ending.why.empty())
            std::cerr << visibleText(options.source) << ending.why << " Hiçbir şey aktarılmadı.\n";
        return ending.code;
    });
}
