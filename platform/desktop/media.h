// Disks that were plugged in and that the desktop has mounted.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace veldona {

struct Medium {
    std::string name;   // as the desktop calls it
    std::string folder; // where it is mounted, a path of this machine
};

class Media {
public:
    virtual ~Media() = default;
    // Those that can be written to.
    [[nodiscard]] virtual std::vector<Medium> pluggedIn() = 0;
};

} // namespace veldona
