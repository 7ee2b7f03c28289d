// The program: the screens behind real windows, on the folder that stands for drive C:.
#include <filesystem>
#include <optional>
#include <span>

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QLocale>
#include <QScreen>
#include <QStandardPaths>

#include "apps/screens.h"
#include "apps/tool/toolmain.h"
#include "apps/veldona/atrest.h"
#include "apps/veldona/backupmenu.h"
#include "apps/veldona/firststart.h"
#include "apps/veldona/guide.h"
#include "apps/veldona/menus.h"
#include "apps/veldona/waiting.h"
#include "core/reporting.h"
#include "core/session.h"
#include "core/startpassword.h"
#include "core/startup.h"
#include "journal/seen.h"
#include "platform/keystore/desktopkeys.h"
#include "ui/dialogs.h"
#include "ui/host.h"
#include "ui/housestyle.h"
#include "ui/reportpreview.h"
#include "ui/screens.h"
#include "ui/turkishtexts.h"
#include "ui/waitnote.h"
#include "ui/windowdesktop.h"

namespace veldona {

namespace {

constexpr Tool kTool = {"veldona", "Kullanım: veldona [seçenekler]\n"
                                   "Taksitle satış yapan bir dükkânın defterini tutar.\n"
                                   "\n"
                                   "  --kok KLASÖR        C: sürücüsünün yerine geçen klasör\n"
                                   "  --yardim, --help    bu sayfa\n"
                                   "  --surum, --version  programın sürümü\n"};

std::string readRoot(const QApplication& application) {
    QCommandLineParser parser;
    const QCommandLineOption root("kok", "", "KLASÖR");
    parser.addOption(root);
    parser.process(application);
    if (parser.isSet(root)) return std::filesystem::absolute(parser.value(root).toStdString()).string();
    return chooseRoot(executableFolder(), userDataFolder());
}

QIcon windowIcon() {
    QIcon own;
    for (const char* size : {"16", "32", "48", "128"})
        own.addFile(QString(":/veldona/%1.png").arg(size));
    return QIcon::fromTheme("veldona", own);
}

QString userSettingsFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/veldona/ekran.ini";
}

struct Ended {
    int code = 0;
    bool startFailed = false;
    bool goesOn = false; // something was done to the books that ended this run alone
};

// The start and the screens, to the end of the last window.
Ended runSession(WindowHost& windows, Desktop& desktop, BackupMenu& backups, report::ReportDesk& reports,
                 std::optional<std::string>& backup, std::function<void(Desktop&)>& behindTheEnd) {
    Forms forms(windows);
    Session session(desktop, forms);
    session.reportDesk = &reports;
    session.seenFile = journal::seenFileOfThisPerson();
    offerGuide(windows);
    session.showGuide = [&windows](const std::string& screen) {
        windows.showGuide(windows.frontWindow(), screen);
    };
    const auto shop = registerScreens(forms, session);
    windows.addTo("frmMainVeldona", [&](FormWindow& window) {
        bindMenus(window, backups, [&] {
            for (Form* open : forms.loadedForms())
                forms.unload(*open);
        });
    });
    if (!knowPassword(session)) return {1};
    if (!startSession(session)) return {1, true, askForUnnotedPassword(session)};
    // No first screen, or one that closed itself: a run without a window is over.
    if (forms.ended() || forms.loadedForms().empty()) return {};
    const AtRest atRest(windows, session, shop);
    const int code = QApplication::exec();
    backup = backups.chosen();
    behindTheEnd = std::move(session.behindTheEnd);
    return {code};
}

// One opening of the books, to the end of its last window. Whatever held them open is gone behind it, so that
// the `backup` that the operator chose, if any, can be put in their place.
Ended runBooks(const std::string& root, std::optional<std::string>& backup) {
    WindowClock clock;
    WindowHost windows(clock);
    clock.attach(&windows);
    windows.settings.keepIn(userSettingsFile());
    drawScreens(windows);
    // Not quit(): that asks each window first, and a form's window never closes by itself.
    windows.onAllClosed = windows.onProcessEnded = [] { QCoreApplication::exit(); };
    WindowDialogs dialogs(windows);
    WindowPump pump(windows);
    WindowOpener opener;
    WindowReportDesk reports(windows);
    WindowWaitNote waitNote(windows);
    WindowSideWork sideWork(windows);
    MountedMedia media;
    DesktopKeys keys;

    Desktop desktop{clock,     dialogs,   pump,   opener, Paths(root), {}, DataSources(root + "/ODBC.INI"),
                    &waitNote, &sideWork, &media, &keys};
    BackupMenu backups(windows, clock, desktop.paths, &media);
    if (!FirstStart(windows, dialogs, desktop.paths, backups).findBooks()) return {1};
    Err untold; // a template that is missing for good is told of when it is to be printed
    attempt(untold, [&] { installLayouts(desktop.paths); });

    std::function<void(Desktop&)> behindTheEnd;
    const Ended ended = runSession(windows, desktop, backups, reports, backup, behindTheEnd);
    if (!behindTheEnd) return ended;
    windows.onAllClosed = {}; // a box that closes is not the end
    behindTheEnd(desktop);
    return {0, false, true};
}

// Puts a backup in the place of books that nobody has open; a choice made where the start failed, too.
bool putBack(const std::string& root, std::optional<std::string> backup) {
    WindowClock clock;
    WindowHost windows(clock);
    MountedMedia media;
    BackupMenu backups(windows, clock, Paths(root), &media);
    if (!backup && !backups.offerAfterFailedStart()) return false;
    if (backup) backups.choose(*std::move(backup));
    backups.putBack();
    return true;
}

int run(const std::string& root) {
    for (;;) {
        std::optional<std::string> backup;
        const Ended ended = runBooks(root, backup);
        if (ended.goesOn) continue;
        if (!backup && !ended.startFailed) return ended.code;
        if (!putBack(root, std::move(backup))) return ended.code;
    }
}

int runInWindows(int count, char** arguments) {
    QApplication application(count, arguments);
    QApplication::setApplicationName("veldona");
    QApplication::setDesktopFileName("arpa.home.veldona.taksit");
    QApplication::setWindowIcon(windowIcon());
    QApplication::setQuitOnLastWindowClosed(false);
    TurkishTexts texts;
    QCoreApplication::installTranslator(&texts);
    QLocale::setDefault(QLocale(QLocale::Turkish, QLocale::Turkey));
    const auto fitScreen = [&application] { followScreen(application); };
    fitScreen();
    QObject::connect(&application, &QApplication::primaryScreenChanged, &application, fitScreen);
    for (const QScreen* each : QApplication::screens()) {
        QObject::connect(each, &QScreen::geometryChanged, &application, fitScreen);
        QObject::connect(each, &QScreen::logicalDotsPerInchChanged, &application, fitScreen);
    }
    return run(readRoot(application));
}

} // namespace

} // namespace veldona

// What it tells about itself is told before there is a display, which neither answer needs.
int main(int count, char** arguments) {
    return veldona::toolMain(veldona::kTool, count, arguments, [&](std::span<const char* const>) {
        return veldona::runInWindows(count, arguments);
    });
}
