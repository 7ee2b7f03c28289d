#include "apps/operator/windowsystem.h"

#include <QApplication>

#include "apps/veldona/backupmenu.h"
#include "apps/veldona/menus.h"
#include "ui/host.h"
#include "ui/housestyle.h"
#include "ui/screens.h"

namespace veldona::console {

namespace {

class RealWindows : public Windows {
public:
    RealWindows(Clock& clock, const std::string& folder)
        : host_(clock), backups_(host_, clock, Paths(folder)) {
        host_.timersRun = false; // a timer ticks when the scenario says so
        drawScreens(host_);
        // As in the program, but a scenario reaches no menu: nobody goes back to a backup.
        host_.addTo("frmMainVeldona", [this](FormWindow& window) { addMenus(window, backups_, [] {}); });
    }

    FormHost& follower() override { return host_; }

    void flush() override {
        host_.flush();
        QCoreApplication::processEvents();
    }

    // The end of the process unwinds the program, but not through the window system.
    void pressKey(Form& screen, const KeyEvent& key) override {
        Forms& forms = screen.forms();
        forms.dispatch([&] { forms.runLoop([&] { host_.typeKey(screen, key); }); });
    }

    bool takePicture(Form& screen, const std::string& file) override {
        return host_.screenshot(screen, file);
    }

private:
    WindowHost host_;
    BackupMenu backups_;
};

// Where there is no display, windows are drawn without one.
void choosePlatform() {
    for (const char* set : {"QT_QPA_PLATFORM", "DISPLAY", "WAYLAND_DISPLAY"}) {
        if (qEnvironmentVariableIsSet(set)) return;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
}

} // namespace

WindowSystem::WindowSystem(int& count, char** arguments) {
    choosePlatform();
    application_ = std::make_unique<QApplication>(count, arguments);
    // A picture shows the caret whenever it is taken.
    QApplication::setCursorFlashTime(0);
    followScreen(*application_);
}

WindowSystem::~WindowSystem() = default;

std::unique_ptr<Windows> WindowSystem::open(Clock& clock, const std::string& folder) const {
    return std::make_unique<RealWindows>(clock, folder);
}

} // namespace veldona::console
