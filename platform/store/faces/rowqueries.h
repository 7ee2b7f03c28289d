// The statements by which recordsets read and write the rows of one table: prepared once for each set of
// columns, with their values put in where they belong.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/store/dialect/rowstatements.h"
#include "platform/store/faces/database.h"

namespace veldona::store {

using ColumnNames = std::vector<std::string_view>;

// Values are Null until they are put, in the order of the columns; the key is the last one.
[[nodiscard]] Query insertion(Database& database, std::string_view table, const ColumnNames& columns);
[[nodiscard]] Query correction(Database& database, std::string_view table, const ColumnNames& columns);
[[nodiscard]] Query removal(Database& database, std::string_view table);
// In the order of the range: the columns that equal a value, then the key.
[[nodiscard]] Query rows(Database& database, const sql::RowRange& range);

// The keys above `id`, and how many rows there are.
[[nodiscard]] Query keysAbove(Database& database, std::string_view table, std::int64_t id);
[[nodiscard]] Query rowCount(Database& database, std::string_view table);

} // namespace veldona::store
