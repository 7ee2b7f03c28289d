// The command line of vorel-denetle.
#pragma once

#include <optional>
#include <span>
#include <string>

namespace veldona::denetle {

struct Options {
    std::optional<std::string> root; // the folder that stands for drive C:
    std::optional<std::string> file; // books that lie elsewhere, a backup
    bool passwordFromInput = false;
    bool csv = false;
};

// Raises UsageError, with a sentence that names what cannot be read.
[[nodiscard]] Options readOptions(std::span<const char* const> arguments);

[[nodiscard]] const char* usage();

} // namespace veldona::denetle
