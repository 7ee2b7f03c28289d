// Putting a backup back in the place of the books.
#pragma once

#include <optional>
#include <string>

#include "backup/picture.h"
#include "platform/runtime/datetime.h"

namespace veldona::backup {

// What would be lost, in sentences; also says where the present books cannot be read.
struct Loss {
    std::string text;
    bool booksStand = false;
};

// Raises Refusal where the backup is not sound.
[[nodiscard]] Loss lossOfRestoring(const std::string& backup, const std::string& books);

// The books stand and cannot be opened for what is in the file, not for a lock or a right that lacks.
[[nodiscard]] bool areDamaged(const std::string& books);

// Puts a checked copy of `backup` in the place of `books` and answers where the replaced file was kept
// (nothing where there was none). Raises Refusal where a program has the books open; they then stay as they
// are.
std::optional<std::string> restore(const std::string& backup, const std::string& books, DateTime now);

} // namespace veldona::backup
