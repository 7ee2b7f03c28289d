// The desktop around the program where there are windows: the clock whose waits keep painting, the pump that
// lets waiting events run, the opener that hands a file to the desktop, the disks that are plugged in.
#pragma once

#include "platform/desktop/desktop.h"

namespace veldona {

class WindowHost;

class WindowClock : public SystemClock {
public:
    // Waits as a plain clock until there are windows.
    void attach(WindowHost* host) { host_ = host; }
    void wait(int milliseconds) override;

private:
    WindowHost* host_ = nullptr;
};

class WindowPump : public EventPump {
public:
    explicit WindowPump(WindowHost& host) : host_(host) {}
    void doEvents() override;
    bool goOnWaiting(std::chrono::milliseconds waited) override;

private:
    WindowHost& host_;
};

class WindowOpener : public Opener {
public:
    bool open(const std::string& nativePath) override;
};

// What the desktop mounts when a disk is plugged in lies below these folders.
class MountedMedia : public Media {
public:
    [[nodiscard]] std::vector<Medium> pluggedIn() override;
    [[nodiscard]] std::optional<std::uintmax_t> freeRoom(const std::string& folder) override;
};

} // namespace veldona
