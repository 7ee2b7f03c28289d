// When the last backup was taken, and where it went.
//
// It stands in a line of a file beside the books, since a plugged-in disk takes its backups away with it. The
// names in the usual folder count too: they tell of backups that were taken before there was such a line.
#pragma once

#include <array>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/desktop/paths.h"
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

// The same for who asks again and again: looked for anew where anything was put into the folder or the line
// was written since.
class KnownLastBackup {
public:
    [[nodiscard]] const std::optional<LastBackup>& of(const Paths& paths);

private:
    using Moments = std::array<std::filesystem::file_time_type, 3>;
    [[nodiscard]] Moments moments() const;

    std::string books_, folder_; // "": not looked for yet
    Moments seen_{};
    std::optional<LastBackup> last_;
};

// "Son yedek 3 gün önce": in calendar days. A backup that is newer than `now` says nothing about its age but
// that the clock is wrong, and that is what is said then.
[[nodiscard]] std::string ageText(const std::optional<LastBackup>& last, DateTime now);

} // namespace veldona::backup
