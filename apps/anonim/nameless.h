// The books without their people, to send with the report of a fault.
#pragma once

#include <cstdint>
#include <string>

#include "apps/anonim/disguise.h"
#include "backup/picture.h"

namespace veldona::anonim {

struct Outcome {
    std::int64_t replaced = 0; // cells
    backup::Picture picture;
};

// Copies `books`, which may be in use, to `file`, which must not be there, under the same password. Every
// text is replaced but account and product numbers and the words by which the program itself decides; every
// amount, count and date is kept, of a birth date the year. Nothing of the old texts is left in the unused
// parts of the file. What fails leaves no file. Raises Refusal or StoreError.
Outcome copyWithoutNames(const std::string& books, const std::string& file, Disguise disguise);

} // namespace veldona::anonim
