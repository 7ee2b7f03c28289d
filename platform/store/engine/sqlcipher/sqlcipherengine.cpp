#include "platform/store/engine/sqlcipher/sqlcipherengine.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <exception>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <thread>
#include <utility>

#include <sqlcipher/sqlite3.h>

#include "platform/store/engine/filelock.h"
#include "platform/store/engine/sqlcipher/definitionsql.h"
#include "platform/store/engine/sqlcipher/filecatalog.h"
#include "platform/store/engine/sqlcipher/filling.h"
#include "platform/store/engine/sqlcipher/functions.h"
#include "platform/store/engine/sqlcipher/journaltriggers.h"
#include "platform/store/engine/sqlcipher/sqlcipherconnection.h"
#include "platform/store/engine/sqlcipher/sqlcipherfailure.h"
#include "platform/store/engine/sqlcipher/words.h"

namespace veldona::store {
namespace {

constexpr char kPlainHeader[] =
    "SQLite format 3"; // with the zero behind it, the first 16 bytes of an unencrypted file

constexpr int kPagesBetweenLooks = 64;     // of a copy: some milliseconds
constexpr int kStepsBetweenLooks = 20'000; // of the engine's own: some milliseconds
constexpr std::chrono::milliseconds kChangeAttempt(250);
constexpr std::int64_t kCacheBytes = std::int64_t{64} << 20;

bool hasJournal(const std::string& path) {
    struct stat journal {};
    return stat((path + "-wal").c_str(), &journal) == 0 && journal.st_size > 0;
}

class SqlcipherEngine final : public Engine {
public:
    // `flags` without the create flag: a mistyped path must not leave an empty file that any password opens.
    SqlcipherEngine(const std::string& path, int flags, std::string_view password,
                    std::chrono::milliseconds busyTimeout, std::function<DateTime()> clock)
        : clock_(std::move(clock)), busyTimeout_(busyTimeout),
          connection_(std::make_shared<SqlcipherConnection>(ConnectionOrigin{
              path, flags, std::string(password), [this](sqlite3* connection) { equip(connection); }})) {}
    ~SqlcipherEngine() override {
        dataVersion_.reset();
        connection_.reset();
    }
    SqlcipherEngine(const SqlcipherEngine&) = delete;
    SqlcipherEngine& operator=(const SqlcipherEngine&) = delete;

    std::unique_ptr<Statement> prepare(std::string_view sql) override {
        return std::make_unique<SqlcipherStatement>(connection_, sql);
    }
    const EngineWords& words() const override { return kSqlcipherWords; }

    Catalog readCatalog() override {
        return store::readCatalog(*this, [this](const std::string& sql) { return tablesRead(sql); });
    }
    void define(const std::vector<TableDef>& tables, const std::vector<SavedQueryDef>& queries) override {
        begin();
        for (const std::string& statement : definitionStatements(tables, queries))
            execute(statement);
        if (anyJournaled(tables)) makeJournalKey(*this);
        writeSortOrder(*this);
        commit();
    }
    std::vector<std::string> tablesRead(std::string_view sql) {
        std::set<std::string> names;
        const auto note = [](void* into, int action, const char* table, const char*, const char*,
                             const char*) {
            if (action == SQLITE_READ && table != nullptr)
                static_cast<std::set<std::string>*>(into)->insert(table);
            return SQLITE_OK;
        };
        sqlite3_set_authorizer(handle(), note, &names);
        try {
            const SqlcipherStatement prepared(connection_, sql);
        } catch (const StoreError&) {
            sqlite3_set_authorizer(handle(), nullptr, nullptr);
            throw;
        }
        sqlite3_set_authorizer(handle(), nullptr, nullptr);
        return {names.begin(), names.end()};
    }

    void begin() override { execute("BEGIN IMMEDIATE"); }
    void beginReading() override { execute("BEGIN"); }
    void commit() override { execute("COMMIT"); }
    void rollback() override { execute("ROLLBACK"); }
    bool inTransaction() const override { return sqlite3_get_autocommit(handle()) == 0; }
    std::int64_t lastId() const override { return sqlite3_last_insert_rowid(handle()); }
    std::int64_t rowsChanged() const override { return sqlite3_changes(handle()); }
    WritesOfOthers takeWritesOfOthers() override {
        if (!dataVersion_) dataVersion_ = prepare("PRAGMA data_version");
        dataVersion_->step();
        const std::int64_t version = dataVersion_->whole(0);
        dataVersion_->reset();
        // Each connection counts for itself.
        const std::int64_t known = version + (std::int64_t{connection_->number()} << 32);
        return {.areAnywhere = std::exchange(knownVersion_, known) != known, .tables = {}};
    }
    std::optional<StoreError> takeDiskFailure() override {
        return std::exchange(connection_->ofTheDisk, std::nullopt);
    }
    void setBusyTimeout(std::chrono::milliseconds timeout) override { busyTimeout_ = timeout; }
    void setLockWait(std::shared_ptr<LockWait> wait) override { lockWait_ = std::move(wait); }

    void setBounds(const ReadBounds* bounds) override {
        bounds_ = bounds;
        memoryBefore_ = sqlite3_memory_used();
        watchBounds(handle());
    }

    // Outside a transaction in one step: one of several would begin anew at each write of another
    // workstation. A copy into a file without a key would be a plain one, and one of another page size a
    // damaged one.
    void copyInto(Engine& target, const Delivered&, const OnPages& onPages) override {
        auto& copy = dynamic_cast<SqlcipherEngine&>(target);
        std::unique_ptr<sqlite3_backup, int (*)(sqlite3_backup*)> backup(
            sqlite3_backup_init(copy.handle(), "main", handle(), "main"), sqlite3_backup_finish);
        if (backup == nullptr) failEngine(copy.handle());
        const int pages = onPages && inTransaction() ? kPagesBetweenLooks : -1;
        int code = SQLITE_OK;
        while ((code = sqlite3_backup_step(backup.get(), pages)) == SQLITE_OK) {
            const int all = sqlite3_backup_pagecount(backup.get());
            onPages(all - sqlite3_backup_remaining(backup.get()), all);
        }
        if (code != SQLITE_DONE) throw engineFailure(code, "");
        backup.reset();
        if (copy.hasPlainHeader()) throw std::logic_error("a copy of the books must be encrypted");
    }

    bool isSound() override { return answerOf("PRAGMA integrity_check") == "ok"; }
    std::int64_t fullSize() override {
        return std::stoll(answerOf("PRAGMA page_count")) * std::stoll(answerOf("PRAGMA page_size"));
    }
    void keepNoJournal() override { execute("PRAGMA journal_mode = OFF"); }
    void beginFilling() override { filling_.emplace(*this); }
    void endFilling() override {
        filling_->finish();
        filling_.reset();
    }
    // The file's; the scratch tables of the connection count in a table of the same name.
    std::int64_t lastCounterOf(const std::string& table) override {
        const auto given = prepare("SELECT seq FROM main.sqlite_sequence WHERE name = ?1");
        given->bind(1, table);
        return given->step() ? given->whole(0) : 0;
    }
    void setLastCounter(const std::string& table, std::int64_t given) override {
        if (given == 0) { // as it was made
            const auto forget = prepare("DELETE FROM main.sqlite_sequence WHERE name = ?1");
            forget->bind(1, table);
            forget->step();
            return;
        }
        for (const char* sql : {"INSERT INTO main.sqlite_sequence (name, seq) SELECT ?1, ?2 WHERE NOT EXISTS "
                                "(SELECT 1 FROM main.sqlite_sequence WHERE name = ?1)",
                                "UPDATE main.sqlite_sequence SET seq = ?2 WHERE name = ?1"}) {
            const auto change = prepare(sql);
            change->bind(1, table);
            change->bind(2, given);
            change->step();
        }
    }
    std::string journalKey() override { return readJournalKey(*this); }
    void setJournalKey(const std::string& key) override {
        if (!key.empty()) writeJournalKey(*this, key);
    }
    void noteInJournal(const std::string& what) override {
        if (!journalKey().empty()) store::noteInJournal(*this, what);
    }
    void rewrite() override { execute("VACUUM"); }

    void shape(std::string_view sql) {
        execute(sql);
        connection_->rememberShape(sql);
    }

    std::string answerOf(std::string_view pragma) {
        const auto statement = prepare(pragma);
        return statement->step() ? std::string(statement->text(0)) : std::string();
    }

    // Read through the engine's own descriptor: closing another one would drop the locks that this process
    // holds.
    [[nodiscard]] bool hasPlainHeader() const {
        sqlite3_file* file = nullptr;
        char header[sizeof kPlainHeader] = {};
        if (sqlite3_file_control(handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK)
            return false;
        if (file == nullptr || file->pMethods == nullptr) return false;
        if (file->pMethods->xRead(file, header, sizeof header, 0) != SQLITE_OK) return false;
        return std::memcmp(header, kPlainHeader, sizeof header) == 0;
    }
    [[nodiscard]] bool isOfAFileThatMoved() const { return hasMoved(handle()); }
    // To the end, behind the closing.
    void keep(std::unique_ptr<FileLock> lock) { kept_ = std::move(lock); }
    [[nodiscard]] bool isReadOnly() const { return sqlite3_db_readonly(handle(), "main") == 1; }

private:
    [[nodiscard]] sqlite3* handle() const { return connection_->handle(); }

    void equip(sqlite3* connection) {
        sqlite3_extended_result_codes(connection, 1);
        sqlite3_busy_handler(connection, &SqlcipherEngine::waitForLock, this);
        watchBounds(connection);
        registerFunctions(connection, clock_);
    }
    void watchBounds(sqlite3* connection) {
        sqlite3_progress_handler(connection, kStepsBetweenLooks,
                                 bounds_ == nullptr ? nullptr : &SqlcipherEngine::stopsHere, this);
    }

    static int waitForLock(void* self, int attempt) {
        using namespace std::chrono;
        auto& engine = *static_cast<SqlcipherEngine*>(self);
        const auto now = steady_clock::now();
        if (attempt == 0) engine.waitingSince_ = now;
        const auto waited = duration_cast<milliseconds>(now - engine.waitingSince_);
        const auto left = engine.busyTimeout_ - waited;
        if (engine.lockWait_ ? !engine.lockWait_->goesOn(waited, engine.busyTimeout_)
                             : left <= milliseconds(0))
            return 0;
        std::this_thread::sleep_for(
            std::min<milliseconds>(left, milliseconds(std::min(50, 2 + 2 * attempt))));
        return 1;
    }

    // A sort or a distinct list holds its rows in the engine's memory before it answers the first.
    static int stopsHere(void* self) {
        auto& engine = *static_cast<SqlcipherEngine*>(self);
        const auto most = static_cast<std::int64_t>(engine.bounds_->mostBytes) + kCacheBytes;
        try {
            if (sqlite3_memory_used() - engine.memoryBefore_ > most) throw tooLarge();
            if (engine.bounds_->goOn && !engine.bounds_->goOn())
                throw StoreError(StoreError::Kind::GivenUp, "Sorgudan vazgeçildi.");
            return 0;
        } catch (...) { // across the engine no exception may fly: the statement's failure brings it
            engine.connection_->stopped = std::current_exception();
            return 1;
        }
    }

    std::function<DateTime()> clock_;
    std::chrono::milliseconds busyTimeout_;
    const ReadBounds* bounds_ = nullptr;
    std::int64_t memoryBefore_ = 0;
    std::shared_ptr<LockWait> lockWait_; // nothing: until the time is up
    std::chrono::steady_clock::time_point waitingSince_;
    std::shared_ptr<SqlcipherConnection> connection_; // a statement may outlive its engine
    std::unique_ptr<Statement> dataVersion_;
    std::int64_t knownVersion_ = 0;
    std::optional<Filling> filling_;
    std::unique_ptr<FileLock> kept_;
};

// Form and page size stand before the first read, since nothing in the file tells them. The form is that of
// the third major version, which passes over the word; the fourth would else take its own, which the third
// can't read.
void prepareCipher(SqlcipherEngine& engine) {
    if (engine.answerOf("PRAGMA cipher_version").empty())
        throw std::logic_error("the engine linked into this program does not encrypt");
    engine.shape("PRAGMA cipher_log_level = NONE"); // what fails is told in our own words
    engine.shape("PRAGMA cipher_compatibility = 3");
    engine.shape("PRAGMA cipher_page_size = 4096");
}

void requireJournal(SqlcipherEngine& engine) {
    if (engine.answerOf("PRAGMA journal_mode = WAL") != "wal")
        throw StoreError(StoreError::Kind::InputOutput,
                         "Veritabanının bulunduğu disk, güvenli yazma için gerekeni vermiyor; açılmadı. "
                         "Dosyayı bu bilgisayarın kendi diskine koyun.");
}

// Of a file that was never opened to write. The lock is held through the whole of it: a backup that took the
// file's place in between would lose its own journal to this one's. The engine waits for a lock only where it
// holds none, so two tills that change one file at once would refuse each other without a wait: who does not
// get it alone lets go and looks again.
void keepJournalFromNowOn(SqlcipherEngine& engine) {
    static_cast<void>(engine.answerOf("PRAGMA locking_mode = EXCLUSIVE"));
    engine.execute("BEGIN EXCLUSIVE");
    engine.commit();
    if (!engine.isOfAFileThatMoved()) requireJournal(engine);
}

void configure(SqlcipherEngine& engine) {
    engine.shape("PRAGMA synchronous = FULL");
    engine.shape("PRAGMA cache_size = -65536");
    engine.shape("PRAGMA temp_store = MEMORY");
    engine.shape("PRAGMA foreign_keys = OFF");
}

// All in the one file from the first page on: a journal would be moved into it at the closing, whose failure
// on a full disk nobody hears of.
void configureUnfinished(SqlcipherEngine& engine) {
    if (engine.answerOf("PRAGMA journal_mode = OFF") != "off")
        throw std::logic_error("the engine keeps a journal of a file that nobody needs yet");
    engine.shape("PRAGMA synchronous = FULL");
    engine.shape("PRAGMA cache_size = -65536");
    engine.shape("PRAGMA temp_store = MEMORY");
}

// Raises where the path can be no database, before the engine makes one of it.
struct stat inspectFile(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) {
        if (errno == ENOENT || errno == ENOTDIR) throw missingFile(path);
        throw unreachableFile(path);
    }
    if (!S_ISREG(status.st_mode)) throw notADatabase(path, "bir dosya değil");
    if (status.st_size == 0) throw notADatabase(path, "boş bir dosya");
    return status;
}

// Where this process may do so; on a file of another owner the rights are that owner's business.
void tightenRights(const std::string& path, const struct stat& status) {
    if ((status.st_mode & 077) != 0 && status.st_uid == geteuid())
        static_cast<void>(chmod(path.c_str(), S_IRUSR | S_IWUSR));
}

// The engine needs an index beside the file to read it, and in a folder that this user may not write to it
// can make none. Beside a file that this user may not write to it would have that file's rights or this
// user's name, and stay: who may write to the file could then not open it.
bool canHaveIndex(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return access(folder.empty() ? "." : folder.c_str(), W_OK) == 0 && access(path.c_str(), W_OK) == 0;
}

// A file without a journal that nobody changes needs no index.
std::string pathOfUnchanging(const std::string& path) {
    std::string uri = "file:";
    for (const char letter : path) {
        if (letter == '%' || letter == '?' || letter == '#') {
            constexpr std::string_view digits = "0123456789abcdef";
            uri.append({'%', digits[static_cast<std::size_t>(letter >> 4)],
                        digits[static_cast<std::size_t>(letter & 15)]});
        } else {
            uri += letter;
        }
    }
    return uri + "?immutable=1";
}

constexpr int kUnchanging = SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI;

std::unique_ptr<SqlcipherEngine> openKeyed(const std::string& path, int flags, std::string_view password,
                                           std::chrono::milliseconds busyTimeout,
                                           std::function<DateTime()> clock) {
    if (password.empty())
        throw wrongPassword(); // with an empty key the engine would take the file for a plain one
    auto engine =
        std::make_unique<SqlcipherEngine>((flags & SQLITE_OPEN_URI) != 0 ? pathOfUnchanging(path) : path,
                                          flags, password, busyTimeout, std::move(clock));
    if (engine->hasPlainHeader()) throw notADatabase(path, "şifrelenmemiş bir dosya");
    return engine;
}

// A wrong password shows here, at the first read.
void requireTables(SqlcipherEngine& engine, const std::string& path) {
    if (engine.answerOf("SELECT count(*) FROM sqlite_master") == "0")
        throw notADatabase(path, "içinde hiç tablo yok");
}

void requireSound(SqlcipherEngine& engine, const std::string& path) {
    requireTables(engine, path);
    if (engine.answerOf("PRAGMA quick_check") != "ok") throw engineFailure(SQLITE_CORRUPT, "");
}

bool isSoundAlone(const std::string& path, std::string_view password) {
    try {
        const auto engine = openKeyed(path, kUnchanging, password, std::chrono::milliseconds(0), {});
        prepareCipher(*engine);
        requireSound(*engine, path);
        return true;
    } catch (const StoreError&) {
        return false;
    }
}

// A journal that nobody is at work with was left by a killed program, and need not be this file's: a backup
// may have been copied over the books by hand. Its pages would break the file at the next closing, so it is
// read through with the file before anything may happen to either.
void requireOwnJournal(SqlcipherEngine& engine, const std::string& path, std::string_view password) {
    try {
        requireSound(engine, path);
    } catch (const StoreError& failure) {
        const bool isUnsound =
            failure.kind() == StoreError::Kind::Damaged || failure.kind() == StoreError::Kind::WrongPassword;
        if (isUnsound && isSoundAlone(path, password)) throw foreignJournal(path);
        throw;
    }
}

// `lock` is held to the end where a journal stands, so that who only looks leaves it.
std::unique_ptr<Engine> openToRead(const std::string& path, int flags, std::string_view password,
                                   std::chrono::milliseconds busyTimeout, const Inspection& inspect,
                                   std::unique_ptr<FileLock> given) {
    std::unique_ptr<SqlcipherEngine> engine;
    std::unique_ptr<FileLock> lock = std::move(given); // gone before an engine that made a journal of its own
    engine = openKeyed(path, flags, password, busyTimeout, {});
    if (hasJournal(path) || flags == kUnchanging) engine->keep(std::move(lock));
    prepareCipher(*engine);
    engine->shape("PRAGMA query_only = ON");
    requireTables(*engine, path);
    if (inspect) inspect(*engine);
    engine->shape("PRAGMA cache_size = -65536");
    engine->shape("PRAGMA temp_store = MEMORY");
    return engine;
}

} // namespace

void shapeConnection(Engine& engine, std::string_view sql) {
    dynamic_cast<SqlcipherEngine&>(engine).shape(sql);
}

std::unique_ptr<Engine> openSqlcipher(const std::string& nativePath, std::string_view password,
                                      std::chrono::milliseconds busyTimeout, std::function<DateTime()> clock,
                                      const Inspection& inspect) {
    const auto begun = std::chrono::steady_clock::now();
    const struct stat status = inspectFile(nativePath);
    // Until the file has proved sound: the journal may be all that is left of the last payments.
    std::unique_ptr<FileLock> kept;
    std::unique_ptr<SqlcipherEngine> engine;
    std::unique_ptr<FileLock> lock = FileLock::share(nativePath, busyTimeout);
    const bool stands = hasJournal(nativePath);
    const bool isLeftBehind = stands && lock->isAlone();
    if (stands) kept = std::move(lock);
    engine = openKeyed(nativePath, SQLITE_OPEN_READWRITE, password, busyTimeout, clock);
    if (engine->isReadOnly()) throw readOnlyFile(nativePath);
    prepareCipher(*engine);
    if (isLeftBehind)
        requireOwnJournal(*engine, nativePath, password);
    else
        requireTables(*engine, nativePath);
    if (inspect) inspect(*engine);
    tightenRights(nativePath, status);
    if (engine->answerOf("PRAGMA journal_mode") == "wal") {
        configure(*engine);
        return engine;
    }
    lock.reset(); // the change needs the file alone
    engine->setBusyTimeout(std::min<std::chrono::milliseconds>(busyTimeout, kChangeAttempt));
    const auto left = [&] { return busyTimeout - (std::chrono::steady_clock::now() - begun); };
    try {
        keepJournalFromNowOn(*engine);
    } catch (const StoreError& failure) {
        if (failure.kind() != StoreError::Kind::Locked || left().count() <= 0) throw;
    }
    engine.reset();
    return openSqlcipher(nativePath, password, std::chrono::duration_cast<std::chrono::milliseconds>(left()),
                         std::move(clock), inspect);
}

std::unique_ptr<Engine> openSqlcipherToRead(const std::string& nativePath, std::string_view password,
                                            std::chrono::milliseconds busyTimeout,
                                            const Inspection& inspect) {
    static_cast<void>(inspectFile(nativePath));
    const auto open = [&](int flags, std::unique_ptr<FileLock> lock) {
        return openToRead(nativePath, flags, password, busyTimeout, inspect, std::move(lock));
    };
    const auto share = [&] { return FileLock::share(nativePath, busyTimeout); };
    const bool canWriteBeside = canHaveIndex(nativePath);
    const bool hasIndex = access((nativePath + "-shm").c_str(), F_OK) == 0;
    if (!hasJournal(nativePath) && !canWriteBeside && !hasIndex) return open(kUnchanging, share());
    // A full disk has no room for the index, and in a folder that this user may not write to it can be that
    // of a till that was killed: nobody keeps it up any more, and the engine cannot read by it.
    try {
        return open(SQLITE_OPEN_READWRITE, share());
    } catch (const StoreError& failure) {
        const bool isOfTheIndex =
            failure.kind() == StoreError::Kind::InputOutput || failure.kind() == StoreError::Kind::DiskFull;
        if (!isOfTheIndex || hasJournal(nativePath)) throw;
        // Nobody may begin to write while it is read without one, where this user can hinder that.
        auto lock = canWriteBeside ? FileLock::takeAlone(nativePath) : share();
        if (lock == nullptr) throw;
        // The attempt left them, empty.
        for (const char* suffix : {"-wal", "-shm"})
            if (canWriteBeside) ::unlink((nativePath + suffix).c_str());
        return open(kUnchanging, std::move(lock));
    }
}

std::unique_ptr<Engine> openSqlcipherAlone(const std::string& nativePath, std::string_view password,
                                           const Inspection& inspect) {
    static_cast<void>(inspectFile(nativePath));
    return openToRead(nativePath, kUnchanging, password, std::chrono::milliseconds(0), inspect, nullptr);
}

void settleJournal(const std::string& nativePath, std::string_view password) {
    const auto engine = openSqlcipher(nativePath, password, std::chrono::seconds(1));
    const auto checkpoint = engine->prepare("PRAGMA wal_checkpoint(TRUNCATE)");
    if (!checkpoint->step() || checkpoint->whole(0) != 0) throw engineFailure(SQLITE_BUSY, "");
}

std::unique_ptr<Engine> createSqlcipher(const std::string& nativePath, std::string_view password) {
    if (password.empty()) throw wrongPassword();
    // Made here, so that it has its owner's rights from the first byte on.
    const int file = ::open(nativePath.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (file < 0 && errno == ENOSPC) throw engineFailure(SQLITE_FULL, "");
    if (file < 0) throw errno == EEXIST ? fileExists(nativePath) : unreachableFile(nativePath);
    ::close(file);
    auto engine = std::make_unique<SqlcipherEngine>(nativePath, SQLITE_OPEN_READWRITE, password,
                                                    std::chrono::seconds(1), std::function<DateTime()>());
    prepareCipher(*engine);
    configureUnfinished(*engine);
    return engine;
}

} // namespace veldona::store
