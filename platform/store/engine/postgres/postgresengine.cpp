#include "platform/store/engine/postgres/postgresengine.h"

#include <map>
#include <utility>

#include "platform/store/engine/postgres/definitions.h"
#include "platform/store/engine/postgres/serverfilling.h"
#include "platform/store/engine/postgres/session.h"
#include "platform/store/engine/postgres/statement.h"
#include "platform/store/engine/postgres/words.h"
#include "platform/store/engine/tablerows.h"

namespace veldona::store {
namespace {

constexpr const char* kColumns =
    "SELECT c.relname, (c.relkind = 'v')::int, a.attname, t.typname, (a.attidentity <> '')::int "
    "FROM pg_class c JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 AND NOT a.attisdropped "
    "JOIN pg_type t ON t.oid = a.atttypid "
    "WHERE c.relkind IN ('r', 'v') AND c.relname NOT LIKE 'MSys%' "
    "AND (c.relnamespace = current_schema()::regnamespace OR c.relnamespace = pg_my_temp_schema()) "
    "ORDER BY c.relnamespace = pg_my_temp_schema() DESC, c.oid, a.attnum";

constexpr const char* kTablesOfQueries =
    "SELECT DISTINCT v.relname, t.relname FROM pg_rewrite r JOIN pg_class v ON v.oid = r.ev_class "
    "JOIN pg_depend d ON d.classid = 'pg_rewrite'::regclass AND d.objid = r.oid "
    "JOIN pg_class t ON d.refclassid = 'pg_class'::regclass AND t.oid = d.refobjid AND t.relkind = 'r' "
    "WHERE v.relnamespace = current_schema()::regnamespace ORDER BY 1, 2";

class PostgresEngine final : public Engine {
public:
    explicit PostgresEngine(std::shared_ptr<Session> session) : session_(std::move(session)) {}

    std::unique_ptr<Statement> prepare(std::string_view sql) override {
        return filling_ != nullptr && Prepared(sql).kind == Prepared::Kind::Insert
                   ? filling_->insertion(sql)
                   : makeStatement(session_, sql);
    }
    const EngineWords& words() const override { return kPostgresWords; }
    void writeAll(const std::vector<Write>& writes, std::vector<std::int64_t>& done) override {
        if (!session_->inTransaction()) return Engine::writeAll(writes, done);
        std::vector<Question> questions;
        for (const Write& write : writes) {
            Question& question = questions.emplace_back(Question{preparedOf(*write.statement), {}});
            for (const Value& value : write.values)
                question.values.push_back(boundOf(value));
        }
        session_->writeAll(questions, done);
    }

    Catalog readCatalog() override {
        std::map<std::string, std::vector<std::string>> below;
        const ServerRows tables = session_->ask(kTablesOfQueries);
        for (int i = 0; i < tables.rowCount(); ++i)
            below[std::string(tables.text(i, 0))].emplace_back(tables.text(i, 1));
        Catalog catalog;
        std::optional<Catalog::Relation> relation;
        const ServerRows columns = session_->ask(kColumns);
        for (int i = 0; i < columns.rowCount(); ++i) {
            const std::string name(columns.text(i, 0));
            if (!relation || relation->name != name) {
                if (relation) catalog.add(std::move(*relation));
                const bool isQuery = columns.text(i, 1) == "1";
                relation = Catalog::Relation{name, {}, isQuery, isQuery ? below[name] : std::vector{name}};
            }
            relation->columns.push_back({std::string(columns.text(i, 2)),
                                         columnTypeOf(columns.text(i, 3), columns.text(i, 4) == "1")});
        }
        if (relation) catalog.add(std::move(*relation));
        return catalog;
    }
    void define(const std::vector<TableDef>& tables, const std::vector<SavedQueryDef>& queries) override {
        session_->script("BEGIN;\n" + definitionScript(tables, queries) + newJournalKeyStatement() +
                         "COMMIT");
    }

    void begin() override { session_->begin(); }
    void beginReading() override { session_->beginReading(); }
    void commit() override { session_->commit(); }
    void rollback() override { session_->rollback(); }
    bool inTransaction() const override { return session_->inTransaction(); }
    std::int64_t lastId() const override { return session_->lastId(); }
    std::int64_t rowsChanged() const override { return session_->rowsChanged; }
    WritesOfOthers takeWritesOfOthers() override { return session_->takeWritesOfOthers(); }
    void setBusyTimeout(std::chrono::milliseconds timeout) override { session_->busyTimeout = timeout; }
    void setLockWait(std::shared_ptr<LockWait> wait) override { session_->lockWait = std::move(wait); }
    void setBounds(const ReadBounds* bounds) override { session_->bounds = bounds; }
    std::optional<StoreError> takeDiskFailure() override {
        return std::exchange(session_->ofTheDisk, std::nullopt);
    }

    void copyInto(Engine& target, const Delivered& delivered, const OnPages& onPages) override {
        target.define(delivered.tables, delivered.queries);
        copyRows(*this, target, [&onPages] {
            if (onPages) onPages(0, 0);
        });
    }
    bool isSound() override {
        try {
            const Catalog catalog = readCatalog();
            for (const Catalog::Relation& relation : catalog.relations())
                static_cast<void>(session_->ask("SELECT sum(hashtext(t::text)::bigint) FROM " +
                                                quotedName(relation.name) + " t"));
            return true;
        } catch (const StoreError& failure) {
            if (failure.kind() == StoreError::Kind::Damaged) return false;
            throw;
        }
    }
    std::int64_t fullSize() override {
        const ServerRows size =
            session_->ask("SELECT coalesce(sum(pg_total_relation_size(oid)), 0)::text FROM pg_class WHERE "
                          "relkind = 'r' AND relnamespace = current_schema()::regnamespace");
        return std::stoll(std::string(size.text(0, 0)));
    }
    void keepNoJournal() override { session_->script("SET synchronous_commit = off"); }
    void beginFilling() override { filling_ = std::make_shared<ServerFilling>(session_); }
    void endFilling() override {
        filling_->finish();
        filling_.reset();
    }
    std::int64_t lastCounterOf(const std::string& table) override {
        const ServerRows given = session_->ask(
            "SELECT coalesce(pg_sequence_last_value(pg_get_serial_sequence($1, 'ID')::regclass), 0)::text",
            {boundOf(quotedName(table))});
        return std::stoll(std::string(given.text(0, 0)));
    }
    void setLastCounter(const std::string& table, std::int64_t given) override {
        if (given == 0) return; // as it was made
        static_cast<void>(session_->ask("SELECT setval(pg_get_serial_sequence($1, 'ID'), $2)",
                                        {boundOf(quotedName(table)), boundOf(given)}));
    }
    std::string journalKey() override {
        const ServerRows table = session_->ask("SELECT 1 FROM pg_class WHERE relname = 'MSysGUNLUK' AND "
                                               "relnamespace = current_schema()::regnamespace");
        if (table.rowCount() == 0) return {};
        const ServerRows kept = session_->ask("SELECT \"ANAHTAR\" FROM \"MSysGUNLUK\"");
        return kept.rowCount() == 0 ? std::string() : std::string(kept.text(0, 0));
    }
    void setJournalKey(const std::string& key) override {
        if (key.empty()) return;
        session_->script("UPDATE \"MSysGUNLUK\" SET (\"ANAHTAR\", \"IC\", \"DIS\") = (" +
                         journalKeyValues(key) + ")");
    }
    void noteInJournal(const std::string& what) override {
        if (!journalKey().empty()) session_->note(what);
    }
    void rewrite() override {
        const Catalog catalog = readCatalog();
        for (const Catalog::Relation& relation : catalog.relations())
            if (!relation.isQuery) session_->script("VACUUM FULL " + quotedName(relation.name));
    }

private:
    std::shared_ptr<Session> session_;
    std::shared_ptr<ServerFilling> filling_; // as long as it is filled
};

} // namespace

std::unique_ptr<Engine> openPostgres(const ServerPlace& place, Access access, std::chrono::milliseconds wait,
                                     std::function<DateTime()> clock, const std::vector<TableDef>& scratch) {
    return std::make_unique<PostgresEngine>(
        std::make_shared<Session>(place, access == Access::Read, wait, std::move(clock), scratch));
}

} // namespace veldona::store
