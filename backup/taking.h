// Taking a backup into a folder that keeps many.
#pragma once

#include <string>

#include "backup/picture.h"
#include "platform/desktop/paths.h"
#include "platform/runtime/datetime.h"

namespace veldona::backup {

// Where the backups lie when nobody names a folder.
[[nodiscard]] std::string usualFolder(const Paths& paths);

struct Taken {
    std::string file;
    Picture picture;
};

// Copies `books`, which may be in use, into `folder` under the name of `now`, checks the copy, and lets go of
// the backups that need not be kept any longer. The folder is made where it is not there, for its owner
// alone; while another backup is being made in it, a Refusal. Raises Refusal, StoreError or
// std::filesystem::filesystem_error; what fails leaves no file.
Taken takeBackup(const std::string& books, const std::string& folder, DateTime now);

} // namespace veldona::backup
