// The command line of vorel-anonim.
#pragma once

#include <optional>
#include <span>
#include <string>

namespace veldona::anonim {

struct Options {
    std::optional<std::string> root; // the folder that stands for drive C:
    bool passwordFromInput = false;
    std::string target;
};

// Raises UsageError, with a sentence that names what cannot be read.
[[nodiscard]] Options readOptions(std::span<const char* const> arguments);

[[nodiscard]] const char* usage();

} // namespace veldona::anonim
