// vorel-yedek: a checked backup of the books while the program runs, and the way back.
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <exception>
#include <filesystem>
#include <iostream>
#include <span>
#include <string>

#include "apps/yedek/copy.h"
#include "apps/yedek/keeping.h"
#include "apps/yedek/options.h"
#include "apps/yedek/refusal.h"
#include "apps/yedek/restore.h"
#include "core/session.h"
#include "platform/desktop/clock.h"
#include "platform/desktop/paths.h"

namespace {

using namespace veldona;
using namespace veldona::yedek;
namespace fs = std::filesystem;

// Two runs at once would take each other's unfinished copy away. Held until the process ends.
void lockFolder(const std::string& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0 || flock(descriptor, LOCK_EX | LOCK_NB) != 0)
        throw Refusal(folder + " klasöründe başka bir yedekleme sürüyor.");
}

std::string preparedFolder(const std::string& folder) {
    const bool isNew = fs::create_directories(folder);
    if (isNew) fs::permissions(folder, fs::perms::owner_all);
    return folder;
}

void backUp(const std::string& books, const std::string& folder) {
    if (!stands(books)) throw Refusal(books + " yok; yedeklenecek defter bulunamadı.");
    lockFolder(preparedFolder(folder));
    clearUnfinished(folder);
    const std::string file = (fs::path(folder) / backupName(SystemClock().now())).string();
    const Picture picture = copyBooks(books, file);
    std::cout << "Yedeklendi ve denetlendi: " << file << "\nSon ödeme: " << shownDate(picture.newestPayment)
              << '\n';
    for (const std::string& old : expired(listBackups(folder)))
        fs::remove(fs::path(folder) / old);
}

void list(const std::string& folder) {
    if (!fs::exists(folder)) throw Refusal(folder + " klasörü yok, hiç yedek alınmamış.");
    for (const std::string& name : listBackups(folder))
        std::cout << (fs::path(folder) / name).string() << '\n';
}

void putBack(const std::string& backup, const std::string& books, bool confirmed) {
    std::cout << lossOfRestoring(backup, books).text;
    if (!confirmed) {
        std::cout << "Hiçbir şey değiştirilmedi. Yerine koymak için --evet ekleyin.\n";
        return;
    }
    const std::optional<std::string> kept = restore(backup, books, SystemClock().now());
    std::cout << "Yedek yerine kondu: " << books << '\n';
    if (kept) std::cout << "Değişen defter burada: " << *kept << '\n';
}

void run(const Options& options) {
    const std::string root = options.root ? *options.root : chooseRoot(executableFolder(), userDataFolder());
    const Paths paths(root);
    const std::string books = paths.toNative(kDatabasePath);
    const std::string folder = options.folder ? *options.folder : paths.toNative("C:\\VELDONA\\Yedek");
    if (options.list) return list(folder);
    if (options.restore) return putBack(*options.restore, books, options.confirmed);
    backUp(books, folder);
}

} // namespace

int main(int count, char** arguments) {
    try {
        const std::span<const char* const> given(arguments, static_cast<std::size_t>(count));
        const Options options = readOptions(given.subspan(1));
        if (options.help)
            std::cout << usage();
        else
            run(options);
        return 0;
    } catch (const std::exception& failure) {
        // Refusals, errors of the store and of the platform: each tells its own sentence.
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
