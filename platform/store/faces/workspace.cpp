#include "platform/store/faces/workspace.h"

#include <sys/stat.h>

#include <map>
#include <utility>

#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/faces/database.h"

namespace veldona::store {
namespace {

constexpr std::chrono::milliseconds kSeenFor{50};

// The file itself, whatever path leads to it.
using FileIdentity = std::pair<dev_t, ino_t>;

std::optional<FileIdentity> identify(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

} // namespace

struct Workspace::State {
    WorkspaceConfig config;
    std::map<FileIdentity, std::weak_ptr<Database>> open;
    // Resolving a path walks through its folders. One under which a file stands open is taken as it was
    // found, as long as that file still lies there; a key of the operator's, which opens the books several
    // times, looks for that once.
    struct Resolved {
        std::string native;
        std::weak_ptr<Database> database;
        std::chrono::steady_clock::time_point seen;
    };
    std::map<std::string, Resolved, std::less<>> resolved;
    std::shared_ptr<WriteFaults> faults = std::make_shared<WriteFaults>();
    std::shared_ptr<LockWait> lockWait;

    [[nodiscard]] std::shared_ptr<Database> findOpen(const std::optional<FileIdentity>& file) const {
        if (!file) return nullptr;
        const auto found = open.find(*file);
        return found == open.end() ? nullptr : found->second.lock();
    }
    [[nodiscard]] std::shared_ptr<Database> findOpen(std::string_view path) {
        const auto known = resolved.find(path);
        if (known == resolved.end()) return nullptr;
        Resolved& file = known->second;
        const auto now = std::chrono::steady_clock::now();
        if (now - file.seen > kSeenFor) {
            file.database = findOpen(identify(file.native));
            file.seen = now;
        }
        return file.database.lock();
    }
    [[nodiscard]] std::shared_ptr<Database> openAnew(const std::string& native, std::string_view password,
                                                     std::chrono::seconds timeout) {
        auto engine = openFileToWork(native, password, {timeout, config.clock, lockWait}, config.delivered);
        auto database = std::make_shared<Database>(std::move(engine), std::string(password), faults);
        if (const auto file = identify(native)) open[*file] = database;
        return database;
    }
};

Workspace::Workspace(WorkspaceConfig config) : state_(std::make_unique<State>()) {
    state_->config = std::move(config);
    state_->lockWait = std::make_shared<LockWait>(state_->config.goOnWaiting);
}

Workspace::~Workspace() = default;

std::shared_ptr<Database> Workspace::open(std::string_view path, std::string_view password,
                                          std::chrono::seconds timeout) {
    auto database = state_->findOpen(path);
    if (database == nullptr) {
        const std::string native = state_->config.toNativePath(path);
        database = state_->findOpen(identify(native));
        if (database == nullptr) return state_->openAnew(native, password, timeout);
        state_->resolved.insert_or_assign(
            std::string(path), State::Resolved{native, database, std::chrono::steady_clock::now()});
    }
    if (!password.empty() && !database->isOpenedWith(password))
        throw StoreError(
            StoreError::Kind::WrongPassword,
            "Veritabanı açılamadı: parola, dosyanın açıldığı paroladan başka. Parolayı denetleyin.");
    return database;
}

std::shared_ptr<Database> Workspace::openDataSource(std::string_view name, std::string_view password,
                                                    std::chrono::seconds timeout) {
    const std::optional<std::string> path = state_->config.dataSource(name);
    if (!path)
        throw StoreError(StoreError::Kind::FileMissing,
                         "Veri kaynağı bulunamadı: " + std::string(name) + ". Programı yeniden başlatın.");
    return open(*path, password, timeout);
}

std::optional<StoreError> Workspace::takeDiskFailure() {
    std::optional<StoreError> newest;
    for (const auto& [file, open] : state_->open) {
        const auto database = open.lock();
        if (database == nullptr) continue;
        if (auto failure = database->engine().takeDiskFailure()) newest = std::move(failure);
    }
    return newest;
}

void Workspace::endAct() {
    state_->lockWait->endAct();
}

void Workspace::failWrite(int nth, std::string_view table) {
    state_->faults->add(nth, table);
}

} // namespace veldona::store
