// The delivered schema in the engine's words, and a column's type read back from them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store/dialect/definition.h"

namespace veldona::store {

// The engine's statements that make `tables` and `queries`, with the triggers of their journal; a query's
// text is of the dialect.
[[nodiscard]] std::vector<std::string> definitionStatements(const std::vector<TableDef>& tables,
                                                            const std::vector<SavedQueryDef>& queries);
// The single ones, of which a file of former days is made up too.
enum class Lifetime { File, Connection };
[[nodiscard]] std::string tableStatement(const TableDef& table, Lifetime lifetime);
enum class Unique { No, Yes };
[[nodiscard]] std::string indexStatement(const TableDef& table, const std::vector<std::string>& columns,
                                         Unique unique);
[[nodiscard]] std::string indexName(const TableDef& table, const std::vector<std::string>& columns);
// A column as its table's statement declares it.
[[nodiscard]] std::string columnDefinition(const ColumnDef& column);
// The type of a column that was declared so by definitionStatements, as the engine tells it back; nothing for
// another declaration, and for "" (an expression of a query). A Counter reads as Whole: the table's key tells
// the two apart.
[[nodiscard]] std::optional<ColumnType> columnTypeOfDeclaration(std::string_view declaration);

} // namespace veldona::store
