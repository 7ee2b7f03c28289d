#include <charconv>
#include <thread>
#include <utility>

#include "platform/store/engine/postgres/definitions.h"
#include "platform/store/engine/postgres/postgresengine.h"
#include "platform/store/engine/postgres/session.h"
#include "platform/store/engine/postgres/words.h"
#include "platform/store/engine/servermove.h"

namespace veldona::store {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
using Kind = StoreError::Kind;

// A server that is started anew is there by then; nobody stands at a counter for longer.
constexpr milliseconds kLongestAbsence(15'000);
constexpr milliseconds kBetweenTries(250);
constexpr milliseconds kForTheKilled(5'000);
constexpr int kLooksForOldBackend = 100;

constexpr const char* kBackAgain = "Sunucuyla bağlantı koptu ve yeniden kuruldu. ";

// To hash or sort texts by the alphabet costs more than the planner reckons: an index that has them in order
// is the shorter way.
constexpr const char* kSettings =
    "; SET jit = off; SET random_page_cost = 1.1; SET client_min_messages = error; SET "
    "default_transaction_isolation = 'read committed'; "
    "SET statement_timeout = 0; SET idle_in_transaction_session_timeout = 0; "
    "PREPARE vdmark (text, bigint, text) AS INSERT INTO \"MSysKASA\" (\"KASA\", \"NO\", \"ID\") VALUES ($1, "
    "$2, "
    "CASE WHEN $3 IS NOT NULL THEN pg_sequence_last_value(pg_get_serial_sequence($3, 'ID')::regclass) END) "
    "ON CONFLICT (\"KASA\") DO UPDATE SET \"NO\" = excluded.\"NO\", \"ID\" = excluded.\"ID\", \"AN\" = "
    "now(); "
    "LISTEN ";

// No till is in doubt for so long. A role that may not delete opens the books all the same.
constexpr const char* kForgetOldSessions = "; DO $$ BEGIN IF has_table_privilege('\"MSysKASA\"', 'DELETE') "
                                           "THEN DELETE FROM \"MSysKASA\" WHERE \"AN\" < "
                                           "now() - interval '30 days'; END IF; END $$";

constexpr const char* kBooksOfThatName =
    "SELECT n.oid::text, a.backend_start::text, has_schema_privilege(n.oid, 'USAGE')::int, "
    "pg_try_advisory_lock_shared($2::int, n.oid::int)::int FROM pg_namespace n, pg_stat_activity a WHERE "
    "n.nspname = $1 AND a.pid = pg_backend_pid() AND EXISTS (SELECT FROM pg_class c "
    "WHERE c.relnamespace = n.oid AND c.relname = 'MSysKASA')";

void requireBooks(const ServerRows& known, const ServerPlace& place) {
    if (known.rowCount() == 0)
        throw StoreError(Kind::FileMissing,
                         "Sunucuda bu programın defteri yok: " + place.address.shown() +
                             ". Defter sunucuya vorel-sunucu --kur komutuyla taşınır; bir dosyaya geri "
                             "getirildiyse bu bilgisayarda adresi kaldırın: " +
                             place.address.source());
    if (known.text(0, 2) != "1")
        throw StoreError(Kind::ReadOnly, "Bu kullanıcının deftere girme izni yok: " + place.address.shown() +
                                             ". Sunucuda onun rolünü kasaların ortak rolüne katın: GRANT " +
                                             kTillRole + " TO …");
}

// What a killed program had open is open until the server has learnt of its end.
ServerRows booksOn(Wire& wire, const ServerPlace& place, milliseconds wait) {
    const auto giveUpAt = Clock::now() + std::min(wait, kForTheKilled);
    const Command ask{
        Command::Kind::Run, kBooksOfThatName, {}, {boundOf(place.schema), boundOf(kOpenBooksLock)}};
    for (;;) {
        ServerRows known(std::move(wire.run({ask}).front()));
        requireBooks(known, place);
        if (known.text(0, 3) == "1") return known;
        if (Clock::now() >= giveUpAt)
            throw StoreError(
                Kind::Locked,
                "Sunucudaki defter şu anda taşınıyor ya da yenileniyor. Bitince yeniden deneyin: " +
                    place.address.shown() + '.');
        std::this_thread::sleep_for(kBetweenTries);
    }
}

StoreError doubtful(const StoreError& failure) {
    return {failure.kind(), "Sunucuyla bağlantı, bir kayıt yapılırken koptu. Kaydın yapılıp yapılmadığı daha "
                            "bilinmiyor; bağlantı gelince söylenecek, o zamana kadar yeniden yapmayın. " +
                                failure.description()};
}

} // namespace

void Session::connect(milliseconds wait) {
    const auto goOn = [this, since = Clock::now(), wait] {
        const auto waited = std::chrono::duration_cast<milliseconds>(Clock::now() - since);
        return !lockWait || connections_ == 0 || lockWait->goesOn(waited, wait);
    };
    auto wire = std::make_unique<Wire>(connectTo(place_.address, wait, goOn));
    const std::string schema = quotedName(place_.schema);
    try {
        wire->script("SET search_path = " + schema);
        const ServerRows known = booksOn(*wire, place_, wait);
        lockKey_ = "SELECT pg_advisory_xact_lock(7645, " + std::string(known.text(0, 0)) + "::int)";
        backendStart_ = known.text(0, 1);
        std::string made = "SET search_path = " + schema + kSettings + schema;
        for (const TableDef& table : scratchTables_)
            made += "; " + scratchStatement(table);
        if (onlyReads_)
            made += "; SET default_transaction_read_only = on";
        else if (connections_ == 0)
            made += kForgetOldSessions;
        wire->script(made);
    } catch (const ServerRefusal& refusal) {
        throw storeErrorOf(refusal);
    } catch (const LostConnection&) {
        throw connectionLost();
    }
    wire_ = std::move(wire);
    ++connections_;
    timeoutSet_ = milliseconds(-1);
    forgotten_.clear();
    actSaid_.clear();
    waiting_.clear();
    ahead_.forget();
    emptied_.merge(filled_);
    filled_.clear();
    isOpen_ = false;
}

// Before anything is sent: a connection may have gone away while the till stood idle.
void Session::requireConnection() {
    if (wire_->isAlive()) return settleDoubt();
    if (std::exchange(isOpen_, false)) fail(connectionLost());
    reconnect();
    settleDoubt();
}

// What was gathered for a paper and went with the connection is not taken for a paper without rows.
void Session::requireScratch(const Prepared& statement) {
    if (emptied_.empty()) return;
    if (statement.kind == Prepared::Kind::Change && emptied_.erase(statement.table) > 0) return;
    for (const std::string& table : emptied_)
        if (statement.sql.find(quotedName(table)) != std::string::npos) fail(connectionLost());
}

void Session::reconnect() {
    if (wire_->backend() != 0) {
        oldBackend_ = wire_->backend();
        oldBackendStart_ = backendStart_;
    }
    const std::int64_t notes =
        notesBefore_ + wire_->notesOfOthers() + 1; // what was told meanwhile is not known
    const auto since = Clock::now();
    for (;;) {
        const auto waited = std::chrono::duration_cast<milliseconds>(Clock::now() - since);
        try {
            connect(kLongestAbsence - std::min(waited, kLongestAbsence - kBetweenTries));
            break;
        } catch (const StoreError& failure) {
            const bool goesOn =
                lockWait ? lockWait->goesOn(waited, kLongestAbsence) : waited < kLongestAbsence;
            if (!goesOn) fail(inDoubt_ == 0 ? failure : doubtful(failure));
        }
        std::this_thread::sleep_for(kBetweenTries);
    }
    notesBefore_ = notes;
    mayHaveMissed_ = true;
    endOldBackend();
    tellLater("Kayıtlarda bir eksik yok.");
}

// The server may not have heard yet that the connection is gone, and still run what it was sent.
void Session::endOldBackend() {
    if (oldBackend_ == 0) return;
    Command ended{Command::Kind::Run,
                  "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE pid = $1 AND "
                  "backend_start::text = $2",
                  {},
                  {boundOf(oldBackend_), boundOf(oldBackendStart_)}};
    try {
        for (int i = 0; i < kLooksForOldBackend; ++i) {
            const ServerRows still(std::move(wire_->run({ended}).front()));
            if (still.rowCount() == 0) break;
            std::this_thread::sleep_for(milliseconds(10));
        }
        oldBackend_ = 0;
    } catch (const ServerRefusal& refusal) {
        fail(storeErrorOf(refusal));
    } catch (const LostConnection&) {
        fail(connectionLost());
    }
}

bool Session::wentThrough(std::int64_t act) {
    try {
        const ServerRows found(
            std::move(wire_
                          ->run({{Command::Kind::Run,
                                  "SELECT \"ID\" FROM \"MSysKASA\" WHERE \"KASA\" = $1 AND \"NO\" = $2",
                                  {},
                                  {boundOf(till_), boundOf(act)}}})
                          .front()));
        if (found.rowCount() == 0) return false;
        const std::string_view id = found.text(0, 0);
        std::from_chars(id.data(), id.data() + id.size(), lastId_);
        lastTable_.clear();
        rowsChanged = 1;
        return true;
    } catch (const ServerRefusal& refusal) {
        fail(storeErrorOf(refusal));
    } catch (const LostConnection&) {
        fail(connectionLost());
    }
}

// How many rows a statement changed whose answer was lost: nobody counted. Of a correction of one row it is
// told by whether the row is there; a row that somebody took away before it was not corrected.
std::int64_t Session::rowsLeftOf(const Prepared& statement, const std::vector<Bound>& values) {
    std::string_view sql = statement.sql;
    if (sql.ends_with(kPostgresWords.whole)) sql.remove_suffix(kPostgresWords.whole.size());
    const std::string ofOneRow = " WHERE \"ID\" = $" + std::to_string(values.size());
    if (!sql.starts_with("UPDATE ") || !sql.ends_with(ofOneRow)) return 1;
    return ask("SELECT 1 FROM " + quotedName(statement.table) + " WHERE \"ID\" = $1", {values.back()})
        .rowCount();
}

// Outside of a transaction: reads and what did not go through are run once more.
Session::Rows Session::runAgain(const Question& asked) {
    const bool shared = isShared(*asked.statement);
    if (shared) inDoubt_ = act_;
    reconnect(); // raises where nobody can be asked
    if (shared && wentThrough(std::exchange(inDoubt_, 0))) {
        rowsChanged = rowsLeftOf(*asked.statement, asked.values);
        tellLater("Son kayıt kopmadan önce yapılmıştı; yeniden yapmayın.");
        return std::make_shared<ServerRows>();
    }
    try {
        Rows rows = attempt(asked);
        tellLater(shared ? "Son kayıt yapılmamıştı; yeniden yapıldı." : "Kayıtlarda bir eksik yok.");
        return rows;
    } catch (const LostConnection&) {
        if (!shared) fail(connectionLost());
        inDoubt_ = act_;
        fail(doubtful(connectionLost()));
    }
}

// What could not be asked when the connection went away.
void Session::settleDoubt() {
    if (inDoubt_ == 0 || isOpen_) return;
    tellLater(wentThrough(std::exchange(inDoubt_, 0))
                  ? "Kopmadan önceki son kayıt yapılmış; yeniden yapmayın."
                  : "Kopmadan önceki son kayıt yapılmamış; yeniden yapın.");
}

void Session::tellLater(const char* whatWasDone) {
    ofTheDisk = StoreError(Kind::InputOutput, std::string(kBackAgain) + whatWasDone);
}

std::int64_t Session::notesOfOthers() {
    return notesBefore_ + wire_->notesOfOthers();
}

// As vd_wrote and vd_came say it; what is said otherwise may mean any table.
WritesOfOthers Session::takeWritesOfOthers() {
    WritesOfOthers writes;
    writes.areAnywhere = std::exchange(mayHaveMissed_, false);
    for (const std::string& note : wire_->takeNotes()) {
        const char how = note.empty() ? '\0' : note.front();
        if (how != 'E' && how != 'D' && how != 'S')
            writes.areAnywhere = true;
        else
            writes.tables.push_back({note.substr(1), how == 'S'});
    }
    return writes;
}

} // namespace veldona::store
