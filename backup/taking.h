// Taking a backup into a folder that keeps many.
#pragma once

#include <optional>
#include <string>

#include "backup/fingerprint.h"
#include "backup/onlooker.h"
#include "platform/desktop/paths.h"
#include "platform/runtime/datetime.h"

namespace veldona::backup {

// Where the backups lie when nobody names a folder.
[[nodiscard]] std::string usualFolder(const Paths& paths);

// The same on a disk that was plugged in: one of its own, so that they do not lie among other files.
[[nodiscard]] std::string folderOn(const std::string& disk);

struct Taken {
    std::string file;
    Fingerprint fingerprint;
    std::optional<std::string> newer; // the newest backup, where its name is a later one
};

// Copies `books`, which may be in use, into `folder` under the name of `now`, proves the copy, and lets go of
// the backups that need not be kept any longer: of none where one is named later than `now`, since a clock
// that fell back says nothing about age. The folder is made where it is not there, for its owner alone; while
// another backup is being made in it, a Refusal. Raises Refusal or StoreError; what fails leaves no file.
// The moment is kept for findLastBackup.
Taken takeBackup(const std::string& books, const std::string& folder, DateTime now,
                 const Onlooker& onlooker = {});

// For the operator; "" where all is as it should be.
[[nodiscard]] std::string warningOf(const Taken& taken);

} // namespace veldona::backup
