// Writes an examined Jet file into a database as delivered, and proves that the same books came out.
#pragma once

#include <string>

#include "apps/aktar/examine.h"

namespace veldona::aktar {

// `target` may be missing or as delivered; one that holds anything else is refused and left as it is. It
// takes its name only when the report made from it equals the examination's. Raises Refusal, StoreError,
// RuntimeError.
void moveIn(const JetFile& file, const Examination& examined, const std::string& target,
            const Progress& progress);

} // namespace veldona::aktar
