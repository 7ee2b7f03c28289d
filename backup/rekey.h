// Another password for the books.
#pragma once

#include <string>

#include "backup/onlooker.h"
#include "platform/runtime/datetime.h"
#include "platform/runtime/secret.h"

namespace veldona::backup {

// Puts a proven copy of the books under the password `to` in their place, and takes the former file away: it
// would open by the former password. Nobody has the books open meanwhile, so that nothing is written to what
// goes. Backups stay as they are. Where the power goes, or the disk is full, the books are whole under the
// one password or the other; a former file may be left beside them, where a restore lists it. `to` is known
// from then on. Raises Refusal, also of books on a server, or StoreError.
void rekey(const std::string& books, const Secret& to, DateTime now, const Onlooker& onlooker = {});

} // namespace veldona::backup
