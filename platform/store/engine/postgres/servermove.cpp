#include "platform/store/engine/servermove.h"

#include <libpq-fe.h>

#include <chrono>
#include <thread>
#include <utility>

#include "platform/store/engine/journalseal.h"
#include "platform/store/engine/openserver.h"
#include "platform/store/engine/postgres/definitions.h"
#include "platform/store/engine/postgres/edition.h"
#include "platform/store/engine/postgres/postgresengine.h"
#include "platform/store/engine/postgres/serverconnection.h"
#include "platform/store/engine/postgres/serverfailure.h"
#include "platform/store/engine/postgres/wire.h"

namespace veldona::store {
namespace {

using Kind = StoreError::Kind;

constexpr std::chrono::seconds kWait(15);
constexpr int kLooksForOthers = 30; // in three seconds; the server learns late that a client was killed

// Where books of the place are made.
ServerPlace asideOf(const ServerPlace& place) {
    ServerPlace aside = place;
    aside.schema += "_geliyor";
    return aside;
}

template <class Step> decltype(auto) asStoreError(Step&& step) {
    try {
        return step();
    } catch (const ServerRefusal& refusal) {
        throw storeErrorOf(refusal);
    } catch (const LostConnection&) {
        throw connectionLost();
    }
}

// The journal is written by the triggers alone, and its pads are read by nobody else.
std::string journalRights(const std::string& in, const std::string& to) {
    const std::string from = std::string(" FROM ") + kTillRole + "; ",
                      key = in + quotedName(kJournalKeyTable);
    return "REVOKE INSERT, UPDATE, DELETE ON " + in + quotedName(kJournalTable) + from + "REVOKE ALL ON " +
           key + from + "GRANT SELECT (\"ANAHTAR\") ON " + key + to;
}

// What the tills may: rows, and the counters that they fill.
std::string grants(const std::string& schema) {
    const std::string on = " IN SCHEMA " + quotedName(schema), to = std::string(" TO ") + kTillRole + "; ";
    return "GRANT USAGE ON SCHEMA " + quotedName(schema) + to +
           "GRANT SELECT, INSERT, UPDATE, DELETE ON ALL TABLES" + on + to +
           journalRights(quotedName(schema) + '.', to) + "GRANT USAGE, SELECT, UPDATE ON ALL SEQUENCES" + on +
           to + "ALTER DEFAULT PRIVILEGES" + on + " GRANT SELECT, INSERT, UPDATE, DELETE ON TABLES" + to +
           "ALTER DEFAULT PRIVILEGES" + on + " GRANT USAGE, SELECT, UPDATE ON SEQUENCES" + to;
}

// A statement that a till prepared before asks for its rights each time it runs.
std::string setAsideStatements(const std::string& schema, const std::string& former) {
    const std::string from = std::string(" FROM ") + kTillRole + "; ";
    return "REVOKE ALL ON ALL TABLES IN SCHEMA " + quotedName(schema) + from + "REVOKE ALL ON SCHEMA " +
           quotedName(schema) + from + "ALTER SCHEMA " + quotedName(schema) + " RENAME TO " +
           quotedName(former) + "; ";
}

// Each connection that has the books open shares a lock of theirs (Session::connect).
void requireAlone(Engine& books) {
    for (int i = 0; i < kLooksForOthers; ++i) {
        const auto asked = books.prepare("SELECT pg_try_advisory_lock(" + std::to_string(kOpenBooksLock) +
                                         ", current_schema()::regnamespace::oid::int)::int");
        if (asked->step() && asked->whole(0) == 1) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
    }
    throw StoreError(Kind::Locked,
                     "Defter şu anda açık. Bütün bilgisayarlarda programı kapatıp yeniden deneyin.");
}

} // namespace

void requireClosed(const ServerPlace& place) {
    requireAlone(*openPostgres(place, Access::Write, kWait));
}

class ServerSession {
public:
    explicit ServerSession(const ServerAddress& address) : wire_(connectTo(address, kWait)) {}

    void run(const std::string& script) {
        asStoreError([&] { wire_.script(script); });
    }
    // Whether a question has an answer.
    [[nodiscard]] bool has(const std::string& question, const Value& about = Null()) {
        Command command{Command::Kind::Run, question, {}, {}};
        if (!about.isNull()) command.values.push_back(boundOf(about));
        return asStoreError([&] { return PQntuples(wire_.run({command}).front().get()) > 0; });
    }
    [[nodiscard]] bool hasSchema(const std::string& schema) {
        return has("SELECT 1 FROM pg_namespace WHERE nspname = $1", schema);
    }

private:
    Wire wire_;
};

bool standOnServer(const ServerPlace& place) {
    return ServerSession(place.address).hasSchema(place.schema);
}

ServerDraft::ServerDraft(const ServerPlace& place, const Delivered& delivered)
    : place_(place), session_(std::make_unique<ServerSession>(place.address)) {
    if (!session_->has("SELECT 1 FROM pg_roles WHERE rolname = $1", kTillRole))
        throw StoreError(Kind::Other, std::string("Sunucuda kasaların rolü yok: ") + kTillRole +
                                          ". Sunucuda bir kez şunu çalıştırın: sudo -u postgres createuser "
                                          "--no-login " +
                                          kTillRole);
    lockOutOthers();
    const ServerPlace draft = asideOf(place);
    removeFromServer(draft);
    createOnServer(draft, delivered.tables, delivered.queries);
    for (const TableDef& table : delivered.tables)
        tables_ +=
            (tables_.empty() ? "" : ", ") + quotedName(asideOf(place_).schema) + '.' + quotedName(table.name);
    engine_ = openServer(draft, kWait, delivered);
}

// A run that was killed may have left the server at work on a statement.
void ServerDraft::lockOutOthers() {
    try {
        session_->run("SET lock_timeout = '15s'; SELECT pg_advisory_lock(7645, -1)"); // no schema's number
    } catch (const StoreError& failure) {
        if (failure.kind() != Kind::Locked) throw;
        throw StoreError(Kind::Locked,
                         "Sunucuya şu anda başka bir yerden defter taşınıyor. Bitmesini bekleyin.");
    }
}

ServerDraft::~ServerDraft() {
    engine_.reset();
    if (isNamed_) return;
    try {
        removeFromServer(asideOf(place_));
    } catch (const StoreError&) {
        // The server is gone; the next run removes it.
    }
}

void ServerDraft::giveName(const std::string& former) {
    engine_.reset();
    const bool stand = session_->hasSchema(place_.schema);
    if (stand && former.empty())
        throw StoreError(Kind::Other, "Sunucuda zaten bir defter var ve olduğu gibi bırakıldı: " +
                                          place_.address.shown() + '.');
    session_->run("VACUUM (ANALYZE) " + tables_); // else the first questions don't know the sizes
    // Sent together they are one transaction.
    session_->run((stand ? setAsideStatements(place_.schema, former) : std::string()) + "ALTER SCHEMA " +
                  quotedName(asideOf(place_).schema) + " RENAME TO " + quotedName(place_.schema) + "; " +
                  grants(place_.schema));
    isNamed_ = true;
}

ServerHold::ServerHold(const ServerPlace& place, const Delivered& delivered)
    : place_(place), engine_(openPostgres(place, Access::Write, kWait)) {
    requireTodays(*engine_, place, delivered);
    requireAlone(*engine_);
    engine_->execute("BEGIN ISOLATION LEVEL REPEATABLE READ");
    engine_->execute("SET LOCAL lock_timeout = '15s'");
    const Catalog catalog = engine_->readCatalog();
    for (const Catalog::Relation& table : catalog.relations())
        if (!table.isQuery) engine_->execute("LOCK TABLE " + quotedName(table.name) + " IN EXCLUSIVE MODE");
}

void ServerHold::setAside(const std::string& former) {
    engine_->execute("REVOKE ALL ON ALL TABLES IN SCHEMA " + quotedName(place_.schema) + " FROM " +
                     kTillRole);
    engine_->execute("REVOKE ALL ON SCHEMA " + quotedName(place_.schema) + " FROM " + kTillRole);
    engine_->execute("ALTER SCHEMA " + quotedName(place_.schema) + " RENAME TO " + quotedName(former));
    engine_->commit();
}

} // namespace veldona::store
