// A journal that has grown too long: its oldest entries are taken out, and a note takes the seal of the last
// of them along, so that what stays can be proved as before.
#pragma once

#include <cstdint>
#include <string>

#include "platform/runtime/datetime.h"
#include "platform/store/engine/engine.h"

namespace veldona::journal {

struct Thinning {
    std::int64_t entries = 0; // that are older
    std::int64_t last = 0;    // the newest of them
    std::string until;        // its moment
    std::int64_t all = 0;
};

// The entries before the first one that was written at `before` or later; a clock that went back takes none
// along.
[[nodiscard]] Thinning planThinning(store::Engine& books, DateTime before);
// Takes them out, in one transaction: whole or not at all. Raises StoreError, on a server also where this is
// not the books' owner.
void thin(store::Engine& books, const Thinning& thinning);

} // namespace veldona::journal
