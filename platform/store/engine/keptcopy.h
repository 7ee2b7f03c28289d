// A copy of the books beside them, for the day on which somebody wants the former program back.
#pragma once

#include <string>
#include <string_view>

namespace veldona::store {

// Copies the books at `path` as they were last committed, proves the copy, and gives it the next free name of
// those under which a restore lists books that were set aside. Raises StoreError; what fails leaves no file.
// Only for who holds their write lock: of two at once, each would take the other's unfinished copy away.
void keepCopyBeside(const std::string& path, std::string_view password);

} // namespace veldona::store
