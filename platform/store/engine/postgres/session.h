// What one connection is at: its transaction, its settings, what it answered last. Shared by the engine and
// its statements, which may outlive it.
//
// Each statement is one trip, and brings what will be asked next along (ReadAhead). Inside a transaction it
// stands between a savepoint and its release, so that the transaction goes on behind a refused one; a write
// outside of one waits for the lock of the books first, as begin() does, so that one till writes at a time.
//
// A connection that goes away is made anew. Each write, and each transaction that wrote, leaves its number in
// the row of this session, in one with what it wrote: so what became of one whose answer was lost is known,
// and it is neither done twice nor told of as done where it wasn't. The server's own number of a transaction
// would not do: one that a crash took away is given again.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/runtime/datetime.h"
#include "platform/store/engine/engine.h"
#include "platform/store/engine/place.h"
#include "platform/store/engine/postgres/readahead.h"
#include "platform/store/engine/postgres/rowheap.h"
#include "platform/store/engine/postgres/wire.h"

namespace veldona::store {

// An answer's rows: as the server sent them, or, where their room is bounded, as they were taken one by one.
class ServerRows {
public:
    ServerRows() = default;
    explicit ServerRows(ServerAnswer answer);

    [[nodiscard]] int rowCount() const;
    [[nodiscard]] int columnCount() const { return static_cast<int>(types_.size()); }
    [[nodiscard]] const std::string& columnName(int column) const {
        return names_[static_cast<std::size_t>(column)];
    }
    [[nodiscard]] Statement::Storage storage(int row, int column) const;
    [[nodiscard]] std::string_view text(int row, int column) const;
    void take(const pg_result* row); // bounded
    [[nodiscard]] std::size_t bytes() const { return bytes_; }

private:
    struct Cell {
        std::size_t begin, size;
        bool isNull;
    };
    void takeColumns(const pg_result* answer);

    ServerAnswer answer_;
    std::vector<Statement::Storage> types_; // of what is not Null
    std::vector<std::string> names_;
    std::vector<Cell> cells_; // of rows taken one by one
    std::string letters_;
    std::size_t bytes_ = 0;
};

// A statement as the server knows it, once for each set of types that its values have had.
struct Prepared {
    explicit Prepared(std::string_view text);

    enum class Kind { Read, Insert, Change, LastCounter };
    std::string sql;
    Kind kind = Kind::Read;
    std::string table; // written
    bool readsClock = false;
    std::string columns; // of an insert of one row whose values are its parameters in their order; else ""
    struct Variant {
        std::vector<unsigned> types;
        std::string name;
    };
    std::vector<Variant> variants; // of the connection of this number
    std::int64_t connection = 0;
    std::vector<Follower> followers;
    bool isGone = false;  // nobody runs it any more
    bool isLarge = false; // its last answer was more than is fetched on suspicion
};

class Session {
public:
    Session(const ServerPlace& place, bool onlyReads, std::chrono::milliseconds wait,
            std::function<DateTime()> clock, std::vector<TableDef> scratch);

    using Rows = std::shared_ptr<const ServerRows>;
    [[nodiscard]] Rows run(const Question& asked);
    // Writes of a transaction, in one trip; behind one that is refused the others are not run. `done`: of
    // each that went through, the counter given last behind it; 0 where another one was refused.
    void writeAll(const std::vector<Question>& writes, std::vector<std::int64_t>& done);
    // Statements of ours.
    void script(const std::string& sql);
    // Rows into a table, by COPY … FROM STDIN.
    void copyIn(const std::string& statement, const std::string& lines);
    [[nodiscard]] ServerRows ask(const std::string& sql, const std::vector<Bound>& values = {});

    // Into the journal of the books.
    void note(const std::string& what);

    void begin();
    void beginReading();
    void commit();
    void rollback();
    [[nodiscard]] bool inTransaction() const { return isOpen_ && wire_->isInTransaction(); }

    void forget(Prepared& statement);
    [[nodiscard]] WritesOfOthers takeWritesOfOthers();

    [[nodiscard]] std::int64_t lastId();

    std::int64_t rowsChanged = 0;
    std::chrono::milliseconds busyTimeout;
    std::shared_ptr<LockWait> lockWait; // nothing: until the time is up
    const ReadBounds* bounds = nullptr;
    std::optional<StoreError> ofTheDisk;

private:
    using Batch = std::vector<Command>;
    using Answers = std::vector<ServerAnswer>;

    // What goes out together, and the statements that the server gets to know by it.
    struct Trip {
        struct Made {
            std::shared_ptr<Prepared> statement;
            Prepared::Variant variant;
            std::size_t place;
        };
        Batch commands;
        std::vector<Made> made;
    };
    // The questions that go along, by their places.
    using Ahead = std::vector<std::pair<std::size_t, Question>>;

    void addSettings(Batch& batch, const Prepared* statement);
    void addAct(Batch& batch);
    [[nodiscard]] Command lock() const;
    [[nodiscard]] Command mark(const std::string& table);
    std::size_t bindTo(Trip& trip, const Question& asked); // the place of its answer
    static void noteMade(Trip& trip, const Answers& answers);
    [[nodiscard]] Rows knownAnswer(const Question& asked);
    bool noteAsked(const Question& asked);
    [[nodiscard]] Ahead addAhead(Trip& trip, const Question& asked, bool isInside);
    void keepAhead(Ahead& ahead, Answers& answers);
    [[nodiscard]] Rows attempt(const Question& asked);
    // `refusedAt`: the place of what was refused.
    [[nodiscard]] Answers send(const Batch& batch, const Patience& patience,
                               std::size_t* refusedAt = nullptr);
    void backToSavepoint();
    [[noreturn]] void fail(StoreError failure);
    void guarded(const std::function<void()>& step);
    [[nodiscard]] std::chrono::milliseconds longestWait() const;
    [[nodiscard]] Patience patienceForLock() const;
    [[nodiscard]] Patience patienceForRows() const;
    void noteWrite(const Prepared& statement, const pg_result* answer);
    [[nodiscard]] bool isShared(const Prepared& statement) const;

    // Rows that wait (session_rows.cpp).
    [[nodiscard]] bool canWait(const Prepared& statement) const;
    void keepRow(const Prepared& statement, const std::vector<Bound>& values);
    void addWaiting(Batch& batch);
    void sendWaiting();
    void flushWaiting();

    // A connection that went away (session_lost.cpp).
    void connect(std::chrono::milliseconds wait);
    void requireConnection();
    void reconnect();
    void endOldBackend();
    [[nodiscard]] bool wentThrough(std::int64_t act);
    [[nodiscard]] std::int64_t rowsLeftOf(const Prepared& statement, const std::vector<Bound>& values);
    [[nodiscard]] Rows runAgain(const Question& asked);
    [[nodiscard]] std::int64_t notesOfOthers();
    void settleDoubt();
    void requireScratch(const Prepared& statement);
    void tellLater(const char* whatWasDone);

    ServerPlace place_;
    bool onlyReads_;
    std::unique_ptr<Wire> wire_;
    std::int64_t connections_ = 0;
    std::int64_t notesBefore_ = 0; // of connections that are gone
    bool mayHaveMissed_ = false;   // what others wrote, behind one that is gone
    std::string backendStart_;
    int oldBackend_ = 0;
    std::string oldBackendStart_;
    std::function<DateTime()> clock_;
    std::string lockKey_;
    std::chrono::milliseconds timeoutSet_{-1};
    std::vector<TableDef> scratchTables_;
    std::set<std::string> scratch_;
    std::set<std::string> filled_, emptied_; // of the scratch tables; rows of them go with the connection
    std::vector<RowHeap> waiting_;
    std::string lastTable_; // whose counter is the last one, where the server was not asked for it yet
    std::int64_t lastId_ = 0;
    std::vector<std::string> forgotten_;          // names to be taken back with the next trip
    std::map<std::string, std::int64_t> counted_; // the first counter of each table in this transaction
    std::int64_t named_ = 0;
    std::string actSaid_; // to this connection, who writes and at what
    ReadAhead ahead_;
    const std::shared_ptr<Prepared> beginning_ = std::make_shared<Prepared>("BEGIN");
    std::chrono::steady_clock::time_point askedAt_; // last
    std::int64_t aheadAct_ = 0, aheadNotes_ = 0;    // in which act, and behind how many writes of others
    bool isOpen_ = false;                           // a transaction
    bool hasWritten_ = false;                       // the transaction, to what all tills share
    const std::string till_;
    std::int64_t act_ = 0;     // the number of the last write
    std::int64_t inDoubt_ = 0; // the number of one of which nobody could be asked yet
};

} // namespace veldona::store
