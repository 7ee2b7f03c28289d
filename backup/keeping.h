// The backups of a folder: their names, and which of them are kept.
//
// A name carries day and time, so that names sort by age: vorel-2026-11-22_143005.mdb. Books that a backup
// took the place of stand beside them, under the same name behind "degistirilen-". Files of any other name
// are nobody's business here.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/datetime.h"

namespace veldona::backup {

[[nodiscard]] std::string backupName(DateTime at);
[[nodiscard]] bool isBackupName(std::string_view name);

// The name of books that are replaced at `at`.
[[nodiscard]] std::string replacedName(DateTime at);
// The place in `folder` of books that are replaced now, or, where that second has books already, of the next
// one that has none.
[[nodiscard]] std::string freePlaceOfReplaced(const std::string& folder, DateTime now);

// The backups in `folder`, the oldest first. Raises Refusal.
[[nodiscard]] std::vector<std::string> listBackups(const std::string& folder);

struct Restorable {
    std::string file;
    std::string stamp; // 2026-11-22_143005
    bool isReplaced;   // books that a backup took the place of
};

// All that can be put in the place of `books`, the oldest first. None of the folders need be there. Raises
// Refusal.
[[nodiscard]] std::vector<Restorable> listRestorable(const std::set<std::string>& folders,
                                                     const std::string& books);

// Takes away the unfinished copies that killed runs left; only while no other backup is being made there.
void clearUnfinished(const std::string& folder);

// Those of `names` (the oldest first) that go: kept are all of the newest day, the newest of each of 30 days
// and the newest of each of 12 months. Days and months without a backup do not count, so that a shop that was
// closed for a season keeps what it had.
[[nodiscard]] std::vector<std::string> expired(const std::vector<std::string>& names);

} // namespace veldona::backup
