#include "platform/store/faces/database.h"

#include <exception>
#include <utility>

#include "platform/store/dialect/names.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/dialect/translate.h"
#include "platform/store/engine/journalseal.h"

namespace veldona::store {
namespace {

const std::string kJournal = foldName(kJournalTable);

constexpr std::size_t kPlansKept = 256;

// Binds the values, and ends the statement's run however it comes out.
class Run {
public:
    explicit Run(const Query& query) : statement_(*query.prepared->statement) {
        for (std::size_t i = 0; i < query.values.size(); ++i)
            statement_.bind(static_cast<int>(i) + 1, query.values[i]);
    }
    ~Run() { statement_.reset(); }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

private:
    Statement& statement_;
};

} // namespace

Database::Database(std::unique_ptr<Engine> engine, std::string password, std::shared_ptr<WriteFaults> faults)
    : engine_(std::move(engine)), password_(std::move(password)), faults_(std::move(faults)),
      catalog_(engine_->readCatalog()) {
    noteWritesOfOthers();
}

std::shared_ptr<PreparedPlan> Database::findPlan(const std::string& key) {
    const auto known = plans_.find(key);
    if (known == plans_.end()) return nullptr;
    recent_.splice(recent_.begin(), recent_, known->second);
    return known->second->second;
}

std::shared_ptr<PreparedPlan> Database::keepPlan(const std::string& key, Plan plan) {
    auto made = std::make_shared<PreparedPlan>();
    made->plan = std::move(plan);
    made->statement = engine_->prepare(made->plan.sql);
    recent_.emplace_front(key, made);
    plans_.emplace(key, recent_.begin());
    if (recent_.size() > kPlansKept) {
        plans_.erase(recent_.back().first);
        recent_.pop_back();
    }
    return made;
}

Query Database::query(std::string_view sql, const std::vector<std::string>& narrowing) {
    readStatement(sql, reading_);
    for (const std::string& column : narrowing)
        reading_.key.append(1, '\n').append(foldName(column));
    Query query{findPlan(reading_.key), {}};
    if (!query.prepared)
        query.prepared = keepPlan(reading_.key, translate(reading_, catalog_, engine_->words(), narrowing));
    const auto& targets = query.plan().targets;
    query.values.reserve(targets.size() + narrowing.size());
    for (std::size_t i = 0; i < targets.size(); ++i)
        query.values.push_back(bindLiteral(reading_.literals[i], targets[i]));
    query.values.resize(targets.size() + narrowing.size());
    return query;
}

Query Database::query(const std::string& key, std::size_t parameters,
                      const std::function<sql::Statement()>& make) {
    Query query{findPlan(key), std::vector<Value>(parameters)};
    if (!query.prepared)
        query.prepared = keepPlan(key, translate(make(), parameters, catalog_, engine_->words()));
    return query;
}

void Database::read(const Query& query, RowSet& rows) {
    requireTransactionIntact();
    const Run run(query);
    rows.fill(*query.prepared->statement, query.plan().columns, query.prepared->rowsLastTime, bounds_);
    query.prepared->rowsLastTime = static_cast<std::size_t>(rows.rowCount());
    rowsRead_ += static_cast<std::uint64_t>(rows.rowCount());
}

void Database::walk(const Query& query, const std::function<void(const Statement&)>& row) {
    requireTransactionIntact();
    const Run run(query);
    for (Statement& rows = *query.prepared->statement; rows.step(); ++rowsRead_)
        row(rows);
}

void Database::countWrite(const std::string& name, bool changesKeys) {
    const std::string table = foldName(name);
    ++writes_[table];
    ++writes_[kJournal]; // by the engine itself, along with it
    if (changesKeys) ++keyChanges_[table];
}

std::int64_t Database::write(const Query& query) {
    requireTransactionIntact();
    faults_->countWrite(query.plan().table);
    countWrite(query.plan().table, query.plan().changesKeys);
    const Run run(query);
    while (query.prepared->statement->step()) {
    }
    return engine_->rowsChanged();
}

void Database::writeAll(const std::vector<std::string>& statements, std::vector<std::int64_t>& done) {
    requireTransactionIntact();
    std::vector<Query> queries; // whose statements stand as long as they do
    std::exception_ptr failure;
    try {
        for (const std::string& sql : statements) {
            Query ready = query(sql);
            faults_->countWrite(ready.plan().table);
            queries.push_back(std::move(ready));
        }
    } catch (const StoreError&) {
        failure = std::current_exception();
    }
    std::vector<Engine::Write> writes;
    for (const Query& ready : queries) {
        countWrite(ready.plan().table, ready.plan().changesKeys);
        writes.push_back({ready.prepared->statement.get(), ready.values});
    }
    engine_->writeAll(writes, done);
    if (failure) std::rethrow_exception(failure);
}

std::int64_t Database::execute(std::string_view sql) {
    const Query ready = query(sql);
    if (!ready.isSelect()) return write(ready);
    RowSet dropped;
    read(ready, dropped);
    return 0;
}

void Database::begin() {
    if (inTransaction_)
        throw StoreError(StoreError::Kind::Other, "Açık bir işlem varken yenisi başlatılamaz.");
    engine_->begin();
    inTransaction_ = true;
}

void Database::commit() {
    if (!inTransaction_) throw StoreError(StoreError::Kind::Other, "Onaylanacak açık bir işlem yok.");
    requireTransactionIntact();
    engine_->commit();
    inTransaction_ = false;
}

void Database::rollback() {
    if (!inTransaction_) throw StoreError(StoreError::Kind::Other, "Geri alınacak açık bir işlem yok.");
    if (engine_->inTransaction()) engine_->rollback();
    inTransaction_ = false;
    ++writesAnywhere_;
}

void Database::beginReading() {
    if (inTransaction_)
        throw StoreError(StoreError::Kind::Other, "Açık bir işlem varken yenisi başlatılamaz.");
    engine_->beginReading();
    inTransaction_ = isReading_ = true;
}

// There is nothing to be lost: a failure has been told by what was read.
void Database::endReading() noexcept {
    inTransaction_ = isReading_ = false;
    try {
        engine_->commit();
    } catch (const StoreError&) {
        try {
            if (engine_->inTransaction()) engine_->rollback();
        } catch (const StoreError&) { // the connection is gone, and the transaction with it
        }
    }
}

// The engine undoes a transaction by itself when the disk is full or fails. What the caller writes behind
// that must not stand in the file alone, as if it were the whole.
void Database::requireTransactionIntact() const {
    if (inTransaction_ && !engine_->inTransaction())
        throw StoreError(
            StoreError::Kind::InputOutput,
            "Bir yazma hatası nedeniyle işlem geri alındı; hiçbir bölümü kaydedilmedi. Diski denetleyip "
            "işlemi yeniden yapın.");
}

void Database::noteWritesOfOthers() {
    const WritesOfOthers writes = engine_->takeWritesOfOthers();
    if (writes.areAnywhere) ++writesAnywhere_;
    for (const WritesOfOthers::Table& table : writes.tables)
        countWrite(table.name, table.changesKeys);
}

// Each part only grows, so equal sums mean that none of them has grown.
std::uint64_t Database::stamp(const std::vector<std::string>& tables) {
    std::uint64_t sum = writesAnywhere_;
    for (const std::string& table : tables)
        if (const auto counted = writes_.find(foldName(table)); counted != writes_.end())
            sum += counted->second;
    return sum;
}

std::uint64_t Database::keyChanges(const std::string& table) {
    return writesAnywhere_ + keyChanges_[foldName(table)];
}

std::uint64_t Database::stampWithWritesOfOthers(const std::vector<std::string>& tables) {
    noteWritesOfOthers();
    return stamp(tables);
}

void Database::setBounds(const ReadBounds* bounds) {
    bounds_ = bounds;
    engine_->setBounds(bounds);
}

void Database::setTimeout(std::chrono::seconds timeout) {
    if (timeout == timeout_) return;
    timeout_ = timeout;
    engine_->setBusyTimeout(timeout);
}

} // namespace veldona::store
