#include "platform/store/faces/rowset.h"

#include <algorithm>
#include <stdexcept>

#include "platform/store/dialect/literal.h"
#include "platform/store/dialect/names.h"

namespace veldona::store {
namespace {

// A text in a date column that is no stored date is shown as it stands: nothing of the file is hidden.
Value shownText(std::string_view text, std::optional<ColumnType> type) {
    if (type == ColumnType::Date) {
        if (const auto date = dateOfStored(text)) return *date;
    }
    return text;
}

Value shownWhole(std::int64_t whole, std::optional<ColumnType> type) {
    if (type == ColumnType::Boolean) return whole != 0;
    if (type == ColumnType::Number) return static_cast<double>(whole);
    return whole;
}

Value cell(const Statement& statement, int column, std::optional<ColumnType> type) {
    switch (statement.storage(column)) {
    case Statement::Storage::Null:
        return {};
    case Statement::Storage::Whole:
        return shownWhole(statement.whole(column), type);
    case Statement::Storage::Number:
        return statement.number(column);
    case Statement::Storage::Text:
        return shownText(statement.text(column), type);
    }
    return {};
}

} // namespace

Value shownValue(const Value& stored, std::optional<ColumnType> type) {
    if (stored.kind() == Value::Kind::Text) return shownText(stored.get<std::string>(), type);
    if (stored.kind() == Value::Kind::Whole) return shownWhole(stored.get<std::int64_t>(), type);
    return stored;
}

void RowSet::fill(Statement& statement, const std::vector<ResultColumn>& columns, std::size_t expectedRows,
                  const ReadBounds* bounds) {
    const auto width = static_cast<int>(columns.size());
    if (statement.columnCount() != width)
        throw std::logic_error("a plan names other columns than its statement");
    std::vector<Value> cells;
    int rows = 0;
    cells.reserve(expectedRows * columns.size());
    std::size_t bytes = 0;
    for (; statement.step(); ++rows) {
        for (int i = 0; i < width; ++i)
            cells.push_back(cell(statement, i, columns[static_cast<std::size_t>(i)].type));
        if (bounds == nullptr) continue;
        for (auto taken = cells.end() - width; taken != cells.end(); ++taken)
            bytes += bytesOf(*taken);
        if (static_cast<std::size_t>(rows) >= bounds->mostRows || bytes > bounds->mostBytes) throw tooLarge();
    }
    keys_ = {};
    cells_ = std::move(cells);
    rows_ = rows;
    columns_ = width;
    isAscending_ = width == 1 && isAscendingFrom(0);
}

// As far as the row before `first` it is known.
bool RowSet::isAscendingFrom(int first) const {
    for (int row = first; row < rows_; ++row) {
        const Value& cell = at(row, 0);
        if (cell.kind() != Value::Kind::Whole) return false;
        if (row > 0 && at(row - 1, 0).get<std::int64_t>() >= cell.get<std::int64_t>()) return false;
    }
    return true;
}

void RowSet::indexKeys() const {
    keys_.areWhole = true;
    keys_.firstRow.reserve(static_cast<std::size_t>(rows_));
    for (int row = 0; row < rows_ && keys_.areWhole; ++row) {
        const Value& cell = at(row, keys_.column);
        keys_.areWhole = cell.kind() == Value::Kind::Whole || cell.isNull();
        if (keys_.areWhole && !cell.isNull()) keys_.firstRow.try_emplace(cell.get<std::int64_t>(), row);
    }
}

std::optional<int> RowSet::findWhole(int column, std::int64_t sought) const {
    if (isAscending_) {
        const auto found = std::ranges::lower_bound(
            cells_, sought, {}, [](const Value& cell) { return cell.get<std::int64_t>(); });
        return found != cells_.end() && found->get<std::int64_t>() == sought
                   ? static_cast<int>(found - cells_.begin())
                   : rows_;
    }
    if (keys_.column != column) {
        keys_ = {};
        keys_.column = column;
    }
    if (++keys_.searches == 1) return std::nullopt;
    if (keys_.searches == 2) indexKeys();
    if (!keys_.areWhole) return std::nullopt;
    const auto found = keys_.firstRow.find(sought);
    return found == keys_.firstRow.end() ? rows_ : found->second;
}

void RowSet::remove(int row) {
    keys_ = {};
    const auto first = cells_.begin() + static_cast<std::ptrdiff_t>(place(row, 0));
    cells_.erase(first, first + columns_);
    --rows_;
}

void RowSet::append(const RowSet& rows) {
    keys_ = {};
    const int before = rows_;
    cells_.insert(cells_.end(), rows.cells_.begin(), rows.cells_.end());
    rows_ += rows.rows_;
    isAscending_ = isAscending_ && isAscendingFrom(before);
}

void RowSet::reverseRows() {
    keys_ = {};
    isAscending_ = false;
    for (int low = 0, high = rows_ - 1; low < high; ++low, --high) {
        const auto first = cells_.begin() + static_cast<std::ptrdiff_t>(place(low, 0));
        std::swap_ranges(first, first + columns_,
                         cells_.begin() + static_cast<std::ptrdiff_t>(place(high, 0)));
    }
}

int ColumnIndex::find(const std::vector<ResultColumn>& columns, std::string_view name) {
    if (name.empty()) return -1;
    const auto letter = [](char c) { return static_cast<std::size_t>(c) & 0x1f; }; // of either case
    std::size_t& seen = seen_[(name.size() + 3 * letter(name.front()) + letter(name.back())) % seen_.size()];
    if (seen < columns.size() && sameName(columns[seen].name, name)) return static_cast<int>(seen);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (!sameName(columns[i].name, name)) continue;
        seen = i;
        return static_cast<int>(i);
    }
    return -1;
}

} // namespace veldona::store
