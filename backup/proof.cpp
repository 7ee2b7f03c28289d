#include "backup/proof.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <limits>

#include "backup/place.h"
#include "backup/refusal.h"
#include "core/books.h"

namespace veldona::backup {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kWait(15); // for another workstation's lock

Fingerprint lookThrough(store::Engine& books, const std::string& file, const Onlooker& onlooker) {
    const auto goOn = [&onlooker] {
        look(onlooker, Step::Proving);
        return true;
    };
    constexpr auto kAll = std::numeric_limits<std::int32_t>::max();
    const store::ReadBounds bounds{kAll, kAll, goOn};
    books.setBounds(&bounds);
    if (!books.isSound()) throw Refusal(file + " bozuk.");
    Fingerprint fingerprint = fingerprintOf(books);
    books.setBounds(nullptr);
    return fingerprint;
}

} // namespace

Fingerprint inspect(const std::string& file) {
    return lookThrough(*openBooksToRead(file, kWait), file, {});
}

Fingerprint prove(const std::string& file, const Onlooker& onlooker) {
    for (const char* journal : kJournals)
        if (stands(file + journal)) throw Refusal(file + " yarım kaldı: " + journal + " günlüğü duruyor.");
    const auto books = openBooksAlone(file);
    if (books->fullSize() != static_cast<std::int64_t>(fs::file_size(file)))
        throw Refusal(file + " yarım kaldı.");
    return lookThrough(*books, file, onlooker);
}

void requireProved(const std::string& file, const Fingerprint& expected, const Onlooker& onlooker) {
    if (prove(file, onlooker) != expected)
        throw Refusal("Kopya defterin aynısı çıkmadı ve silindi. Diski denetleyip yeniden deneyin.");
}

void syncFile(const std::string& file) {
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0 || fsync(descriptor) != 0) {
        const std::string reason = lastReason();
        if (descriptor >= 0) ::close(descriptor);
        throw Refusal(file + " diske yazılamadı: " + reason);
    }
    posix_fadvise(descriptor, 0, 0, POSIX_FADV_DONTNEED);
    ::close(descriptor);
}

bool hasJournal(const std::string& books) {
    return std::any_of(std::begin(kJournals), std::end(kJournals),
                       [&](const char* journal) { return stands(books + journal); });
}

} // namespace veldona::backup
