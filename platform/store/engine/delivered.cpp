#include "platform/store/engine/delivered.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/sqlcipher/definitionsql.h"

namespace veldona::store {
namespace {

constexpr std::size_t kNameShown = 40; // characters of a name that a stranger chose

std::string quoted(std::string_view name) {
    return '"' + std::string(name) + '"';
}

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
        for (TableDef& table : tables) { // as they stood in older books: no unique key, no default
            if (!table.key.empty()) whole_.insert(indexStatement(table, table.key, Unique::No));
            for (ColumnDef& column : table.columns)
                column.defaultValue.reset();
            add(tableStatement(table, Lifetime::File));
        }
        whole_.insert("CREATE TABLE MSysSIRALAMA (SURUM TEXT)");
        whole_.insert("CREATE TABLE sqlite_sequence(name,seq)");
    }

    [[nodiscard]] bool holds(const std::string& statement) const {
        if (whole_.contains(statement)) return true;
        const auto parts = partsOf(statement);
        if (!parts) return false;
        const auto table = columns_.find(parts->head);
        if (table == columns_.end()) return false;
        const std::set<std::string> once(parts->columns.begin(), parts->columns.end());
        return once.size() == parts->columns.size() &&
               std::includes(table->second.begin(), table->second.end(), once.begin(), once.end());
    }

private:
    void add(const std::string& statement) {
        if (auto parts = partsOf(statement))
            columns_[parts->head].insert(parts->columns.begin(), parts->columns.end());
        else
            whole_.insert(statement);
    }

    std::set<std::string> whole_;
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

bool isMissing(Engine& engine, const std::string& name) {
    const auto found = engine.prepare("SELECT 1 FROM sqlite_master WHERE name = ?1");
    found->bind(1, name);
    return !found->step();
}

bool isUnique(Engine& engine, const std::string& index) {
    const auto found =
        engine.prepare("SELECT substr(sql, 1, 14) = 'CREATE UNIQUE ' FROM sqlite_master WHERE name = ?1");
    found->bind(1, index);
    return found->step() && found->whole(0) != 0;
}

bool standsTwice(Engine& engine, const TableDef& table) {
    std::string columns;
    for (const std::string& column : table.key)
        columns += (columns.empty() ? "" : ", ") + quoted(column);
    const auto found =
        engine.prepare("SELECT 1 FROM " + quoted(table.name) + " WHERE " + quoted(table.key.front()) +
                       " IS NOT NULL GROUP BY " + columns + " HAVING count(*) > 1 LIMIT 1");
    return found->step();
}

void makeKey(Engine& engine, const TableDef& table, const std::string& index) {
    engine.begin();
    if (!isUnique(engine, index) && !standsTwice(engine, table)) { // another till may have been quicker
        engine.execute("DROP INDEX IF EXISTS " + quoted(index));
        engine.execute(indexStatement(table, table.key, Unique::Yes));
    }
    engine.commit();
}

} // namespace

void requireDelivered(Engine& engine, const Delivered& delivered, const std::string& path) {
    const Known known(delivered);
    const auto catalog = engine.prepare("SELECT ifnull(sql, ''), name FROM sqlite_master");
    while (catalog->step()) {
        const std::string statement(catalog->text(0));
        if (known.holds(statement)) continue;
        throw StoreError(StoreError::Kind::Damaged,
                         "Veritabanı açılmadı: " + path + " içinde bu programın koymadığı bir " +
                             kindOf(statement) + " var (" + shown(catalog->text(1)) +
                             "); kayıtları değiştirebilirdi. Dosyaya dokunulmadı. Nereden geldiğine "
                             "bakın ve son yedeği geri yükleyin.");
    }
}

void completeKeys(Engine& engine, const std::vector<TableDef>& tables) {
    for (const TableDef& table : tables) {
        if (table.key.empty() || isMissing(engine, table.name)) continue;
        const std::string index = indexName(table, table.key);
        try {
            if (!isUnique(engine, index) && !standsTwice(engine, table)) makeKey(engine, table, index);
        } catch (const StoreError&) {
            // The books work without it; what the disk has to say, the next save says.
            if (engine.inTransaction()) engine.rollback();
            static_cast<void>(engine.takeDiskFailure());
        }
    }
}

void makeScratchTables(Engine& engine, const std::vector<TableDef>& tables) {
    for (const TableDef& table : tables)
        engine.execute(tableStatement(table, Lifetime::Connection));
}

} // namespace veldona::store
