#include "platform/store/engine/postgres/statement.h"

#include <charconv>
#include <utility>

namespace veldona::store {
namespace {

class PostgresStatement final : public Statement {
public:
    PostgresStatement(std::shared_ptr<Session> session, std::string_view sql)
        : session_(std::move(session)), prepared_(std::make_shared<Prepared>(sql)) {}
    ~PostgresStatement() override { session_->forget(*prepared_); }
    PostgresStatement(const PostgresStatement&) = delete;
    PostgresStatement& operator=(const PostgresStatement&) = delete;

    void bind(int index, const Value& value) override {
        const auto place = static_cast<std::size_t>(index);
        if (values_.size() < place) values_.resize(place);
        values_[place - 1] = boundOf(value);
    }
    bool step() override {
        rows();
        return ++row_ < rows_->rowCount();
    }
    void reset() override {
        rows_.reset();
        row_ = -1;
        values_.assign(values_.size(), {});
    }

    [[nodiscard]] const std::shared_ptr<Prepared>& prepared() const { return prepared_; }

    int columnCount() const override { return rows().columnCount(); }
    std::string columnName(int column) const override { return rows().columnName(column); }
    std::string declaredType(int) const override { return {}; } // the catalog tells
    Storage storage(int column) const override { return rows().storage(row_, column); }
    std::int64_t whole(int column) const override { return read<std::int64_t>(column); }
    double number(int column) const override { return read<double>(column); }
    std::string_view text(int column) const override { return rows().text(row_, column); }

private:
    const ServerRows& rows() const {
        if (!rows_) rows_ = session_->run({prepared_, values_});
        return *rows_;
    }
    template <class Number> Number read(int column) const {
        const std::string_view digits = text(column);
        Number number = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
        return number;
    }

    std::shared_ptr<Session> session_;
    std::shared_ptr<Prepared> prepared_;
    std::vector<Bound> values_;
    mutable Session::Rows rows_; // nullptr until it was run
    int row_ = -1;
};

// The counter filled last, which the session knows.
class LastCounter final : public Statement {
public:
    explicit LastCounter(std::shared_ptr<Session> session) : session_(std::move(session)) {}

    void bind(int, const Value&) override {}
    bool step() override { return !std::exchange(isRead_, true); }
    void reset() override { isRead_ = false; }
    int columnCount() const override { return 1; }
    std::string columnName(int) const override { return "ID"; }
    std::string declaredType(int) const override { return {}; }
    Storage storage(int) const override { return Storage::Whole; }
    std::int64_t whole(int) const override { return session_->lastId(); }
    double number(int) const override { return static_cast<double>(session_->lastId()); }
    std::string_view text(int) const override {
        text_ = std::to_string(session_->lastId());
        return text_;
    }

private:
    std::shared_ptr<Session> session_;
    mutable std::string text_;
    bool isRead_ = false;
};

} // namespace

std::shared_ptr<Prepared> preparedOf(const Statement& statement) {
    return dynamic_cast<const PostgresStatement&>(statement).prepared();
}

std::unique_ptr<Statement> makeStatement(std::shared_ptr<Session> session, std::string_view sql) {
    if (Prepared(sql).kind == Prepared::Kind::LastCounter)
        return std::make_unique<LastCounter>(std::move(session));
    return std::make_unique<PostgresStatement>(std::move(session), sql);
}

} // namespace veldona::store
