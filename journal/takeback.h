// An act taken back: what it added goes, what it removed comes back under its old ID, what it changed is as
// before. Whole or not at all, and only where nothing since stands in its way.
//
// In the way stands a row that is no longer as the act left it, one that hangs on a row which would go (a
// payment taken since on a sale that was saved then), and one that is gone on which a row hangs that would
// come back. Another till's work on other rows does not.
//
// The totals of a product are what every sale of every till moves. They go by what the act moved them, so
// that the sales since stay counted; a row that is as the act left it goes back by value.
#pragma once

#include <optional>
#include <string>

#include "journal/acts.h"

namespace veldona::journal {

struct Obstacle {
    std::string what;       // in the words of the shop, a sentence
    std::optional<Act> act; // whose; without its entries. Nothing where the journal knows of none
    bool isItself = false;  // nothing done since: such an act is never taken back
};

// Whether it could be taken back now; nothing where it can. Writes nothing.
[[nodiscard]] std::optional<Obstacle> obstacleTo(adodb::Connection& books, const Act& act);

// In a transaction of its own, which must not be inside another one; nothing where it is done. Raises what
// the store raises; nothing is written then.
[[nodiscard]] std::optional<Obstacle> takeBack(adodb::Connection& books, const Act& act);

} // namespace veldona::journal
