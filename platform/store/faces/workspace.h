// The store as one process sees it: which files are open, under which password, and how names become files.
//
// Every connection of a workspace to one file shares one engine connection, so opening again costs no second
// key derivation and all of them see the same transaction. A file that stands open is served to a caller with
// an empty password; another password than the one it was opened with is refused.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/datetime.h"
#include "platform/store/dialect/definition.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/lockwait.h"
#include "platform/store/engine/place.h"

namespace veldona::store {

class Database; // one open file: engine connection, catalog, prepared statements (database.h)

struct WorkspaceConfig {
    // A path as the program writes it ("C:\VELDONA\…") to one of this machine.
    std::function<std::string(std::string_view)> toNativePath;
    // The books that a path of this machine stands for; a file, where it is empty.
    std::function<Place(const std::string& nativePath)> place = {};
    // The program's path that a registered data source stands for; nothing where there is no such source.
    std::function<std::optional<std::string>(std::string_view name)> dataSource;
    // What Now, Date and Time of a statement answer; the machine's clock where it is empty.
    std::function<DateTime()> clock = {};
    // What a file may hold: one that holds anything else is refused untouched, and each connection gets the
    // scratch tables. Without tables: any file opens as it is.
    Delivered delivered = {};
    GoOnWaiting goOnWaiting = {};
};

class Workspace {
public:
    explicit Workspace(WorkspaceConfig config);
    ~Workspace();
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;

    // Raises StoreError (storeerror.h). `path` as the program writes it; `timeout`: how long the opening
    // waits for another workstation's lock.
    [[nodiscard]] std::shared_ptr<Database> open(std::string_view path, std::string_view password,
                                                 std::chrono::seconds timeout = std::chrono::seconds(15));
    [[nodiscard]] std::shared_ptr<Database>
    openDataSource(std::string_view name, std::string_view password,
                   std::chrono::seconds timeout = std::chrono::seconds(15));

    // The newest failure of an open file since the last call that came from the disk or from another
    // workstation; nothing where there was none. A procedure may have passed over it.
    [[nodiscard]] std::optional<StoreError> takeDiskFailure();

    // The operator's act is over: behind a lock that was not waited for to its end, the next act waits again.
    void endAct();

    // From now on the nth write (insert, update or delete statement, counted from 1) to `table` fails once.
    void failWrite(int nth, std::string_view table);

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace veldona::store
