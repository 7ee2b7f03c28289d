#include "platform/store/engine/sqlcipher/delivered.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/sqlcipher/definitionsql.h"
#include "platform/store/engine/sqlcipher/journaltriggers.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"

namespace veldona::store {
namespace {

constexpr std::size_t kNameShown = 40; // characters of a name that a stranger chose

// The columns of a table's statement with what stands in front of them; nothing where it is of another form.
struct TableParts {
    std::string head;
    std::vector<std::string> columns;
};

std::optional<TableParts> partsOf(std::string_view statement) {
    const std::size_t open = statement.find('(');
    if (!statement.starts_with("CREATE TABLE ") || open == statement.npos || !statement.ends_with(')'))
        return std::nullopt;
    TableParts parts{std::string(statement.substr(0, open)), {}};
    std::string_view rest = statement.substr(open + 1, statement.size() - open - 2);
    for (;;) {
        const std::size_t comma = rest.find(", ");
        parts.columns.emplace_back(rest.substr(0, comma));
        if (comma == rest.npos) return parts;
        rest.remove_prefix(comma + 2);
    }
}

class Known {
public:
    explicit Known(const Delivered& delivered) {
        std::vector<TableDef> tables = delivered.tables;
        tables.insert(tables.end(), delivered.scratch.begin(), delivered.scratch.end());
        for (const std::string& statement : definitionStatements(tables, delivered.queries))
            add(statement);
        for (const TableDef& table : tables)
            if (table.isJournaled) journaled_.push_back(table);
        for (TableDef& table : tables) { // as they stood in older books: no unique key, no default
            if (!table.key.empty()) whole_.insert(indexStatement(table, table.key, Unique::No));
            for (ColumnDef& column : table.columns)
                column.defaultValue.reset();
            add(tableStatement(table, Lifetime::File));
        }
        whole_.insert("CREATE TABLE MSysSIRALAMA (SURUM TEXT)");
        whole_.insert("CREATE TABLE sqlite_sequence(name,seq)");
        if (!journaled_.empty()) whole_.insert(kJournalKeyStatement);
    }

    [[nodiscard]] bool holds(const std::string& statement) const {
        if (whole_.contains(statement) || isFormerTrigger(statement)) return true;
        const auto parts = partsOf(statement);
        if (!parts) return false;
        const auto table = columns_.find(parts->head);
        if (table == columns_.end()) return false;
        const std::set<std::string> once(parts->columns.begin(), parts->columns.end());
        return once.size() == parts->columns.size() &&
               std::includes(table->second.begin(), table->second.end(), once.begin(), once.end());
    }

private:
    // One that an older release made, for a table of fewer columns or in other words: letter for letter what
    // it made for those.
    [[nodiscard]] bool isFormerTrigger(const std::string& statement) const {
        const std::vector<std::string> columns = columnsOfTrigger(statement);
        if (columns.empty()) return false;
        const std::set<std::string> once(columns.begin(), columns.end());
        return once.size() == columns.size() && std::ranges::any_of(journaled_, [&](TableDef table) {
                   std::erase_if(table.columns,
                                 [&](const ColumnDef& column) { return !once.contains(column.name); });
                   if (table.columns.size() != columns.size()) return false;
                   return std::ranges::any_of(
                       journalTriggersOfAll(table),
                       [&](const JournalTrigger& trigger) { return trigger.statement == statement; });
               });
    }

    void add(const std::string& statement) {
        if (auto parts = partsOf(statement))
            columns_[parts->head].insert(parts->columns.begin(), parts->columns.end());
        else
            whole_.insert(statement);
    }

    std::set<std::string> whole_;
    std::vector<TableDef> journaled_;
    std::map<std::string, std::set<std::string>> columns_; // by the head of the table's statement
};

// What it is, by the engine's own word for it.
std::string kindOf(std::string_view statement) {
    const auto is = [&](std::string_view beginning) {
        return statement.size() >= beginning.size() &&
               std::equal(beginning.begin(), beginning.end(), statement.begin(),
                          [](char a, char b) { return a == (b >= 'a' && b <= 'z' ? b - 32 : b); });
    };
    if (is("CREATE TRIGGER")) return "tetikleyici";
    if (is("CREATE VIEW")) return "sorgu";
    if (is("CREATE VIRTUAL TABLE")) return "sanal tablo";
    if (is("CREATE TABLE")) return "tablo";
    if (is("CREATE INDEX") || is("CREATE UNIQUE INDEX")) return "dizin";
    return "kayıt";
}

// A control character of a broken name would act on a terminal, and a long one fill the box.
std::string shown(std::string_view name) {
    std::string plain;
    std::size_t letters = 0;
    for (const char letter : name) {
        const bool begins = (static_cast<unsigned char>(letter) & 0xc0) != 0x80;
        if (begins && ++letters > kNameShown) return plain + "…";
        plain += static_cast<unsigned char>(letter) < ' ' || letter == '\x7f' ? '?' : letter;
    }
    return plain;
}

// What a newer program delivers besides may be tables, indexes and queries, which act on nothing by
// themselves, and the triggers of its journal: the books are not opened, so nothing of theirs runs.
bool mayBeNewer(std::string_view statement) {
    const std::string kind = kindOf(statement);
    return kind == "tablo" || kind == "dizin" || kind == "sorgu" || !columnsOfTrigger(statement).empty();
}

} // namespace

int shapeOf(const Delivered& delivered) {
    std::size_t parts = delivered.queries.size();
    for (const TableDef& table : delivered.tables) {
        parts += table.columns.size() + table.indexes.size() + (table.key.empty() ? 0 : 1);
        for (const ColumnDef& column : table.columns)
            parts += column.defaultValue ? 1 : 0;
        parts += table.isJournaled ? 1 : 0;
    }
    if (anyJournaled(delivered.tables)) parts += static_cast<std::size_t>(formerJournalWordings());
    return static_cast<int>(parts);
}

int shapeOf(Engine& engine) {
    const auto kept = engine.prepare("PRAGMA user_version");
    return kept->step() ? static_cast<int>(kept->whole(0)) : 0;
}

void requireDelivered(Engine& engine, const Delivered& delivered, const std::string& path) {
    const Known known(delivered);
    const bool isNewer = shapeOf(engine) > shapeOf(delivered);
    const auto catalog = engine.prepare("SELECT ifnull(sql, ''), name FROM sqlite_master");
    while (catalog->step()) {
        const std::string statement(catalog->text(0));
        if (known.holds(statement) || (isNewer && mayBeNewer(statement))) continue;
        throw StoreError(StoreError::Kind::Damaged,
                         "Veritabanı açılmadı: " + path + " içinde bu programın koymadığı bir " +
                             kindOf(statement) + " var (" + shown(catalog->text(1)) +
                             "); kayıtları değiştirebilirdi. Dosyaya dokunulmadı. Nereden geldiğine "
                             "bakın ve son yedeği geri yükleyin.");
    }
    if (isNewer)
        throw StoreError(StoreError::Kind::Other,
                         "Veritabanı açılmadı: " + path +
                             " programın daha yeni bir sürümüyle açılmış; bu sürüm onu okuyamaz. Dosyaya "
                             "dokunulmadı, bir şey kaybolmadı. Öteki bilgisayardaki yeni sürümü buraya da "
                             "kurup yeniden başlatın.");
}

void makeScratchTables(Engine& engine, const std::vector<TableDef>& tables) {
    for (const TableDef& table : tables)
        shapeConnection(engine, tableStatement(table, Lifetime::Connection));
}

} // namespace veldona::store
