// A small disk, really: a file system of its own size that only a child process sees. Where the machine
// allows none, a limit to the length of each file does for programs that write one file.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace veldona::faults {

inline constexpr std::size_t kDiskPage = 4096;

enum class DiskKind { Own, LimitedFiles };

// Runs `act` in a child process with an empty disk of 16 MB at `at`, and gives back what it answered: what is
// wrong, or "". Nothing where there is no such disk to be had.
[[nodiscard]] std::optional<std::string> onDisk(DiskKind kind, const std::filesystem::path& at,
                                                const std::function<std::string()>& act);

// While it stands, the disk at `at` has room for so many pages.
class NoRoom {
public:
    NoRoom(DiskKind kind, const std::filesystem::path& at, std::size_t pagesLeft);
    ~NoRoom();
    NoRoom(const NoRoom&) = delete;
    NoRoom& operator=(const NoRoom&) = delete;

private:
    DiskKind kind_;
    std::filesystem::path filler_;
};

// What is said where there was none.
[[nodiscard]] bool tellsOfRoom(const std::string& text);

} // namespace veldona::faults
