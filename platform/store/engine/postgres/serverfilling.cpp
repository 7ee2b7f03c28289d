#include "platform/store/engine/postgres/serverfilling.h"

#include <utility>

#include "platform/runtime/text.h"
#include "platform/store/engine/postgres/definitions.h"
#include "platform/store/engine/postgres/rowheap.h"

namespace veldona::store {
namespace {

constexpr std::size_t kPortion = 1 << 20;

// Such a text comes from a damaged file; to leave the letter out would be another text.
void requireStorable(const Value& value) {
    if (value.kind() != Value::Kind::Text) return;
    const auto& text = value.get<std::string>();
    if (text.find('\0') != text.npos || validUtf8(text) != text)
        throw StoreError(StoreError::Kind::TypeMismatch,
                         "Sunucuya yazılamayan bir yazı var; harflerinden biri bozuk: " + visibleText(text));
}

// It answers nothing: what it is run with is on its way only when the portion is full.
class CopiedRow final : public Statement {
public:
    CopiedRow(std::shared_ptr<ServerFilling> filling, std::string target)
        : filling_(std::move(filling)), target_(std::move(target)) {}

    void bind(int index, const Value& value) override {
        const auto place = static_cast<std::size_t>(index);
        if (cells_.size() < place) cells_.resize(place);
        requireStorable(value);
        cells_[place - 1] = boundOf(value);
    }
    bool step() override {
        std::string line;
        appendCopyLine(line, cells_);
        filling_->add(target_, line);
        return false;
    }
    void reset() override {}
    int columnCount() const override { return 0; }
    std::string columnName(int) const override { return {}; }
    std::string declaredType(int) const override { return {}; }
    Storage storage(int) const override { return Storage::Null; }
    std::int64_t whole(int) const override { return 0; }
    double number(int) const override { return 0; }
    std::string_view text(int) const override { return {}; }

private:
    std::shared_ptr<ServerFilling> filling_;
    std::string target_;
    std::vector<Bound> cells_;
};

} // namespace

ServerFilling::ServerFilling(std::shared_ptr<Session> session) : session_(std::move(session)) {
    session_->begin();
    session_->script("SET LOCAL maintenance_work_mem = '256MB'"); // the indexes are sorted in it
    takeIndexesOff();
    setTriggers("DISABLE");
}

std::unique_ptr<Statement> ServerFilling::insertion(std::string_view sql) {
    constexpr std::string_view into = "INSERT INTO ", values = " VALUES";
    sql.remove_prefix(into.size());
    return std::make_unique<CopiedRow>(shared_from_this(), std::string(sql.substr(0, sql.find(values))));
}

void ServerFilling::add(const std::string& target, std::string_view line) {
    std::string& lines = lines_[target];
    lines += line;
    if (lines.size() >= kPortion) send(target, lines);
}

void ServerFilling::send(const std::string& target, std::string& lines) {
    session_->copyIn("COPY " + target + " FROM STDIN", std::exchange(lines, {}));
}

void ServerFilling::finish() {
    for (auto& [target, lines] : lines_)
        if (!lines.empty()) send(target, lines);
    for (const std::string& index : indexes_)
        makeAgain(index);
    setTriggers("ENABLE");
    session_->commit();
}

void ServerFilling::takeIndexesOff() {
    const ServerRows known = session_->ask(
        "SELECT c.relname, pg_get_indexdef(c.oid) FROM pg_index i JOIN pg_class c ON c.oid = i.indexrelid "
        "WHERE c.relnamespace = current_schema()::regnamespace AND NOT i.indisprimary ORDER BY c.oid");
    std::string script;
    for (int i = 0; i < known.rowCount(); ++i) {
        script += "DROP INDEX " + quotedName(std::string(known.text(i, 0))) + "; ";
        indexes_.emplace_back(known.text(i, 1));
    }
    if (!script.empty()) session_->script(script);
}

// No other till is there to be told.
void ServerFilling::setTriggers(const std::string& how) {
    const ServerRows known =
        session_->ask("SELECT t.relname FROM pg_trigger j JOIN pg_class t ON t.oid = j.tgrelid WHERE "
                      "j.tgname = 'vd_journal' "
                      "AND t.relname NOT LIKE 'MSys%' AND t.relnamespace = current_schema()::regnamespace");
    std::string script;
    for (int i = 0; i < known.rowCount(); ++i)
        script += "ALTER TABLE " + quotedName(std::string(known.text(i, 0))) + ' ' + how + " TRIGGER USER; ";
    if (!script.empty()) session_->script(script);
}

// Rows may bring a key twice from where they come; the books then go on without its being unique.
void ServerFilling::makeAgain(const std::string& index) {
    constexpr std::string_view unique = "UNIQUE ";
    const std::size_t word = index.find(unique);
    if (word == index.npos) return session_->script(index);
    session_->script("SAVEPOINT unique_key");
    try {
        session_->script(index);
    } catch (const StoreError& failure) {
        if (failure.kind() != StoreError::Kind::Constraint) throw;
        session_->script("ROLLBACK TO unique_key");
        session_->script(std::string(index).erase(word, unique.size()));
    }
}

} // namespace veldona::store
