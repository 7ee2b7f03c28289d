// Books between a file and a server.
//
// Each way ends in one step, and is proved before it: every value of every row, and what each account owes. A
// run that was killed is finished by the next one. The books that were left are kept under another name, so
// that nobody goes on writing into them.
#pragma once

#include <string>

#include "backup/sameness.h"
#include "platform/runtime/datetime.h"
#include "platform/store/engine/place.h"

namespace veldona::backup {

// The role that makes and upgrades the tables, where nobody names another.
inline constexpr const char* kOwnerRole = "veldona_sahip";

struct Carried {
    Sameness same;
    std::string setAside; // where the books that were left are now
};

// Carries the books of the file `books` to the server that `till` tells of, made by the role `owner`, and
// writes beside the file where they are now. Raises Refusal or StoreError where a program has them open,
// where books stand on the server, where the till can't open them; all is then as it was.
Carried moveToServer(const std::string& books, const store::ServerAddress& till, const std::string& owner,
                     DateTime now);

// Carries the books that `books` stands for from their server back into that file.
Carried moveToFile(const std::string& books, const std::string& owner, DateTime now);

// Brings the books on the server up to date that an earlier release made: made anew beside them and proved,
// they take their name in one step. Nothing is set aside where they are of today. Raises Refusal or
// StoreError, also where a till has them open; they are then as they were.
Carried renewOnServer(const std::string& books, const std::string& owner, DateTime now);

// Puts the books of `source`, a file that is whole by itself, in the place of those on the server; these are
// kept there under a name that the answer tells, "" where there were none. Raises StoreError where a till has
// them open.
std::string putOnServer(const std::string& source, const store::ServerPlace& place, DateTime now);

} // namespace veldona::backup
