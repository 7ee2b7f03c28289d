// The condition by which a recordset is searched: one column held against one value.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "platform/runtime/value.h"
#include "platform/store/dialect/plan.h"
#include "platform/store/faces/rowset.h"

namespace veldona::store {

namespace sql {
struct Token;
}

class Criteria {
public:
    // "COLUMN = value" (also <, >, <=, >=, <>, like). Raises StoreError where it is none, or names no column.
    Criteria(std::string_view text, const std::vector<ResultColumn>& columns);

    // The first row from `from` on that fits; the row count where none does. Null fits nothing.
    [[nodiscard]] int findRow(const RowSet& rows, int from) const;

private:
    enum class Relation { Equal, Less, Greater, LessOrEqual, GreaterOrEqual, Unequal, Like };

    [[nodiscard]] static std::optional<Relation> relationOf(const sql::Token& token);
    [[nodiscard]] static bool isAs(Relation relation, int order);
    [[nodiscard]] bool fits(const Value& cell) const; // of all kinds but text
    [[nodiscard]] int findKey(const RowSet& rows, int from) const;
    [[nodiscard]] int findText(const RowSet& rows, int from) const;

    int column_ = 0;
    Relation relation_ = Relation::Equal;
    Value sought_;
};

} // namespace veldona::store
