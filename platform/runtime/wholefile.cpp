#include "platform/runtime/wholefile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

namespace veldona {

namespace {

constexpr mode_t kReadByAll = 0644;

bool writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(file, bytes.data(), bytes.size());
        if (written <= 0) return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

void syncFolder(const std::string& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    static_cast<void>(fsync(descriptor)); // a name that is lost again is one that was never there
    ::close(descriptor);
}

} // namespace

bool writeWholeFile(const std::string& nativePath, std::string_view bytes) {
    const std::string fresh = nativePath + ".new";
    const int file = ::open(fresh.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, kReadByAll);
    if (file < 0) return false;
    bool done = writeAll(file, bytes) && fsync(file) == 0;
    done = ::close(file) == 0 && done && std::rename(fresh.c_str(), nativePath.c_str()) == 0;
    if (!done) {
        static_cast<void>(::unlink(fresh.c_str()));
        return false;
    }
    const std::string folder = std::filesystem::path(nativePath).parent_path().string();
    syncFolder(folder.empty() ? "." : folder);
    return true;
}

} // namespace veldona
