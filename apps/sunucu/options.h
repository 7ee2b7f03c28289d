// The command line of vorel-sunucu.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "backup/serverbooks.h"

namespace veldona::sunucu {

enum class Task { Tell, ToServer, ToFile, Renew };

struct Options {
    Task task = Task::Tell;
    std::optional<std::string> root;    // the folder that stands for drive C:
    std::optional<std::string> address; // under which this machine will open the books
    bool passwordFromInput = false;
    std::string owner = backup::kOwnerRole;
};

// Raises Refusal, with a sentence that names what cannot be read.
[[nodiscard]] Options readOptions(std::span<const char* const> arguments);

[[nodiscard]] const char* usage();

} // namespace veldona::sunucu
