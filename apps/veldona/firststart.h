// The start on a folder that holds no books yet: empty ones are made, the old program's file is moved in, or
// a backup is put in their place.
#pragma once

#include <optional>
#include <string>

#include "platform/desktop/dialogs.h"
#include "platform/desktop/paths.h"

namespace veldona {

class BackupMenu;
class WindowHost;

class FirstStart {
public:
    FirstStart(WindowHost& host, Dialogs& dialogs, const Paths& paths, BackupMenu& backups)
        : host_(host), dialogs_(dialogs), paths_(paths), backups_(backups) {}

    // Whether there are books to open. Where there are none the operator is asked for a way to them, again
    // behind one that failed or was given up; what stands is never touched.
    [[nodiscard]] bool findBooks();

private:
    enum class Way { Empty, Move, Restore, None };

    [[nodiscard]] Way ask() const;
    void moveIn();
    // Nothing where the operator knows none.
    [[nodiscard]] std::optional<std::string> passwordOf(const std::string& file);

    WindowHost& host_;
    Dialogs& dialogs_;
    const Paths& paths_;
    BackupMenu& backups_;
};

} // namespace veldona
