#include "apps/veldona/menus.h"

#include "apps/veldona/backupmenu.h"
#include "ledger/mainscreen.h"
#include "ui/formwindow.h"

namespace veldona {

void bindMenus(FormWindow& mainWindow, BackupMenu& backups, const std::function<void()>& onRestore) {
    auto& f = dynamic_cast<FrmMainVeldona&>(mainWindow.form());
    f.mnuYedektenDon.onClick = [&backups, onRestore] {
        if (backups.choose()) onRestore();
    };
    f.mnuTuslar.onClick = [&mainWindow] { mainWindow.showKeysOfScreen(); };
}

} // namespace veldona
