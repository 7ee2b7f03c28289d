// The window system, started only where windows are asked for: the console needs no display otherwise.
#pragma once

#include <memory>
#include <string>

#include "apps/operator/windows.h"

class QApplication;

namespace veldona::console {

class WindowSystem {
public:
    // The program's own arguments, which must outlive this.
    WindowSystem(int& count, char** arguments);
    ~WindowSystem();
    WindowSystem(const WindowSystem&) = delete;
    WindowSystem& operator=(const WindowSystem&) = delete;

    [[nodiscard]] std::unique_ptr<Windows> open(Clock& clock) const;

private:
    std::unique_ptr<QApplication> application_;
};

} // namespace veldona::console
