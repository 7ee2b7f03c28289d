#include "platform/store/engine/durable.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "platform/store/engine/sqlcipher/sqlcipherfailure.h"

namespace veldona::store {
namespace {

void sync(const std::string& what, int flags, const std::string& path) {
    const int descriptor = ::open(what.c_str(), flags | O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) throw unreachableFile(path);
    const int code = fsync(descriptor);
    ::close(descriptor);
    if (code != 0) throw unreachableFile(path);
}

} // namespace

void syncFile(const std::string& path) {
    sync(path, 0, path);
}

void syncFolderOf(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    sync(folder.empty() ? "." : folder, O_DIRECTORY, path);
}

} // namespace veldona::store
