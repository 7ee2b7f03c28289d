// A shop's moving in from the first look at its old file to the proven books, as the tool does it and the
// program's first start.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "apps/aktar/report.h"
#include "platform/desktop/paths.h"

namespace veldona::aktar {

struct Moving {
    std::string source; // the Jet file
    std::string password;
    bool trial = false; // look it through, move nothing
    Detail detail = Detail::Totals;
};

// Who hears of it, a line at a time: what was found and done, and how far it is (about one line a second).
struct Listener {
    std::function<void(const std::string& line)> found;
    std::function<void(const std::string& line)> isAt;
};

// Raises what each of its steps raises; the books then are as they were.
void moveShop(const Moving& moving, const Paths& paths, const Listener& listener);

struct Moved {
    bool isDone = false;
    std::vector<std::string> found;
    std::string failure; // in a sentence
};

// The same in a process of its own, which a damaged file may bring down; what the reading library says goes
// nowhere. `goOn` hears how far it is, "" in between; false ends it. May run on any thread.
[[nodiscard]] Moved moveShopApart(const Moving& moving, const Paths& paths,
                                  const std::function<bool(const std::string& line)>& goOn);

} // namespace veldona::aktar
