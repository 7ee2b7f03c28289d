// The shared-connection face of the store: a connection, and recordsets that hold what a query answered.
//
// A recordset is a snapshot of the moment it was opened (or last requeried). Errors are RuntimeErrors: a
// statement's carry kStatementError, a wrong password kWrongPassword, everything else at opening kOpenFailed.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/value.h"

namespace veldona::store {
class Database;
class Workspace;
} // namespace veldona::store

namespace veldona::store {
class Statement;
struct ReadBounds;
struct ResultColumn;
} // namespace veldona::store

namespace veldona::adodb {

inline constexpr std::int32_t kStatementError = static_cast<std::int32_t>(0x80040E14);
inline constexpr std::int32_t kWrongPassword = static_cast<std::int32_t>(0x80040E4D);
inline constexpr std::int32_t kOpenFailed = static_cast<std::int32_t>(0x80004005);
inline constexpr std::int32_t kObjectClosed = 3704; // what is asked of a recordset needs an open one
inline constexpr std::int32_t kObjectOpen = 3705;   // opened while open

enum class CursorLocation { Server = 2, Client = 3 };

class Recordset;

class Connection {
public:
    explicit Connection(store::Workspace& workspace) : workspace_(&workspace) {}

    int commandTimeout = 30;    // seconds that a statement waits for another workstation's lock
    int connectionTimeout = 15; // the same for the opening

    // `source`: a data source's name, or "DSN=" and the name. The user is not looked at.
    void open(std::string_view source, std::string_view user = {}, std::string_view password = {});
    // The same for a file, by the path that the program writes: also where no data source stands for it yet.
    void openFile(std::string_view path, std::string_view password);
    void close();
    [[nodiscard]] bool isOpen() const { return database_ != nullptr; }

    // Runs one statement; what a SELECT answers is dropped (open a Recordset for it). The rows written are
    // returned.
    std::int64_t execute(std::string_view sql);
    // Statements that write, of an open transaction, one after the other; `done`: of each that went through,
    // before what this raises, the counter given last.
    void executeAll(const std::vector<std::string>& statements, std::vector<std::int64_t>& done);
    // Hands on each row that a SELECT answers as it comes, with its values as stored, and keeps none. Nothing
    // else may be asked of the connection meanwhile.
    void walk(std::string_view sql, const std::function<void(const store::Statement&)>& row);
    // One level; beginning twice is an error, and so is ending what was not begun.
    void beginTrans();
    void commitTrans();
    void rollbackTrans();
    [[nodiscard]] bool inTransaction() const;

private:
    friend class Recordset;
    friend class BoundedReading;
    friend class ChangeWatch;
    friend class NoWait;
    friend class OneMoment;
    friend class RowWatch;
    template <class Opening> void connect(const Opening& opening);
    [[nodiscard]] store::Database& database() const; // error kOpenFailed where closed
    store::Workspace* workspace_;
    std::shared_ptr<store::Database> database_;
};

// For whoever keeps what it made of some tables.
class ChangeWatch {
public:
    explicit ChangeWatch(std::vector<std::string> tables) : tables_(std::move(tables)) {}
    // At the first question, and whenever anybody wrote to one of the tables since the last one. Asked before
    // the tables are read, so that nothing written in between is missed.
    [[nodiscard]] bool hasChanged(const Connection& connection);

private:
    std::vector<std::string> tables_;
    std::weak_ptr<store::Database> database_; // other books may have come to the same number
    std::uint64_t stamp_ = 0;
};

// While it stands, what is read on the connection keeps to the bounds, which must outlive it.
class BoundedReading {
public:
    BoundedReading(Connection& connection, const store::ReadBounds& bounds);
    ~BoundedReading();
    BoundedReading(const BoundedReading&) = delete;
    BoundedReading& operator=(const BoundedReading&) = delete;

private:
    std::shared_ptr<store::Database> database_;
};

class Recordset {
public:
    // A row of the answer that the recordset holds; worth nothing once requery() has taken another one.
    using Bookmark = std::int64_t;

    Recordset();
    ~Recordset();
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;

    CursorLocation cursorLocation = CursorLocation::Server;
    int cursorType = 0;
    int lockType = 1;

    // A statement that answers nothing is executed, and the recordset stays closed.
    void open(std::string_view sql, Connection& connection);
    // Asks again, and stands on the first row. Costs nothing while no table below the query was written
    // since.
    void requery();
    void close();
    [[nodiscard]] bool isOpen() const;
    // The statement that it was opened with, letter for letter.
    [[nodiscard]] const std::string& source() const;

    [[nodiscard]] bool eof() const;
    [[nodiscard]] bool bof() const;
    void moveFirst(); // nothing happens in an empty recordset
    void moveLast();
    void moveNext();     // error 3021 past EOF
    void movePrevious(); // error 3021 before BOF
    // "COLUMN = value" (also <, >, <=, >=, <>, like), from the current row on; EOF where none fits.
    void find(std::string_view criteria);

    [[nodiscard]] Bookmark bookmark() const; // error 3021 where there is no current row
    void setBookmark(Bookmark place);        // error 3021 where it is none of this recordset
    [[nodiscard]] int recordCount() const;
    [[nodiscard]] int absolutePosition() const; // from 1; 0 where there is no current row
    void setAbsolutePosition(int position);     // error 3021 outside 1 … recordCount

    [[nodiscard]] int fieldCount() const;
    [[nodiscard]] const std::string& fieldName(int index) const;
    // The platform's number of the column's type: 3, 2, 5, 202, 203, 135, 11.
    [[nodiscard]] int fieldType(int index) const;
    // Error 3265 for an unknown field, 3021 where there is no current row. Names are case-free.
    [[nodiscard]] const Value& value(std::string_view field) const;
    [[nodiscard]] const Value& value(int index) const;
    // Any cell, for a grid; `row` and `column` from 0, within the counts.
    [[nodiscard]] const Value& at(int row, int column) const;

private:
    struct State;
    [[nodiscard]] State& opened() const; // error kObjectClosed where closed
    [[nodiscard]] const store::ResultColumn& field(int index) const;
    std::unique_ptr<State> state_; // nothing where closed
};

} // namespace veldona::adodb
