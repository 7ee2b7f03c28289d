#include <algorithm>
#include <optional>

#include "platform/runtime/error.h"
#include "platform/store/dialect/names.h"
#include "platform/store/faces/rowqueries.h"
#include "platform/store/faces/rowwalk.h"

namespace veldona::dao {
namespace {

using store::sql::Operator;

constexpr int kPortion = 64; // rows: a page or two of the file, and an account is rarely longer

// The columns that the walk is limited to, with the value that each must equal. They stand below the TOP, as
// a walk that passes rows over does not count them.
struct Narrowed {
    Narrowed(const store::Catalog::Relation& table, const Narrowings& narrowing) {
        for (const Narrowing& narrowed : narrowing) {
            const auto column =
                std::find_if(table.columns.begin(), table.columns.end(),
                             [&](const auto& known) { return store::sameName(known.name, narrowed.column); });
            if (column == table.columns.end()) raise(ErrorNumber::NoSuchItem);
            columns.push_back(column->name);
            values.push_back(comparable(narrowed.value, column->type));
        }
    }
    std::vector<std::string> columns;
    std::vector<Value> values;
};

class TableWalk final : public RowWalk {
public:
    TableWalk(std::shared_ptr<store::Database> database, const store::Catalog::Relation& table,
              const Narrowings& narrowing)
        : database_(std::move(database)), table_(table), narrowing_(table, narrowing),
          fromStart_(ask(Order::Up)) {}

    const std::vector<store::ResultColumn>& columns() const override { return fromStart_.plan().columns; }
    const store::Catalog::Relation* table() const override { return &table_; }

    bool first() override { return load(fromStart_) && standOn(0); }

    bool last() override {
        if (!fromEnd_) fromEnd_ = ask(Order::Down);
        return loadBackward(*fromEnd_) && standOn(rows_.rowCount() - 1);
    }

    bool next() override {
        if (isFresh()) {
            if (at_ + 1 < rows_.rowCount()) return standOn(at_ + 1);
            if (isEnd_ && stamp_ == database_->stampWithWritesOfOthers(table_.baseTables)) return false;
        }
        if (!after_) after_ = ask(Order::Up, Operator::Greater);
        return load(keyed(*after_)) && standOn(0);
    }

    bool previous() override {
        const int before = isGone_ ? at_ : at_ - 1;
        if (isFresh() && before >= 0) return standOn(before);
        if (!before_) before_ = ask(Order::Down, Operator::Less);
        return loadBackward(keyed(*before_)) && standOn(rows_.rowCount() - 1);
    }

    const Value* cell(int column) override {
        if (!isFresh()) reload();
        return isGone_ ? nullptr : &rows_.at(at_, column);
    }

    std::int64_t id() const override { return id_; }
    // Nothing to do: every write to the table makes the portion stale.
    void noteChange(int, const Value&) override {}
    // But for this one, or a walk that empties a table would read a portion for each row of it.
    void noteRemoval() override {
        const std::uint64_t stamp = database_->stamp(table_.baseTables);
        if (isGone_ || stamp != stamp_ + 1) return; // someone else wrote too
        stamp_ = stamp;
        rows_.remove(at_--);
        isGone_ = true;
    }

private:
    enum class Order { Up, Down };

    store::Query ask(Order order, std::optional<Operator> key = std::nullopt) const {
        store::Query query =
            store::rows(*database_, {table_.name, narrowing_.columns, key, order == Order::Down, kPortion});
        std::copy(narrowing_.values.begin(), narrowing_.values.end(), query.values.begin());
        return query;
    }

    // The key is the last value of the statement.
    const store::Query& keyed(store::Query& query) const {
        query.values.back() = id_;
        return query;
    }

    bool load(const store::Query& query) {
        // At a first reading there is nothing that others could have made stale.
        const std::uint64_t stamp = isRead_ ? database_->stampWithWritesOfOthers(table_.baseTables)
                                            : database_->stamp(table_.baseTables);
        database_->read(query, rows_);
        stamp_ = stamp;
        isRead_ = true;
        isEnd_ = rows_.rowCount() < kPortion;
        return rows_.rowCount() > 0;
    }

    bool loadBackward(const store::Query& query) {
        const bool found = load(query);
        isEnd_ = false;
        rows_.reverseRows();
        return found;
    }

    // Takes the portion that begins with the row stood on anew. Where that row is gone, the next one is the
    // portion's first.
    void reload() {
        if (!from_) from_ = ask(Order::Up, Operator::GreaterEqual);
        isGone_ = !load(keyed(*from_)) || rows_.at(0, 0).get<std::int64_t>() != id_;
        at_ = isGone_ ? -1 : 0;
    }

    bool standOn(int row) {
        at_ = row;
        id_ = rows_.at(row, 0).get<std::int64_t>();
        isGone_ = false;
        return true;
    }

    [[nodiscard]] bool isFresh() const { return stamp_ == database_->stamp(table_.baseTables); }

    std::shared_ptr<store::Database> database_; // before the queries, whose statements must go first
    const store::Catalog::Relation& table_;     // of the database's catalog
    Narrowed narrowing_;
    store::Query fromStart_;
    std::optional<store::Query> fromEnd_, after_, before_, from_;
    store::RowSet rows_; // a portion, by ascending key
    std::uint64_t stamp_ = 0;
    int at_ = 0; // in the portion; where the row stood on is gone, the one before it, or -1
    std::int64_t id_ = 0;
    bool isRead_ = false;
    bool isEnd_ = false; // the portion holds the last row
    bool isGone_ = false;
};

} // namespace

std::unique_ptr<RowWalk> walkTable(std::shared_ptr<store::Database> database,
                                   const store::Catalog::Relation& table, const Narrowings& narrowing) {
    return std::make_unique<TableWalk>(std::move(database), table, narrowing);
}

} // namespace veldona::dao
