// The encrypted engine. A file is one database, keyed by the bytes of its password; its journal is a
// write-ahead log that is synced at each commit, so that no acknowledged row is lost to a power cut.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/runtime/datetime.h"
#include "platform/store/engine/engine.h"

namespace veldona::store {

// Looks at a file that has just been opened and raises what speaks against it; nothing has been changed yet.
using Inspection = std::function<void(Engine&)>;

// Opens an existing file and proves that the password fits by reading from it. The file becomes readable by
// its owner alone where it was not. Raises StoreError: FileMissing, WrongPassword, Damaged, Locked …
[[nodiscard]] std::unique_ptr<Engine> openSqlcipher(const std::string& nativePath, std::string_view password,
                                                    std::chrono::milliseconds busyTimeout,
                                                    std::function<DateTime()> clock = {},
                                                    const Inspection& inspect = {});

// The same to look at only, also beside a program that writes, and where this user may not write: a statement
// that would write fails, and the file stays as it is, its rights and its journal mode included.
[[nodiscard]] std::unique_ptr<Engine> openSqlcipherToRead(const std::string& nativePath,
                                                          std::string_view password,
                                                          std::chrono::milliseconds busyTimeout,
                                                          const Inspection& inspect = {});

// Makes an empty encrypted file, readable by its owner alone, where there is none.
[[nodiscard]] std::unique_ptr<Engine> createSqlcipher(const std::string& nativePath,
                                                      std::string_view password);

} // namespace veldona::store
