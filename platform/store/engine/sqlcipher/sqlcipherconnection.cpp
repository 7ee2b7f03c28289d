#include "platform/store/engine/sqlcipher/sqlcipherconnection.h"

#include <stdexcept>
#include <utility>

#include "platform/store/engine/failures.h"
#include "platform/store/engine/sqlcipher/sqlcipherfailure.h"

namespace veldona::store {
namespace {

// The third version, which gives up none, has no answer.
bool isLost(sqlite3* connection) {
    sqlite3_stmt* asked = nullptr;
    sqlite3_prepare_v2(connection, "PRAGMA cipher_status", -1, &asked, nullptr);
    const bool lost = sqlite3_step(asked) == SQLITE_ROW && sqlite3_column_int(asked, 0) == 0;
    sqlite3_finalize(asked);
    return lost;
}

bool isWrite(std::string_view sql) {
    return sql.starts_with("INSERT ") || sql.starts_with("UPDATE ") || sql.starts_with("DELETE ");
}

std::string orEmpty(const char* text) {
    return text == nullptr ? std::string() : std::string(text);
}

} // namespace

bool hasMoved(sqlite3* connection) {
    int moved = 0;
    sqlite3_file_control(connection, "main", SQLITE_FCNTL_HAS_MOVED, &moved);
    return moved != 0;
}

SqlcipherConnection::SqlcipherConnection(ConnectionOrigin origin)
    : origin_(std::move(origin)), handle_(open()) {}

sqlite3* SqlcipherConnection::open() const {
    sqlite3* opened = nullptr;
    int code = sqlite3_open_v2(origin_.path.c_str(), &opened, origin_.flags | SQLITE_OPEN_NOMUTEX, nullptr);
    if (code == SQLITE_OK) {
        origin_.equip(opened);
        code = sqlite3_key(opened, origin_.password.data(), static_cast<int>(origin_.password.size()));
    }
    if (code == SQLITE_OK) return opened;
    code = sqlite3_extended_errcode(opened);
    sqlite3_close_v2(opened);
    throw engineFailure(code, "");
}

void SqlcipherConnection::renewWhereLost() {
    if (lostBy_ == SQLITE_OK || sqlite3_get_autocommit(handle_) == 0) return;
    sqlite3* next = open();
    for (const std::string& shape : shapes_) {
        const int code = sqlite3_exec(next, shape.c_str(), nullptr, nullptr, nullptr);
        if (code == SQLITE_OK) continue;
        sqlite3_close_v2(next);
        throw engineFailure(code == SQLITE_ERROR ? lostBy_ : code, "");
    }
    sqlite3_close_v2(std::exchange(handle_, next)); // gone when the last statement of it is
    ++number_;
    lostBy_ = SQLITE_OK;
}

void SqlcipherConnection::fail(sqlite3* of, std::string_view sql) {
    if (stopped) std::rethrow_exception(std::exchange(stopped, nullptr));
    int code = sqlite3_extended_errcode(of);
    const std::string text = sqlite3_errmsg(of);
    if (isLost(of)) {
        if (code == SQLITE_ERROR) code = SQLITE_CORRUPT; // a page that does not decrypt
        if (of == handle_) code = lostBy_ = lostBy_ == SQLITE_OK ? code : lostBy_;
    }
    const StoreError failure = engineFailure(code, text);
    const bool isUnforeseen = failure.kind() == StoreError::Kind::Other && isWrite(sql);
    if (isUnforeseen || isOfTheDisk(failure.kind())) ofTheDisk = failure;
    throw failure;
}

SqlcipherStatement::SqlcipherStatement(std::shared_ptr<SqlcipherConnection> connection, std::string_view sql)
    : connection_(std::move(connection)), sql_(sql) {
    connection_->renewWhereLost();
    prepare();
}

void SqlcipherStatement::prepare() {
    sqlite3* handle = connection_->handle();
    const int code =
        sqlite3_prepare_v2(handle, sql_.data(), static_cast<int>(sql_.size()), &statement_, nullptr);
    if (code != SQLITE_OK) connection_->fail(handle, sql_);
    number_ = connection_->number();
}

void SqlcipherStatement::begin() {
    if (std::exchange(hasBegun_, true)) return;
    connection_->renewWhereLost();
    if (number_ == connection_->number()) return;
    sqlite3_finalize(std::exchange(statement_, nullptr));
    prepare();
}

void SqlcipherStatement::bind(int index, const Value& value) {
    begin();
    if (bindCode(index, value) != SQLITE_OK) connection_->fail(sqlite3_db_handle(statement_), sql_);
}

bool SqlcipherStatement::step() {
    begin();
    const int code = sqlite3_step(statement_);
    if (code != SQLITE_ROW && code != SQLITE_DONE) connection_->fail(sqlite3_db_handle(statement_), sql_);
    return code == SQLITE_ROW;
}

void SqlcipherStatement::reset() {
    sqlite3_reset(statement_); // its code repeats the failure that step() has told
    sqlite3_clear_bindings(statement_);
    hasBegun_ = false;
}

std::string SqlcipherStatement::columnName(int column) const {
    return orEmpty(sqlite3_column_name(statement_, column));
}

std::string SqlcipherStatement::declaredType(int column) const {
    return orEmpty(sqlite3_column_decltype(statement_, column));
}

Statement::Storage SqlcipherStatement::storage(int column) const {
    switch (sqlite3_column_type(statement_, column)) {
    case SQLITE_INTEGER:
        return Storage::Whole;
    case SQLITE_FLOAT:
        return Storage::Number;
    case SQLITE_NULL:
        return Storage::Null;
    default:
        return Storage::Text;
    }
}

std::string_view SqlcipherStatement::text(int column) const {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
    return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

int SqlcipherStatement::bindCode(int index, const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Null:
        return sqlite3_bind_null(statement_, index);
    case Value::Kind::Boolean:
        return sqlite3_bind_int(statement_, index, value.get<bool>() ? 1 : 0);
    case Value::Kind::Whole:
        return sqlite3_bind_int64(statement_, index, value.get<std::int64_t>());
    case Value::Kind::Double:
        return sqlite3_bind_double(statement_, index, value.get<double>());
    case Value::Kind::Text: {
        const std::string& text = value.get<std::string>();
        return sqlite3_bind_text64(statement_, index, text.data(), text.size(), SQLITE_TRANSIENT,
                                   SQLITE_UTF8);
    }
    case Value::Kind::Money:
    case Value::Kind::Date:
        break;
    }
    throw std::logic_error("a value reached the engine that was not turned into its stored form");
}

} // namespace veldona::store
