// The statements of the program, in the store's old dialect, turned into the engine's SQL.
//
// A look-up typed with another number is the same plan: the tree is checked against the known column types
// and written once, the values are converted by the type of the column that they meet, and bound. It is a
// real parser; a second statement behind ";" is a syntax error.
#pragma once

#include <string>
#include <vector>

#include "platform/store/dialect/catalog.h"
#include "platform/store/dialect/enginewords.h"
#include "platform/store/dialect/plan.h"
#include "platform/store/dialect/reading.h"
#include "platform/store/dialect/tree.h"

namespace veldona::store {

// `narrowing`: columns that a Select is further limited by, each with "= parameter", joined by And.
[[nodiscard]] Plan translate(const Reading& statement, const Catalog& catalog, const EngineWords& words,
                             const std::vector<std::string>& narrowing = {});
// A tree that the store made by itself, with that many parameters.
[[nodiscard]] Plan translate(sql::Statement tree, std::size_t parameters, const Catalog& catalog,
                             const EngineWords& words, const std::vector<std::string>& narrowing = {});

} // namespace veldona::store
