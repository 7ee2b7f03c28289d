// The passwords by which this process opens files of books.
//
// A file opens by the delivered password or by one of the shop's own, of which old backups may have former
// ones. Who is told one, by the operator, a pipe or the key store, makes it known here once; whoever opens a
// file, far below, tries what is known, the newest first and the delivered one last.
//
// That books have a password of their own is noted in a file beside them. It is a note for programs and
// people and no proof: books are opened by what opens them, with it and without it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/delivered.h"
#include "platform/runtime/secret.h"

namespace veldona {

// For any thread.
namespace passwords {
void learn(const Secret& password);
void forget(); // all but the delivered one
[[nodiscard]] std::vector<Secret> known();
} // namespace passwords

[[nodiscard]] Secret deliveredPassword();

// The file of the note.
[[nodiscard]] std::string passwordNoteOf(const std::string& books);
[[nodiscard]] bool isNotedAsOwn(const std::string& books);
// False where it can't be written.
bool noteAsOwn(const std::string& books, bool own);

// Whether the file was written under the password, as far as its pages can tell. Of a file alone.
[[nodiscard]] bool opensBy(const std::string& file, const Secret& password);
// Which of the known ones that is; the delivered one where there is no file to ask: books on a server, or
// none at all. Nothing where another one is needed, or where nothing in the file can tell.
[[nodiscard]] std::optional<Secret> passwordOfBooks(const std::string& books);

} // namespace veldona
