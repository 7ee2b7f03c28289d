// The command line of vorel-aktar.
#pragma once

#include <optional>
#include <span>
#include <string>

namespace veldona::aktar {

struct Options {
    std::string source; // the Jet file
    std::optional<std::string> root;
    std::string password;
    bool passwordFromInput = false; // "--parola -": it is the first line of the standard input
    bool trial = false;
};

// Raises UsageError, with a sentence that names what cannot be read.
[[nodiscard]] Options readOptions(std::span<const char* const> arguments);

[[nodiscard]] const char* usage();

} // namespace veldona::aktar
