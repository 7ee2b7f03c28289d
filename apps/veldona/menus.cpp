#include "apps/veldona/menus.h"

#include <QCoreApplication>
#include <QLayout>
#include <QMenuBar>

#include "apps/veldona/backupmenu.h"
#include "ui/dialogs.h"
#include "ui/formwindow.h"
#include "ui/host.h"

namespace veldona {

namespace {

constexpr const char* kAbout =
    "Veldona Taksit 1.0\n\nTaksitle satış yapan dükkânlar için müşteri kartı, satış, tahsilat, makbuz ve "
    "sözleşme.\n\nTuşlar: F1";

} // namespace

void addMenus(FormWindow& window, BackupMenu& backups, const std::function<void()>& onRestore) {
    auto* bar = new QMenuBar(&window);
    window.layout()->setMenuBar(bar);
    // An entry is an event like any other: what ends the process ends it there.
    const auto add = [&window](QMenu* menu, const QString& words, const std::function<void()>& act) {
        QObject::connect(menu->addAction(words), &QAction::triggered, &window, [&window, act] {
            if (window.listens()) window.form().forms().dispatch(act);
        });
    };
    QMenu* backup = bar->addMenu("Ye&dek");
    add(backup, "Yedek &Al…", [&window] { window.form().forms().show("frmYedek", Kip::Modal); });
    add(backup, "Yedekten &Dön…", [&backups, onRestore] {
        if (backups.choose()) onRestore();
    });
    QMenu* help = bar->addMenu("Y&ardım");
    add(help, "&Kılavuz", [&window] {
        if (const auto& show = window.host().showGuide) show(&window, window.form().name());
    });
    add(help, "&Tuşlar\tF1", [&window] { window.showKeysOfScreen(); });
    add(help, "&Hakkında", [&window] {
        WindowDialogs(window.host()).show({kAbout, "Hakkında", Icon::Information, Buttons::Ok});
    });
}

} // namespace veldona
