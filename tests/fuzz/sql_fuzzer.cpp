// A text as a statement of the dialect, and run on a small shop: it is one statement, it writes what it says
// and nothing when it is a SELECT, and it fails in words that are ours.
#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include "platform/runtime/conversion.h"
#include "platform/store/dialect/names.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/dialect/translate.h"
#include "platform/store/engine/createdatabase.h"
#include "platform/store/faces/database.h"
#include "platform/store/faces/workspace.h"
#include "schema/tables.h"
#include "tests/fuzz/fuzzing.h"
#include "tests/support/answer.h"
#include "tests/support/files.h"

namespace veldona::fuzz {
namespace {

using store::Plan;
using store::StoreError;

constexpr std::size_t kLongest = 4000;

// One for the whole run: each statement is taken back again.
class Books {
public:
    Books() {
        const std::string path = folder_ / "b.mdb";
        store::createDatabase(path, "x", schema::tables(), schema::savedQueries());
        store::WorkspaceConfig config;
        config.toNativePath = [path](std::string_view) { return path; };
        config.dataSource = [](std::string_view) { return std::optional<std::string>(); };
        config.clock = [] { return DateTime::of(2026, 11, 22, 10, 30, 0); };
        config.delivered = schema::delivered();
        workspace_ = std::make_unique<store::Workspace>(std::move(config));
        file_ = workspace_->open("b", "x");
        fill();
    }
    store::Database& file() { return *file_; }
    std::string ask(const std::string& engineSql) { return test::answerOf(file_->engine(), engineSql); }

private:
    void fill() {
        for (const char* sql : schema::firstRows())
            file_->execute(sql);
        for (const char* sql : {
                 "INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD,EVTEL) VALUES ('7','Ayşe','Yılmaz','0212')",
                 "INSERT INTO MUSTKAYIT (HSTNO,AD,UYARI,DOGTRH) VALUES ('8','%_''[İ','',#12,31,1999#)",
                 "INSERT INTO ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC,TRH) VALUES ('7',5,9000000,'22/11/2026')",
                 "INSERT INTO URUNAL (MUSTNO,ISLEMNO,URKOD,ADET,FIYAT) VALUES ('7',5,'1',2,4500000)",
                 "INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('7',5,'5/11/2026 "
                 "10:29:59',2500000)",
                 "INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR,PESINAT) VALUES "
                 "('7',6,'31/12/2026',0.5,1)",
                 "INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('7',5,'6/11/2026',-1)",
             })
            file_->execute(sql);
    }

    test::TemporaryFolder folder_;
    std::unique_ptr<store::Workspace> workspace_;
    std::shared_ptr<store::Database> file_;
};

Books& books() {
    static Books made;
    return made;
}

// Our own sentence: where the engine refuses a statement that we write, the writing is at fault.
void requireOurWords(const StoreError& error, const std::string& sql) {
    require(!error.description().empty(), "an error without words");
    require(!error.description().starts_with("Deyim çalıştırılamadı"),
            "the engine refuses what was written: " + error.description() + " for " + sql);
}

// What the engine is given holds one statement, whatever stood in the text.
void requireOneStatement(const std::string& engineSql) {
    char quote = 0;
    for (std::size_t i = 0; i < engineSql.size(); ++i) {
        const char c = engineSql[i];
        if (quote != 0) {
            if (c == quote) quote = 0;
            continue;
        }
        if (c == '\'' || c == '"') quote = c;
        require(c != ';' && c != '\0' && engineSql.compare(i, 2, "--") != 0 &&
                    engineSql.compare(i, 2, "/*") != 0,
                "a second statement or a comment: " + engineSql);
    }
    require(quote == 0, "a text left open: " + engineSql);
}

void requireKind(const Plan& plan, const store::Reading& statement) {
    const std::string_view word = statement.tokens.front().text;
    const bool reads = plan.kind == Plan::Kind::Select || plan.kind == Plan::Kind::Identity;
    require(reads == store::sameName(word, "SELECT"), "what begins with SELECT reads, what does not, writes");
    require(reads == plan.sql.starts_with("SELECT"), "and so does the engine: " + plan.sql);
    require(reads == plan.table.empty(), "who writes names its table");
}

struct Outcome {
    bool ran = false;
    std::string rows; // of a SELECT
};

// What the triggers wrote beside the statement.
std::int64_t newestEntry() {
    const std::string newest = books().ask("SELECT max(\"ID\") FROM \"GUNLUK\"");
    return newest.empty() ? 0 : std::stoll(newest);
}

// The statement between a beginning and its taking back.
Outcome run(const std::string& sql) {
    store::Database& file = books().file();
    Outcome outcome;
    file.begin();
    const std::string changes = books().ask("SELECT total_changes()");
    try {
        const store::Query query = file.query(sql);
        if (query.isSelect()) {
            store::RowSet rows;
            file.read(query, rows);
            for (int row = 0; row < rows.rowCount(); ++row)
                for (int column = 0; column < rows.columnCount(); ++column)
                    outcome.rows += joinText(rows.at(row, column)) + "|";
            requireEqual(books().ask("SELECT total_changes()"), changes, "a SELECT writes nothing: " + sql);
        } else {
            const std::int64_t entries = newestEntry();
            const std::int64_t written = file.write(query);
            const std::int64_t journaled = std::max<std::int64_t>(0, newestEntry() - entries);
            if (!store::sameName(query.plan().table, "GUNLUK"))
                requireEqual(books().ask("SELECT total_changes()"),
                             std::to_string(std::stoll(changes) + written + journaled),
                             "one statement's rows: " + sql);
        }
        outcome.ran = true;
    } catch (const StoreError& error) {
        requireOurWords(error, sql);
    } catch (const RuntimeError& error) {
        require(!error.description().empty(), "an error without words");
    }
    require(file.inTransaction() && file.engine().inTransaction(),
            "no statement ends the transaction: " + sql);
    file.rollback();
    return outcome;
}

std::optional<Plan> planOf(const std::string& sql, const store::Reading& statement) {
    try {
        return store::translate(statement, books().file().catalog(), books().file().engine().words());
    } catch (const StoreError& error) {
        requireOurWords(error, sql);
        return std::nullopt;
    }
}

// A plan is found again by the key of its text: one key stands for the same words, but for their values.
void requireKey(const std::string& sql, const store::Reading& statement) {
    std::string other = sql;
    for (char& letter : other)
        if (letter >= '0' && letter <= '8') ++letter;
    const store::Reading again = store::readStatement(other);
    require(again.tokens.size() == statement.tokens.size(), "digits alone change no word: " + other);
    if (again.key != statement.key) return;
    for (std::size_t i = 0; i < again.tokens.size(); ++i) {
        const auto &word = statement.tokens[i], &found = again.tokens[i];
        require(word.kind == found.kind, "one key, one kind of word: " + other);
        const bool isValue = word.kind == store::sql::TokenKind::Parameter;
        require(isValue || word.text == found.text, "one key, the same words: " + other);
    }
}

void statementHolds(const std::string& sql) {
    store::Reading statement;
    try {
        store::readStatement(sql, statement);
    } catch (const StoreError& error) {
        requireOurWords(error, sql);
        require(!run(sql).ran, "what cannot be cut into words is not run");
        return;
    }
    requireKey(sql, statement);
    const auto plan = planOf(sql, statement);
    const Outcome outcome = run(sql);
    if (!plan) {
        require(!outcome.ran, "what is no statement is not run: " + sql);
        return;
    }
    requireOneStatement(plan->sql);
    requireKind(*plan, statement);
    require(plan->targets.size() == statement.literals.size(), "a type for each literal");
    const Outcome again = run(sql); // from the kept plan
    require(again.ran == outcome.ran, "the second run comes out as the first: " + sql);
    requireEqual(again.rows, outcome.rows, "the second run of " + sql);
}

} // namespace
} // namespace veldona::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldona::fuzz;
    if (size > kLongest) return 0;
    static const std::string schema = books().ask("SELECT type, name, sql FROM sqlite_master");
    statementHolds({reinterpret_cast<const char*>(data), size});
    requireEqual(books().ask("SELECT type, name, sql FROM sqlite_master"), schema, "the tables as they were");
    return 0;
}
