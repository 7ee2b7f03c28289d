// The menu bar of the main window. The screen below knows nothing of it.
#pragma once

#include <functional>

namespace veldona {

class BackupMenu;
class FormWindow;

// `onRestore`: the operator has chosen a backup to go back to.
void addMenus(FormWindow& window, BackupMenu& backups, const std::function<void()>& onRestore);

} // namespace veldona
