// What a database is made of, in no engine's words: the delivered schema is written in these terms.
#pragma once

#include <string>
#include <vector>

namespace veldona::store {

enum class ColumnType {
    Counter, // whole, filled by the store, never used twice
    Whole,   // 32 bits
    Small,   // 16 bits: flags, small counts
    Number,  // double: quantities, scaled money
    Text,    // compared and sorted by the Turkish alphabet without regard to case
    Memo,    // the same, long
    Date,    // day with time of day
    Boolean,
};

struct ColumnDef {
    std::string name;
    ColumnType type;
};

// Each table has a column ID of type Counter first: the order of equal rows and of a table opened by name.
struct TableDef {
    std::string name;
    std::vector<ColumnDef> columns;
    std::vector<std::vector<std::string>> indexes; // column names, one list an index
};

// A named query in the store's dialect, read like a table.
struct SavedQueryDef {
    std::string name;
    std::string sql;
};

} // namespace veldona::store
