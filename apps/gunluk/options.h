// The command line of vorel-gunluk.
#pragma once

#include <optional>
#include <span>
#include <string>

namespace veldona::gunluk {

struct Options {
    std::optional<std::string> root;  // the folder that stands for drive C:
    std::optional<int> months;        // entries older than so many are to go
    std::optional<std::string> owner; // of books on a server
    bool passwordFromInput = false;
    bool confirmed = false; // else a thinning is only shown
};

// Raises UsageError, with a sentence that names what cannot be read.
[[nodiscard]] Options readOptions(std::span<const char* const> arguments);

[[nodiscard]] const char* usage();

} // namespace veldona::gunluk
