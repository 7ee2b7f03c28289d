// A file's connection to the engine, shared by the statements that are prepared on it.
//
// From its fourth major version on the engine gives a connection up for good behind one page that it could
// not read. Another one then takes its place before the next statement outside of a transaction, so that the
// program works again as soon as the disk does.
#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sqlcipher/sqlite3.h>

#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/engine.h"

namespace veldona::store {

// How each connection to the file is opened.
struct ConnectionOrigin {
    std::string path;
    int flags;
    std::string password;
    std::function<void(sqlite3*)> equip; // with functions and handlers, before the key
};

// Whether the file of `connection` no longer stands under the name that it was opened by.
[[nodiscard]] bool hasMoved(sqlite3* connection);

class SqlcipherConnection {
public:
    explicit SqlcipherConnection(ConnectionOrigin origin);
    ~SqlcipherConnection() { sqlite3_close_v2(handle_); }
    SqlcipherConnection(const SqlcipherConnection&) = delete;
    SqlcipherConnection& operator=(const SqlcipherConnection&) = delete;

    [[nodiscard]] sqlite3* handle() const { return handle_; }
    // How many have been in this place before.
    [[nodiscard]] int number() const { return number_; }

    // `sql` has shaped this connection and not the file: it is run on whichever takes its place.
    void rememberShape(std::string_view sql) { shapes_.emplace_back(sql); }
    void renewWhereLost();

    // Raises what the failure of a statement of `of` means.
    [[noreturn]] void fail(sqlite3* of, std::string_view sql);

    // The newest failure that did not come from the statement, or of a write that nothing foresaw: a screen
    // that goes on behind a failed step would else call it done.
    std::optional<StoreError> ofTheDisk;
    std::exception_ptr stopped; // why the statement that runs was interrupted

private:
    [[nodiscard]] sqlite3* open() const;

    ConnectionOrigin origin_;
    std::vector<std::string> shapes_;
    sqlite3* handle_;
    int number_ = 0;
    int lostBy_ = SQLITE_OK; // the failure behind which the engine gave the connection up
};

class SqlcipherStatement final : public Statement {
public:
    SqlcipherStatement(std::shared_ptr<SqlcipherConnection> connection, std::string_view sql);
    ~SqlcipherStatement() override { sqlite3_finalize(statement_); }
    SqlcipherStatement(const SqlcipherStatement&) = delete;
    SqlcipherStatement& operator=(const SqlcipherStatement&) = delete;

    void bind(int index, const Value& value) override;
    bool step() override;
    void reset() override;
    int columnCount() const override { return sqlite3_column_count(statement_); }
    std::string columnName(int column) const override;
    std::string declaredType(int column) const override;
    Storage storage(int column) const override;
    std::int64_t whole(int column) const override { return sqlite3_column_int64(statement_, column); }
    double number(int column) const override { return sqlite3_column_double(statement_, column); }
    std::string_view text(int column) const override;

private:
    void prepare();
    void begin(); // before its first word since it was reset
    int bindCode(int index, const Value& value);

    std::shared_ptr<SqlcipherConnection> connection_;
    std::string sql_;
    sqlite3_stmt* statement_ = nullptr;
    int number_ = 0; // of the connection that it is prepared on
    bool hasBegun_ = false;
};

} // namespace veldona::store
