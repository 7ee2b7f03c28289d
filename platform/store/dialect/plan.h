// A statement made ready for the engine: its words, and what is known of its parameters and its columns.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/store/dialect/definition.h"

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
        targets;                         // the type that each value is converted to; nothing: as it reads
    std::vector<ColumnType> narrowTypes; // of the narrowing parameters, which follow the values
    std::string table;                   // written by Insert, Update, Delete
    std::vector<std::string> baseTables; // read by Select
    std::vector<ResultColumn> columns;   // of Select and Identity
    bool listsKeys = false; // a Select of nothing but the keys of one table, all of them, in order
    // A Select of the first row of one table with all its columns: the program learns their types by it, and
    // seldom looks at the row.
    bool asksForTypes = false;
    bool readsClock = false;
    bool changesKeys = false; // rows go by it, or keys come that it names
};

} // namespace veldona::store
