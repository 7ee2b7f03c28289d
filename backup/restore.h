// Putting a backup back in the place of the books.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "backup/fingerprint.h"
#include "backup/serverbooks.h"
#include "platform/runtime/datetime.h"
#include "platform/runtime/secret.h"

namespace veldona::backup {

// What would be lost, in sentences; also says where the present books cannot be read.
struct Loss {
    std::string text;
    bool booksStand = false;
};

// Raises Refusal where the backup is not sound.
[[nodiscard]] Loss lossOfRestoring(const std::string& backup, const std::string& books);

// What else `file` opens by, in words: "" where it is `books`, the password of the books as far as that is
// known. Old backups keep the password under which they were taken.
[[nodiscard]] std::string otherPasswordOf(const std::string& file, const std::optional<Secret>& books);

// The books stand and cannot be opened for what is in the file, not for a lock or a right that lacks.
[[nodiscard]] bool areDamaged(const std::string& books);

// Puts a proven copy of `backup` in the place of `books` and answers what was set aside: the replaced file,
// and a journal beside it that could not be taken in. The copy gets the password of the books that it
// replaces, where that is known, else it keeps that of the backup. Books on a server are replaced there by
// the role `owner`, and set aside there. Raises Refusal where a program has the file open, or StoreError; the
// books then stay as they are.
std::vector<std::string> restore(const std::string& backup, const std::string& books, DateTime now,
                                 const std::string& owner = kOwnerRole);

// Where they are, in a sentence; "" where nothing was set aside.
[[nodiscard]] std::string describe(const std::vector<std::string>& setAside);

} // namespace veldona::backup
