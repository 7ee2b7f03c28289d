// The command line of vorel-parola.
#pragma once

#include <optional>
#include <span>
#include <string>

namespace veldona::parola {

enum class Task { Tell, Set, Remove, Keep, Forget };

struct Options {
    Task task = Task::Tell;
    std::optional<std::string> root; // the folder that stands for drive C:
    bool fromInput = false;          // the present password, and behind it the new one
};

// Raises UsageError, with a sentence that names what cannot be read.
[[nodiscard]] Options readOptions(std::span<const char* const> arguments);

[[nodiscard]] const char* usage();

} // namespace veldona::parola
