#include "platform/store/faces/workspace.h"

#include <sys/stat.h>

#include <map>
#include <utility>
#include <variant>

#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/openplace.h"
#include "platform/store/faces/database.h"

namespace veldona::store {
namespace {

constexpr std::chrono::milliseconds kSeenFor{50};

// The books themselves, whatever path leads to them: a file of this machine, or a schema of a server.
using FileIdentity = std::pair<dev_t, ino_t>;
using Identity = std::variant<FileIdentity, std::string>;

std::optional<Identity> identify(const Place& place) {
    if (const auto* server = std::get_if<ServerPlace>(&place))
        return server->address.text() + '/' + server->schema;
    struct stat status {};
    if (stat(std::get<FilePlace>(place).path.c_str(), &status) != 0) return std::nullopt;
    return FileIdentity{status.st_dev, status.st_ino};
}

} // namespace

struct Workspace::State {
    WorkspaceConfig config;
    std::map<Identity, std::weak_ptr<Database>> open;
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

    [[nodiscard]] Place placeOf(const std::string& native) const {
        return config.place ? config.place(native) : FilePlace{native};
    }
    [[nodiscard]] std::shared_ptr<Database> findOpen(const std::optional<Identity>& books) const {
        if (!books) return nullptr;
        const auto found = open.find(*books);
        return found == open.end() ? nullptr : found->second.lock();
    }
    [[nodiscard]] std::shared_ptr<Database> findOpen(std::string_view path) {
        const auto known = resolved.find(path);
        if (known == resolved.end()) return nullptr;
        Resolved& file = known->second;
        const auto now = std::chrono::steady_clock::now();
        if (now - file.seen > kSeenFor) {
            file.database = findOpen(identify(placeOf(file.native)));
            file.seen = now;
        }
        return file.database.lock();
    }
    [[nodiscard]] std::shared_ptr<Database> openAnew(const Place& place, std::string_view password,
                                                     std::chrono::seconds timeout) {
        auto engine = openToWork(place, password, {timeout, config.clock, lockWait}, config.delivered);
        auto database = std::make_shared<Database>(std::move(engine), std::string(password), faults);
        if (const auto books = identify(place)) open[*books] = database;
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
        const Place place = state_->placeOf(native);
        database = state_->findOpen(identify(place));
        if (database == nullptr) return state_->openAnew(place, password, timeout);
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
