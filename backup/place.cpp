#include "backup/place.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "backup/proof.h"
#include "backup/refusal.h"
#include "platform/store/engine/place.h"

namespace veldona::backup {
namespace {

namespace fs = std::filesystem;

std::string folderOf(const std::string& file) {
    return fs::absolute(file).parent_path().string(); // a bare name has no folder in it
}

// Makes renames within the folder last.
void syncFolder(const std::string& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool synced = descriptor >= 0 && fsync(descriptor) == 0;
    const std::string reason = synced ? "" : lastReason();
    if (descriptor >= 0) ::close(descriptor);
    if (!synced) throw Refusal(folder + " diske yazılamadı: " + reason);
}

void renameToFree(const std::string& from, const std::string& to) {
    int code = renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
    // Some disks know no such rename; the look just before must do there.
    if (code != 0 && (errno == EINVAL || errno == ENOSYS)) {
        if (stands(to)) throw Refusal(to + " yazılamadı: bu adda bir dosya var");
        code = std::rename(from.c_str(), to.c_str());
    }
    if (code != 0) throw Refusal(to + " yazılamadı: " + lastReason());
}

std::unique_ptr<store::FileLock> lockAlone(const std::string& file) {
    auto lock = store::FileLock::takeAlone(file);
    if (lock == nullptr)
        throw Refusal(file + " şu anda bir programda açık ve olduğu gibi bırakıldı. Öteki bilgisayarlarda da "
                             "programı kapatıp yeniden deneyin.");
    return lock;
}

// The steps of an exchange, taken back unless they were carried to the end.
class Exchange {
public:
    Exchange(const std::string& books, const SetAside& names) : books_(books), names_(names) {}
    ~Exchange() {
        if (isOver_) return;
        if (keptBooks_) {
            static_cast<void>(std::rename(names_.books.c_str(), books_.c_str()));
            ::unlink(names_.books.c_str()); // a second name of the books, where they were still there
        } else if (hasArrived_) {
            ::unlink(books_.c_str());
        }
        for (const std::string& journal : journals_)
            static_cast<void>(std::rename((names_.journal + journal).c_str(), (books_ + journal).c_str()));
    }
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    // The books have two names for a moment, so that their own changes hands in one step where the disk knows
    // links.
    void setAside() {
        if (stands(books_)) {
            if (::link(books_.c_str(), names_.books.c_str()) != 0) renameToFree(books_, names_.books);
            keptBooks_ = true;
        }
        for (const char* journal : kJournals) {
            if (!stands(books_ + journal)) continue;
            renameToFree(books_ + journal, names_.journal + journal);
            journals_.emplace_back(journal);
        }
        ::unlink((books_ + "-shm").c_str()); // the journal's index, made anew from it
    }
    void moveIn(const std::string& temporary) {
        if (std::rename(temporary.c_str(), books_.c_str()) != 0)
            throw Refusal(books_ + " yerine konamadı: " + lastReason());
        hasArrived_ = true;
    }
    std::vector<std::string> end() {
        isOver_ = true;
        std::vector<std::string> aside;
        if (keptBooks_) aside.push_back(names_.books);
        for (const std::string& journal : journals_)
            aside.push_back(names_.journal + journal);
        return aside;
    }

private:
    std::string books_;
    SetAside names_;
    std::vector<std::string> journals_;
    bool keptBooks_ = false, hasArrived_ = false, isOver_ = false;
};

} // namespace

bool stands(const std::string& path) {
    std::error_code unreachable;
    return fs::exists(fs::symlink_status(path, unreachable));
}

bool areOnServer(const std::string& books) {
    return stands(store::ServerAddress::fileBeside(books));
}

FolderLock::FolderLock(const std::string& folder, const std::string& busy)
    : descriptor_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (descriptor_ < 0) throw Refusal(folder + " klasörü açılamadı: " + lastReason());
    if (flock(descriptor_, LOCK_EX | LOCK_NB) == 0) return;
    ::close(descriptor_);
    throw Refusal(busy);
}

FolderLock::~FolderLock() {
    ::close(descriptor_);
}

void makeFolder(const std::string& folder) {
    std::error_code failed;
    const bool isNew = fs::create_directories(folder, failed);
    if (!failed && isNew) fs::permissions(folder, fs::perms::owner_all, failed);
    // A disk that knows no rights, as most plugged-in ones, gives none to be taken away.
    if (isNew && failed == std::errc::operation_not_permitted) failed.clear();
    if (!failed && !fs::is_directory(folder, failed))
        failed = std::make_error_code(std::errc::not_a_directory);
    if (failed) throw Refusal(folder + " klasörü kullanılamıyor: " + reasonOf(failed));
}

void giveName(const std::string& temporary, const std::string& file, const Fingerprint& proven,
              const Onlooker& onlooker) {
    const auto coming = lockAlone(temporary); // nobody begins to work on it before it is proven
    renameToFree(temporary, file);
    try {
        syncFolder(folderOf(file));
        requireProved(file, proven, onlooker);
    } catch (...) {
        ::unlink(file.c_str());
        throw;
    }
}

void requireClosed(const std::string& books) {
    if (stands(books)) static_cast<void>(lockAlone(books));
}

std::vector<std::string> exchange(const std::string& temporary, const Fingerprint& proven,
                                  const std::string& books, const SetAside& names,
                                  std::unique_ptr<store::FileLock> present) {
    if (present == nullptr && stands(books)) present = lockAlone(books);
    const auto coming = lockAlone(temporary);
    Exchange exchange(books, names);
    exchange.setAside();
    syncFolder(folderOf(names.books));
    exchange.moveIn(temporary);
    syncFolder(folderOf(books));
    requireProved(books, proven);
    return exchange.end();
}

} // namespace veldona::backup
