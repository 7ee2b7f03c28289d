// What the store asks of the engine below it. A second engine stands beside the first by implementing this
// header.
//
// Every failure leaves as a StoreError whose description is of our own words. A statement is run to its end
// before the next one is begun: a half-read statement would keep a read lock, and a write behind it could not
// wait for another workstation.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/value.h"
#include "platform/store/dialect/catalog.h"
#include "platform/store/dialect/definition.h"
#include "platform/store/dialect/enginewords.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/lockwait.h"

namespace veldona::store {

// What the reading of a statement may take that a shop has written: a forgotten join answers more rows than
// any machine holds, or works for hours before the first of them.
struct ReadBounds {
    std::size_t mostRows;
    std::size_t mostBytes;      // of the answer, and of the engine while it makes it
    std::function<bool()> goOn; // asked every few milliseconds; false gives the statement up
};

// What a value of an answer takes.
[[nodiscard]] inline std::size_t bytesOf(const Value& value) {
    return sizeof(Value) + (value.isText() ? value.get<std::string>().size() : 0);
}

class Statement {
public:
    enum class Storage { Null, Whole, Number, Text };

    virtual ~Statement() = default;

    // `index` from 1. Null, boolean, whole, double and text; other kinds are turned into these above the
    // engine.
    virtual void bind(int index, const Value& value) = 0;
    // True where there is a row.
    virtual bool step() = 0;
    // Ends the run and forgets the parameters; the statement can be run again.
    virtual void reset() = 0;

    // Columns from 0. What is read belongs to the row stood on, texts included.
    [[nodiscard]] virtual int columnCount() const = 0;
    [[nodiscard]] virtual std::string columnName(int column) const = 0;
    [[nodiscard]] virtual std::string
    declaredType(int column) const = 0; // "" where the column is an expression
    [[nodiscard]] virtual Storage storage(int column) const = 0;
    [[nodiscard]] virtual std::int64_t whole(int column) const = 0;
    [[nodiscard]] virtual double number(int column) const = 0;
    [[nodiscard]] virtual std::string_view text(int column) const = 0;
};

struct WritesOfOthers {
    struct Table {
        std::string name;
        bool changesKeys; // else no row went, and what came stands behind all others
    };
    bool areAnywhere = false; // in whatever table
    std::vector<Table> tables;
};

class Engine {
public:
    virtual ~Engine() = default;

    // Writes of a transaction that nobody reads between, in their order; behind one that fails the others are
    // not run, and its failure is raised. `done`: of each that went through, the counter given last behind
    // it.
    struct Write {
        Statement* statement; // of this engine
        std::vector<Value> values;
    };
    virtual void writeAll(const std::vector<Write>& writes, std::vector<std::int64_t>& done) {
        for (const Write& write : writes) {
            run(write);
            done.push_back(lastId());
        }
    }

    // A statement in this engine's words: what the dialect's writer makes of a plan.
    [[nodiscard]] virtual std::unique_ptr<Statement> prepare(std::string_view sql) = 0;
    [[nodiscard]] virtual const EngineWords& words() const = 0;

    // The tables and queries with their columns. Tables of the house itself, whose names begin with MSys, are
    // left out.
    [[nodiscard]] virtual Catalog readCatalog() = 0;
    // Makes these in a new file.
    virtual void define(const std::vector<TableDef>& tables, const std::vector<SavedQueryDef>& queries) = 0;

    // Takes the write lock at once, so that the wait for another workstation comes before the first write.
    virtual void begin() = 0;
    // Until the end of the transaction the books are read as they stand at its first look, and nothing is
    // written.
    virtual void beginReading() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
    // False also where the engine undid the transaction by itself, as it may on a full disk.
    [[nodiscard]] virtual bool inTransaction() const = 0;

    [[nodiscard]] virtual std::int64_t lastId() const = 0;      // 0 before the first
    [[nodiscard]] virtual std::int64_t rowsChanged() const = 0; // by the last insert, update or delete
    // What anybody but this connection has written since the last call.
    [[nodiscard]] virtual WritesOfOthers takeWritesOfOthers() = 0;
    // How long a statement waits for another workstation's lock before it fails.
    virtual void setBusyTimeout(std::chrono::milliseconds timeout) = 0;
    // Who says, while it waits, whether it goes on; shared by the engines of a process.
    virtual void setLockWait(std::shared_ptr<LockWait> wait) = 0;

    // What each statement may take that runs from now on; nullptr: all that it wants. What is pointed to is
    // read until the next call.
    virtual void setBounds(const ReadBounds* bounds) = 0;

    // The newest failure since the last call that came from the disk or from another workstation and not from
    // the statement; nothing where there was none.
    [[nodiscard]] virtual std::optional<StoreError> takeDiskFailure() = 0;

    // Makes `target`, a new file under whatever password, equal to this one as it stands at one moment (in a
    // transaction: as that one sees it), without holding anybody up. `delivered`: what the target is made of
    // where the copy goes row by row. In a transaction `onPages` hears how many of how many pages are there,
    // 0 of 0 where nobody knows; what it raises ends the copy and is raised here.
    using OnPages = std::function<void(std::int64_t done, std::int64_t all)>;
    virtual void copyInto(Engine& target, const Delivered& delivered, const OnPages& onPages = {}) = 0;

    // Reads everything through: false where the file is broken inside.
    [[nodiscard]] virtual bool isSound() = 0;
    // How many bytes the file must have for all of its pages.
    [[nodiscard]] virtual std::int64_t fullSize() = 0;

    // From now on nothing is kept by which a failed change could be undone: only for a file that is thrown
    // away then.
    virtual void keepNoJournal() = 0;
    // Very many rows at once, in one transaction, without indexes, without entries in the journal and without
    // waiting for the disk: only for a file that nobody else has open and that is thrown away where it fails.
    // All stands again at the end; a key that rows bring twice is then unique no more.
    virtual void beginFilling() = 0;
    virtual void endFilling() = 0;
    // The counter given last in a table, 0 before the first: it is above those of all rows where the last
    // ones are gone. Books that come from elsewhere go on behind it.
    [[nodiscard]] virtual std::int64_t lastCounterOf(const std::string& table) = 0;
    virtual void setLastCounter(const std::string& table, std::int64_t given) = 0;
    // The key of the journal (journalseal.h) as it is kept in the books, "" where they have none. Books that
    // come from elsewhere bring theirs along.
    [[nodiscard]] virtual std::string journalKey() = 0;
    virtual void setJournalKey(const std::string& key) = 0;
    // An entry of the journal that is no row's; `what` is a JSON object. Nothing where books have no journal.
    virtual void noteInJournal(const std::string& what) = 0;
    // Writes the file anew, so that nothing is left in it of what was overwritten.
    virtual void rewrite() = 0;

    // Runs a statement that answers nothing of interest.
    void execute(std::string_view sql) {
        auto statement = prepare(sql);
        while (statement->step()) {
        }
    }

protected:
    // Binds the values, and ends the statement's run however it comes out.
    static void run(const Write& write) {
        struct End {
            Statement& statement;
            ~End() { statement.reset(); }
        } const end{*write.statement};
        for (std::size_t i = 0; i < write.values.size(); ++i)
            write.statement->bind(static_cast<int>(i) + 1, write.values[i]);
        while (write.statement->step()) {
        }
    }
};

} // namespace veldona::store
