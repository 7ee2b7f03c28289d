#include "apps/hazirla/firstbooks.h"

#include <exception>
#include <filesystem>

#include "apps/hazirla/delivered.h"
#include "backup/place.h"
#include "core/delivered.h"

namespace veldona::hazirla {

bool areThereBooks(const Paths& paths) {
    const std::string file = paths.toNative(kDatabasePath);
    std::error_code unreachable; // told of when the file is opened or made
    return std::filesystem::exists(file, unreachable) || backup::areOnServer(file);
}

bool makeFirstBooks(const Paths& paths, Dialogs& dialogs) {
    try {
        deliver(paths.toNative(kDatabasePath), Existing::Keep,
                [](const std::string& made) { runStatements(made, {kAskForLetterhead}); });
        return true;
    } catch (const std::exception& failure) {
        // Refusals, errors of the store and of the platform: each tells its own sentence.
        dialogs.tell("Defter kurulamadı.\n" + std::string(failure.what()), Icon::Exclamation);
        return false;
    }
}

} // namespace veldona::hazirla
