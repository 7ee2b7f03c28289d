#include "platform/store/workspace.h"

#include <sys/stat.h>

#include <map>
#include <utility>

#include "platform/store/database.h"
#include "platform/store/filecatalog.h"
#include "platform/store/sqlcipherengine.h"
#include "platform/store/storeerror.h"

namespace veldona::store {
namespace {

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
    std::shared_ptr<WriteFaults> faults = std::make_shared<WriteFaults>();

    [[nodiscard]] std::shared_ptr<Database> findOpen(const std::optional<FileIdentity>& file) const {
        if (!file) return nullptr;
        const auto found = open.find(*file);
        return found == open.end() ? nullptr : found->second.lock();
    }
};

Workspace::Workspace(WorkspaceConfig config) : state_(std::make_unique<State>()) {
    state_->config = std::move(config);
}

Workspace::~Workspace() = default;

std::shared_ptr<Database> Workspace::open(std::string_view path, std::string_view password,
                                          std::chrono::seconds timeout) {
    const std::string native = state_->config.toNativePath(path);
    if (auto database = state_->findOpen(identify(native))) {
        if (!password.empty() && !database->isOpenedWith(password))
            throw StoreError(
                StoreError::Kind::WrongPassword,
                "Veritabanı açılamadı: parola, dosyanın açıldığı paroladan başka. Parolayı denetleyin.");
        return database;
    }
    auto engine = openSqlcipher(native, password, timeout, state_->config.clock);
    renewSortOrder(*engine);
    auto database = std::make_shared<Database>(std::move(engine), std::string(password), state_->faults);
    if (const auto file = identify(native)) state_->open[*file] = database;
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

void Workspace::failWrite(int nth, std::string_view table) {
    state_->faults->add(nth, table);
}

} // namespace veldona::store
