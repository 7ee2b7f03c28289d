#include "ui/windowdesktop.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QUrl>

#include "ui/host.h"

namespace veldona {

void WindowClock::wait(int milliseconds) {
    if (host_)
        host_->standStill(milliseconds);
    else
        SystemClock::wait(milliseconds);
}

void WindowPump::doEvents() {
    host_.letEventsRun();
}

bool WindowPump::goOnWaiting(std::chrono::milliseconds waited) {
    return host_.goOnWaiting(waited);
}

bool WindowOpener::open(const std::string& nativePath) {
    const QFileInfo file(QString::fromStdString(nativePath));
    return file.exists() && QDesktopServices::openUrl(QUrl::fromLocalFile(file.absoluteFilePath()));
}

} // namespace veldona
