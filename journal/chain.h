// Whether the journal of the books is as it was written: each entry's seal, the seals' chain, and what this
// machine has seen of it before.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "journal/toldrows.h"
#include "platform/store/engine/engine.h"

namespace veldona::journal {

// The newest entry of the books when this machine looked last; kept outside of them (seen.h).
struct Seen {
    std::int64_t id = 0;
    std::string seal, moment;
};

enum class Breach {
    Removed,    // an entry is missing
    Changed,    // one is not as it was written
    Inserted,   // one was written by somebody else
    TailGone,   // the newest entries were taken out
    CopiedBack, // the books are older than what this machine has seen: a file copied back from a backup
    Missing,    // all of it is gone: table, or key
};

struct Chain {
    std::int64_t entries = 0;
    std::int64_t first = 0, last = 0; // the entries' numbers
    std::string since;                // the moment of the first
    std::string seal, moment;         // of the last
    struct Broken {
        Breach breach;
        std::int64_t id = 0; // the first entry that it concerns
        std::string moment;  // of it, or of the last one that is sound
    };
    std::optional<Broken> broken; // the first one
};

// Reads all of it, once, from front to back, and with `strays` the rows of the books behind it, where it is
// whole: what it tells of them must be of the same moment, that of a transaction which the caller begins.
// Books without a journal, of an older release, are sound and have no entry. Raises StoreError.
[[nodiscard]] Chain examine(store::Engine& books, const std::vector<Seen>& seen = {},
                            Strays* strays = nullptr);

// In a sentence: how much there is of it, and the first place where it is broken.
[[nodiscard]] std::string describe(const Chain& chain);

} // namespace veldona::journal
