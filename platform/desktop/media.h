// Disks that were plugged in and that the desktop has mounted, and the room on a disk.
#pragma once

#include <cstdint>
#include <optional>
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
    // Free bytes of the disk that the folder lies or will lie on; nothing where that can't be told.
    [[nodiscard]] virtual std::optional<std::uintmax_t> freeRoom(const std::string& folder) = 0;
};

} // namespace veldona
