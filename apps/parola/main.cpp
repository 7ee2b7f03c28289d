// vorel-parola: gives the books a password of the shop's own, another one, or the delivered one back.
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>

#include "apps/parola/asking.h"
#include "apps/parola/options.h"
#include "apps/tool/toolmain.h"
#include "backup/keeping.h"
#include "backup/place.h"
#include "backup/rekey.h"
#include "backup/taking.h"
#include "core/bookpasswords.h"
#include "core/delivered.h"
#include "platform/desktop/clock.h"
#include "platform/desktop/paths.h"
#include "platform/keystore/desktopkeys.h"
#include "platform/runtime/password.h"

namespace {

using namespace veldona;
using namespace veldona::parola;

Secret askedTwice() {
    std::cerr << kPasswordRule << '\n';
    const auto once = askAtTerminal("Yeni parola: ");
    if (!once || once->isEmpty()) throw std::runtime_error("Vazgeçildi. Hiçbir şey değişmedi.");
    if (askAtTerminal("Yeni parola, bir daha: ") != once)
        throw std::runtime_error("İki yazılan aynı değil. Hiçbir şey değişmedi.");
    return *once;
}

Secret newPassword(bool fromInput) {
    const std::optional<Secret> password = fromInput ? lineOfInput() : askedTwice();
    if (!password) throw std::runtime_error("Girişte yeni parola yok. Hiçbir şey değişmedi.");
    const std::string weakness = weaknessOf(*password);
    if (!weakness.empty()) throw std::runtime_error(weakness + " Hiçbir şey değişmedi.\n" + kPasswordRule);
    return *password;
}

void tellOfBackups(const Paths& paths, const std::string& books) {
    const auto copies = backup::listRestorable({backup::usualFolder(paths)}, books).size();
    if (copies > 0)
        std::cout << "Daha önce alınmış " << copies
                  << " yedek eski parolasıyla açılır; ona göre saklayın ya da silin.\n";
}

void set(const Paths& paths, const std::string& books, bool fromInput) {
    const Secret password = newPassword(fromInput);
    if (password == deliveredPassword() || password == passwordOfBooks(books))
        throw std::runtime_error("Bu, defterin şimdiki parolası ya da programla gelen parola; başka bir "
                                 "parola seçin. Hiçbir şey değişmedi.");
    backup::rekey(books, password, SystemClock().now());
    DesktopKeys().forget(books);
    std::cout << "Defter artık yalnız yeni parolayla açılır. Parolayı yitiren defteri de yitirir: bir kâğıda "
                 "yazıp kasaya koyun.\n";
    tellOfBackups(paths, books);
}

void remove(const Paths& paths, const std::string& books) {
    backup::rekey(books, deliveredPassword(), SystemClock().now());
    DesktopKeys().forget(books);
    std::cout << "Defter programla gelen parolaya döndü: programı olan herkes açabilir.\n";
    tellOfBackups(paths, books);
}

void keep(const std::string& books) {
    const auto password = passwordOfBooks(books);
    if (!password || *password == deliveredPassword())
        throw std::runtime_error("Defterin kendi parolası yok; saklanacak bir şey yok.");
    const std::string failure = DesktopKeys().keep(books, *password);
    if (!failure.empty()) throw std::runtime_error(failure);
    std::cout << "Parola masaüstünün anahtarlığında; bu makinede sorulmayacak.\n";
}

void tell(const std::string& books) {
    const bool isDelivered = passwordOfBooks(books) == deliveredPassword();
    std::cout << (isDelivered ? "Defter programla gelen parolayla açılır: programı olan herkes açabilir.\n"
                              : "Defterin kendi parolası var.\n");
}

void run(const Options& options) {
    const Paths paths(options.root ? *options.root : chooseRoot(executableFolder(), userDataFolder()));
    const std::string books = paths.toNative(kDatabasePath);
    if (backup::areOnServer(books))
        throw std::runtime_error("Defter bir sunucuda: parolası sunucunun parolasıdır, orada değiştirilir.");
    if (!backup::stands(books)) throw std::runtime_error(books + " yok.");
    if (options.task == Task::Forget) return DesktopKeys().forget(books);
    if (options.task == Task::Tell && !passwordOfBooks(books) && isNotedAsOwn(books)) return tell(books);
    Asking(options.fromInput).require(books);
    noteAsOwn(books, passwordOfBooks(books).value_or(deliveredPassword()) != deliveredPassword());
    if (options.task == Task::Set) return set(paths, books, options.fromInput);
    if (options.task == Task::Remove) return remove(paths, books);
    if (options.task == Task::Keep) return keep(books);
    tell(books);
}

} // namespace

int main(int count, char** arguments) {
    return toolMain({"vorel-parola", usage()}, count, arguments, [](std::span<const char* const> given) {
        run(readOptions(given));
        return 0;
    });
}
