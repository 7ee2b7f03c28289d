#include "platform/store/engine/openfile.h"

#include "platform/store/engine/keptcopy.h"
#include "platform/store/engine/networkdisk.h"
#include "platform/store/engine/sqlcipher/delivered.h"
#include "platform/store/engine/sqlcipher/filecatalog.h"
#include "platform/store/engine/sqlcipher/olderbooks.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"

namespace veldona::store {
namespace {

Inspection requireOurs(const std::string& path, const Delivered& delivered) {
    if (delivered.tables.empty()) return {};
    return [&path, &delivered](Engine& opened) { requireDelivered(opened, delivered, path); };
}

} // namespace

std::unique_ptr<Engine> openFileToWork(const std::string& nativePath, std::string_view password,
                                       const Opening& opening, const Delivered& delivered) {
    refuseNetworkDisk(nativePath);
    const Inspection inspect = requireOurs(nativePath, delivered);
    const auto open = [&] {
        return openSqlcipher(nativePath, password, opening.wait, opening.clock, inspect);
    };
    auto engine = open();
    renewSortOrder(*engine);
    const auto keepCopy = [&] {
        if (opening.keepsFormer) keepCopyBeside(nativePath, password);
    };
    if (bringUpToDate(*engine, delivered, nativePath, opening.wait, keepCopy)) {
        engine.reset(); // the connection knows the columns as they were
        engine = open();
    }
    engine->setBusyTimeout(opening.wait);
    engine->setLockWait(opening.lockWait);
    makeScratchTables(*engine, delivered.scratch);
    return engine;
}

std::unique_ptr<Engine> openFile(const std::string& nativePath, std::string_view password,
                                 std::chrono::milliseconds wait, const Delivered& delivered) {
    return openSqlcipher(nativePath, password, wait, {}, requireOurs(nativePath, delivered));
}

std::unique_ptr<Engine> openFileToRead(const std::string& nativePath, std::string_view password,
                                       std::chrono::milliseconds wait, const Delivered& delivered) {
    auto engine = openSqlcipherToRead(nativePath, password, wait, requireOurs(nativePath, delivered));
    coverMissing(*engine, delivered);
    return engine;
}

std::unique_ptr<Engine> openFileAlone(const std::string& nativePath, std::string_view password,
                                      const Delivered& delivered) {
    auto engine = openSqlcipherAlone(nativePath, password, requireOurs(nativePath, delivered));
    coverMissing(*engine, delivered);
    return engine;
}

std::unique_ptr<Engine> createFile(const std::string& nativePath, std::string_view password) {
    return createSqlcipher(nativePath, password);
}

void settleFile(const std::string& nativePath, std::string_view password) {
    settleJournal(nativePath, password);
}

} // namespace veldona::store
