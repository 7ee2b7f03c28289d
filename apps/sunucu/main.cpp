// vorel-sunucu: moves the books to a server that several tills open, keeps them up to date there, and moves
// them back into a file.
#include <chrono>
#include <iostream>
#include <span>
#include <string>
#include <variant>

#include "apps/parola/asking.h"
#include "apps/sunucu/options.h"
#include "apps/tool/toolmain.h"
#include "backup/fingerprint.h"
#include "core/books.h"
#include "core/delivered.h"
#include "core/tell.h"
#include "platform/desktop/clock.h"
#include "platform/desktop/paths.h"

namespace {

using namespace veldona;
using namespace veldona::sunucu;

void print(const backup::Carried& carried, const std::string& kept) {
    if (carried.same.rows > 0)
        std::cout << carried.same.rows << " satır ve " << carried.same.accounts
                  << " hesabın bakiyesi karşılaştırıldı, hepsi aynı.\n";
    if (!carried.setAside.empty()) std::cout << kept << carried.setAside << '\n';
}

void tell(const std::string& books) {
    const store::Place place = store::placeOf(books);
    if (const auto* file = std::get_if<store::FilePlace>(&place)) {
        std::cout << "Defter bu bilgisayarda: " << file->path << '\n';
        return;
    }
    const auto& address = std::get<store::ServerPlace>(place).address;
    std::cout << "Defter sunucuda: " << address.shown() << "\nAdres burada yazılı: " << address.source()
              << '\n';
    const backup::Fingerprint fingerprint =
        backup::fingerprintOf(*openBooksToRead(place, std::chrono::seconds(15)));
    std::cout << "Açıldı. Son ödeme: " << backup::shownDate(fingerprint.newestPayment) << '\n';
}

void run(const Options& options) {
    const Paths paths(options.root ? *options.root : chooseRoot(executableFolder(), userDataFolder()));
    const std::string books = paths.toNative(kDatabasePath);
    if (options.task != Task::Tell) parola::Asking(options.passwordFromInput).require(books);
    const DateTime now = SystemClock().now();
    if (options.task == Task::ToServer) {
        const store::ServerAddress till(*options.address, "--adres seçeneği");
        print(backup::moveToServer(books, till, options.owner, now), "Eski dosya burada saklandı: ");
        std::cout << "Defter sunucuda: " << till.shown() << '\n';
    } else if (options.task == Task::ToFile) {
        print(backup::moveToFile(books, options.owner, now), "Sunucudaki defter bu adla saklandı: ");
        std::cout
            << "Defter bu bilgisayarda: " << books
            << "\nProgramla gelen parolayla açılır; dükkânın kendi parolasını vorel-parola --koy koyar.\n";
    } else if (options.task == Task::Renew) {
        const backup::Carried renewed = backup::renewOnServer(books, options.owner, now);
        print(renewed, "Önceki defter sunucuda bu adla saklandı: ");
        std::cout << (renewed.setAside.empty() ? "Sunucudaki defter zaten bu sürümün.\n"
                                               : "Sunucudaki defter artık bu sürümün.\n");
    } else {
        tell(books);
    }
}

} // namespace

int main(int count, char** arguments) {
    return toolMain({"vorel-sunucu", usage()}, count, arguments, [](std::span<const char* const> given) {
        run(readOptions(given));
        return 0;
    });
}
