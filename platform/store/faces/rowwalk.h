// The rows that a live recordset walks, and the one it stands on.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/store/faces/answer.h"
#include "platform/store/faces/dao.h"

namespace veldona::dao {

class RowWalk {
public:
    virtual ~RowWalk() = default;

    [[nodiscard]] virtual const std::vector<store::ResultColumn>& columns() const = 0;
    // The table that is written through the walk; nullptr where it cannot be written.
    [[nodiscard]] virtual const store::Catalog::Relation* table() const = 0;

    // Each stands on the row asked for; false where there is none, and then no row is stood on.
    virtual bool first() = 0;
    virtual bool last() = 0;
    // From the row stood on, also where that one is gone.
    virtual bool next() = 0;
    virtual bool previous() = 0;

    // The value in the row stood on as it is now; nullptr where the row is gone.
    [[nodiscard]] virtual const Value* cell(int column) = 0;
    // The key of the row stood on.
    [[nodiscard]] virtual std::int64_t id() const = 0;
    // The row stood on was changed, or deleted, through the walk.
    virtual void noteChange(int column, const Value& shown) = 0;
    virtual void noteRemoval() = 0;
};

using Narrowings = std::vector<Narrowing>;

// Reads a table by its key in small portions, each as the rows stand at that moment.
[[nodiscard]] std::unique_ptr<RowWalk> walkTable(std::shared_ptr<store::Database> database,
                                                 const store::Catalog::Relation& table,
                                                 const Narrowings& narrowing);
// Runs a SELECT at the first look, and again at first() where its tables were written since.
[[nodiscard]] std::unique_ptr<RowWalk> walkAnswer(std::shared_ptr<store::Database> database,
                                                  std::string_view sql, const Narrowings& narrowing);

// What is compared with a column of a narrowing; Null, which equals nothing, where no row can hold the value.
[[nodiscard]] Value comparable(const Value& value, store::ColumnType type);

} // namespace veldona::dao
