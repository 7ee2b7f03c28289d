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
// its owner alone where it was not. A journal that a killed program left beside it is read through with it
// first, and both are left as they are where they don't go together. Raises StoreError: FileMissing,
// WrongPassword, Damaged, Locked …
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

// The same of a file that nobody has open, as it stands in this one file: a journal beside it is not looked
// at, and nothing is made there.
[[nodiscard]] std::unique_ptr<Engine>
openSqlcipherAlone(const std::string& nativePath, std::string_view password, const Inspection& inspect = {});

// Runs what shapes the connection and not the file: a setting, a temporary table.
void shapeConnection(Engine& engine, std::string_view sql);

// Moves what a journal beside the file holds into the file, so that it is whole by itself. Raises StoreError,
// also where somebody else has the file open.
void settleJournal(const std::string& nativePath, std::string_view password);

// Makes an empty encrypted file, readable by its owner alone, where there is none. It is written without a
// journal: only for a file that is thrown away where its making fails.
[[nodiscard]] std::unique_ptr<Engine> createSqlcipher(const std::string& nativePath,
                                                      std::string_view password);

} // namespace veldona::store
