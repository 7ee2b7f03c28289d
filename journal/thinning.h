// A journal that has grown too long: its oldest entries are taken out, and a note takes the seal of the last
// of them along, so that what stays can be proved as before.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "platform/runtime/datetime.h"
#include "platform/store/engine/engine.h"

namespace veldona::journal {

struct Thinning {
    std::int64_t entries = 0; // that are older
    std::int64_t acts = 0;    // that wrote them
    std::int64_t last = 0;    // the newest of them
    std::string until;        // its moment
    std::int64_t bytes = 0;   // what they take, about
    std::int64_t all = 0;
    std::int64_t allBytes = 0;
    std::string since; // the moment of the first of all
};

// The act that does it.
inline constexpr const char* kThinningName = "Günlüğü İncelt";

// The first day of a month: older than `months` is what was written before it.
[[nodiscard]] DateTime monthsBefore(DateTime now, int months);
// The entries before the first one that was written at `before` or later; a clock that went back takes none
// along.
[[nodiscard]] Thinning planThinning(store::Engine& books, DateTime before);

// In sentences: what stands there, what would go with the older entries, and that they have gone.
[[nodiscard]] std::string describe(const Thinning& thinning);
[[nodiscard]] std::string lossOf(const Thinning& thinning);
[[nodiscard]] std::string thinnedWords(std::int64_t entries);

// False on a server for whom its journal is not: the tills.
[[nodiscard]] bool mayThin(store::Engine& books);
// Asked every few thousand entries; false gives the thinning up.
using ThinningGoesOn = std::function<bool(std::int64_t done, std::int64_t all)>;
// Takes them out, in one transaction: whole or not at all. How many went: none where it was given up, or
// where somebody else has taken the last of them out meanwhile. Raises StoreError, on a server also where
// this is not the books' owner.
std::int64_t thin(store::Engine& books, const Thinning& thinning, const ThinningGoesOn& goesOn = {});

} // namespace veldona::journal
