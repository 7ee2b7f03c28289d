#include "platform/store/faces/database.h"

#include <stdexcept>

#include "platform/store/dialect/names.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/filecatalog.h"

namespace veldona::store {
namespace {

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

// What reads no table, or the clock, may answer otherwise each time.
bool isRepeatable(const Plan& plan) {
    const auto calls = [&](std::string_view function) {
        return plan.sql.find(function) != std::string::npos;
    };
    return !plan.baseTables.empty() && !calls("vd_now(") && !calls("vd_today(") && !calls("vd_time(");
}

std::string planKey(const SplitStatement& statement, const std::vector<std::string>& narrowing) {
    std::string key = statement.shape;
    for (const std::string& column : narrowing)
        key.append(1, '\n').append(foldName(column));
    return key;
}

} // namespace

Database::Database(std::unique_ptr<Engine> engine, std::string password, std::shared_ptr<WriteFaults> faults)
    : engine_(std::move(engine)), password_(std::move(password)), faults_(std::move(faults)),
      catalog_(readCatalog(*engine_)), dataVersion_(engine_->prepare("PRAGMA data_version")) {
    noteWritesOfOthers();
}

std::shared_ptr<PreparedPlan> Database::plan(const SplitStatement& statement,
                                             const std::vector<std::string>& narrowing) {
    std::string key = planKey(statement, narrowing);
    if (const auto known = plans_.find(key); known != plans_.end()) {
        recent_.splice(recent_.begin(), recent_, known->second);
        return known->second->second;
    }
    auto made = std::make_shared<PreparedPlan>();
    made->plan = translate(statement, catalog_, narrowing);
    made->statement = engine_->prepare(made->plan.sql);
    made->isRepeatable = isRepeatable(made->plan);
    recent_.emplace_front(key, made);
    plans_.emplace(std::move(key), recent_.begin());
    if (recent_.size() > kPlansKept) {
        plans_.erase(recent_.back().first);
        recent_.pop_back();
    }
    return made;
}

Query Database::query(std::string_view sql, const std::vector<std::string>& narrowing) {
    const Skeleton skeleton(sql);
    if (skeleton.isSound())
        if (const auto known = known_.find(skeleton.text());
            known != known_.end() && known->second.narrowing == narrowing)
            if (const auto literals = known->second.split.literals(skeleton))
                return filled(known->second.prepared, *literals, narrowing.size());
    const SplitStatement statement = splitStatement(sql);
    Query query = filled(plan(statement, narrowing), statement.literals, narrowing.size());
    if (skeleton.isSound())
        if (auto split = KnownSplit::of(skeleton, statement))
            keepKnown(skeleton.text(), {std::move(*split), narrowing, query.prepared});
    return query;
}

Query Database::filled(std::shared_ptr<PreparedPlan> prepared, const std::vector<Literal>& literals,
                       std::size_t narrowed) {
    Query query{std::move(prepared), {}};
    const auto& targets = query.plan().targets;
    if (targets.size() != literals.size())
        throw std::logic_error("a plan takes another number of literals than its statement has");
    query.values.reserve(targets.size() + narrowed);
    for (std::size_t i = 0; i < targets.size(); ++i)
        query.values.push_back(bindLiteral(literals[i], targets[i]));
    query.values.resize(targets.size() + narrowed);
    return query;
}

void Database::keepKnown(const std::string& skeleton, Known known) {
    if (known_.size() >= kPlansKept) known_.clear();
    known_.insert_or_assign(skeleton, std::move(known));
}

void Database::read(const Query& query, RowSet& rows) {
    requireTransactionIntact();
    const Run run(query);
    rows.fill(*query.prepared->statement, query.plan().columns, query.prepared->rowsLastTime);
    query.prepared->rowsLastTime = static_cast<std::size_t>(rows.rowCount());
    rowsRead_ += static_cast<std::uint64_t>(rows.rowCount());
}

std::int64_t Database::write(const Query& query) {
    requireTransactionIntact();
    const std::string& table = query.plan().table;
    faults_->countWrite(table);
    ++writes_[foldName(table)];
    const Run run(query);
    while (query.prepared->statement->step()) {
    }
    return engine_->rowsChanged();
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
    dataVersion_->step();
    const std::int64_t version = dataVersion_->whole(0);
    dataVersion_->reset();
    if (version == knownDataVersion_) return;
    knownDataVersion_ = version;
    ++writesAnywhere_;
}

// Each part only grows, so equal sums mean that none of them has grown.
std::uint64_t Database::stamp(const std::vector<std::string>& tables) {
    std::uint64_t sum = writesAnywhere_;
    for (const std::string& table : tables)
        if (const auto counted = writes_.find(foldName(table)); counted != writes_.end())
            sum += counted->second;
    return sum;
}

std::uint64_t Database::stampWithWritesOfOthers(const std::vector<std::string>& tables) {
    noteWritesOfOthers();
    return stamp(tables);
}

void Database::setTimeout(std::chrono::seconds timeout) {
    if (timeout == timeout_) return;
    timeout_ = timeout;
    engine_->setBusyTimeout(timeout);
}

} // namespace veldona::store
