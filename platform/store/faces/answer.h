// What a query answered, and whether it still stands: both faces keep their answers in this form.
#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "platform/store/faces/database.h"
#include "platform/store/faces/rowset.h"

namespace veldona::store {

class Answer {
public:
    Answer(std::shared_ptr<Database> database, Query query)
        : database_(std::move(database)), query_(std::move(query)) {}

    // Asks where that was not done yet, or where a table below the query was written since, by anyone. True
    // where it asked.
    bool renew();

    [[nodiscard]] bool isAsked() const { return isAsked_; }
    [[nodiscard]] const Plan& plan() const { return query_.plan(); }
    [[nodiscard]] const RowSet& rows() const { return rows_; }
    // A value written through the rows stands in them too.
    void put(int row, int column, Value value) { rows_.put(row, column, std::move(value)); }

private:
    // False where rows that were read before are gone, or may be. `stillStand`: none is, for sure.
    bool appendNewKeys(bool stillStand);

    std::shared_ptr<Database> database_; // before the query, whose statement must go first
    Query query_;
    RowSet rows_;
    std::uint64_t stamp_ = 0, keyChanges_ = 0;
    bool isAsked_ = false;
    bool mayBeUndone_ = false; // read inside a transaction: its end may bring rows back, and keys to new rows
};

} // namespace veldona::store
