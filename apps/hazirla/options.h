// The command line of vorel-hazirla.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "apps/hazirla/shop.h"

namespace veldona::hazirla {

struct Options {
    std::optional<std::string> root; // the folder that stands for drive C:
    bool sample = false;
    bool overwrite = false;
    ShopPlan plan;
};

// `today` stands where the command line names no day. Raises UsageError, with a sentence that names what
// cannot be read.
[[nodiscard]] Options readOptions(std::span<const char* const> arguments, DateTime today);

[[nodiscard]] const char* usage();

} // namespace veldona::hazirla
