// The question before the start: the password of books that have one of their own.
#pragma once

namespace veldona {

struct Session;

// Finds the password by which the books open and leaves it in gSifre: a known one, that of the key store, or
// what the operator types, three times at most. Books that nobody gave a password are not looked at, and
// nothing is asked. False where it was not found: the program is to end, and has said why.
[[nodiscard]] bool knowPassword(Session& session);
// The same behind a start that failed, of books that nothing notes as having one of their own: those that
// somebody copied here without the note. Notes it where one was found; false, too, where they are damaged.
[[nodiscard]] bool askForUnnotedPassword(Session& session);

} // namespace veldona
