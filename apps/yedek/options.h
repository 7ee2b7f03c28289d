// The command line of vorel-yedek.
#pragma once

#include <optional>
#include <span>
#include <string>

namespace veldona::yedek {

struct Options {
    std::optional<std::string> root;    // the folder that stands for drive C:
    std::optional<std::string> folder;  // of the backups
    std::optional<std::string> restore; // a backup to put back
    std::optional<std::string> owner;   // of books on a server
    bool passwordFromInput = false;
    bool confirmed = false; // else a restoring is only shown
    bool list = false;
};

// Raises UsageError, with a sentence that names what cannot be read.
[[nodiscard]] Options readOptions(std::span<const char* const> arguments);

[[nodiscard]] const char* usage();

} // namespace veldona::yedek
