// A disk that loses power, for a whole program: loaded before it (LD_PRELOAD), it stands between the program
// and the C library, counts the calls that change a file or a name below one folder, and at the nth undoes
// what was not synced and ends the process.
//
//   VELDONA_CUT_FOLDER  where it counts; nothing is done without it
//   VELDONA_CUT_AT      at which call; a program with less calls is cut off at its end, and exits with 78
//   VELDONA_CUT_TAIL    what becomes of the unsynced: "lost", all of it; "names", names alone are kept; a
//   number,
//                       the seed of what is kept
//   VELDONA_CUT_DRIVE   "lies": a drive that answers a sync and does nothing
//
// A synced folder keeps all names made so far, as a journaling file system does. A name that goes is kept
// beside, in VELDONA_CUT_FOLDER.gone, to be put back. Threads are not looked after: the programs have one.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr int kCutExit = 77;
constexpr int kCutAtEndExit = 78;

template <class F> F below(F, const char* name) {
    return reinterpret_cast<F>(dlsym(RTLD_NEXT, name));
}
#define BELOW(name) below(&::name, #name)

struct Change {
    int file; // a descriptor of our own, open as long as the process lives: closing one drops its locks
    off_t at;
    off_t sizeBefore;
    std::string before, after;
    bool isTruncate;
};

using Inode = std::pair<dev_t, ino_t>;

struct Cut {
    std::string folder, gone;
    int nth = 0;
    int calls = 0;
    int names = 0; // put aside so far
    bool losesNames = false;
    bool keepsSome = false;
    bool lies = false;
    bool within = false; // our own calls are not counted
    std::mt19937 random;
    std::map<Inode, int> files;
    std::vector<Change> changes;
    std::vector<std::function<void()>> undoNames;
};

std::string setting(const char* name) {
    const char* value = getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

// Never freed: the program's last calls come behind the ends of its statics.
Cut* cut() {
    static Cut* const the = []() -> Cut* {
        const std::string folder = setting("VELDONA_CUT_FOLDER");
        if (folder.empty()) return nullptr;
        auto* made = new Cut;
        made->folder = folder;
        made->gone = folder + ".gone";
        made->nth = atoi(setting("VELDONA_CUT_AT").c_str());
        const std::string tail = setting("VELDONA_CUT_TAIL");
        made->losesNames = tail == "lost";
        made->keepsSome = !made->losesNames && tail != "names";
        if (made->keepsSome) made->random.seed(static_cast<unsigned>(atoi(tail.c_str())));
        made->lies = setting("VELDONA_CUT_DRIVE") == "lies";
        BELOW(mkdir)(made->gone.c_str(), 0700);
        return made;
    }();
    return the;
}

void putBytes(int file, const std::string& bytes, off_t at) {
    if (BELOW(pwrite)(file, bytes.data(), bytes.size(), at) != static_cast<ssize_t>(bytes.size())) _exit(1);
}

void undoBytes(Cut& c) {
    for (auto change = c.changes.rbegin(); change != c.changes.rend(); ++change) {
        putBytes(change->file, change->before, change->at);
        if (BELOW(ftruncate)(change->file, change->sizeBefore) != 0) _exit(1);
    }
    if (!c.keepsSome) return;
    for (const Change& change : c.changes) {
        if (c.random() % 2 == 0) continue;
        if (!change.isTruncate)
            putBytes(change.file, change.after, change.at);
        else if (BELOW(ftruncate)(change.file, change.at) != 0)
            _exit(1);
    }
}

void undoNames(Cut& c) {
    std::size_t lost = c.losesNames ? c.undoNames.size() : 0;
    if (c.keepsSome && !c.undoNames.empty()) lost = c.random() % (c.undoNames.size() + 1);
    for (; lost > 0; --lost) { // names reach the disk in their order
        c.undoNames.back()();
        c.undoNames.pop_back();
    }
}

[[noreturn]] void cutPower(Cut& c, int exitCode) {
    c.within = true;
    undoBytes(c);
    undoNames(c);
    _exit(exitCode);
}

// Keeps what a call does inside itself from being counted.
class Counted {
public:
    explicit Counted(const std::string& path) : cut_(cut()) {
        if (cut_ == nullptr || cut_->within || !path.starts_with(cut_->folder + '/')) {
            cut_ = nullptr;
            return;
        }
        if (++cut_->calls == cut_->nth) cutPower(*cut_, kCutExit);
        cut_->within = true;
    }
    ~Counted() {
        if (cut_ != nullptr) cut_->within = false;
    }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    explicit operator bool() const { return cut_ != nullptr; }
    Cut* operator->() const { return cut_; }
    Cut& operator*() const { return *cut_; }

private:
    Cut* cut_;
};

std::string pathOf(int file) {
    char path[PATH_MAX];
    const auto length = readlink(("/proc/self/fd/" + std::to_string(file)).c_str(), path, sizeof path);
    return length < 0 ? std::string() : std::string(path, static_cast<std::size_t>(length));
}

std::string pathAt(int folder, const char* name) {
    if (name[0] == '/') return name;
    return (folder == AT_FDCWD ? setting("PWD") : pathOf(folder)) + '/' + name;
}

bool stands(const std::string& path) {
    struct stat status {};
    return lstat(path.c_str(), &status) == 0;
}

Inode inodeOf(int file) {
    struct stat status {};
    fstat(file, &status);
    return {status.st_dev, status.st_ino};
}

int ownDescriptor(Cut& c, int file) {
    int& own = c.files.try_emplace(inodeOf(file), -1).first->second;
    if (own < 0) own = BELOW(open)(("/proc/self/fd/" + std::to_string(file)).c_str(), O_RDWR | O_CLOEXEC);
    if (own < 0) _exit(1);
    return own;
}

void remember(Cut& c, int file, off_t at, off_t length, std::string after, bool isTruncate) {
    Change change{ownDescriptor(c, file), at, 0, {}, std::move(after), isTruncate};
    struct stat status {};
    fstat(file, &status);
    change.sizeBefore = status.st_size;
    change.before.resize(static_cast<std::size_t>(std::clamp<off_t>(change.sizeBefore - at, 0, length)));
    if (pread(change.file, change.before.data(), change.before.size(), at) < 0) _exit(1);
    c.changes.push_back(std::move(change));
}

// Of a file that an open or a truncation by name is about to empty.
void rememberAll(Cut& c, const std::string& path) {
    const int file = BELOW(open)(path.c_str(), O_RDWR | O_CLOEXEC);
    if (file < 0) return;
    ownDescriptor(c, file);
    struct stat status {};
    fstat(file, &status);
    remember(c, file, 0, status.st_size, {}, true);
}

// The second name under which what stands at `path` can be found again; "" where nothing stands there.
std::string putAside(Cut& c, const std::string& path) {
    if (!stands(path)) return {};
    const std::string aside = c.gone + '/' + std::to_string(c.names++);
    if (BELOW(link)(path.c_str(), aside.c_str()) != 0) _exit(1);
    return aside;
}

void putBack(const std::string& aside, const std::string& path) {
    if (!aside.empty()) BELOW(rename)(aside.c_str(), path.c_str());
}

int synced(int file, int (*sync)(int)) {
    const Counted counted(pathOf(file));
    if (!counted) return sync(file);
    struct stat status {};
    fstat(file, &status);
    if (counted->lies) return 0;
    if (S_ISDIR(status.st_mode))
        counted->undoNames.clear();
    else
        std::erase_if(counted->changes, [own = ownDescriptor(*counted, file)](const Change& change) {
            return change.file == own;
        });
    return 0; // the machine keeps its power
}

// What an open may do to a file and to its name.
template <class Open> auto opened(const std::string& path, bool creates, bool empties, Open open) {
    const bool isNew = creates && !stands(path);
    if (!isNew && !empties) return open();
    const Counted counted(path);
    if (!counted) return open();
    if (empties && !isNew) rememberAll(*counted, path);
    if (isNew) counted->undoNames.emplace_back([path] { BELOW(unlink)(path.c_str()); });
    return open();
}

int renamed(const char* from, const char* to, const std::function<int()>& rename) {
    const Counted counted(to);
    if (!counted) return rename();
    const std::string replaced = putAside(*counted, to);
    const int code = rename();
    if (code == 0) {
        counted->undoNames.emplace_back([replaced, from = std::string(from), to = std::string(to)] {
            BELOW(rename)(to.c_str(), from.c_str());
            putBack(replaced, to);
        });
    }
    return code;
}

int removed(const std::string& path, const std::function<int()>& remove) {
    if (!stands(path)) return remove();
    const Counted counted(path);
    if (!counted) return remove();
    struct stat status {};
    lstat(path.c_str(), &status);
    const bool isFolder = S_ISDIR(status.st_mode);
    const std::string aside = isFolder ? std::string() : putAside(*counted, path);
    const int code = remove();
    if (code == 0) {
        counted->undoNames.emplace_back([aside, path, isFolder, mode = status.st_mode] {
            if (isFolder)
                BELOW(mkdir)(path.c_str(), mode);
            else
                putBack(aside, path);
        });
    }
    return code;
}

[[gnu::destructor]] void endOfProgram() {
    Cut* const c = cut();
    if (c != nullptr && c->nth > 0 && !c->within) cutPower(*c, kCutAtEndExit);
}

mode_t modeOf(int flags, va_list arguments) {
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return opened(pathAt(AT_FDCWD, path), (flags & O_CREAT) != 0, (flags & O_TRUNC) != 0,
                  [&] { return BELOW(open)(path, flags, mode); });
}
int open64(const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return open(path, flags | O_LARGEFILE, mode);
}
int openat(int folder, const char* path, int flags, ...) {
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return opened(pathAt(folder, path), (flags & O_CREAT) != 0, (flags & O_TRUNC) != 0,
                  [&] { return BELOW(openat)(folder, path, flags, mode); });
}
FILE* fopen(const char* path, const char* how) {
    return opened(pathAt(AT_FDCWD, path), how[0] != 'r', how[0] == 'w',
                  [&] { return BELOW(fopen)(path, how); });
}
FILE* fopen64(const char* path, const char* how) {
    return fopen(path, how);
}

ssize_t pwrite(int file, const void* from, size_t count, off_t at) {
    const Counted counted(pathOf(file));
    if (counted)
        remember(*counted, file, at, static_cast<off_t>(count),
                 std::string(static_cast<const char*>(from), count), false);
    return BELOW(pwrite)(file, from, count, at);
}
ssize_t pwrite64(int file, const void* from, size_t count, off64_t at) {
    return pwrite(file, from, count, at);
}
ssize_t write(int file, const void* from, size_t count) {
    const Counted counted(file > STDERR_FILENO ? pathOf(file) : std::string());
    if (counted)
        remember(*counted, file, lseek(file, 0, SEEK_CUR), static_cast<off_t>(count),
                 std::string(static_cast<const char*>(from), count), false);
    return BELOW(write)(file, from, count);
}
ssize_t writev(int file, const iovec* parts, int count) {
    ssize_t written = 0;
    for (int i = 0; i < count; ++i) {
        const ssize_t one = write(file, parts[i].iov_base, parts[i].iov_len);
        if (one < 0) return written > 0 ? written : one;
        written += one;
    }
    return written;
}
int ftruncate(int file, off_t size) {
    const Counted counted(pathOf(file));
    if (counted) {
        struct stat status {};
        fstat(file, &status);
        remember(*counted, file, size, status.st_size, {}, true);
    }
    return BELOW(ftruncate)(file, size);
}
int ftruncate64(int file, off64_t size) {
    return ftruncate(file, size);
}
int fsync(int file) {
    return synced(file, BELOW(fsync));
}
int fdatasync(int file) {
    return synced(file, BELOW(fdatasync));
}

int rename(const char* from, const char* to) {
    return renamed(from, to, [&] { return BELOW(rename)(from, to); });
}
int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags) {
    return renamed(from, to, [&] { return BELOW(renameat2)(fromFolder, from, toFolder, to, flags); });
}
int link(const char* from, const char* to) {
    const Counted counted(to);
    const int code = BELOW(link)(from, to);
    if (counted && code == 0)
        counted->undoNames.emplace_back([to = std::string(to)] { BELOW(unlink)(to.c_str()); });
    return code;
}
int unlink(const char* path) {
    return removed(pathAt(AT_FDCWD, path), [&] { return BELOW(unlink)(path); });
}
int unlinkat(int folder, const char* path, int flags) {
    return removed(pathAt(folder, path), [&] { return BELOW(unlinkat)(folder, path, flags); });
}
int remove(const char* path) {
    return removed(pathAt(AT_FDCWD, path), [&] { return BELOW(remove)(path); });
}
int rmdir(const char* path) {
    return removed(pathAt(AT_FDCWD, path), [&] { return BELOW(rmdir)(path); });
}
int mkdir(const char* path, mode_t mode) {
    const Counted counted(path);
    const int code = BELOW(mkdir)(path, mode);
    if (counted && code == 0)
        counted->undoNames.emplace_back([path = std::string(path)] { BELOW(rmdir)(path.c_str()); });
    return code;
}
char* mkdtemp(char* pattern) {
    const Counted counted(pattern);
    char* const made = BELOW(mkdtemp)(pattern);
    if (counted && made != nullptr)
        counted->undoNames.emplace_back([path = std::string(made)] { BELOW(rmdir)(path.c_str()); });
    return made;
}

} // extern "C"
