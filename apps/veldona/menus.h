// What the entries of the main screen's menu bar do where there is a window.
#pragma once

#include <functional>

namespace veldona {

class BackupMenu;
class FormWindow;

// `onRestore`: the operator has chosen a backup to go back to.
void bindMenus(FormWindow& mainWindow, BackupMenu& backups, const std::function<void()>& onRestore);

} // namespace veldona
