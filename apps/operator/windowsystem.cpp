#include "apps/operator/windowsystem.h"

#include <QApplication>

#include "ui/host.h"
#include "ui/housestyle.h"
#include "ui/screens.h"

namespace veldona::console {

namespace {

class RealWindows : public Windows {
public:
    explicit RealWindows(Clock& clock) : host_(clock) {
        host_.timersRun = false; // a timer ticks when the scenario says so
        drawScreens(host_);
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

std::unique_ptr<Windows> WindowSystem::open(Clock& clock) const {
    return std::make_unique<RealWindows>(clock);
}

} // namespace veldona::console
