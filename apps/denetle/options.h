// The command line of vorel-denetle.
#pragma once

#include <optional>
#include <span>
#include <stdexcept>
#include <string>

namespace veldona::denetle {

// What cannot be read on the command line, in a sentence.
class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Options {
    std::optional<std::string> root; // the folder that stands for drive C:
    std::optional<std::string> file; // books that lie elsewhere, a backup
    bool csv = false;
};

[[nodiscard]] Options readOptions(std::span<const char* const> arguments);

[[nodiscard]] const char* usage();

} // namespace veldona::denetle
