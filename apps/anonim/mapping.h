// Which column of the books is disguised how.
#pragma once

#include <cstdint>

#include "apps/anonim/disguise.h"
#include "platform/store/engine/engine.h"

namespace veldona::anonim {

// Rewrites what could name somebody, in one transaction: account numbers alike in every table, texts,
// numbers of persons, addresses, dates. Amounts, counts, product codes and the words by which the program
// itself decides stay. The cells that were replaced are returned.
std::int64_t takeNamesOut(store::Engine& engine, Disguise& disguise);

} // namespace veldona::anonim
