// What the engine's result codes and a file's state mean to the operator: what happened, what may be wrong,
// what to do. The engine's own texts stay inside.
#pragma once

#include <string>
#include <string_view>

#include "platform/store/dialect/storeerror.h"

struct sqlite3;

namespace veldona::store {

// `engineText`: looked at only for the mark of our own SQL functions, whose words follow it.
[[nodiscard]] StoreError engineFailure(int code, std::string_view engineText);
// Raises what the last call on `connection` failed with.
[[noreturn]] void failEngine(sqlite3* connection);

[[nodiscard]] StoreError missingFile(const std::string& path);
[[nodiscard]] StoreError unreachableFile(const std::string& path);
[[nodiscard]] StoreError readOnlyFile(const std::string& path);
[[nodiscard]] StoreError fileExists(const std::string& path);
[[nodiscard]] StoreError notADatabase(const std::string& path, std::string_view why);
[[nodiscard]] StoreError foreignJournal(const std::string& path);
[[nodiscard]] StoreError wrongPassword();

} // namespace veldona::store
