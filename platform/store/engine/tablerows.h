// All rows of a table in the order of their counters, a portion at a time: a table may be larger than the
// memory.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/store/engine/inquiry.h"

namespace veldona::store {

class TableRows {
public:
    // The columns of `table` in its order; `books` have a table of this name with these columns at least.
    TableRows(const Inquiry& books, const Catalog::Relation& table);

    bool next();
    [[nodiscard]] const Statement& row() const { return *statement_; }
    [[nodiscard]] std::int64_t id() const { return *lastId_; } // of the row stood on

private:
    [[nodiscard]] bool stepped();

    const Inquiry& books_;
    std::string columns_, table_;
    std::unique_ptr<Statement> statement_;
    std::optional<std::int64_t> lastId_;
    std::int64_t inPortion_ = 0;
};

// As it is stored.
[[nodiscard]] Value storedValue(const Statement& row, int column);

// Fills the tables of `into`, books without a row which nobody else has open, with all the rows of `from` as
// they stand in its transaction; what older books lack is empty or has its default. `onRows` is called every
// few milliseconds. Raises StoreError, and what `onRows` raises; what then stands in `into` is to be thrown
// away.
void copyRows(Engine& from, Engine& into, const std::function<void()>& onRows = {});

} // namespace veldona::store
