#include "platform/store/faces/adodb.h"

#include "platform/store/dialect/names.h"
#include "platform/store/faces/adodberror.h"
#include "platform/store/faces/database.h"
#include "platform/store/faces/workspace.h"

namespace veldona::adodb {
namespace {

// "DSN=vorel;…" names the source as "vorel" does.
std::string_view sourceName(std::string_view source) {
    constexpr std::string_view prefix = "DSN=";
    if (store::sameName(source.substr(0, prefix.size()), prefix)) source.remove_prefix(prefix.size());
    return source.substr(0, source.find(';'));
}

} // namespace

void Connection::open(std::string_view source, std::string_view, std::string_view password) {
    connect([&](std::chrono::seconds timeout) {
        return workspace_->openDataSource(sourceName(source), password, timeout);
    });
}

void Connection::openFile(std::string_view path, std::string_view password) {
    connect([&](std::chrono::seconds timeout) { return workspace_->open(path, password, timeout); });
}

template <class Opening> void Connection::connect(const Opening& opening) {
    if (isOpen()) throw RuntimeError(kObjectOpen, "Bağlantı zaten açık.");
    try {
        database_ = opening(std::chrono::seconds(connectionTimeout));
    } catch (const store::StoreError& error) {
        const bool isPassword = error.kind() == store::StoreError::Kind::WrongPassword;
        throw RuntimeError(isPassword ? kWrongPassword : kOpenFailed, error.description());
    }
}

void Connection::close() {
    if (inTransaction()) rollbackTrans();
    database_.reset();
}

store::Database& Connection::database() const {
    if (!isOpen()) throw RuntimeError(kOpenFailed, "Bağlantı açık değil.");
    database_->setTimeout(std::chrono::seconds(commandTimeout));
    return *database_;
}

std::int64_t Connection::execute(std::string_view sql) {
    return asStatement([&] { return database().execute(sql); });
}

void Connection::executeAll(const std::vector<std::string>& statements, std::vector<std::int64_t>& done) {
    asStatement([&] { database().writeAll(statements, done); });
}

void Connection::walk(std::string_view sql, const std::function<void(const store::Statement&)>& row) {
    asStatement([&] { database().walk(database().query(sql), row); });
}

void Connection::beginTrans() {
    asStatement([&] { database().begin(); });
}

void Connection::commitTrans() {
    asStatement([&] { database().commit(); });
}

void Connection::rollbackTrans() {
    asStatement([&] { database().rollback(); });
}

bool Connection::inTransaction() const {
    return isOpen() && database_->inTransaction();
}

bool ChangeWatch::hasChanged(const Connection& connection) {
    const std::uint64_t now =
        asStatement([&] { return connection.database().stampWithWritesOfOthers(tables_); });
    const bool isAsBefore = database_.lock() == connection.database_ && stamp_ == now;
    database_ = connection.database_;
    stamp_ = now;
    return !isAsBefore;
}

BoundedReading::BoundedReading(Connection& connection, const store::ReadBounds& bounds)
    : database_(connection.database_) {
    connection.database().setBounds(&bounds);
}

BoundedReading::~BoundedReading() {
    database_->setBounds(nullptr);
}

} // namespace veldona::adodb
