#include "platform/store/engine/createdatabase.h"

#include <filesystem>

#include "platform/store/engine/draft.h"
#include "platform/store/engine/durable.h"
#include "platform/store/engine/networkdisk.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/engine/sqlcipher/sqlcipherfailure.h"

namespace veldona::store {
namespace {

namespace fs = std::filesystem;

} // namespace

void createDatabase(const std::string& nativePath, std::string_view password,
                    const std::vector<TableDef>& tables, const std::vector<SavedQueryDef>& queries) {
    refuseNetworkDisk(nativePath);
    std::error_code failed;
    if (fs::exists(fs::symlink_status(nativePath, failed))) throw fileExists(nativePath);
    const Draft draft(nativePath + ".yeni");
    createFile(draft.path(), password)->define(tables, queries);
    fs::rename(draft.path(), nativePath, failed);
    if (failed) throw unreachableFile(nativePath);
    syncFolderOf(nativePath);
}

} // namespace veldona::store
