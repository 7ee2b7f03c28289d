#include "platform/store/engine/postgres/session.h"

#include <libpq-fe.h>

#include <algorithm>
#include <charconv>
#include <random>
#include <utility>

#include "platform/store/dialect/literal.h"
#include "platform/store/engine/act.h"
#include "platform/store/engine/failures.h"
#include "platform/store/engine/postgres/definitions.h"
#include "platform/store/engine/postgres/words.h"

namespace veldona::store {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
using Storage = Statement::Storage;

// A write that nobody holds up is done by then, on any network that a till can work over.
constexpr milliseconds kFirstLook(100);

// Behind a longer pause, a box that somebody reads, all is asked anew.
constexpr milliseconds kLongestKept(1000);

constexpr char kBetweenParts = '\x1f'; // as vd_journal_entry reads it
constexpr const char* kSavepoint = "SAVEPOINT vd";
constexpr const char* kRelease = "RELEASE vd";
constexpr const char* kBackToSavepoint = "ROLLBACK TO vd";

Command plain(std::string sql) {
    return {Command::Kind::Run, std::move(sql), {}, {}};
}

Command syncHere() {
    return {Command::Kind::Sync, {}, {}, {}};
}

Storage storageOf(Oid type) {
    switch (type) {
    case 20:
    case 21:
    case 23:
        return Storage::Whole;
    case 700:
    case 701:
    case 1700:
        return Storage::Number;
    default:
        return Storage::Text;
    }
}

// The name behind a beginning of the writer's: INSERT INTO "T" …
std::string tableBehind(std::string_view sql, std::string_view beginning) {
    sql.remove_prefix(beginning.size());
    return std::string(sql.substr(0, sql.find('"')));
}

// "A", "B" of INSERT INTO "T" ("A", "B") VALUES ($1, $2) …, where nothing is reckoned on the way.
std::string plainColumns(std::string_view sql, const std::string& table) {
    constexpr std::string_view values = ") VALUES (";
    const std::size_t open = sql.find(" (") + 2, close = sql.find(values);
    if (close == sql.npos || close < open) return {};
    const std::string columns(sql.substr(open, close - open));
    std::string expected;
    int place = 0;
    for (std::size_t at = 0; at < columns.size();) {
        const std::size_t end = std::min(columns.find(", ", at), columns.size());
        const std::string parameter = '$' + std::to_string(++place);
        const bool isCounter = columns.compare(at, end - at, "\"ID\"") == 0;
        expected += (place > 1 ? ", " : "") +
                    (isCounter ? "vd_counter('" + quotedName(table) + "', " + parameter + ')' : parameter);
        at = end + 2;
    }
    const std::string_view given = sql.substr(close + values.size());
    return given == expected + ')' + std::string(kPostgresWords.behindInsert) ? columns : std::string();
}

std::string randomName() {
    std::random_device random;
    return std::to_string(random()) + '.' + std::to_string(random()) + '.' + std::to_string(random());
}

} // namespace

ServerRows::ServerRows(ServerAnswer answer) : answer_(std::move(answer)) {
    if (answer_) takeColumns(answer_.get());
}

void ServerRows::takeColumns(const pg_result* answer) {
    if (!types_.empty()) return;
    for (int i = 0; i < PQnfields(answer); ++i) {
        types_.push_back(storageOf(PQftype(answer, i)));
        names_.emplace_back(PQfname(answer, i));
    }
}

void ServerRows::take(const pg_result* row) {
    takeColumns(row);
    for (int i = 0; i < PQnfields(row); ++i) {
        const auto size = static_cast<std::size_t>(PQgetlength(row, 0, i));
        cells_.push_back({letters_.size(), size, PQgetisnull(row, 0, i) == 1});
        letters_.append(PQgetvalue(row, 0, i), size);
        bytes_ += sizeof(Value) + size;
    }
}

int ServerRows::rowCount() const {
    if (!cells_.empty()) return static_cast<int>(cells_.size() / types_.size());
    return answer_ ? PQntuples(answer_.get()) : 0;
}

Storage ServerRows::storage(int row, int column) const {
    const auto at = static_cast<std::size_t>(column);
    const bool isNull = cells_.empty() ? PQgetisnull(answer_.get(), row, column) == 1
                                       : cells_[static_cast<std::size_t>(row) * types_.size() + at].isNull;
    return isNull ? Storage::Null : types_[at];
}

std::string_view ServerRows::text(int row, int column) const {
    if (cells_.empty())
        return {PQgetvalue(answer_.get(), row, column),
                static_cast<std::size_t>(PQgetlength(answer_.get(), row, column))};
    const Cell& cell =
        cells_[static_cast<std::size_t>(row) * types_.size() + static_cast<std::size_t>(column)];
    return std::string_view(letters_).substr(cell.begin, cell.size);
}

Prepared::Prepared(std::string_view text) : sql(text) {
    for (const auto& [beginning, itsKind] :
         {std::pair<std::string_view, Kind>{"INSERT INTO \"", Kind::Insert},
          {"UPDATE \"", Kind::Change},
          {"DELETE FROM \"", Kind::Change}}) {
        if (!text.starts_with(beginning)) continue;
        kind = itsKind;
        table = tableBehind(text, beginning);
    }
    if (kind == Kind::Insert) columns = plainColumns(text, table);
    if (text == kLastCounter) kind = Kind::LastCounter;
    readsClock = sql.find("vd_now(") != sql.npos || sql.find("vd_today(") != sql.npos;
}

Session::Session(const ServerPlace& place, bool onlyReads, milliseconds wait, std::function<DateTime()> clock,
                 std::vector<TableDef> scratch)
    : busyTimeout(wait), place_(place), onlyReads_(onlyReads), clock_(std::move(clock)),
      scratchTables_(std::move(scratch)), till_(randomName()) {
    for (const TableDef& table : scratchTables_)
        scratch_.insert(table.name);
    connect(wait);
}

Command Session::lock() const {
    return plain(lockKey_);
}

void Session::addSettings(Batch& batch, const Prepared* statement) {
    if (!forgotten_.empty() && !isOpen_) {
        for (const std::string& name : std::exchange(forgotten_, {}))
            batch.push_back(plain("DEALLOCATE " + name));
        batch.push_back(syncHere());
    }
    addWaiting(batch);
    // A transaction has its lock, and would take the setting back where it is undone.
    if (!isOpen_ && timeoutSet_ != longestWait()) {
        timeoutSet_ = longestWait();
        batch.push_back(plain("SET lock_timeout = " + std::to_string(timeoutSet_.count())));
        batch.push_back(syncHere());
    }
    if (statement == nullptr || !statement->readsClock || !clock_) return;
    Command tell = plain("SELECT set_config('veldona.now', $1, false)");
    tell.values.push_back(boundOf(storedDate(clock_())));
    batch.push_back(std::move(tell));
}

// Who writes and at what, for the journal: with the first write of an act, and as its clock goes on.
void Session::addAct(Batch& batch) {
    const Act& act = runningAct();
    const Actor& actor = thisActor();
    const std::string moment = clock_ ? storedDate(clock_()) : std::string();
    std::string said;
    for (const std::string& part :
         {act.number, moment, actor.program, actor.machine, actor.user, act.screen, act.name}) {
        if (!said.empty()) said += kBetweenParts;
        for (const char letter : part)
            said += static_cast<unsigned char>(letter) < ' ' ? ' ' : letter;
    }
    if (said == actSaid_) return;
    Command tell = plain("SELECT set_config('veldona.act', $1, false)");
    tell.values.push_back(boundOf(said));
    batch.push_back(std::move(tell));
    if (!isOpen_) batch.push_back(syncHere());
    actSaid_ = std::move(said);
}

std::size_t Session::bindTo(Trip& trip, const Question& asked) {
    Prepared& statement = *asked.statement;
    if (std::exchange(statement.connection, connections_) != connections_) statement.variants.clear();
    std::vector<unsigned> types;
    for (const Bound& value : asked.values)
        types.push_back(value.type);
    std::string name;
    for (const Prepared::Variant& variant : statement.variants)
        if (variant.types == types) name = variant.name;
    for (const Trip::Made& made : trip.made)
        if (made.statement == asked.statement && made.variant.types == types) name = made.variant.name;
    if (name.empty()) {
        name = "vd" + std::to_string(++named_);
        trip.made.push_back({asked.statement, {std::move(types), name}, trip.commands.size()});
        trip.commands.push_back({Command::Kind::Prepare, statement.sql, name, asked.values});
    }
    trip.commands.push_back({Command::Kind::RunPrepared, {}, std::move(name), asked.values});
    return trip.commands.size() - 1;
}

// One that the server did not come to is not known to it.
void Session::noteMade(Trip& trip, const Answers& answers) {
    for (Trip::Made& made : trip.made)
        if (answers[made.place]) made.statement->variants.push_back(std::move(made.variant));
}

// The number of the write stands in one with it.
Command Session::mark(const std::string& table) {
    Command command{Command::Kind::RunPrepared, {}, "vdmark", {}};
    command.values = {boundOf(till_), boundOf(++act_),
                      table.empty() ? boundOf(Value()) : boundOf(quotedName(table))};
    return command;
}

bool Session::isShared(const Prepared& statement) const {
    return statement.kind != Prepared::Kind::Read && !scratch_.contains(statement.table);
}

Session::Rows Session::run(const Question& asked) {
    requireConnection();
    if (canWait(*asked.statement)) {
        keepRow(*asked.statement, asked.values);
        return std::make_shared<ServerRows>();
    }
    if (Rows known = knownAnswer(asked)) return known;
    sendWaiting();
    const bool wasOpen = isOpen_;
    try {
        return attempt(asked);
    } catch (const LostConnection&) {
        if (wasOpen) fail(connectionLost());
        return runAgain(asked);
    }
}

Session::Rows Session::knownAnswer(const Question& asked) {
    const bool reads = asked.statement->kind == Prepared::Kind::Read;
    if (!reads) ahead_.forget();
    return noteAsked(asked) && reads ? ahead_.find(asked) : nullptr;
}

// Only where acts are told apart; what asks the clock, or is bounded, is asked each time: false.
bool Session::noteAsked(const Question& asked) {
    if (!lockWait || bounds != nullptr || asked.statement->readsClock) return false;
    const std::int64_t act = lockWait->act(), notes = notesOfOthers();
    const Clock::time_point now = Clock::now(), before = std::exchange(askedAt_, now);
    // Each is stored, whichever of them says it.
    const bool isOther = std::exchange(aheadAct_, act) != act;
    const bool isWritten = std::exchange(aheadNotes_, notes) != notes;
    if (isOther || isWritten || now - before > kLongestKept) ahead_.forget();
    ahead_.note(asked);
    return true;
}

// Behind the statement and its end, so that neither waits for them or fails with them.
Session::Ahead Session::addAhead(Trip& trip, const Question& asked, bool isInside) {
    Ahead ahead;
    const bool isScratch = asked.statement->kind != Prepared::Kind::Read && !isShared(*asked.statement);
    if (!lockWait || bounds != nullptr || asked.statement->readsClock || isScratch) return ahead;
    std::vector<Question> expected = ahead_.behind(asked);
    if (expected.empty()) return ahead;
    const std::size_t first = trip.commands.size();
    trip.commands.push_back(isInside ? plain(kSavepoint) : syncHere());
    for (Question& question : expected) {
        const std::size_t place = bindTo(trip, question);
        ahead.emplace_back(place, std::move(question));
    }
    if (isInside) trip.commands.push_back(plain(kRelease));
    for (std::size_t i = first; i < trip.commands.size(); ++i)
        trip.commands[i].mayFail = true;
    return ahead;
}

void Session::keepAhead(Ahead& ahead, Answers& answers) {
    bool hasFailed = false;
    for (auto& [place, question] : ahead) {
        if (answers[place])
            ahead_.keep(std::move(question), std::make_shared<ServerRows>(std::move(answers[place])));
        else
            hasFailed = true;
    }
    if (hasFailed && isOpen_) backToSavepoint();
}

Session::Rows Session::attempt(const Question& asked) {
    const Prepared& statement = *asked.statement;
    const bool writes = statement.kind != Prepared::Kind::Read;
    const bool shared = isShared(statement);
    requireScratch(statement);
    Trip trip;
    Batch& batch = trip.commands;
    addSettings(batch, &statement);
    if (shared) addAct(batch);
    if (isOpen_) batch.push_back(plain(kSavepoint));
    if (shared && !isOpen_) batch.push_back(lock());
    const std::size_t place = bindTo(trip, asked);
    ServerRows taken;
    if (bounds != nullptr && !writes)
        batch.back().takeRow = [&](const pg_result* row) {
            taken.take(row);
            if (static_cast<std::size_t>(taken.rowCount()) > bounds->mostRows ||
                taken.bytes() > bounds->mostBytes)
                throw tooLarge();
        };
    const bool isBounded = static_cast<bool>(batch[place].takeRow);
    if (isOpen_) batch.push_back(plain(kRelease));
    if (shared && !isOpen_)
        batch.push_back(mark(statement.kind == Prepared::Kind::Insert ? statement.table : std::string()));
    Ahead ahead = addAhead(trip, asked, isOpen_);
    Answers answers = send(batch, shared ? patienceForLock() : isBounded ? patienceForRows() : Patience());
    noteMade(trip, answers);
    if (shared)
        hasWritten_ = true;
    else if (writes)
        filled_.insert(statement.table);
    if (writes) noteWrite(statement, answers[place].get());
    keepAhead(ahead, answers);
    if (writes) return std::make_shared<ServerRows>();
    Rows rows = std::make_shared<ServerRows>(taken.rowCount() > 0 ? std::move(taken)
                                                                  : ServerRows(std::move(answers[place])));
    if (lockWait && bounds == nullptr && !statement.readsClock) ahead_.keep(asked, rows);
    return rows;
}

void Session::writeAll(const std::vector<Question>& writes, std::vector<std::int64_t>& done) {
    requireConnection();
    sendWaiting();
    ahead_.forget();
    Trip trip;
    addSettings(trip.commands, nullptr);
    addAct(trip.commands);
    std::vector<std::size_t> places;
    for (const Question& write : writes) {
        requireScratch(*write.statement);
        trip.commands.push_back(plain(kSavepoint));
        places.push_back(bindTo(trip, write));
        trip.commands.push_back(plain(kRelease));
    }
    hasWritten_ = true;
    std::size_t refusedAt = 0;
    try {
        const Answers answers = send(trip.commands, patienceForLock(), &refusedAt);
        noteMade(trip, answers);
        for (std::size_t i = 0; i < writes.size(); ++i) {
            noteWrite(*writes[i].statement, answers[places[i]].get());
            done.push_back(lastId_);
        }
    } catch (const StoreError&) {
        for (const std::size_t place : places)
            if (place < refusedAt) done.push_back(0);
        throw;
    } catch (const LostConnection&) {
        fail(connectionLost());
    }
}

void Session::noteWrite(const Prepared& statement, const pg_result* answer) {
    const std::string_view count = PQcmdTuples(const_cast<pg_result*>(answer));
    rowsChanged = 0;
    std::from_chars(count.data(), count.data() + count.size(), rowsChanged);
    const int rows = PQntuples(answer);
    if (statement.kind != Prepared::Kind::Insert || rows == 0) return;
    const std::string_view id = PQgetvalue(answer, rows - 1, 0);
    std::from_chars(id.data(), id.data() + id.size(), lastId_);
    lastTable_.clear();
    if (!isOpen_) return;
    std::int64_t first = 0;
    const std::string_view lowest = PQgetvalue(answer, 0, 0);
    std::from_chars(lowest.data(), lowest.data() + lowest.size(), first);
    counted_.try_emplace(statement.table, first);
}

Session::Answers Session::send(const Batch& batch, const Patience& patience, std::size_t* refusedAt) {
    try {
        return wire_->run(batch, patience);
    } catch (const ServerRefusal& refusal) {
        actSaid_.clear(); // it may be undone with the rest
        if (refusedAt != nullptr) *refusedAt = refusal.command;
        if (isOpen_ && wire_->isInTransaction()) backToSavepoint();
        if (refusal.code == "55P03" && lockWait)
            static_cast<void>(lockWait->goesOn(busyTimeout, busyTimeout));
        if (refusal.code == "57014" && bounds != nullptr)
            throw StoreError(StoreError::Kind::GivenUp, "Sorgudan vazgeçildi.");
        fail(storeErrorOf(refusal));
    } catch (const LostConnection&) {
        isOpen_ = false;
        throw;
    }
}

void Session::backToSavepoint() {
    try {
        static_cast<void>(wire_->run({plain(kBackToSavepoint), plain(kRelease)}));
    } catch (const ServerRefusal&) {
        // The transaction is lost as a whole; its end says so.
    }
}

void Session::fail(StoreError failure) {
    if (isOfTheDisk(failure.kind())) ofTheDisk = failure;
    throw StoreError(std::move(failure));
}

// Behind the first wait of an act that failed the others fail at once. Nought would be no end at all.
milliseconds Session::longestWait() const {
    if (lockWait && lockWait->isOver()) return milliseconds(1);
    return std::clamp(busyTimeout, milliseconds(1), milliseconds(2'000'000'000));
}

Patience Session::patienceForLock() const {
    if (!lockWait) return {};
    return
        [this](milliseconds waited) { return waited < kFirstLook || lockWait->goesOn(waited, busyTimeout); };
}

Patience Session::patienceForRows() const {
    return [this](milliseconds) { return !bounds->goOn || bounds->goOn(); };
}

// Raises what the server refuses, and its loss, in our words.
void Session::guarded(const std::function<void()>& step) {
    try {
        step();
    } catch (const ServerRefusal& refusal) {
        fail(storeErrorOf(refusal));
    } catch (const LostConnection&) {
        isOpen_ = false;
        fail(connectionLost());
    }
}

void Session::script(const std::string& sql) {
    ahead_.forget();
    guarded([&] {
        requireConnection();
        flushWaiting();
        wire_->script(sql);
    });
}

void Session::copyIn(const std::string& statement, const std::string& lines) {
    hasWritten_ = true;
    ahead_.forget();
    guarded([&] {
        requireConnection();
        flushWaiting();
        wire_->copyIn(statement, lines);
    });
}

ServerRows Session::ask(const std::string& sql, const std::vector<Bound>& values) {
    Batch batch = {plain(sql)};
    batch.front().values = values;
    try {
        requireConnection();
        flushWaiting();
        return ServerRows(std::move(send(batch, {}).front()));
    } catch (const LostConnection&) {
        fail(connectionLost());
    }
}

void Session::note(const std::string& what) {
    requireConnection();
    flushWaiting();
    Batch batch;
    addAct(batch);
    batch.push_back(plain("INSERT INTO \"MSysGUNLUKNOT\" VALUES ($1)"));
    batch.back().values = {boundOf(what)};
    guarded([&] { static_cast<void>(send(batch, {})); });
}

void Session::begin() {
    requireConnection();
    sendWaiting();
    const Question beginning{beginning_, {}}; // what follows it goes along, as behind any other
    const auto attempted = [&] {
        Trip trip;
        addSettings(trip.commands, nullptr);
        trip.commands.push_back(plain(beginning_->sql));
        trip.commands.push_back(lock());
        Ahead ahead = addAhead(trip, beginning, true);
        Answers answers = send(trip.commands, patienceForLock());
        isOpen_ = true;
        noteMade(trip, answers);
        keepAhead(ahead, answers);
    };
    ahead_.forget(); // others may write while the lock is waited for
    static_cast<void>(noteAsked(beginning));
    try {
        attempted();
    } catch (const StoreError&) {
        if (wire_->isInTransaction()) script("ROLLBACK");
        throw;
    } catch (const LostConnection&) {
        reconnect(); // nothing was in it yet
        try {
            attempted();
        } catch (const LostConnection&) {
            fail(connectionLost());
        }
    }
    hasWritten_ = false;
    counted_.clear();
}

void Session::beginReading() {
    ahead_.forget();
    script("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
    isOpen_ = true;
    hasWritten_ = false;
}

void Session::commit() {
    requireConnection();
    flushWaiting();
    isOpen_ = false;
    ahead_.forget();
    Batch batch;
    if (hasWritten_) batch.push_back(mark({}));
    batch.push_back(plain("COMMIT"));
    try {
        const Answers answers = send(batch, {});
        // A transaction that failed as a whole is undone instead, without a word.
        if (std::string_view(PQcmdStatus(answers.back().get())) != "COMMIT") fail(connectionLost());
    } catch (const StoreError&) {
        if (wire_->isInTransaction()) script("ROLLBACK");
        throw;
    } catch (const LostConnection&) {
        if (!hasWritten_) return;
        inDoubt_ = act_;
        reconnect(); // raises where nobody can be asked
        if (!wentThrough(std::exchange(inDoubt_, 0))) fail(connectionLost());
        tellLater("Son işlem kopmadan önce kaydedilmişti; yeniden yapmayın.");
    }
}

// The counters that the transaction took are given back, as the file gives them: nobody else writes until its
// end.
void Session::rollback() {
    isOpen_ = false;
    actSaid_.clear();
    waiting_.clear();
    ahead_.forget();
    Batch batch;
    for (const auto& [table, id] : std::exchange(counted_, {})) {
        batch.push_back(plain("SELECT setval(pg_get_serial_sequence($1, 'ID'), $2, false)"));
        batch.back().values = {boundOf(quotedName(table)), boundOf(id)};
    }
    batch.push_back(syncHere()); // one that failed as a whole takes nothing but its end
    batch.push_back(plain("ROLLBACK"));
    try {
        static_cast<void>(wire_->run(batch));
    } catch (const ServerRefusal& refusal) {
        if (wire_->isInTransaction()) fail(storeErrorOf(refusal));
    } catch (const LostConnection&) {
        // What was not committed is undone by the server.
    }
}

void Session::forget(Prepared& statement) {
    statement.isGone = true;
    if (statement.connection != connections_) return; // gone with it
    for (const Prepared::Variant& variant : statement.variants)
        forgotten_.push_back(variant.name);
}

} // namespace veldona::store
