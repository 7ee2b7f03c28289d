// Work on a stranger's file, in a process of its own. A damaged file can bring the reading library down, lead
// it in circles or make it ask for all memory; each of these ends in a sentence then, and nothing else of the
// program is touched.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace veldona::aktar {

struct Limits {
    std::uint64_t megabytes; // of memory, besides what this process has already
    std::uint64_t seconds;   // at work; twice as many by the clock on the wall
};

// Far more than the moving in of a sound file of this size needs.
[[nodiscard]] Limits limitsFor(std::uint64_t fileBytes);

struct Ending {
    int code;
    std::string why; // what ended the work; empty where it ended by itself
};

// `work` returns the code; it leaves by std::bad_alloc where memory runs out, and by nothing else. Who ends
// this process ends the work too, and so does `goOn`, which is asked a few times a second, by false.
[[nodiscard]] Ending runApart(const Limits& limits, const std::function<int()>& work,
                              const std::function<bool()>& goOn = {});

} // namespace veldona::aktar
