#include "backup/copy.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "backup/refusal.h"
#include "core/session.h"
#include "platform/store/engine/draft.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"

namespace veldona::backup {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr auto kWait = 15s; // for another workstation's lock

void sync(const std::string& path, int flags) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | flags);
    const bool synced = descriptor >= 0 && fsync(descriptor) == 0;
    const int failure = errno;
    if (descriptor >= 0) ::close(descriptor);
    if (!synced) throw Refusal(path + " diske yazılamadı: " + std::strerror(failure));
}

Picture copyAsItStands(const std::string& books, const std::string& file) {
    const auto original = store::openSqlcipherToRead(books, kDeliveredPassword, kWait);
    original->execute("BEGIN");
    Picture picture = pictureOf(*original);
    const auto copy = store::createSqlcipher(file, kDeliveredPassword);
    original->copyInto(*copy);
    return picture;
}

} // namespace

bool stands(const std::string& path) {
    std::error_code unreachable;
    return fs::exists(fs::symlink_status(path, unreachable));
}

void syncFolder(const std::string& folder) {
    sync(folder, O_DIRECTORY);
}

Picture inspect(const std::string& file) {
    const auto books = store::openSqlcipherToRead(file, kDeliveredPassword, kWait);
    const auto check = books->prepare("PRAGMA integrity_check");
    if (!check->step() || check->text(0) != "ok") throw Refusal(file + " bozuk.");
    return pictureOf(*books);
}

Picture copyBooks(const std::string& books, const std::string& file) {
    const store::Draft draft(file + ".yarim");
    const Picture picture = copyAsItStands(books, draft.path());
    if (inspect(draft.path()) != picture)
        throw Refusal("Kopya defterin aynısı çıkmadı ve silindi. Diski denetleyip yeniden deneyin.");
    sync(draft.path(), 0);
    if (stands(file) || std::rename(draft.path().c_str(), file.c_str()) != 0)
        throw Refusal(file +
                      " yazılamadı: " + (stands(file) ? "bu adda bir dosya var" : std::strerror(errno)));
    syncFolder(fs::absolute(file).parent_path().string()); // a bare name has no folder in it
    return picture;
}

} // namespace veldona::backup
