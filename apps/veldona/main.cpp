// The program: the screens behind real windows, on the folder that stands for drive C:.
#include <sys/resource.h>

#include <filesystem>

#include <QApplication>
#include <QCommandLineParser>
#include <QIcon>
#include <QScreen>

#include "apps/hazirla/firstbooks.h"
#include "apps/screens.h"
#include "core/reporting.h"
#include "core/session.h"
#include "ui/dialogs.h"
#include "ui/host.h"
#include "ui/housestyle.h"
#include "ui/reportpreview.h"
#include "ui/screens.h"
#include "ui/turkishtexts.h"
#include "ui/windowdesktop.h"

namespace veldona {

namespace {

std::string readRoot(const QApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription("Veldona: taksitli satış takibi");
    const QCommandLineOption help({"h", "yardim"}, "Bu açıklamayı gösterir.");
    const QCommandLineOption root("kok", "C: sürücüsünün yerine geçen klasör.", "KLASÖR");
    parser.addOptions({help, root});
    parser.process(application);
    if (parser.isSet(help)) parser.showHelp();
    if (parser.isSet(root)) return std::filesystem::absolute(parser.value(root).toStdString()).string();
    return chooseRoot(executableFolder(), userDataFolder());
}

QIcon windowIcon() {
    QIcon own;
    for (const char* size : {"16", "32", "48", "128"})
        own.addFile(QString(":/veldona/%1.png").arg(size));
    return QIcon::fromTheme("veldona", own);
}

int run(QApplication& application) {
    WindowClock clock;
    WindowHost windows(clock);
    clock.attach(&windows);
    drawScreens(windows);
    // Not quit(): that asks each window first, and a form's window never closes by itself.
    windows.onAllClosed = windows.onProcessEnded = [] { QCoreApplication::exit(); };
    WindowDialogs dialogs(windows);
    WindowPump pump(windows);
    WindowOpener opener;
    WindowReportDesk reports(windows);

    const std::string root = readRoot(application);
    Desktop desktop{clock, dialogs, pump, opener, Paths(root), {}, DataSources(root + "/ODBC.INI")};
    if (!hazirla::findOrMakeBooks(desktop.paths, dialogs)) return 1;
    Err untold; // a template that is missing for good is told of when it is to be printed
    attempt(untold, [&] { sablonlariKur(desktop.paths); });

    Forms forms(windows);
    Session session(desktop, forms);
    session.reportDesk = &reports;
    registerScreens(forms, session);
    if (!basla(session)) return 1;
    // No first screen, or one that closed itself: a run without a window is over.
    if (forms.ended() || forms.loadedForms().empty()) return 0;
    return QApplication::exec();
}

} // namespace

} // namespace veldona

int main(int argc, char** argv) {
    // The password of the books is in this process's memory, so a crash must not write that to a file.
    const rlimit none{0, 0};
    setrlimit(RLIMIT_CORE, &none);
    QApplication application(argc, argv);
    QApplication::setApplicationName("veldona");
    QApplication::setApplicationDisplayName(veldona::kProgramTitle);
    QApplication::setDesktopFileName("arpa.home.veldona.taksit");
    QApplication::setWindowIcon(veldona::windowIcon());
    QApplication::setQuitOnLastWindowClosed(false);
    veldona::TurkishTexts texts;
    QCoreApplication::installTranslator(&texts);
    const auto fitScreen = [&application](const QScreen* screen) {
        veldona::applyHouseStyle(application, veldona::scaleForScreen(screen->availableSize()));
    };
    fitScreen(QApplication::primaryScreen());
    QObject::connect(&application, &QApplication::primaryScreenChanged, &application, fitScreen);
    return veldona::run(application);
}
