// What a database is made of, in no engine's words: the delivered schema is written in these terms.
#pragma once

#include <optional>
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
    std::optional<int> defaultValue =
        {}; // of a row whose statement does not name the column; else it is Null
};

// Each table has a column ID of type Counter first: the order of equal rows and of a table opened by name.
struct TableDef {
    std::string name;
    std::vector<ColumnDef> columns;
    std::vector<std::vector<std::string>> indexes; // column names, one list an index
    std::vector<std::string> key = {}; // no two rows share the values of these columns; indexed too
    bool isJournaled = false;          // each row that is added, changed or removed leaves an entry in GUNLUK
};

// A named query in the store's dialect, read like a table.
struct SavedQueryDef {
    std::string name;
    std::string sql;
};

// All that a file of books may be made of. Scratch tables belong to each connection; older files hold them.
struct Delivered {
    std::vector<TableDef> tables;
    std::vector<SavedQueryDef> queries;
    std::vector<TableDef> scratch;
};

} // namespace veldona::store
