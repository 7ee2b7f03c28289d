#include "journal/acts.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "platform/runtime/conversion.h"
#include "platform/runtime/error.h"
#include "platform/store/dialect/literal.h"
#include "platform/store/dialect/names.h"
#include "platform/store/engine/engine.h"
#include "platform/store/engine/tablerows.h"
#include "schema/tables.h"

namespace veldona::journal {

namespace {

using store::ColumnType;
using store::Statement;

constexpr int kPortion = 500;
constexpr const char* kHead = "ID,ISLEM,AN,PROGRAM,MAKINE,KULLANICI,EKRAN,ADIM";
constexpr std::size_t kHeadColumns = 8;

const store::TableDef& tableOf(std::string_view name) {
    for (const store::TableDef& table : schema::tables())
        if (store::sameName(table.name, name)) return table;
    throw RuntimeError(adodb::kStatementError,
                       "Günlükte bilinmeyen bir tablonun adı var: " + std::string(name));
}

// A number that has no fraction may be written without one.
Value storedAs(const Value& value, ColumnType type) {
    if (type == ColumnType::Number && value.kind() == Value::Kind::Whole)
        return static_cast<double>(value.get<std::int64_t>());
    if (type != ColumnType::Number && value.kind() == Value::Kind::Double)
        return static_cast<std::int64_t>(value.get<double>());
    return value;
}

Value valueOf(const nlohmann::json& json) {
    if (json.is_number_integer()) return json.get<std::int64_t>();
    if (json.is_number()) return json.get<double>();
    if (json.is_string()) return json.get<std::string>();
    return Null();
}

std::string noteIn(const std::string& json) {
    const auto object = nlohmann::json::parse(json, nullptr, false);
    return object.is_object() ? object.value("NE", std::string()) : std::string();
}

Entry::Kind kindOf(std::string_view written) {
    if (written == "E") return Entry::Kind::Added;
    if (written == "S") return Entry::Kind::Removed;
    return written == "D" ? Entry::Kind::Changed : Entry::Kind::Noted;
}

std::string textOf(const Statement& row, int column) {
    return row.storage(column) == Statement::Storage::Null ? std::string() : std::string(row.text(column));
}

void readHead(const Statement& row, Act& act) {
    act.id = textOf(row, 1);
    act.moment = store::dateOfStored(row.text(2)).value_or(DateTime{});
    act.program = textOf(row, 3);
    act.machine = textOf(row, 4);
    act.user = textOf(row, 5);
    act.screen = textOf(row, 6);
    act.name = textOf(row, 7);
}

using Moments = std::vector<std::pair<std::int64_t, DateTime>>; // of entries, by their numbers

// Of some thousand entries that stand evenly over the journal, its ends among them.
Moments samplesOf(adodb::Connection& books) {
    constexpr std::int64_t kSamples = 1000;
    Moments samples;
    const auto take = [&](const std::string& which) {
        books.walk("SELECT " + which, [&](const Statement& row) {
            samples.emplace_back(row.whole(0), store::dateOfStored(row.text(1)).value_or(DateTime{}).date());
        });
    };
    take("TOP 1 ID,AN FROM GUNLUK WHERE ID>0 ORDER BY ID");
    const std::int64_t last = lastEntry(books);
    if (samples.empty()) return samples;
    const std::int64_t first = samples.front().first;
    const std::int64_t step = std::max<std::int64_t>(1, (last - first) / kSamples);
    std::string numbers;
    for (std::int64_t id = first + step; id < last; id += step)
        numbers += (numbers.empty() ? "" : ",") + std::to_string(id);
    if (!numbers.empty()) take("ID,AN FROM GUNLUK WHERE ID IN (" + numbers + ") ORDER BY ID");
    take("TOP 1 ID,AN FROM GUNLUK WHERE ID>0 ORDER BY ID DESC");
    return samples;
}

// Between which entries those of `day` may stand. A clock that was set back, or ran ahead for a while, has
// the days stand in several places, and between two samples whose days fall the nearer ones of either.
std::pair<std::int64_t, std::int64_t> entriesOf(adodb::Connection& books, DateTime day) {
    constexpr int kDaysBetween = 3; // of two samples, at most
    const auto isNear = [&](DateTime one) {
        return one.plusDays(-kDaysBetween) <= day && day <= one.plusDays(kDaysBetween);
    };
    std::int64_t from = std::numeric_limits<std::int64_t>::max(), to = 0;
    const Moments samples = samplesOf(books);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const auto& [id, one] = samples[i];
        const auto& [next, other] = samples[std::min(i + 1, samples.size() - 1)];
        if (!(one <= other ? one <= day && day <= other : isNear(one) || isNear(other))) continue;
        from = std::min(from, id);
        to = std::max(to, next);
    }
    return {from, to};
}

// The columns that say whose row it is.
std::pair<const char*, const char*> ownerColumns(const store::TableDef& table) {
    const auto has = [&](const char* name) {
        return std::any_of(table.columns.begin(), table.columns.end(),
                           [&](const store::ColumnDef& column) { return column.name == name; });
    };
    const char* account = has("MUSTNO") ? "MUSTNO" : has("HSTNO") ? "HSTNO" : nullptr;
    return {account, has("ISLEMNO") ? "ISLEMNO" : nullptr};
}

} // namespace

std::int64_t lastEntry(adodb::Connection& books) {
    std::int64_t last = 0;
    books.walk("SELECT TOP 1 ID FROM GUNLUK WHERE ID>0 ORDER BY ID DESC",
               [&](const Statement& row) { last = row.whole(0); });
    return last;
}

const Value* find(const Fields& fields, std::string_view column) {
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const auto& field) { return store::sameName(field.first, column); });
    return found == fields.end() ? nullptr : &found->second;
}

Fields fieldsOf(const std::string& table, std::string_view json) {
    Fields fields;
    if (json.empty()) return fields;
    const auto object = nlohmann::ordered_json::parse(json, nullptr, false);
    if (!object.is_object())
        throw RuntimeError(adodb::kStatementError, "Günlüğün bir satırı okunamadı: " + table);
    const store::TableDef& known = tableOf(table);
    for (const auto& [name, value] : object.items()) {
        const auto column = std::find_if(
            known.columns.begin(), known.columns.end(),
            [&name = name](const store::ColumnDef& each) { return store::sameName(each.name, name); });
        // Of books that a newer program has written.
        if (column == known.columns.end()) continue;
        fields.emplace_back(column->name, storedAs(valueOf(value), column->type));
    }
    return fields;
}

std::optional<Fields> rowInBooks(adodb::Connection& books, const std::string& table, std::int64_t key) {
    const store::TableDef& known = tableOf(table);
    std::string columns;
    for (const store::ColumnDef& column : known.columns)
        columns += (columns.empty() ? "[" : ",[") + column.name + ']';
    std::optional<Fields> found;
    books.walk("SELECT " + columns + " FROM [" + known.name + "] WHERE ID=" + std::to_string(key),
               [&](const Statement& row) {
                   found.emplace();
                   for (int i = 0; const store::ColumnDef& column : known.columns)
                       found->emplace_back(column.name, storedAs(store::storedValue(row, i++), column.type));
               });
    return found;
}

std::string inStatement(const Value& stored) {
    return store::sql::engineLiteral(stored);
}

ActReader::ActReader(adodb::Connection& books, std::optional<DateTime> day) : books_(books), day_(day) {
    if (!day) return;
    constexpr std::int64_t kLongestAct = 1000; // of entries, whose first one names it
    const auto [from, to] = entriesOf(books, day->date());
    if (to == 0) {
        atEnd_ = true;
        return;
    }
    from_ = from - kLongestAct;
    below_ = to + kLongestAct;
}

std::vector<Act> ActReader::more(std::size_t most) {
    std::vector<Act> whole;
    while (!atEnd_ && whole.size() < most)
        readPortion(whole);
    nameOwners(whole);
    if (day_) std::erase_if(whole, [&](const Act& act) { return act.moment.date() != day_->date(); });
    return whole;
}

void ActReader::readPortion(std::vector<Act>& whole) {
    int rows = 0;
    const std::int64_t portionEnd = below_;
    const std::string from = from_ > 0 ? " AND ID>=" + std::to_string(from_) : std::string();
    books_.walk("SELECT TOP " + std::to_string(kPortion) + ' ' + kHead +
                    ",TABLO,TUR,ANAHTAR,ESKI,YENI FROM GUNLUK WHERE ID<" + std::to_string(below_) + from +
                    " ORDER BY ID DESC",
                [&](const Statement& row) {
                    ++rows;
                    below_ = row.whole(0);
                    constexpr int kTable = kHeadColumns;
                    Entry entry;
                    entry.id = below_;
                    entry.table = textOf(row, kTable);
                    entry.kind = kindOf(row.text(kTable + 1));
                    if (entry.kind != Entry::Kind::Noted) {
                        entry.key = row.whole(kTable + 2);
                        entry.before = fieldsOf(entry.table, textOf(row, kTable + 3));
                        entry.after = fieldsOf(entry.table, textOf(row, kTable + 4));
                    } else {
                        entry.note = noteIn(textOf(row, kTable + 4));
                    }
                    Act& act = begun_[textOf(row, 1)];
                    act.entries.push_back(std::move(entry));
                    if (!textOf(row, 7).empty()) readHead(row, act);
                });
    atEnd_ = rows < kPortion;
    endActs(whole, portionEnd);
}

// Those that named themselves before the portion, which has brought no more of them.
void ActReader::endActs(std::vector<Act>& whole, std::int64_t portionEnd) {
    const std::size_t before = whole.size();
    for (auto begun = begun_.begin(); begun != begun_.end();) {
        Act& act = begun->second;
        if (act.id.empty() || (!atEnd_ && act.entries.back().id < portionEnd)) {
            ++begun;
            continue;
        }
        std::reverse(act.entries.begin(), act.entries.end());
        whole.push_back(std::move(act));
        begun = begun_.erase(begun);
    }
    std::sort(whole.begin() + static_cast<std::ptrdiff_t>(before), whole.end(),
              [](const Act& a, const Act& b) { return a.first() > b.first(); });
}

// A changed row says nothing of whose it is: the books know, or the entry that removed it since.
void ActReader::nameOwners(std::vector<Act>& acts) {
    for (Act& act : acts) {
        for (auto entry = act.entries.rbegin(); entry != act.entries.rend(); ++entry) {
            if (entry->kind == Entry::Kind::Noted) continue;
            const auto [account, sale] = ownerColumns(tableOf(entry->table));
            if (!account && !sale) continue;
            const Row row{entry->table, entry->key};
            auto owner = owners_.find(row);
            if (owner == owners_.end()) {
                std::optional<Fields> fields = entry->kind == Entry::Kind::Added ? entry->after
                                               : entry->kind == Entry::Kind::Removed
                                                   ? entry->before
                                                   : std::optional<Fields>();
                if (!fields) fields = rowInBooks(books_, entry->table, entry->key);
                Owner made;
                if (fields && account)
                    if (const Value* value = find(*fields, account)) made.account = joinText(*value);
                if (fields && sale)
                    if (const Value* value = find(*fields, sale); value && !value->isNull())
                        made.sale = value->get<std::int64_t>();
                owner = owners_.emplace(row, std::move(made)).first;
            }
            entry->account = owner->second.account;
            entry->sale = owner->second.sale;
        }
    }
}

Act headOf(adodb::Connection& books, const std::string& id, std::int64_t entry) {
    Act act;
    act.id = id;
    books.walk(std::string("SELECT TOP 1 ") + kHead + " FROM GUNLUK WHERE ID<=" + std::to_string(entry) +
                   " AND ISLEM=" + inStatement(id) + " AND ADIM IS NOT NULL ORDER BY ID DESC",
               [&](const Statement& row) { readHead(row, act); });
    return act;
}

std::optional<Act> laterActOn(adodb::Connection& books, const std::string& table, std::int64_t key,
                              const Act& but) {
    std::optional<std::pair<std::string, std::int64_t>> found;
    books.walk("SELECT TOP 1 ISLEM,ID FROM GUNLUK WHERE ID>" + std::to_string(but.first()) +
                   " AND TABLO=" + inStatement(table) + " AND ANAHTAR=" + std::to_string(key) +
                   " AND ISLEM<>" + inStatement(but.id) + " ORDER BY ID DESC",
               [&](const Statement& row) {
                   found = {std::string(row.text(0)), row.whole(1)};
               });
    if (!found) return std::nullopt;
    return headOf(books, found->first, found->second);
}

} // namespace veldona::journal
