#include "platform/store/engine/filelock.h"

#include <thread>

#include <sqlcipher/sqlite3.h>

#include "platform/store/engine/sqlcipher/sqlcipherconnection.h"
#include "platform/store/engine/sqlcipher/sqlcipherfailure.h"

namespace veldona::store {
namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

constexpr auto kPause = 5ms;
constexpr auto kProbing = 500ms; // for somebody who is just closing it, or looks whether he is alone

} // namespace

FileLock::FileLock(const std::string& path) {
    sqlite3_open_v2(path.c_str(), &connection_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    sqlite3_file_control(connection_, "main", SQLITE_FCNTL_FILE_POINTER, &file_);
    if (file_ != nullptr && file_->pMethods == nullptr) file_ = nullptr;
}

FileLock::~FileLock() {
    goDownTo(SQLITE_LOCK_NONE);
    sqlite3_close_v2(connection_);
}

int FileLock::take(int level) {
    return file_ == nullptr ? SQLITE_CANTOPEN : file_->pMethods->xLock(file_, level);
}

void FileLock::goDownTo(int level) {
    if (file_ != nullptr) file_->pMethods->xUnlock(file_, level);
}

std::unique_ptr<FileLock> FileLock::share(const std::string& path, std::chrono::milliseconds wait) {
    const auto until = steady_clock::now() + wait;
    for (;;) {
        std::unique_ptr<FileLock> lock(new FileLock(path));
        const bool isHeldByAnother = lock->take(SQLITE_LOCK_SHARED) == SQLITE_BUSY;
        if (!isHeldByAnother && !hasMoved(lock->connection_)) return lock;
        if (steady_clock::now() >= until) throw engineFailure(SQLITE_BUSY, "");
        lock.reset();
        std::this_thread::sleep_for(kPause);
    }
}

// Asked for again with the same lock, since who waits for the others to go keeps new ones out.
std::unique_ptr<FileLock> FileLock::takeAlone(const std::string& path) {
    const auto until = steady_clock::now() + kProbing;
    std::unique_ptr<FileLock> lock = share(path, kProbing);
    for (;;) {
        const int code = lock->take(SQLITE_LOCK_EXCLUSIVE);
        if (code == SQLITE_OK) return lock;
        if ((code & 0xff) != SQLITE_BUSY) throw engineFailure(code, "");
        if (steady_clock::now() >= until) return nullptr;
        std::this_thread::sleep_for(kPause);
    }
}

bool FileLock::isAlone() {
    const bool alone = take(SQLITE_LOCK_EXCLUSIVE) == SQLITE_OK;
    goDownTo(SQLITE_LOCK_SHARED);
    return alone;
}

} // namespace veldona::store
