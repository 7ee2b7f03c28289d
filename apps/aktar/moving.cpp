#include "apps/aktar/moving.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <exception>
#include <filesystem>
#include <mutex>
#include <new>
#include <sstream>
#include <thread>
#include <utility>

#include "apps/aktar/apart.h"
#include "apps/aktar/examine.h"
#include "apps/aktar/jetheader.h"
#include "apps/aktar/movein.h"
#include "apps/denetle/check.h"
#include "core/books.h"
#include "core/delivered.h"
#include "core/reporting.h"
#include "platform/runtime/text.h"
#include "platform/store/engine/openplace.h"

namespace veldona::aktar {
namespace {

using Line = std::function<void(const std::string& line)>;

// One line at a time, seldom enough to cost nothing.
Progress progressOf(const Line& isAt, const char* doing) {
    using std::chrono::steady_clock;
    return [isAt, doing, last = steady_clock::now()](const std::string& table, std::uint64_t done,
                                                     std::uint64_t all) mutable {
        const auto now = steady_clock::now();
        if (now - last < std::chrono::seconds(1)) return;
        last = now;
        isAt(doing + (' ' + table) + ": " + std::to_string(done) + " / " + std::to_string(all));
    };
}

void tellReport(const Examination& examined, Detail detail, const Line& found) {
    for (const auto* lines : {&examined.remarks, &examined.doubts, &examined.problems})
        for (const std::string& line : *lines)
            found(visibleText(line));
    std::stringstream printed;
    print(printed, examined.report, detail);
    for (std::string line; std::getline(printed, line);)
        found(line);
}

// What did not add up in the old file does not in the new one either; the owner should hear of it on this
// day.
void tellFindings(const std::string& books, const Line& found) {
    const auto engine = openBooksToRead(store::placeOf(books), std::chrono::seconds(1));
    const std::size_t count = denetle::checkBooks(*engine).all.size();
    if (count == 0) return;
    found("Defterde birbirini tutmayan " + std::to_string(count) +
          " kayıt var; eski dosyadan olduğu gibi geldi. Listesi: vorel-denetle");
}

// What the two processes say to each other: a letter for the kind of line, and the line.
enum class Kind : char { Found = 'F', IsAt = 'A', Failure = 'X' };

void writeLine(int pipe, Kind kind, const std::string& line) {
    const std::string text = static_cast<char>(kind) + visibleText(line) + '\n';
    for (std::size_t at = 0; at < text.size();) {
        const ssize_t written = ::write(pipe, text.data() + at, text.size() - at);
        if (written <= 0) return; // nobody listens any more
        at += static_cast<std::size_t>(written);
    }
}

int workBehind(int pipe, const Moving& moving, const Paths& paths) {
    const int nowhere = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nowhere >= 0) dup2(nowhere, STDERR_FILENO);
    try {
        moveShop(moving, paths,
                 {[pipe](const std::string& line) { writeLine(pipe, Kind::Found, line); },
                  [pipe](const std::string& line) { writeLine(pipe, Kind::IsAt, line); }});
        return 0;
    } catch (const std::bad_alloc&) {
        throw; // told by the other process, which has the memory for it
    } catch (const std::exception& failure) {
        writeLine(pipe, Kind::Failure, failure.what());
        return 1;
    }
}

// Reads what comes from the other end, on a thread of its own, until nobody holds that end any more.
class Reading {
public:
    Reading(int pipe, Moved& moved)
        : thread_([this, pipe, &moved] {
              std::array<char, 4096> bytes{};
              std::string text;
              for (ssize_t count = 0; (count = ::read(pipe, bytes.data(), bytes.size())) > 0;) {
                  text.append(bytes.data(), static_cast<std::size_t>(count));
                  for (std::size_t end = 0; (end = text.find('\n')) != text.npos; text.erase(0, end + 1))
                      take(text.substr(0, end), moved);
              }
          }) {}
    ~Reading() { thread_.join(); }
    Reading(const Reading&) = delete;
    Reading& operator=(const Reading&) = delete;

    [[nodiscard]] std::string takePlace() {
        const std::scoped_lock lock(guard_);
        return std::exchange(isAt_, {});
    }

private:
    void take(const std::string& line, Moved& moved) {
        const std::string words = line.substr(1);
        switch (static_cast<Kind>(line[0])) {
        case Kind::Found:
            moved.found.push_back(words);
            break;
        case Kind::Failure:
            moved.failure = words;
            break;
        case Kind::IsAt: {
            const std::scoped_lock lock(guard_);
            isAt_ = words;
        }
        }
    }

    std::mutex guard_;
    std::string isAt_;
    std::thread thread_; // last: it uses the others
};

} // namespace

void moveShop(const Moving& moving, const Paths& paths, const Listener& listener) {
    checkJetHeader(moving.source, moving.password);
    const JetFile file(moving.source);
    const Examination examined = examine(file, progressOf(listener.isAt, "Okunuyor"));
    tellReport(examined, moving.detail, listener.found);
    if (!examined.problems.empty())
        throw hazirla::Refusal("Dosyada deftere sığmayan değerler var. Hiçbir şey aktarılmadı.");
    if (moving.trial) return;
    const std::string target = paths.toNative(kDatabasePath);
    moveIn(file, examined, target, progressOf(listener.isAt, "Yazılıyor"));
    installLayouts(paths);
    listener.found("Aktarıldı, toplamlar aynı: " + store::shown(store::placeOf(target)));
    tellFindings(target, listener.found);
}

Moved moveShopApart(const Moving& moving, const Paths& paths,
                    const std::function<bool(const std::string& line)>& goOn) {
    Moved moved;
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        moved.failure = moving.source + ": okunması için ayrı bir süreç başlatılamadı.";
        return moved;
    }
    std::error_code missing; // is told of by the other process
    const std::uintmax_t size = std::filesystem::file_size(moving.source, missing);
    Ending ending{};
    {
        Reading reading(pipe[0], moved);
        ending = runApart(
            limitsFor(missing ? 0 : size), [&] { return workBehind(pipe[1], moving, paths); },
            [&] { return goOn(reading.takePlace()); });
        ::close(pipe[1]);
    }
    ::close(pipe[0]);
    if (!ending.why.empty()) moved.failure = moving.source + ending.why + " Hiçbir şey aktarılmadı.";
    moved.isDone = ending.code == 0;
    return moved;
}

} // namespace veldona::aktar
