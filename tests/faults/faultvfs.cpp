#include "tests/faults/faultvfs.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <new>
#include <random>
#include <string>
#include <vector>

#include <sqlcipher/sqlite3.h>

namespace veldona::faults {
namespace {

// One change that is in the file but not yet on the disk.
struct Change {
    std::string path;
    sqlite3_int64 at = 0;
    sqlite3_int64 sizeBefore = 0;
    std::string before, after;
    bool isTruncate = false;
};

struct State {
    sqlite3_vfs* real = nullptr;
    Fault fault = Fault::None;
    Tail tail = Tail::Lost;
    std::mt19937 random;
    int nth = 0;
    int calls = 0;
    bool struck = false;
    std::vector<Change> unsynced;
};

State& state() {
    static State the;
    return the;
}

struct ShimFile {
    sqlite3_file base;
    sqlite3_file* real; // in the memory behind this
    std::string* path;  // nullptr: a nameless scratch file
};

ShimFile& shim(sqlite3_file* file) {
    return *reinterpret_cast<ShimFile*>(file);
}
const sqlite3_io_methods& below(sqlite3_file* file) {
    return *shim(file).real->pMethods;
}

void putBytes(int file, const std::string& bytes, sqlite3_int64 at) {
    if (pwrite(file, bytes.data(), bytes.size(), at) != static_cast<ssize_t>(bytes.size())) _exit(1);
}

void resize(int file, sqlite3_int64 size) {
    if (ftruncate(file, size) != 0) _exit(1);
}

// Newest first back to what was synced; then what happened to reach the disk all the same, oldest first.
[[noreturn]] void cutPower() {
    State& s = state();
    const auto within = [](const Change& change, auto&& act) {
        const int file = ::open(change.path.c_str(), O_RDWR | O_CLOEXEC);
        if (file < 0) return; // gone with its folder entry
        act(file);
        ::close(file);
    };
    for (auto change = s.unsynced.rbegin(); change != s.unsynced.rend(); ++change) {
        within(*change, [&](int file) {
            putBytes(file, change->before, change->at);
            resize(file, change->sizeBefore);
        });
    }
    for (const Change& change : s.unsynced) {
        if (s.tail == Tail::Lost || s.random() % 2 == 0) continue;
        within(change, [&](int file) {
            if (change.isTruncate)
                resize(file, change.at);
            else
                putBytes(file, change.after, change.at);
        });
    }
    _exit(kPowerCutExit);
}

enum class Call { Write, NewFile, Other, Read };

bool isCounted(Fault fault, Call call) {
    switch (fault) {
    case Fault::None:
        return false;
    case Fault::DiskFull:
        return call == Call::Write || call == Call::NewFile;
    case Fault::InputOutput:
    case Fault::PowerCut:
        return call == Call::Write || call == Call::Other;
    case Fault::FailedRead:
    case Fault::ShortRead:
        return call == Call::Read;
    }
    return false;
}

// Whether this call is to fail.
bool strikes(Call call) {
    State& s = state();
    if (!isCounted(s.fault, call)) return false;
    ++s.calls;
    const bool now = s.fault == Fault::DiskFull ? s.calls >= s.nth : s.calls == s.nth;
    if (!now) return false;
    s.struck = true;
    if (s.fault == Fault::PowerCut) cutPower();
    return true;
}

int failureOf(int inputOutput) {
    return state().fault == Fault::DiskFull ? SQLITE_FULL : inputOutput;
}

// The bytes from `at` on that the file holds now, at most `length`.
void remember(sqlite3_file* file, sqlite3_int64 at, sqlite3_int64 length, std::string after,
              bool isTruncate) {
    if (state().fault != Fault::PowerCut || shim(file).path == nullptr) return;
    Change change{*shim(file).path, at, 0, {}, std::move(after), isTruncate};
    below(file).xFileSize(shim(file).real, &change.sizeBefore);
    const auto held = std::clamp<sqlite3_int64>(change.sizeBefore - at, 0, length);
    change.before.resize(static_cast<std::size_t>(held));
    if (held > 0) below(file).xRead(shim(file).real, change.before.data(), static_cast<int>(held), at);
    state().unsynced.push_back(std::move(change));
}

void forget(const std::string& path) {
    std::erase_if(state().unsynced, [&](const Change& change) { return change.path == path; });
}

int shimClose(sqlite3_file* file) {
    const int code = below(file).xClose(shim(file).real);
    delete shim(file).path;
    shim(file).path = nullptr;
    return code;
}
int shimRead(sqlite3_file* file, void* to, int count, sqlite3_int64 at) {
    if (strikes(Call::Read)) {
        if (state().fault == Fault::FailedRead) return SQLITE_IOERR_READ;
        std::memset(to, 0, static_cast<std::size_t>(count)); // as the engine asks of a short read
        below(file).xRead(shim(file).real, to, count / 2, at);
        return SQLITE_IOERR_SHORT_READ;
    }
    return below(file).xRead(shim(file).real, to, count, at);
}
int shimWrite(sqlite3_file* file, const void* from, int count, sqlite3_int64 at) {
    if (strikes(Call::Write)) return failureOf(SQLITE_IOERR_WRITE);
    remember(file, at, count, std::string(static_cast<const char*>(from), static_cast<std::size_t>(count)),
             false);
    return below(file).xWrite(shim(file).real, from, count, at);
}
int shimTruncate(sqlite3_file* file, sqlite3_int64 size) {
    if (strikes(Call::Other)) return failureOf(SQLITE_IOERR_TRUNCATE);
    sqlite3_int64 held = 0;
    below(file).xFileSize(shim(file).real, &held);
    remember(file, size, held, {}, true);
    return below(file).xTruncate(shim(file).real, size);
}
int shimSync(sqlite3_file* file, int flags) {
    if (strikes(Call::Other)) return failureOf(SQLITE_IOERR_FSYNC);
    // The machine is not asked to sync: that its power stays on is what the test stands on.
    static_cast<void>(flags);
    if (shim(file).path != nullptr) forget(*shim(file).path);
    return SQLITE_OK;
}
int shimSize(sqlite3_file* file, sqlite3_int64* size) {
    return below(file).xFileSize(shim(file).real, size);
}
int shimLock(sqlite3_file* file, int level) {
    return below(file).xLock(shim(file).real, level);
}
int shimUnlock(sqlite3_file* file, int level) {
    return below(file).xUnlock(shim(file).real, level);
}
int shimReserved(sqlite3_file* file, int* result) {
    return below(file).xCheckReservedLock(shim(file).real, result);
}
int shimControl(sqlite3_file* file, int operation, void* argument) {
    return below(file).xFileControl(shim(file).real, operation, argument);
}
int shimSector(sqlite3_file* file) {
    return below(file).xSectorSize(shim(file).real);
}
int shimDevice(sqlite3_file*) {
    return 0; // a disk that promises nothing
}
int shimShmMap(sqlite3_file* file, int page, int size, int extend, void volatile** memory) {
    const std::string* const path = shim(file).path;
    const auto needed = (static_cast<std::uintmax_t>(page) + 1) * static_cast<std::uintmax_t>(size);
    std::error_code missing; // then its size is the greatest of all numbers, plus one: 0
    if (extend != 0 && path != nullptr && std::filesystem::file_size(*path + "-shm", missing) + 1 <= needed &&
        strikes(Call::Write))
        return SQLITE_IOERR_SHMSIZE;
    return below(file).xShmMap(shim(file).real, page, size, extend, memory);
}
int shimShmLock(sqlite3_file* file, int offset, int count, int flags) {
    return below(file).xShmLock(shim(file).real, offset, count, flags);
}
void shimShmBarrier(sqlite3_file* file) {
    below(file).xShmBarrier(shim(file).real);
}
int shimShmUnmap(sqlite3_file* file, int deleteFlag) {
    return below(file).xShmUnmap(shim(file).real, deleteFlag);
}

sqlite3_io_methods shimMethods() {
    sqlite3_io_methods methods{};
    methods.iVersion = 2; // no memory mapping: every write passes here
    methods.xClose = shimClose;
    methods.xRead = shimRead;
    methods.xWrite = shimWrite;
    methods.xTruncate = shimTruncate;
    methods.xSync = shimSync;
    methods.xFileSize = shimSize;
    methods.xLock = shimLock;
    methods.xUnlock = shimUnlock;
    methods.xCheckReservedLock = shimReserved;
    methods.xFileControl = shimControl;
    methods.xSectorSize = shimSector;
    methods.xDeviceCharacteristics = shimDevice;
    methods.xShmMap = shimShmMap;
    methods.xShmLock = shimShmLock;
    methods.xShmBarrier = shimShmBarrier;
    methods.xShmUnmap = shimShmUnmap;
    return methods;
}

int vfsOpen(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
    static const sqlite3_io_methods methods = shimMethods();
    ShimFile& ours = *new (file) ShimFile{};
    ours.real = reinterpret_cast<sqlite3_file*>(&ours + 1);
    const bool isNew = name != nullptr && (flags & SQLITE_OPEN_CREATE) != 0 && !std::filesystem::exists(name);
    if (isNew && strikes(Call::NewFile)) return SQLITE_CANTOPEN;
    const int code = state().real->xOpen(state().real, name, ours.real, flags, outFlags);
    if (ours.real->pMethods == nullptr) return code;
    if (name != nullptr) ours.path = new std::string(name);
    ours.base.pMethods = &methods;
    return code;
}

int vfsDelete(sqlite3_vfs*, const char* name, int syncFolder) {
    if (strikes(Call::Other)) return failureOf(SQLITE_IOERR_DELETE);
    forget(name);
    return state().real->xDelete(state().real, name, syncFolder);
}

} // namespace

void install() {
    static sqlite3_vfs ours = [] {
        state().real = sqlite3_vfs_find(nullptr);
        sqlite3_vfs copy = *state().real; // the other calls go to the real one as they stand
        copy.zName = "veldona-faults";
        copy.pNext = nullptr;
        copy.szOsFile = static_cast<int>(sizeof(ShimFile)) + state().real->szOsFile;
        copy.xOpen = vfsOpen;
        copy.xDelete = vfsDelete;
        return copy;
    }();
    sqlite3_vfs_register(&ours, 1);
}

void arm(Fault fault, int nth, Tail tail, std::uint32_t seed) {
    State& s = state();
    s.fault = fault;
    s.nth = nth;
    s.tail = tail;
    s.random.seed(seed);
    s.calls = 0;
    s.struck = false;
    s.unsynced.clear();
}

void disarm() {
    state().fault = Fault::None;
}

bool hasStruck() {
    return state().struck;
}

int callsCounted() {
    return state().calls;
}

} // namespace veldona::faults
