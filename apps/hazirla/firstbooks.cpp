#include "apps/hazirla/firstbooks.h"

#include <exception>
#include <filesystem>

#include "apps/hazirla/delivered.h"
#include "backup/place.h"
#include "core/session.h"

namespace veldona::hazirla {

bool findOrMakeBooks(const Paths& paths, Dialogs& dialogs) {
    const std::string file = paths.toNative(kDatabasePath);
    std::error_code unreachable; // told of when the file is opened or made
    if (std::filesystem::exists(file, unreachable) || backup::areOnServer(file)) return true;
    // Who has books elsewhere must not begin new ones by mistake, so the other ways are named.
    if (!dialogs.confirm("Bu bilgisayarda henüz bir defter yok:\n" + file +
                         "\n\nYeni, boş bir defter kurulsun mu?\n\n"
                         "Hayır derseniz hiçbir şey değişmez. Eski programın dosyası vorel-aktar komutuyla "
                         "taşınır, bir yedek vorel-yedek --geri-yukle komutuyla yerine konur."))
        return false;
    try {
        deliver(file, Existing::Keep,
                [](const std::string& made) { runStatements(made, {kAskForLetterhead}); });
        return true;
    } catch (const std::exception& failure) {
        // Refusals, errors of the store and of the platform: each tells its own sentence.
        dialogs.tell("Defter kurulamadı.\n" + std::string(failure.what()), Icon::Exclamation);
        return false;
    }
}

} // namespace veldona::hazirla
