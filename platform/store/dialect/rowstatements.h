// The statements by which recordsets read and write rows of one table, as trees. Values are parameters,
// numbered in the order in which their columns are named here.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/store/dialect/tree.h"

namespace veldona::store::sql {

// Without columns: a row of which the counter alone is filled.
[[nodiscard]] Statement insertRow(const std::string& table, const std::vector<std::string>& columns);
// The key is the last parameter of these two.
[[nodiscard]] Statement updateRow(const std::string& table, const std::vector<std::string>& columns);
[[nodiscard]] Statement deleteRow(const std::string& table);

// Rows of a table in the order of their key, or against it.
struct RowRange {
    std::string table;
    std::vector<std::string> equal; // columns that equal a parameter each
    std::optional<Operator> key;    // how the key compares with the last parameter
    bool descending = false;
    std::optional<std::int64_t> top;
};
[[nodiscard]] Statement selectRows(const RowRange& range);
[[nodiscard]] Statement selectKeys(const RowRange& range);
[[nodiscard]] Statement countRows(const std::string& table);

} // namespace veldona::store::sql
