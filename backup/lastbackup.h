// When the last backup was taken, and where it went.
//
// It stands in a line of a file beside the books, since a plugged-in disk takes its backups away with it. The
// names in the usual folder count too: they tell of backups that were taken before there was such a line.
#pragma once

#include <optional>
#include <string>

#include "platform/runtime/datetime.h"

namespace veldona::backup {

struct LastBackup {
    DateTime at;
    std::string file;
};

// Where the line can't be written, the backup stands all the same.
void noteBackup(const std::string& books, const LastBackup& taken);

// The newest of all that is known; `folder`: the usual one, which need not be there.
[[nodiscard]] std::optional<LastBackup> findLastBackup(const std::string& books, const std::string& folder);

// "Son yedek 3 gün önce": in calendar days. A backup that is newer than `now` says nothing about its age but
// that the clock is wrong, and that is what is said then.
[[nodiscard]] std::string ageText(const std::optional<LastBackup>& last, DateTime now);

} // namespace veldona::backup
