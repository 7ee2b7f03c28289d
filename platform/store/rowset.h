// What a query answered, held in memory: one flat vector of values, row after row.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/runtime/value.h"
#include "platform/store/dialect.h"
#include "platform/store/engine.h"

namespace veldona::store {

class RowSet {
public:
    [[nodiscard]] int rowCount() const { return rows_; }
    [[nodiscard]] int columnCount() const { return columns_; }
    [[nodiscard]] const Value& at(int row, int column) const { return cells_[place(row, column)]; }
    void put(int row, int column, Value value) { cells_[place(row, column)] = std::move(value); }
    void reverseRows();

    // Takes all that `statement` answers; where that fails half-way, the rows stay what they were.
    // `expectedRows`: room made beforehand.
    void fill(Statement& statement, const std::vector<ResultColumn>& columns, std::size_t expectedRows);

private:
    [[nodiscard]] std::size_t place(int row, int column) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
               static_cast<std::size_t>(column);
    }
    std::vector<Value> cells_;
    int rows_ = 0;
    int columns_ = 0;
};

// The value that the program sees of one that was stored in a column of this type: a date's text becomes a
// date.
[[nodiscard]] Value shownValue(const Value& stored, std::optional<ColumnType> type);

// The place of a column by its name, found again at once where the same one is asked for over and over.
class ColumnIndex {
public:
    // -1 where there is no such column.
    [[nodiscard]] int find(const std::vector<ResultColumn>& columns, std::string_view name);

private:
    std::size_t last_ = 0;
};

} // namespace veldona::store
