// Scratch rows of one table that wait to be sent together: nobody reads them before the next statement.
#pragma once

#include <string>
#include <vector>

#include "platform/store/engine/postgres/wire.h"

namespace veldona::store {

// A row as COPY reads it.
void appendCopyLine(std::string& lines, const std::vector<Bound>& row);

class RowHeap {
public:
    // `columns`: as a statement lists them, in quotes.
    RowHeap(std::string table, std::string columns)
        : table_(std::move(table)), columns_(std::move(columns)) {}

    void add(const std::vector<Bound>& row);
    [[nodiscard]] bool isOf(const std::string& table, const std::string& columns) const {
        return table == table_ && columns == columns_;
    }
    [[nodiscard]] const std::string& table() const { return table_; }
    // A few go with the next statement, in its trip; more of them by a stream of their own.
    [[nodiscard]] bool isSmall() const { return rows_ <= kFew; }
    [[nodiscard]] bool isFull() const { return lines_.size() > kFull; }

    [[nodiscard]] std::string insertStatement() const;
    [[nodiscard]] std::string copyStatement() const;
    [[nodiscard]] const std::string& lines() const { return lines_; }

private:
    static constexpr std::size_t kFew = 50, kFull = 1 << 20;

    std::string table_, columns_;
    std::string lines_, values_;
    std::size_t rows_ = 0;
};

} // namespace veldona::store
