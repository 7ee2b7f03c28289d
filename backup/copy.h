// A copy of the books that has its name only when it was looked through.
#pragma once

#include <string>

#include "backup/picture.h"

namespace veldona::backup {

// Copies `books`, which may be in use, to `file`, which must not be there, encrypted alike; then opens the
// copy, has the engine check it and holds its picture against the one of the books at the moment of the copy.
// What fails leaves no file. Raises Refusal or StoreError.
Picture copyBooks(const std::string& books, const std::string& file);

// Raises Refusal where the engine finds the file broken inside, else answers its picture.
[[nodiscard]] Picture inspect(const std::string& file);

// What stands at `path`, a dead link included.
[[nodiscard]] bool stands(const std::string& path);
// Makes renames within the folder last.
void syncFolder(const std::string& folder);

} // namespace veldona::backup
