#include "platform/store/engine/openfile.h"

#include "platform/store/engine/delivered.h"
#include "platform/store/engine/sqlcipher/olderbooks.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"

namespace veldona::store {
namespace {

Inspection requireOurs(const std::string& path, const Delivered& delivered) {
    return [&path, &delivered](Engine& opened) { requireDelivered(opened, delivered, path); };
}

} // namespace

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

} // namespace veldona::store
