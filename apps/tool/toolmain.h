// How a tool of the command line begins and ends.
#pragma once

#include <functional>
#include <span>

namespace veldona {

// The exit code of `run`, which gets the arguments behind the program's name; 1 where an exception left it,
// whose sentence has then gone to the standard error. What the tool writes is its owner's alone.
int toolMain(int count, const char* const* arguments,
             const std::function<int(std::span<const char* const>)>& run);

} // namespace veldona
