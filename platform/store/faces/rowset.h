// What a query answered, held in memory: one flat vector of values, row after row.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/runtime/value.h"
#include "platform/store/dialect/plan.h"
#include "platform/store/engine/engine.h"

namespace veldona::store {

class RowSet {
public:
    [[nodiscard]] int rowCount() const { return rows_; }
    [[nodiscard]] int columnCount() const { return columns_; }
    [[nodiscard]] const Value& at(int row, int column) const { return cells_[place(row, column)]; }
    void put(int row, int column, Value value) {
        cells_[place(row, column)] = std::move(value);
        keys_ = {};
        isAscending_ = false;
    }
    void remove(int row);
    void append(const RowSet& rows); // of the same columns
    void reverseRows();
    // The first row that holds this whole number in `column`, the row count where none does; nothing where
    // the rows must be walked: at the first search of an answer that is no ascending list of keys, and where
    // the column holds other values too.
    [[nodiscard]] std::optional<int> findWhole(int column, std::int64_t sought) const;

    // Takes all that `statement` answers; where that fails half-way, the rows stay what they were.
    // `expectedRows`: room made beforehand. Beyond the bounds (nullptr: there are none) it fails as TooLarge.
    void fill(Statement& statement, const std::vector<ResultColumn>& columns, std::size_t expectedRows,
              const ReadBounds* bounds = nullptr);

private:
    [[nodiscard]] std::size_t place(int row, int column) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns_) +
               static_cast<std::size_t>(column);
    }
    // A grid looks its customer up with every key, over all rows: worth an index, but not for a single
    // search.
    struct Keys {
        int column = -1;
        int searches = 0;
        bool areWhole = false;
        std::unordered_map<std::int64_t, int> firstRow;
    };
    void indexKeys() const;
    [[nodiscard]] bool isAscendingFrom(int first) const;

    mutable Keys keys_; // of the rows as they stand
    // The answer is one column of whole numbers, each above the one before: all sales, read for their keys.
    bool isAscending_ = false;
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
    std::array<std::size_t, 16> seen_{}; // by a few letters of the name
};

} // namespace veldona::store
