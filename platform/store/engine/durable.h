// Waits for the disk. Each raises StoreError where the disk does not answer.
#pragma once

#include <string>

namespace veldona::store {

void syncFile(const std::string& path);
// A new name is on the disk only when its folder is.
void syncFolderOf(const std::string& path);

} // namespace veldona::store
