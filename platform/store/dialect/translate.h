// The statements of the program, in the store's old dialect, turned into the engine's SQL.
//
// A text is split into a shape and its literals, so that a look-up typed with another number is the same
// plan: the shape is parsed, checked against the known column types and written once, the literals are
// converted by the type of the column that they meet, and bound. It is a real parser; a second statement
// behind ";" is a syntax error.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/store/dialect/catalog.h"
#include "platform/store/dialect/split.h"

namespace veldona::store {

struct ResultColumn {
    std::string name;
    std::optional<ColumnType> type; // nothing where only the value itself can tell
};

struct Plan {
    enum class Kind { Select, Insert, Update, Delete, Identity };
    Kind kind = Kind::Select;
    std::string sql; // the engine's, parameters ?1 … in the order of `targets`
    std::vector<std::optional<ColumnType>>
        targets;                         // the type that each literal is converted to; nothing: as it reads
    std::vector<ColumnType> narrowTypes; // of the narrowing parameters, which follow the literals
    std::string table;                   // written by Insert, Update, Delete
    std::vector<std::string> baseTables; // read by Select
    std::vector<ResultColumn> columns;   // of Select and Identity
    bool listsKeys = false; // a Select of nothing but the keys of one table, all of them, in order
};

// `narrowing`: columns that a Select is further limited by, each with "= parameter", joined by And.
[[nodiscard]] Plan translate(const SplitStatement& statement, const Catalog& catalog,
                             const std::vector<std::string>& narrowing = {});

} // namespace veldona::store
