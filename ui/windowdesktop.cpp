#include "ui/windowdesktop.h"

#include <filesystem>

#include <QDesktopServices>
#include <QFileInfo>
#include <QStorageInfo>
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

std::vector<Medium> MountedMedia::pluggedIn() {
    std::vector<Medium> media;
    for (const QStorageInfo& volume : QStorageInfo::mountedVolumes()) {
        const QString folder = volume.rootPath();
        if (!folder.startsWith("/media/") && !folder.startsWith("/run/media/")) continue;
        if (!volume.isReady() || volume.isReadOnly()) continue;
        const QString name = volume.name().isEmpty() ? QFileInfo(folder).fileName() : volume.name();
        media.push_back({name.toStdString(), folder.toStdString()});
    }
    return media;
}

std::optional<std::uintmax_t> MountedMedia::freeRoom(const std::string& folder) {
    std::filesystem::path there = std::filesystem::absolute(folder);
    std::error_code unreachable;
    while (!std::filesystem::exists(there, unreachable) && there.has_relative_path())
        there = there.parent_path();
    const std::filesystem::space_info room = std::filesystem::space(there, unreachable);
    if (unreachable) return std::nullopt;
    return room.available;
}

} // namespace veldona
