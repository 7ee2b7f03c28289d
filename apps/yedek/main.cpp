// vorel-yedek: a checked backup of the books while the program runs, and the way back.
#include <iostream>
#include <span>
#include <string>
#include <vector>

#include "apps/parola/asking.h"
#include "apps/tool/toolmain.h"
#include "apps/yedek/options.h"
#include "backup/keeping.h"
#include "backup/place.h"
#include "backup/refusal.h"
#include "backup/restore.h"
#include "backup/taking.h"
#include "core/bookpasswords.h"
#include "core/delivered.h"
#include "platform/desktop/clock.h"
#include "platform/desktop/paths.h"
#include "platform/store/engine/openplace.h"

namespace {

using namespace veldona;
using namespace veldona::backup;
using namespace veldona::yedek;

void takeNow(const std::string& books, const std::string& folder) {
    const Taken taken = takeBackup(books, folder, SystemClock().now());
    std::cout << "Yedeklendi ve denetlendi: " << taken.file
              << "\nSon ödeme: " << shownDate(taken.fingerprint.newestPayment) << '\n';
    if (taken.newer) std::cerr << warningOf(taken) << '\n';
}

void list(const std::string& folder, const std::string& books) {
    const std::vector<Restorable> all = listRestorable({folder}, books);
    if (all.empty() && !stands(folder)) throw Refusal(folder + " klasörü yok, hiç yedek alınmamış.");
    auto own = passwordOfBooks(books);
    if (!own && !isNotedAsOwn(books)) own = deliveredPassword(); // they are damaged
    for (const Restorable& each : all) {
        const std::string other = otherPasswordOf(each.file, own);
        std::cout << each.file << (other.empty() ? "" : "  (" + other + ")") << '\n';
    }
}

void putBack(const Options& options, const std::string& books) {
    const std::string& backup = *options.restore;
    parola::Asking asking(options.passwordFromInput);
    asking.require(backup);
    // Who has lost the books' password goes back to a backup all the same.
    if (!asking.find(books))
        std::cerr << "Defterin parolası yok; geri dönen defter yedeğin parolasını alır.\n";
    std::cout << lossOfRestoring(backup, books).text;
    if (!options.confirmed) {
        std::cout << "Hiçbir şey değiştirilmedi. Yerine koymak için --evet ekleyin.\n";
        return;
    }
    const std::vector<std::string> setAside =
        restore(backup, books, SystemClock().now(), options.owner.value_or(kOwnerRole));
    std::cout << "Yedek yerine kondu ve denetlendi: " << store::shown(store::placeOf(books)) << '\n';
    if (!setAside.empty()) std::cout << describe(setAside) << '\n';
}

void run(const Options& options) {
    const std::string root = options.root ? *options.root : chooseRoot(executableFolder(), userDataFolder());
    const Paths paths(root);
    const std::string books = paths.toNative(kDatabasePath);
    const std::string folder = options.folder ? *options.folder : usualFolder(paths);
    if (options.list) return list(folder, books);
    if (options.restore) return putBack(options, books);
    parola::Asking(options.passwordFromInput).require(books);
    takeNow(books, folder);
}

} // namespace

int main(int count, char** arguments) {
    return toolMain({"vorel-yedek", usage()}, count, arguments, [](std::span<const char* const> given) {
        run(readOptions(given));
        return 0;
    });
}
