// The books without their people, to send with the report of a fault.
#pragma once

#include <cstdint>
#include <string>

#include "apps/anonim/disguise.h"
#include "backup/fingerprint.h"

namespace veldona::anonim {

struct Outcome {
    std::int64_t replaced = 0; // cells
    backup::Fingerprint fingerprint;
};

// Copies `books`, which may be in use, to `file`, which must not be there, under the delivered
// password, since it goes to somebody who is told none. What
// could name somebody is replaced (mapping.h), so that a check of the copy finds what it finds in the books.
// Nothing of the old texts is left in the unused parts of the file. What fails leaves no file. Raises Refusal
// or StoreError.
Outcome copyWithoutNames(const std::string& books, const std::string& file, Disguise disguise);

} // namespace veldona::anonim
