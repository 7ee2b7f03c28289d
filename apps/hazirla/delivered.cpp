#include "apps/hazirla/delivered.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "core/session.h"
#include "platform/store/engine/createdatabase.h"
#include "platform/store/faces/dao.h"
#include "platform/store/faces/workspace.h"
#include "schema/tables.h"

namespace veldona::hazirla {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSitePrefix = ".hazirla-";

// Held as long as the process lives, however it ends.
int lockFolder(const std::string& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0 || flock(descriptor, LOCK_EX | LOCK_NB) == 0) return descriptor;
    ::close(descriptor);
    return -1;
}

// What a killed run left behind; a folder that is being built in is locked.
void clearAbandonedSites(const fs::path& folder) {
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
        if (!entry.path().filename().string().starts_with(kSitePrefix)) continue;
        const int lock = lockFolder(entry.path().string());
        if (lock < 0) continue;
        fs::remove_all(entry.path(), ignored);
        ::close(lock);
    }
}

// Beside the target, so that the last step is a rename within one disk.
class BuildingSite {
public:
    explicit BuildingSite(const fs::path& folder)
        : folder_((folder / (std::string(kSitePrefix) + "XXXXXX")).string()) {
        clearAbandonedSites(folder);
        if (mkdtemp(folder_.data()) == nullptr)
            throw Refusal(folder.string() + " klasörüne yazılamıyor: " + std::strerror(errno));
        lock_ = lockFolder(folder_);
    }
    ~BuildingSite() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
        if (lock_ >= 0) ::close(lock_);
    }
    BuildingSite(const BuildingSite&) = delete;
    BuildingSite& operator=(const BuildingSite&) = delete;

    [[nodiscard]] std::string file() const { return folder_ + "/vorel.mdb"; }

private:
    std::string folder_;
    int lock_ = -1;
};

[[noreturn]] void refuseExisting(const std::string& target) {
    throw Refusal(target + " zaten var ve olduğu gibi bırakıldı. Üzerine yazmak için --uzerine-yaz deyin.");
}

bool stands(const std::string& path) {
    std::error_code unreachable; // its folder may not be there yet
    return fs::exists(fs::symlink_status(path, unreachable));
}

// A file with a log beside it is open somewhere, or was not closed well: the log belongs to it and would be
// taken for the new file's own.
void lookAtTarget(const std::string& target, Existing existing) {
    if (!stands(target)) {
        if (!stands(target + "-wal")) return;
        throw Refusal(
            target + "-wal var ama defterin kendisi yok. Bu dosyayı başka bir yere taşıyıp yeniden deneyin.");
    }
    if (existing == Existing::Keep) refuseExisting(target);
    if (!fs::is_regular_file(fs::symlink_status(target)))
        throw Refusal(target + " bir dosya değil, üzerine yazılamaz.");
    if (stands(target + "-wal"))
        throw Refusal(target +
                      " şu anda açık görünüyor ve olduğu gibi bırakıldı. Programı kapatıp yeniden deneyin.");
}

void moveIn(const std::string& file, const std::string& target, Existing existing) {
    const unsigned flags = existing == Existing::Keep ? RENAME_NOREPLACE : 0;
    int code = renameat2(AT_FDCWD, file.c_str(), AT_FDCWD, target.c_str(), flags);
    // Some shared disks know no such rename; the look at the target just before must do there.
    if (code != 0 && errno == EINVAL) code = std::rename(file.c_str(), target.c_str());
    if (code == 0) return;
    if (errno == EEXIST) refuseExisting(target);
    throw Refusal(target + " yerine konamadı: " + std::strerror(errno));
}

void syncFolder(const fs::path& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool synced = descriptor >= 0 && fsync(descriptor) == 0;
    const int failure = errno;
    if (descriptor >= 0) ::close(descriptor);
    if (!synced) throw Refusal(folder.string() + " diske yazılamadı: " + std::strerror(failure));
}

} // namespace

void runStatements(const std::string& file, const std::vector<std::string>& statements) {
    store::Workspace workspace({[&](std::string_view) { return file; },
                                [](std::string_view) { return std::optional<std::string>(); },
                                {},
                                schema::delivered()});
    dao::DBEngine engine(workspace);
    dao::Database database =
        engine.openDatabase("vorel.mdb", "MS Access;PWD=" + std::string(kDeliveredPassword));
    for (const std::string& statement : statements)
        database.execute(statement);
}

void deliver(const std::string& target, Existing existing,
             const std::function<void(const std::string& file)>& fill) {
    lookAtTarget(target, existing);
    const fs::path folder = fs::path(target).parent_path();
    std::error_code failed;
    fs::create_directories(folder, failed);
    if (failed) throw Refusal(folder.string() + " klasörü açılamadı: " + failed.message());
    const BuildingSite site(folder);
    store::createDatabase(site.file(), kDeliveredPassword, schema::tables(), schema::savedQueries());
    runStatements(site.file(), {schema::firstRows().begin(), schema::firstRows().end()});
    fill(site.file());
    if (stands(site.file() + "-wal")) throw std::logic_error("the new database was not closed");
    lookAtTarget(target, existing);
    moveIn(site.file(), target, existing);
    syncFolder(folder);
}

} // namespace veldona::hazirla
