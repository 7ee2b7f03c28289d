// One open file: its engine connection, what it is made of, and the statements prepared on it.
//
// Everything that reaches the file passes here: statements of the dialect are translated once a shape and
// kept prepared, each write is counted on its table, so that a reader knows without reading whether its rows
// still stand. Values travel here in the form in which they are stored (bindValue, bindLiteral).
#pragma once

#include <chrono>
#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/runtime/value.h"
#include "platform/store/dialect/skeleton.h"
#include "platform/store/dialect/translate.h"
#include "platform/store/engine/engine.h"
#include "platform/store/faces/rowset.h"
#include "platform/store/faces/writefaults.h"

namespace veldona::store {

// A statement's plan with the engine's statement for it; shared by all that run a text of the same shape.
struct PreparedPlan {
    Plan plan;
    std::unique_ptr<Statement> statement;
    std::size_t rowsLastTime = 0;
    bool isRepeatable = false; // answers the same until a table below it is written
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
    void read(const Query& query, RowSet& rows);
    std::int64_t write(const Query& query); // the rows changed
    // Whichever of the two it is; rows of a SELECT are dropped, and count as none.
    std::int64_t execute(std::string_view sql);

    void begin();
    void commit();
    void rollback();
    [[nodiscard]] bool inTransaction() const { return inTransaction_; }

    // A number that stays the same as long as no one wrote to these tables; `writesOfOthers` has those of
    // other processes looked for too.
    [[nodiscard]] std::uint64_t stamp(const std::vector<std::string>& tables);
    [[nodiscard]] std::uint64_t stampWithWritesOfOthers(const std::vector<std::string>& tables);

    // How long statements wait for another workstation, from now on.
    void setTimeout(std::chrono::seconds timeout);
    // Rows taken from the engine since the opening: what a bench or a test holds against what was needed.
    [[nodiscard]] std::uint64_t rowsRead() const { return rowsRead_; }

private:
    // A statement by its skeleton, as its words were read when it came first.
    struct Known {
        KnownSplit split;
        std::vector<std::string> narrowing;
        std::shared_ptr<PreparedPlan> prepared;
    };
    using Recent = std::list<std::pair<std::string, std::shared_ptr<PreparedPlan>>>; // the last used first

    std::shared_ptr<PreparedPlan> plan(const SplitStatement& statement,
                                       const std::vector<std::string>& narrowing);
    static Query filled(std::shared_ptr<PreparedPlan> prepared, const std::vector<Literal>& literals,
                        std::size_t narrowed);
    void keepKnown(const std::string& skeleton, Known known);
    void requireTransactionIntact() const;
    void noteWritesOfOthers();

    std::unique_ptr<Engine> engine_;
    std::string password_;
    std::shared_ptr<WriteFaults> faults_;
    Catalog catalog_;
    Recent recent_;
    std::unordered_map<std::string, Recent::iterator> plans_;
    std::unordered_map<std::string, Known> known_;
    std::unordered_map<std::string, std::uint64_t> writes_; // by folded table name
    std::uint64_t writesAnywhere_ = 0;                      // rollbacks, and what other processes wrote
    std::unique_ptr<Statement> dataVersion_;
    std::int64_t knownDataVersion_ = 0;
    std::chrono::seconds timeout_{-1};
    bool inTransaction_ = false;
    std::uint64_t rowsRead_ = 0;
};

} // namespace veldona::store
