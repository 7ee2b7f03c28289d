#include "platform/store/engine/createdatabase.h"

#include <filesystem>

#include "platform/store/engine/draft.h"
#include "platform/store/engine/durable.h"
#include "platform/store/engine/filecatalog.h"
#include "platform/store/engine/networkdisk.h"
#include "platform/store/engine/sqlcipher/definitionsql.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "platform/store/engine/sqlcipher/sqlcipherfailure.h"

namespace veldona::store {
namespace {

namespace fs = std::filesystem;

void define(Engine& engine, const std::vector<std::string>& statements) {
    engine.begin();
    for (const std::string& statement : statements)
        engine.execute(statement);
    writeSortOrder(engine);
    engine.commit();
}

} // namespace

void createDatabase(const std::string& nativePath, std::string_view password,
                    const std::vector<TableDef>& tables, const std::vector<SavedQueryDef>& queries) {
    refuseNetworkDisk(nativePath);
    std::error_code failed;
    if (fs::exists(fs::symlink_status(nativePath, failed))) throw fileExists(nativePath);
    const std::vector<std::string> statements = definitionStatements(tables, queries);
    const Draft draft(nativePath + ".yeni");
    define(*createSqlcipher(draft.path(), password), statements);
    fs::rename(draft.path(), nativePath, failed);
    if (failed) throw unreachableFile(nativePath);
    syncFolderOf(nativePath);
}

} // namespace veldona::store
