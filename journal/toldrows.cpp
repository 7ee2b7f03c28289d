#include "journal/toldrows.h"

#include <bit>
#include <limits>
#include <random>

#include <nlohmann/json.hpp>

#include "journal/words.h"
#include "platform/store/engine/journalseal.h"
#include "platform/store/engine/tablerows.h"
#include "schema/tables.h"

namespace veldona::journal {
namespace {

constexpr std::size_t kMostTold = 100;

// A sum over the columns of a row, modulo the prime 2^61 - 1: a polynomial over each value's bytes at a point
// that nobody knows, times a number of the column's. What one column adds can be taken off again.
class Sums {
public:
    explicit Sums(std::size_t columns) {
        std::random_device random;
        std::uniform_int_distribution<std::uint64_t> below(1, kPrime - 1);
        point_ = below(random);
        for (std::size_t i = 0; i < columns; ++i)
            factors_.push_back(below(random));
    }

    [[nodiscard]] std::uint64_t of(std::size_t column, const Value& value) const {
        std::uint64_t sum = static_cast<std::uint64_t>(value.kind()) + 1;
        const auto add = [&](std::uint64_t part) { sum = plus(times(sum, point_), part); };
        if (value.isText()) {
            constexpr std::size_t kAtOnce = 7; // bytes that stay below the prime
            const std::string_view text = value.get<std::string>();
            for (std::size_t at = 0; at < text.size(); at += kAtOnce) {
                std::uint64_t part = 0;
                for (const char letter : text.substr(at, kAtOnce))
                    part = part << 8 | static_cast<unsigned char>(letter);
                add(part);
            }
            add(text.size());
        } else if (!value.isNull()) {
            const auto bits = value.kind() == Value::Kind::Double
                                  ? std::bit_cast<std::uint64_t>(value.get<double>() + 0.0) // no -0
                                  : static_cast<std::uint64_t>(value.get<std::int64_t>());
            add(bits >> 32);
            add(bits & 0xffffffff);
        }
        return times(sum, factors_[column]);
    }
    static std::uint64_t plus(std::uint64_t one, std::uint64_t other) { return (one + other) % kPrime; }
    static std::uint64_t minus(std::uint64_t one, std::uint64_t other) {
        return (one + kPrime - other) % kPrime;
    }

private:
    static constexpr std::uint64_t kPrime = (std::uint64_t{1} << 61) - 1;
    __extension__ using Wide = unsigned __int128;
    static std::uint64_t times(std::uint64_t one, std::uint64_t other) {
        return static_cast<std::uint64_t>(static_cast<Wide>(one) * other % kPrime);
    }

    std::uint64_t point_ = 0;
    std::vector<std::uint64_t> factors_;
};

// As the books hold it, whichever engine wrote the entry.
Value stored(Value value, store::ColumnType type) {
    const bool isNumber = type == store::ColumnType::Number;
    if (isNumber && value.kind() == Value::Kind::Whole) return static_cast<double>(value.get<std::int64_t>());
    if (!isNumber && value.kind() == Value::Kind::Double)
        return static_cast<std::int64_t>(value.get<double>());
    return value;
}

// The members of an entry's flat object, one by one.
template <class OnMember> class Members final : public nlohmann::json_sax<nlohmann::json> {
public:
    explicit Members(const OnMember& onMember) : onMember_(onMember) {}

    bool null() override { return take(Value()); }
    bool boolean(bool value) override { return take(std::int64_t{value ? 1 : 0}); }
    bool number_integer(number_integer_t value) override { return take(std::int64_t{value}); }
    bool number_unsigned(number_unsigned_t value) override { return take(static_cast<std::int64_t>(value)); }
    bool number_float(number_float_t value, const string_t&) override { return take(value); }
    bool string(string_t& value) override { return take(std::move(value)); }
    bool binary(binary_t&) override { return false; }
    bool start_object(std::size_t) override { return true; }
    bool key(string_t& name) override {
        name_ = std::move(name);
        return true;
    }
    bool end_object() override { return true; }
    bool start_array(std::size_t) override { return false; }
    bool end_array() override { return false; }
    bool parse_error(std::size_t, const std::string&, const nlohmann::json::exception&) override {
        return false;
    }

private:
    bool take(Value value) {
        onMember_(name_, std::move(value));
        return true;
    }

    const OnMember& onMember_;
    std::string name_;
};

} // namespace

// Rows by their counters, which lie close together: a block of them at a time.
class ToldRows::Table {
public:
    explicit Table(const store::Catalog::Relation& relation)
        : relation_(relation), sums_(relation.columns.size()) {}

    void take(std::string_view kind, std::int64_t key, std::string_view before, std::string_view after) {
        Row& row = rowOf(key);
        const bool isFresh = row.marks == 0;
        if (kind == store::kAdded) {
            if ((row.marks & kThere) != 0) row.marks |= kAstray;
            if (isFresh) firstAdded_ = std::min(firstAdded_, key);
            row = {0, (row.marks & kAstray) | kThere};
            tell(row, after);
        } else if (kind == store::kChanged) {
            if ((row.marks & kGone) != 0) row.marks |= kAstray;
            row.marks = (row.marks & ~kGone) | kThere;
            forget(row, before);
            tell(row, after);
        } else if (kind == store::kRemoved) {
            if ((row.marks & kGone) != 0) row.marks |= kAstray;
            forget(row, before);
            const bool isAstray = (row.marks & kAstray) != 0 || row.sum != 0;
            row = {0, kGone | (isAstray ? kAstray : 0)};
        }
    }
    // Of rows that came in by the thousand there is one note alone.
    void passOver() { firstAdded_ = std::numeric_limits<std::int64_t>::max(); }

    void compare(const store::Inquiry& books, bool isWhole, Strays& strays) {
        for (store::TableRows rows(books, relation_); rows.next();) {
            Row* row = find(rows.id());
            if (row == nullptr || row->marks == 0) {
                if (isWhole && rows.id() > firstAdded_)
                    note(strays, Stray::Kind::Added, rows.id(), &rows.row());
                continue;
            }
            if ((row->marks & kGone) != 0)
                note(strays, Stray::Kind::PutBack, rows.id(), &rows.row());
            else if ((row->marks & kAstray) != 0 || !isAsTold(*row, rows.row()))
                note(strays, Stray::Kind::Changed, rows.id(), &rows.row());
            row->marks |= kMet;
        }
        for (const auto& [place, block] : blocks_)
            for (std::size_t i = 0; i < block->size(); ++i) {
                const Row& row = (*block)[i];
                if (row.marks != 0) ++strays.rowsTold;
                if (row.marks == 0 || (row.marks & kMet) != 0) continue;
                const std::int64_t key = (place << kBlockBits) + static_cast<std::int64_t>(i);
                if ((row.marks & kGone) == 0)
                    note(strays, Stray::Kind::Removed, key, nullptr);
                else if ((row.marks & kAstray) != 0)
                    note(strays, Stray::Kind::Changed, key, nullptr);
            }
    }

private:
    struct Row {
        std::uint64_t sum = 0;   // of the columns that were told of
        std::uint64_t marks = 0; // a bit for each of those, and the ones below; 0: no entry tells of it
    };
    static constexpr std::uint64_t kThere = std::uint64_t{1} << 63, kGone = std::uint64_t{1} << 62,
                                   kAstray = std::uint64_t{1} << 61, kMet = std::uint64_t{1} << 60;
    static constexpr int kBlockBits = 8;
    static constexpr std::size_t kMostColumns = 60, kBlock = 1 << kBlockBits;
    using Block = std::array<Row, kBlock>;

    Row& rowOf(std::int64_t key) {
        auto& block = blocks_[key >> kBlockBits];
        if (!block) block = std::make_unique<Block>();
        return (*block)[static_cast<std::size_t>(key) % kBlock];
    }
    Row* find(std::int64_t key) {
        const auto block = blocks_.find(key >> kBlockBits);
        if (block == blocks_.end()) return nullptr;
        return &(*block->second)[static_cast<std::size_t>(key) % kBlock];
    }

    // The key itself is no column of the sum, and of books that a newer program wrote some aren't known.
    template <class OnColumn> bool eachColumn(std::string_view object, const OnColumn& onColumn) const {
        if (object.empty()) return true;
        const auto take = [&](const std::string& name, Value value) {
            for (std::size_t i = 1; i < relation_.columns.size() && i < kMostColumns; ++i)
                if (relation_.columns[i].name == name)
                    return onColumn(i, sums_.of(i, stored(std::move(value), relation_.columns[i].type)));
        };
        Members members(take);
        return nlohmann::json::sax_parse(object.begin(), object.end(), &members);
    }
    void tell(Row& row, std::string_view after) const {
        const bool isRead = eachColumn(after, [&](std::size_t column, std::uint64_t sum) {
            row.marks |= std::uint64_t{1} << column;
            row.sum = Sums::plus(row.sum, sum);
        });
        if (!isRead) forgetAll(row);
    }
    void forget(Row& row, std::string_view before) const {
        const bool isRead = eachColumn(before, [&](std::size_t column, std::uint64_t sum) {
            if ((row.marks & std::uint64_t{1} << column) != 0) row.sum = Sums::minus(row.sum, sum);
        });
        if (!isRead) forgetAll(row);
    }
    // Letters that are none can't be read back: nothing is known of such a row.
    static void forgetAll(Row& row) { row = {0, row.marks & (kThere | kGone | kAstray)}; }
    [[nodiscard]] bool isAsTold(const Row& told, const store::Statement& row) const {
        std::uint64_t sum = 0;
        for (std::size_t i = 1; i < relation_.columns.size() && i < kMostColumns; ++i)
            if ((told.marks & std::uint64_t{1} << i) != 0)
                sum = Sums::plus(sum, sums_.of(i, stored(store::storedValue(row, static_cast<int>(i)),
                                                         relation_.columns[i].type)));
        return sum == told.sum;
    }
    void note(Strays& strays, Stray::Kind kind, std::int64_t key, const store::Statement* row) const {
        if (strays.all++ >= static_cast<std::int64_t>(kMostTold)) return;
        Fields fields;
        if (row != nullptr)
            for (int i = 0; const store::ColumnDef& column : relation_.columns)
                fields.emplace_back(column.name, stored(store::storedValue(*row, i++), column.type));
        strays.first.push_back(
            {relation_.name, key, kind, row == nullptr ? std::string() : rowWords(relation_.name, fields)});
    }

    const store::Catalog::Relation& relation_;
    const Sums sums_;
    std::unordered_map<std::int64_t, std::unique_ptr<Block>> blocks_;
    std::int64_t firstAdded_ = std::numeric_limits<std::int64_t>::max(); // that no earlier entry tells of
};

ToldRows::ToldRows(const store::Inquiry& books) : books_(books) {
    for (const store::TableDef& table : schema::tables())
        if (const auto* known = books.catalog().find(table.name); known != nullptr && table.isJournaled)
            tables_.emplace(table.name, std::make_unique<Table>(*known));
}

ToldRows::~ToldRows() = default;

void ToldRows::take(std::string_view table, std::string_view kind, std::int64_t key, std::string_view before,
                    std::string_view after) {
    if (kind == store::kNoted) {
        if (after == store::kFilledNote)
            for (const auto& [name, each] : tables_)
                each->passOver();
        return;
    }
    if (const auto known = tables_.find(table); known != tables_.end())
        known->second->take(kind, key, before, after);
}

Strays ToldRows::strays(bool isWhole) const {
    Strays strays;
    for (const auto& [name, table] : tables_)
        table->compare(books_, isWhole, strays);
    return strays;
}

std::string describe(const Stray& stray) {
    constexpr std::array<const char*, 4> kVerbs = {"değiştirilmiş", "silinmiş", "geri konmuş", "eklenmiş"};
    return stray.table + " tablosunda " + std::to_string(stray.key) +
           (stray.words.empty() ? "" : ", " + stray.words) + ": günlüğe yazılmadan " +
           kVerbs[static_cast<std::size_t>(stray.kind)] + '.';
}

std::string describe(const Strays& strays) {
    if (strays.all == 0)
        return strays.rowsTold == 0 ? std::string()
                                    : "Defter günlüğe uyuyor: günlüğün anlattığı " +
                                          std::to_string(strays.rowsTold) + " kayda bakıldı.\n";
    std::string text = "DEFTER GÜNLÜĞE UYMUYOR: " + std::to_string(strays.all) + " kayıt.\n";
    for (const Stray& stray : strays.first)
        text += "  " + describe(stray) + '\n';
    const auto rest = strays.all - static_cast<std::int64_t>(strays.first.size());
    if (rest > 0) text += "  … ve " + std::to_string(rest) + " kayıt daha.\n";
    return text;
}

} // namespace veldona::journal
