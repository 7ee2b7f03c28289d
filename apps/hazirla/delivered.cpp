#include "apps/hazirla/delivered.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "backup/copy.h"
#include "backup/place.h"
#include "backup/proof.h"
#include "backup/serverbooks.h"
#include "core/bookpasswords.h"
#include "core/books.h"
#include "core/delivered.h"
#include "platform/desktop/clock.h"
#include "platform/store/engine/act.h"
#include "platform/store/engine/createdatabase.h"
#include "platform/store/engine/journalseal.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/engine/servermove.h"
#include "platform/store/faces/dao.h"
#include "platform/store/faces/workspace.h"
#include "schema/tables.h"

namespace veldona::hazirla {
namespace {

namespace fs = std::filesystem;
using backup::stands;

constexpr std::string_view kWorkFolderPrefix = ".hazirla-";

// Held as long as the process lives, however it ends.
int lockFolder(const std::string& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0 || flock(descriptor, LOCK_EX | LOCK_NB) == 0) return descriptor;
    ::close(descriptor);
    return -1;
}

// What a killed run left behind; a folder that is being built in is locked.
void clearAbandonedFolders(const fs::path& folder) {
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
        if (!entry.path().filename().string().starts_with(kWorkFolderPrefix)) continue;
        const int lock = lockFolder(entry.path().string());
        if (lock < 0) continue;
        fs::remove_all(entry.path(), ignored);
        ::close(lock);
    }
}

// Beside the target, so that the last step is a rename within one disk.
class WorkFolder {
public:
    explicit WorkFolder(const fs::path& folder)
        : folder_((folder / (std::string(kWorkFolderPrefix) + "XXXXXX")).string()) {
        clearAbandonedFolders(folder);
        if (mkdtemp(folder_.data()) == nullptr)
            throw Refusal(folder.string() + " klasörüne yazılamıyor: " + backup::lastReason());
        lock_ = lockFolder(folder_);
    }
    ~WorkFolder() {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
        if (lock_ >= 0) ::close(lock_);
    }
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;

    [[nodiscard]] std::string file() const { return folder_ + "/vorel.mdb"; }
    [[nodiscard]] std::string underOwn() const { return folder_ + "/parolali.mdb"; }
    [[nodiscard]] std::string replaced() const { return folder_ + "/eski.mdb"; } // gone with the folder

private:
    std::string folder_;
    int lock_ = -1;
};

[[noreturn]] void refuseExisting(const std::string& target) {
    throw Refusal(target + " zaten var ve olduğu gibi bırakıldı. Üzerine yazmak için --uzerine-yaz deyin.");
}

// The journal of books that are gone: whose it is is not known, and it would be taken for the new file's own.
void lookAtTarget(const std::string& target, Existing existing) {
    if (!stands(target)) {
        if (!stands(target + "-wal")) return;
        throw Refusal(
            target + "-wal var ama defterin kendisi yok. Bu dosyayı başka bir yere taşıyıp yeniden deneyin.");
    }
    if (existing == Existing::Keep) refuseExisting(target);
    if (!fs::is_regular_file(fs::symlink_status(target)))
        throw Refusal(target + " bir dosya değil, üzerine yazılamaz.");
    backup::requireClosed(target);
}

// Else whoever examines the journal would miss the entries of the former books.
void noteReplacing(const std::string& file) {
    const auto books = openBooks(file, std::chrono::seconds(1));
    const store::ActScope act({}, "Yeni Defter");
    books->noteInJournal(store::kReplacingNote);
}

// Books that are replaced leave their password to those in their place, where it is known here.
void giveToFile(const WorkFolder& work, const std::string& target, Existing existing) {
    const Secret password = passwordOfBooks(target).value_or(deliveredPassword());
    const bool isOwn = password != deliveredPassword();
    const std::string made = isOwn ? work.underOwn() : work.file();
    if (isOwn) static_cast<void>(backup::copyToTemporary(work.file(), made, {}, password));
    backup::syncFile(made);
    const backup::Fingerprint proven = backup::prove(made);
    lookAtTarget(target, existing);
    if (stands(target))
        backup::exchange(made, proven, target, {work.replaced(), work.replaced()});
    else
        backup::giveName(made, target, proven);
    noteAsOwn(target, isOwn);
}

} // namespace

bool standAt(const store::Place& place) {
    if (const auto* file = std::get_if<store::FilePlace>(&place)) return backup::stands(file->path);
    return store::standOnServer(
        store::ServerPlace(std::get<store::ServerPlace>(place).address.as(backup::kOwnerRole)));
}

void runStatements(const std::string& file, const std::vector<std::string>& statements) {
    store::Workspace workspace({.toNativePath = [&](std::string_view) { return file; },
                                .dataSource = [](std::string_view) { return std::optional<std::string>(); },
                                .delivered = schema::delivered()});
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
    backup::makeFolder(folder.string());
    const WorkFolder work(folder);
    store::createDatabase(work.file(), kDeliveredPassword, schema::tables(), schema::savedQueries());
    runStatements(work.file(), {schema::firstRows().begin(), schema::firstRows().end()});
    fill(work.file());
    if (existing == Existing::Replace) noteReplacing(work.file());
    store::settleFile(work.file(), kDeliveredPassword);
    if (const auto server = store::ServerAddress::beside(target)) {
        const DateTime now = SystemClock().now();
        const store::ServerPlace place{server->as(backup::kOwnerRole)};
        if (existing == Existing::Keep && standAt(place)) refuseExisting(server->shown());
        backup::putOnServer(work.file(), place, now);
        return;
    }
    giveToFile(work, target, existing);
}

} // namespace veldona::hazirla
