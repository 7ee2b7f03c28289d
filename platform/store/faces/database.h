// One open file: its engine connection, what it is made of, and the statements prepared on it.
//
// Everything that reaches the file passes here: statements of the dialect are translated once and kept
// prepared, whatever their values, each write is counted on its table, so that a reader knows without reading
// whether its rows still stand. Values travel here in the form in which they are stored (bindValue,
// bindLiteral).
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/runtime/value.h"
#include "platform/store/dialect/catalog.h"
#include "platform/store/dialect/plan.h"
#include "platform/store/dialect/reading.h"
#include "platform/store/dialect/tree.h"
#include "platform/store/engine/engine.h"
#include "platform/store/faces/rowset.h"
#include "platform/store/faces/writefaults.h"

namespace veldona::store {

// A statement's plan with the engine's statement for it; shared by all that run it with other values.
struct PreparedPlan {
    Plan plan;
    std::unique_ptr<Statement> statement;
    std::size_t rowsLastTime = 0;

    // Answers the same until a table below it is written: what reads no table, or the clock, need not.
    [[nodiscard]] bool isRepeatable() const { return !plan.baseTables.empty() && !plan.readsClock; }
};

// A statement with its values, ready to run and to be run again.
struct Query {
    std::shared_ptr<PreparedPlan> prepared;
    std::vector<Value> values; // in the order of the plan's parameters

    [[nodiscard]] const Plan& plan() const { return prepared->plan; }
    [[nodiscard]] bool isSelect() const {
        return plan().kind == Plan::Kind::Select || plan().kind == Plan::Kind::Identity;
    }
};

class Database {
public:
    Database(std::unique_ptr<Engine> engine, std::string password, std::shared_ptr<WriteFaults> faults);
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;

    [[nodiscard]] bool isOpenedWith(std::string_view password) const { return password == password_; }
    [[nodiscard]] const Catalog& catalog() const { return catalog_; }
    [[nodiscard]] Engine& engine() { return *engine_; }

    // Translates `sql`, or finds its plan. The values are those of its literals; behind them stand, Null
    // until the caller puts them, those of the `narrowing` columns.
    [[nodiscard]] Query query(std::string_view sql, const std::vector<std::string>& narrowing = {});
    // A statement of the store's own making, by a key that no other one has; `make` is asked where it is new.
    // The values are Null until the caller puts them.
    [[nodiscard]] Query query(const std::string& key, std::size_t parameters,
                              const std::function<sql::Statement()>& make);
    void read(const Query& query, RowSet& rows);
    // Row by row, keeping nothing; `row` must not ask anything of the file.
    void walk(const Query& query, const std::function<void(const Statement&)>& row);
    std::int64_t write(const Query& query); // the rows changed
    // Statements that write, in one step where the engine has one for them, as far as they go through: what
    // one raises is raised when those before it are done. `done`: of each of these, the counter given last
    // behind it.
    void writeAll(const std::vector<std::string>& statements, std::vector<std::int64_t>& done);
    // Whichever of the two it is; rows of a SELECT are dropped, and count as none.
    std::int64_t execute(std::string_view sql);

    void begin();
    void commit();
    void rollback();
    [[nodiscard]] bool inTransaction() const { return inTransaction_; }

    // A number that stays the same as long as no one wrote to these tables; the second has what other
    // processes wrote looked for too.
    [[nodiscard]] std::uint64_t stamp(const std::vector<std::string>& tables);
    [[nodiscard]] std::uint64_t stampWithWritesOfOthers(const std::vector<std::string>& tables);
    // A number that stays the same as long as none of this table's keys went, and none came but behind them.
    [[nodiscard]] std::uint64_t keyChanges(const std::string& table);

    // The same looks and nothing written until endReading(): what is read in between is one moment of the
    // books.
    void beginReading();
    void endReading() noexcept;
    [[nodiscard]] bool isReading() const { return isReading_; }

    // How long statements wait for another workstation, from now on.
    void setTimeout(std::chrono::seconds timeout);
    // Bounds all reading from now on (Engine::setBounds).
    void setBounds(const ReadBounds* bounds);
    // Rows taken from the engine since the opening: what a bench or a test holds against what was needed.
    [[nodiscard]] std::uint64_t rowsRead() const { return rowsRead_; }

private:
    using Recent = std::list<std::pair<std::string, std::shared_ptr<PreparedPlan>>>; // the last used first

    std::shared_ptr<PreparedPlan> findPlan(const std::string& key);
    std::shared_ptr<PreparedPlan> keepPlan(const std::string& key, Plan plan);
    void requireTransactionIntact() const;
    void countWrite(const std::string& name, bool changesKeys);
    void noteWritesOfOthers();

    std::unique_ptr<Engine> engine_;
    std::string password_;
    std::shared_ptr<WriteFaults> faults_;
    Catalog catalog_;
    Reading reading_; // of the text asked last; its room is used again
    Recent recent_;
    std::unordered_map<std::string, Recent::iterator> plans_;
    std::unordered_map<std::string, std::uint64_t> writes_; // by folded table name
    std::unordered_map<std::string, std::uint64_t> keyChanges_;
    std::uint64_t writesAnywhere_ = 0; // rollbacks, and what others wrote of whom the table isn't known
    std::chrono::seconds timeout_{-1};
    bool inTransaction_ = false;
    bool isReading_ = false; // and nothing else, in the transaction
    std::uint64_t rowsRead_ = 0;
    const ReadBounds* bounds_ = nullptr;
};

} // namespace veldona::store
