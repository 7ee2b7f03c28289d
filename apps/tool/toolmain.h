// How a command begins and ends, and what each tells about itself.
#pragma once

#include <functional>
#include <span>

namespace veldona {

struct Tool {
    const char* name;
    const char* usage; // a page, its last line ended
    int failure = 1;   // the exit code where an exception left it
};

// The exit code of `run`, which gets the arguments behind the program's name. The sentence of an exception
// that left it goes to the standard error. What the tool writes is its owner's alone. Where a word asks for
// the page or the version (--yardim, --help, -h, --surum, --version), that is told instead.
int toolMain(const Tool& tool, int count, const char* const* arguments,
             const std::function<int(std::span<const char* const>)>& run);

} // namespace veldona
