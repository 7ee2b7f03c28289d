// Who looks on while a copy is made and proven, and may give it up.
#pragma once

#include <cstdint>
#include <functional>

#include "backup/refusal.h"

namespace veldona::backup {

enum class Step { Copying, Proving };

// Asked often, on the thread that does the work: `done` of `all` pages; where `all` is 0 nobody knows how
// far it is. False gives the work up, which leaves as GivenUp and takes away what was begun.
using Onlooker = std::function<bool(Step step, std::int64_t done, std::int64_t all)>;

class GivenUp : public Refusal {
public:
    GivenUp() : Refusal("Vazgeçildi.") {}
};

// Raises GivenUp where the onlooker, if there is one, will not go on.
inline void look(const Onlooker& onlooker, Step step, std::int64_t done = 0, std::int64_t all = 0) {
    if (onlooker && !onlooker(step, done, all)) throw GivenUp();
}

} // namespace veldona::backup
