// For whoever keeps what it made of very many rows, and reads anew those alone that were written since.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/store/engine/engine.h"
#include "platform/store/faces/adodb.h"

namespace veldona::adodb {

// While it stands, all that is read is the books as they stood at the first look, and nothing may be written.
// In a transaction it does nothing: that one sees its own moment.
class OneMoment {
public:
    explicit OneMoment(const Connection& books);
    ~OneMoment();
    OneMoment(const OneMoment&) = delete;
    OneMoment& operator=(const OneMoment&) = delete;

private:
    std::shared_ptr<store::Database> reading_; // nothing in a transaction
};

// While it stands, no lock of another till is waited for.
class NoWait {
public:
    explicit NoWait(Connection& books) : books_(books), before_(std::exchange(books.commandTimeout, 0)) {}
    ~NoWait();
    NoWait(const NoWait&) = delete;
    NoWait& operator=(const NoWait&) = delete;

private:
    Connection& books_;
    int before_;
};

struct WatchedColumn {
    std::string table;
    std::string column;
};

// The values that some columns have and had in the rows that any till wrote, by the journal of the books.
class RowWatch {
public:
    using Values = std::vector<std::vector<Value>>; // of each column

    explicit RowWatch(std::vector<WatchedColumn> columns) : columns_(std::move(columns)) {}

    // Of the rows written since the last call, asked in the moment in which they are read. Nothing where any
    // row may have been written: at the first call, in other books, in a transaction that writes, and behind
    // what the journal tells in one word.
    [[nodiscard]] std::optional<Values> take(const Connection& books);

private:
    struct Row { // whose value is known by the row itself alone
        std::size_t column;
        std::int64_t id;
    };
    bool readEntries(store::Database& database, Values& values, std::vector<Row>& rows);
    void takeEntry(const store::Statement& entry, Values& values, std::vector<Row>& rows) const;
    void readRows(store::Database& database, Values& values, const std::vector<Row>& rows) const;

    std::vector<WatchedColumn> columns_;
    std::weak_ptr<store::Database> database_;
    std::int64_t last_ = 0; // the newest entry that was seen
};

} // namespace veldona::adodb
