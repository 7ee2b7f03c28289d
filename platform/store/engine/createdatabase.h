// Books made anew.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/store/dialect/definition.h"

namespace veldona::store {

// Makes a new encrypted file with these tables and queries, readable by its owner alone. Raises StoreError
// where the file exists already; leaves nothing behind where it fails. `nativePath` is a path of this
// machine.
void createDatabase(const std::string& nativePath, std::string_view password,
                    const std::vector<TableDef>& tables, const std::vector<SavedQueryDef>& queries);

} // namespace veldona::store
