#include "platform/store/engine/openserver.h"

#include "platform/store/engine/postgres/definitions.h"
#include "platform/store/engine/postgres/edition.h"
#include "platform/store/engine/postgres/postgresengine.h"
#include "platform/store/engine/postgres/wire.h"

namespace veldona::store {
namespace {

constexpr std::chrono::seconds kWait(15);

// The server may still be making what a killed program asked for; it would stand there a moment later.
constexpr const char* kOneAtATime = "SELECT pg_advisory_xact_lock(7645, -2); "; // no schema's number

// Outside of any schema's use.
void runScript(const ServerPlace& place, const std::string& sql) {
    try {
        Wire(connectTo(place.address, kWait)).script("SET client_min_messages = error; " + sql);
    } catch (const ServerRefusal& refusal) {
        if (refusal.code == "42P06")
            throw StoreError(StoreError::Kind::Other, "Sunucuda bir defter zaten var: " +
                                                          place.address.shown() + ". Üzerine yazılmadı.");
        throw storeErrorOf(refusal);
    } catch (const LostConnection&) {
        throw connectionLost();
    }
}

} // namespace

std::unique_ptr<Engine> openServerToWork(const ServerPlace& place, const Opening& opening,
                                         const Delivered& delivered) {
    auto engine = openPostgres(place, Access::Write, opening.wait, opening.clock, delivered.scratch);
    requireTodays(*engine, place, delivered);
    engine->setLockWait(opening.lockWait);
    return engine;
}

std::unique_ptr<Engine> openServer(const ServerPlace& place, std::chrono::milliseconds wait,
                                   const Delivered& delivered) {
    auto engine = openPostgres(place, Access::Write, wait);
    requireTodays(*engine, place, delivered);
    return engine;
}

std::unique_ptr<Engine> openServerToRead(const ServerPlace& place, std::chrono::milliseconds wait,
                                         const Delivered& delivered) {
    auto engine = openPostgres(place, Access::Read, wait);
    requireTodays(*engine, place, delivered);
    return engine;
}

bool areOlder(Engine& books, const ServerPlace& place, const Delivered& delivered) {
    if (editionOf(books, delivered) == Edition::Older) return true;
    requireTodays(books, place, delivered);
    return false;
}

void createOnServer(const ServerPlace& place, const std::vector<TableDef>& tables,
                    const std::vector<SavedQueryDef>& queries) {
    const std::string schema = quotedName(place.schema);
    runScript(place, std::string("BEGIN; ") + kOneAtATime + "CREATE SCHEMA " + schema +
                         "; SET LOCAL search_path = " + schema + ";\n" + definitionScript(tables, queries) +
                         newJournalKeyStatement() + editionStatement(place, tables, queries) + "COMMIT");
}

void removeFromServer(const ServerPlace& place) {
    runScript(place,
              kOneAtATime + std::string("DROP SCHEMA IF EXISTS ") + quotedName(place.schema) + " CASCADE");
}

} // namespace veldona::store
