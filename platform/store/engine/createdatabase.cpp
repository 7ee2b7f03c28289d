#include "platform/store/engine/createdatabase.h"

#include <filesystem>

#include "platform/store/engine/durable.h"
#include "platform/store/engine/networkdisk.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/engine/sqlcipher/sqlcipherfailure.h"
#include "platform/store/engine/temporaryfile.h"

namespace veldona::store {
namespace {

namespace fs = std::filesystem;

} // namespace

void createDatabase(const std::string& nativePath, std::string_view password,
                    const std::vector<TableDef>& tables, const std::vector<SavedQueryDef>& queries) {
    refuseNetworkDisk(nativePath);
    std::error_code failed;
    if (fs::exists(fs::symlink_status(nativePath, failed))) throw fileExists(nativePath);
    const TemporaryFile temporary(nativePath + ".yeni");
    createFile(temporary.path(), password)->define(tables, queries);
    fs::rename(temporary.path(), nativePath, failed);
    if (failed) throw unreachableFile(nativePath);
    syncFolderOf(nativePath);
}

} // namespace veldona::store
