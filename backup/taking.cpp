#include "backup/taking.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "backup/copy.h"
#include "backup/keeping.h"
#include "backup/refusal.h"

namespace veldona::backup {
namespace {

namespace fs = std::filesystem;

// Two at once would take each other's unfinished copy away.
class FolderLock {
public:
    explicit FolderLock(const std::string& folder)
        : descriptor_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        if (descriptor_ >= 0 && flock(descriptor_, LOCK_EX | LOCK_NB) == 0) return;
        if (descriptor_ >= 0) ::close(descriptor_);
        throw Refusal(folder + " klasöründe başka bir yedekleme sürüyor.");
    }
    ~FolderLock() { ::close(descriptor_); }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

private:
    int descriptor_;
};

void prepare(const std::string& folder) {
    const bool isNew = fs::create_directories(folder);
    if (isNew) fs::permissions(folder, fs::perms::owner_all);
}

// One that cannot be removed is no failure of the new backup; the next one tries again.
void dropExpired(const std::string& folder) {
    for (const std::string& old : expired(listBackups(folder))) {
        std::error_code stays;
        fs::remove(fs::path(folder) / old, stays);
    }
}

} // namespace

std::string usualFolder(const Paths& paths) {
    return paths.toNative("C:\\VELDONA\\Yedek");
}

Taken takeBackup(const std::string& books, const std::string& folder, DateTime now) {
    if (!stands(books)) throw Refusal(books + " yok; yedeklenecek defter bulunamadı.");
    prepare(folder);
    const FolderLock lock(folder);
    clearUnfinished(folder);
    Taken taken;
    taken.file = (fs::path(folder) / backupName(now)).string();
    taken.picture = copyBooks(books, taken.file);
    dropExpired(folder);
    return taken;
}

} // namespace veldona::backup
