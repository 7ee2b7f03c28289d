// The day's work that is interrupted, and what the books must hold wherever it was.
//
// A day is a list of acts, each one step of an operator that is kept whole or not at all. It is played once
// undisturbed, and the content of the books is noted behind each act. A day that was cut off must leave the
// books as they were behind the last act that was told of as done, or behind the one that was under way.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

#include "tests/faults/till.h"

namespace veldona::faults {

struct Act {
    std::string lines;
    std::string doneMessage; // "" where the screen says nothing when it is done
};

// A shop with two customers and an open sale of each, in a new folder.
void openShop(const Drive& drive);
// The same shop as a copy: the opening is done once a process.
void copyShop(const Drive& drive);

[[nodiscard]] std::string openingLines(int customer = 7); // from the start to the sale on show
[[nodiscard]] Act post(int lira);
[[nodiscard]] Act correctPayment(int lira); // the oldest one
[[nodiscard]] Act saveSale();               // and back to the old sale
[[nodiscard]] Act deleteSale();             // the one saved last
[[nodiscard]] Act takeBack();               // what was done last
[[nodiscard]] std::vector<Act> fullDay(int rounds);

// Everything in the books, row by row. Adds to `faults` what the engine's own check finds.
[[nodiscard]] std::string contentOf(const Drive& drive, std::string& faults);
[[nodiscard]] std::string contentOf(const std::filesystem::path& file, std::string& faults);

using Files = std::map<std::string, std::string>; // names and bytes
[[nodiscard]] Files filesBelow(const std::filesystem::path& folder);

class Day {
public:
    explicit Day(std::vector<Act> acts);

    struct Ending {
        int done = 0; // acts that were told of as done
        int status = 0;
    };
    using AwaitActs = std::function<void(int acts)>;
    using Interrupt = std::function<void(pid_t child, const AwaitActs& awaitActs)>;
    // Plays the day in a child process. `prepare` runs in it before the start, `opened` behind it;
    // `interrupt` runs here meanwhile.
    Ending play(const Drive& drive, const std::function<void()>& prepare,
                const std::function<void(Till&)>& opened = {}, const Interrupt& interrupt = {}) const;
    // What is wrong with the books that an interrupted day has left; "" where nothing is.
    [[nodiscard]] std::string wrongWith(const Drive& drive, const Ending& ending) const;
    // Behind how many acts the books held `content`; -1 where they never did.
    [[nodiscard]] int actsIn(const std::string& content) const;
    [[nodiscard]] int length() const { return static_cast<int>(acts_.size()); }

private:
    std::vector<Act> acts_;
    std::vector<std::string> contents_; // [0] before the first act
};

// How many times as long as for a change: 1, or what VELDONA_FAULTS says.
[[nodiscard]] int effort();

} // namespace veldona::faults
