#include "journal/takeback.h"

#include <algorithm>
#include <array>
#include <limits>
#include <map>
#include <set>
#include <string_view>

#include "journal/words.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/error.h"
#include "platform/store/engine/act.h"
#include "platform/store/engine/engine.h"

namespace veldona::journal {

namespace {

constexpr const char* kProducts = "URUNTANITIM";
constexpr std::array<const char*, 3> kTotals = {"TOPLAM_ALINAN", "TOPLAM_SATILAN", "KALAN"};
// No screen adds a row to these, and the program doesn't work without the one that came with the books.
constexpr std::array<const char*, 3> kDelivered = {"FIRMABILGISI", kProducts, "T_KASA_TANITIM"};

// A row that the act wrote to: as it stands, and as it stood before.
struct Turned {
    std::string table;
    std::int64_t key = 0;
    std::optional<Fields> now, before;
};

// Rows of `child` hang on the row of `parent` that has the same value.
struct Bond {
    const char* parent;
    const char* parentColumn;
    const char* child;
    const char* childColumn;
};
constexpr Bond kBonds[] = {
    {"MUSTKAYIT", "HSTNO", "ISLEMNOTABLO", "MUSTNO"},
    {"MUSTKAYIT", "HSTNO", "URUNAL", "MUSTNO"},
    {"MUSTKAYIT", "HSTNO", "URUNSAT", "MUSTNO"},
    {"MUSTKAYIT", "HSTNO", "TAKSITODENEN", "MUSTNO"},
    {"MUSTKAYIT", "HSTNO", "ARAMA_NOTU", "MUSTNO"},
    {"MUSTKAYIT", "ID", "T_KASA_HAREKETLERI", "CARI_ID"},
    {"ISLEMNOTABLO", "ISLEMNO", "URUNAL", "ISLEMNO"},
    {"ISLEMNOTABLO", "ISLEMNO", "URUNSAT", "ISLEMNO"},
    {"ISLEMNOTABLO", "ISLEMNO", "TAKSITODENEN", "ISLEMNO"},
    {"T_KASA_TANITIM", "ID", "TAKSITODENEN", "KASA_ID"},
};

struct InTheWay {
    Obstacle obstacle;
};

bool isTotal(const std::string& table, const std::string& column) {
    return table == kProducts && std::find(kTotals.begin(), kTotals.end(), column) != kTotals.end();
}

void put(Fields& fields, const std::string& column, const Value& value) {
    for (auto& [name, held] : fields)
        if (name == column) held = value;
}

class TakingBack {
public:
    TakingBack(adodb::Connection& books, const Act& act) : books_(books), act_(act) {}

    // Raises InTheWay.
    void plan();
    void write();

private:
    [[noreturn]] void refuse(const Turned& row, std::string what) const;
    [[nodiscard]] Turned& rowOf(const Entry& entry);
    void turnBack(Turned& row, const Entry& entry) const;
    void turnChange(Turned& row, const Entry& entry) const;
    void moveTotals(Turned& row, const Entry& entry) const;

    [[nodiscard]] bool comesBack(const char* table, const char* column, const Value& value);
    [[nodiscard]] std::vector<std::int64_t> rowsWith(const char* table, const char* column,
                                                     const Value& value) const;
    [[nodiscard]] bool wasAddedSince(const char* table, std::int64_t key) const;
    void requireNoChildren(const Turned& row, const Bond& bond);
    void requireParent(const Turned& row, const Bond& bond);
    void requireFree(const Turned& row, const char* column) const;

    adodb::Connection& books_;
    const Act& act_;
    std::vector<Turned> rows_;
    std::map<std::pair<std::string, std::int64_t>, std::size_t> places_;
    // An act may hold every row of the shop: what all of them ask alike is answered once.
    std::map<std::pair<std::string_view, std::string_view>, std::set<std::string>> comingBack_;
    std::set<std::pair<const Bond*, std::string>> parents_, orphans_; // bonds that hold, by the value
};

void TakingBack::refuse(const Turned& row, std::string what) const {
    throw InTheWay{{std::move(what), laterActOn(books_, row.table, row.key, act_)}};
}

Turned& TakingBack::rowOf(const Entry& entry) {
    const auto [place, isNew] = places_.emplace(std::pair(entry.table, entry.key), rows_.size());
    if (isNew) {
        Turned& row = rows_.emplace_back();
        row.table = entry.table;
        row.key = entry.key;
        row.now = rowInBooks(books_, entry.table, entry.key);
        row.before = row.now;
    }
    return rows_[place->second];
}

void TakingBack::turnBack(Turned& row, const Entry& entry) const {
    switch (entry.kind) {
    case Entry::Kind::Added:
        if (!row.before) refuse(row, rowWords(entry) + ": sonradan silinmiş.");
        for (const auto& [column, value] : entry.after)
            if (const Value* held = find(*row.before, column); held && *held != value)
                refuse(row, rowWords(entry) + ": sonradan değiştirilmiş.");
        row.before.reset();
        return;
    case Entry::Kind::Removed: {
        if (row.before) refuse(row, rowWords(entry) + ": yeniden kaydedilmiş.");
        row.before = entry.before;
        return;
    }
    case Entry::Kind::Changed:
        if (!row.before) refuse(row, rowWords(entry) + ": sonradan silinmiş.");
        turnChange(row, entry);
        return;
    case Entry::Kind::Noted:
        return;
    }
}

void TakingBack::turnChange(Turned& row, const Entry& entry) const {
    bool isTotalMoved = false;
    for (const auto& [column, left] : entry.after) {
        const Value* held = find(*row.before, column);
        if (!held || column == "ID" || *held == left) continue;
        if (!isTotal(row.table, column)) refuse(row, rowWords(entry) + ": sonradan değiştirilmiş.");
        isTotalMoved = true;
    }
    for (const auto& [column, value] : entry.before)
        if (!isTotalMoved || !isTotal(row.table, column)) put(*row.before, column, value);
    if (isTotalMoved) moveTotals(row, entry);
}

// What was bought and sold by others since stays counted; what is left is the difference, as every movement
// writes it.
void TakingBack::moveTotals(Turned& row, const Entry& entry) const {
    const auto whole = [](const Value* value) {
        return value && !value->isNull() ? value->get<std::int64_t>() : std::int64_t{0};
    };
    std::int64_t moved[2]{};
    for (const std::size_t i : {0U, 1U}) {
        const char* column = kTotals[i];
        moved[i] = whole(find(*row.before, column)) + whole(find(entry.before, column)) -
                   whole(find(entry.after, column));
        put(*row.before, column, moved[i]);
    }
    const std::int64_t left = moved[0] - moved[1];
    put(*row.before, kTotals[2], left);
    for (const std::int64_t total : {moved[0], moved[1], left})
        if (total < std::numeric_limits<std::int32_t>::min() ||
            total > std::numeric_limits<std::int32_t>::max())
            refuse(row, "Ürünün adetleri alanlarına sığmıyor.");
}

bool TakingBack::comesBack(const char* table, const char* column, const Value& value) {
    const auto [place, isNew] = comingBack_.try_emplace({table, column});
    if (isNew)
        for (const Turned& row : rows_)
            if (row.table == table && row.before)
                if (const Value* held = find(*row.before, column)) place->second.insert(inStatement(*held));
    return place->second.contains(inStatement(value));
}

std::vector<std::int64_t> TakingBack::rowsWith(const char* table, const char* column,
                                               const Value& value) const {
    std::vector<std::int64_t> rows;
    books_.walk(std::string("SELECT ID FROM ") + table + " WHERE " + column + '=' + inStatement(value),
                [&](const store::Statement& row) { rows.push_back(row.whole(0)); });
    std::erase_if(rows, [&](std::int64_t id) {
        const auto turned = places_.find(std::pair(std::string(table), id));
        return turned != places_.end() && !rows_[turned->second].before; // it goes as well
    });
    return rows;
}

// One that was removed since and came back was there before.
bool TakingBack::wasAddedSince(const char* table, std::int64_t key) const {
    std::string kind;
    books_.walk("SELECT TOP 1 TUR FROM GUNLUK WHERE ID>" + std::to_string(act_.first()) +
                    " AND TABLO=" + inStatement(table) + " AND ANAHTAR=" + std::to_string(key) +
                    " AND ISLEM<>" + inStatement(act_.id) + " ORDER BY ID",
                [&](const store::Statement& row) { kind = row.text(0); });
    return kind == "E";
}

// What hung on nothing before the act may go on so.
void TakingBack::requireNoChildren(const Turned& row, const Bond& bond) {
    const Value* value = find(*row.now, bond.parentColumn);
    if (!value || value->isNull() || !orphans_.emplace(&bond, inStatement(*value)).second) return;
    if (comesBack(bond.parent, bond.parentColumn, *value)) return;
    for (const std::int64_t child : rowsWith(bond.child, bond.childColumn, *value)) {
        if (places_.contains(std::pair(std::string(bond.child), child))) continue;
        if (!wasAddedSince(bond.child, child)) continue;
        if (auto later = laterActOn(books_, bond.child, child, act_))
            throw InTheWay{
                {rowWords(row.table, *row.now) + ": üzerine sonradan kayıt yapılmış.", std::move(later)}};
    }
}

void TakingBack::requireParent(const Turned& row, const Bond& bond) {
    const Value* value = find(*row.before, bond.childColumn);
    if (!value || value->isNull() || !parents_.emplace(&bond, inStatement(*value)).second) return;
    if (comesBack(bond.parent, bond.parentColumn, *value)) return;
    if (!rowsWith(bond.parent, bond.parentColumn, *value).empty()) return;
    // Gone since, or never there.
    std::optional<std::pair<std::string, std::int64_t>> later;
    books_.walk("SELECT ISLEM,ID,ESKI FROM GUNLUK WHERE ID>" + std::to_string(act_.first()) +
                    " AND TABLO=" + inStatement(bond.parent) + " AND TUR='S'",
                [&](const store::Statement& entry) {
                    const Fields removed = fieldsOf(bond.parent, entry.text(2));
                    const Value* held = find(removed, bond.parentColumn);
                    if (held && *held == *value && entry.text(0) != act_.id)
                        later = {std::string(entry.text(0)), entry.whole(1)};
                });
    if (later)
        throw InTheWay{{rowWords(row.table, *row.before) + ": bağlı olduğu kayıt sonradan silinmiş.",
                        headOf(books_, later->first, later->second)}};
}

void TakingBack::requireFree(const Turned& row, const char* column) const {
    const Value* value = find(*row.before, column);
    if (!value || value->isNull()) return;
    for (const std::int64_t other : rowsWith(row.table.c_str(), column, *value))
        if (other != row.key)
            throw InTheWay{{rowWords(row.table, *row.before) + ": numarası yeniden verilmiş.",
                            laterActOn(books_, row.table, other, act_)}};
}

void TakingBack::plan() {
    for (const Entry& entry : act_.entries)
        if (entry.kind == Entry::Kind::Noted)
            throw InTheWay{{"Bu işlemin kayıtları günlükte tek tek yazılı değil.", {}, true}};
    for (auto entry = act_.entries.rbegin(); entry != act_.entries.rend(); ++entry)
        turnBack(rowOf(*entry), *entry);
    for (const Turned& row : rows_) {
        if (row.now && !row.before && std::ranges::find(kDelivered, row.table) != kDelivered.end())
            throw InTheWay{{rowWords(row.table, *row.now) + ": program onsuz çalışmaz.", {}, true}};
        for (const Bond& bond : kBonds) {
            if (row.now && !row.before && row.table == bond.parent) requireNoChildren(row, bond);
            if (row.before && !row.now && row.table == bond.child) requireParent(row, bond);
        }
        if (!row.before || row.now) continue;
        if (row.table == "ISLEMNOTABLO") requireFree(row, "ISLEMNO");
        if (row.table == "MUSTKAYIT") requireFree(row, "HSTNO");
    }
}

void TakingBack::write() {
    // Going first, so that a number is free again for the row that comes back under it.
    for (const Turned& row : rows_)
        if (row.now && !row.before)
            books_.execute("DELETE FROM [" + row.table + "] WHERE ID=" + std::to_string(row.key));
    for (const Turned& row : rows_) {
        if (!row.before || row.before == row.now) continue;
        std::string columns, values, changes;
        for (const auto& [column, value] : *row.before) {
            columns += (columns.empty() ? "[" : ",[") + column + ']';
            values += (values.empty() ? "" : ",") + inStatement(value);
            const Value* held = row.now ? find(*row.now, column) : nullptr;
            if (!held || *held == value) continue;
            changes += (changes.empty() ? "[" : ",[") + column + "]=" + inStatement(value);
        }
        if (row.now)
            books_.execute("UPDATE [" + row.table + "] SET " + changes +
                           " WHERE ID=" + std::to_string(row.key));
        else
            books_.execute("INSERT INTO [" + row.table + "] (" + columns + ") VALUES (" + values + ")");
    }
}

} // namespace

std::optional<Obstacle> obstacleTo(adodb::Connection& books, const Act& act) {
    try {
        TakingBack(books, act).plan();
    } catch (InTheWay& inTheWay) {
        return std::move(inTheWay.obstacle);
    }
    return std::nullopt;
}

std::optional<Obstacle> takeBack(adodb::Connection& books, const Act& act) {
    const store::ActScope itself(store::runningAct().screen, takingBackName(act.id));
    books.beginTrans();
    try {
        TakingBack taking(books, act);
        taking.plan();
        taking.write();
        books.commitTrans();
    } catch (InTheWay& inTheWay) {
        books.rollbackTrans();
        return std::move(inTheWay.obstacle);
    } catch (const std::exception&) {
        if (books.inTransaction()) {
            try {
                books.rollbackTrans();
            } catch (const RuntimeError&) { // what failed first is what is told
            }
        }
        throw;
    }
    return std::nullopt;
}

} // namespace veldona::journal
