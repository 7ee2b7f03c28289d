#include "platform/store/engine/keptcopy.h"

#include <chrono>
#include <ctime>
#include <filesystem>

#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/durable.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "platform/store/engine/sqlcipher/sqlcipherfailure.h"
#include "platform/store/engine/temporaryfile.h"

namespace veldona::store {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kWait(15);

std::string freeNameBeside(const std::string& path) {
    for (std::time_t at = std::time(nullptr);; ++at) {
        std::tm local{};
        localtime_r(&at, &local);
        char name[64];
        std::strftime(name, sizeof name, "degistirilen-vorel-%Y-%m-%d_%H%M%S.mdb", &local);
        const fs::path file = fs::path(path).parent_path() / name;
        std::error_code unreachable;
        if (!fs::exists(fs::symlink_status(file, unreachable))) return file.string();
    }
}

void requireSound(const std::string& copy, std::string_view password) {
    if (openSqlcipherAlone(copy, password)->isSound()) return;
    throw StoreError(StoreError::Kind::InputOutput, "Yanına alınan yedek bozuk çıktı. Diski denetleyin.");
}

} // namespace

void keepCopyBeside(const std::string& path, std::string_view password) {
    const TemporaryFile temporary(path + ".eski");
    // By a connection of its own: the engine copies nothing from the one that is about to write.
    openSqlcipherToRead(path, password, kWait)->copyInto(*createSqlcipher(temporary.path(), password), {});
    syncFile(temporary.path());
    requireSound(temporary.path(), password);
    std::error_code failed;
    fs::rename(temporary.path(), freeNameBeside(path), failed);
    if (failed) throw unreachableFile(path);
    syncFolderOf(path);
}

} // namespace veldona::store
