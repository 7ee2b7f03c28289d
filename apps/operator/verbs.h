// The verbs of a scenario, each a name and what it does on the stage.
//
// A verb throws UnreadableLine before it does anything where a word cannot be meant, and Shortfall where what
// it expects does not hold or what it does is refused.
#pragma once

#include <limits>
#include <span>
#include <string_view>

#include "apps/operator/script.h"
#include "apps/operator/stage.h"

namespace veldona::console {

inline constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();

struct Verb {
    std::string_view name;
    std::size_t least; // words behind it
    std::size_t most;
    void (*run)(Stage&, const Line&);

    [[nodiscard]] bool expects() const { return name.starts_with("expect"); }
    // Of a fixed number of words: a line may hold them several times.
    [[nodiscard]] bool repeats() const { return least > 0 && least == most; }
};

[[nodiscard]] std::span<const Verb> preparingVerbs(); // the books, the clock, the start
[[nodiscard]] std::span<const Verb> actingVerbs();    // what an operator does
[[nodiscard]] std::span<const Verb> expectingVerbs(); // what holds or falls short
[[nodiscard]] std::span<const Verb> showingVerbs();   // what is printed or written

// The verb of this line, its number of words checked.
[[nodiscard]] const Verb& verbOf(const Line& line);
// What a line stands for, one after the other: its verb for each number of words that it takes, and what it
// says behind them that this brings.
[[nodiscard]] std::vector<Line> stepsOf(const Line& line);

} // namespace veldona::console
