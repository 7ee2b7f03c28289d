#include "apps/aktar/report.h"

#include <bit>
#include <chrono>
#include <cmath>
#include <memory>
#include <ostream>
#include <string_view>
#include <tuple>
#include <utility>

#include "apps/hazirla/delivered.h"
#include "core/books.h"
#include "platform/runtime/text.h"
#include "platform/store/engine/inquiry.h"

namespace veldona::aktar {
namespace {

constexpr std::int64_t kKurus = 10'000; // millionths of a lira

std::string textOf(const Value& value) {
    return value.isText() ? value.get<std::string>() : std::string();
}

double numberOf(const Value& value) {
    if (value.kind() == Value::Kind::Double) return value.get<double>();
    return value.kind() == Value::Kind::Whole ? static_cast<double>(value.get<std::int64_t>()) : 0;
}

[[noreturn]] void refuseAmount(const std::string& table) {
    throw hazirla::Refusal(table + " tablosunda defterin tutamayacağı kadar büyük bir tutar var. Hiçbir şey "
                                   "aktarılmadı.");
}

// What the books hold, as a whole number of millionths.
std::int64_t millionths(double stored, const std::string& table) {
    constexpr double kMost = 1e18;
    if (!(std::abs(stored) < kMost)) refuseAmount(table);
    return std::llround(stored);
}

// Kept so small that a balance of three sums has room.
void addTo(std::int64_t& sum, std::int64_t amount, const std::string& table) {
    constexpr std::int64_t kMost = std::int64_t{1} << 61;
    if (__builtin_add_overflow(sum, amount, &sum) || sum > kMost || sum < -kMost) refuseAmount(table);
}

class Print {
public:
    void take(const Value& value) {
        byte(static_cast<std::uint8_t>(value.kind()));
        if (value.isText()) {
            for (const char letter : value.get<std::string>())
                byte(static_cast<std::uint8_t>(letter));
        } else if (value.kind() == Value::Kind::Whole) {
            word(static_cast<std::uint64_t>(value.get<std::int64_t>()));
        } else if (value.kind() == Value::Kind::Double) {
            word(std::bit_cast<std::uint64_t>(value.get<double>() + 0.0)); // the store knows no minus zero
        }
    }
    [[nodiscard]] std::uint64_t sum() const { return sum_; }

private:
    void byte(std::uint8_t value) { sum_ = (sum_ ^ value) * 1099511628211U; }
    void word(std::uint64_t value) {
        for (int shift = 0; shift < 64; shift += 8)
            byte(static_cast<std::uint8_t>(value >> shift));
    }

    std::uint64_t sum_ = 14695981039346656037U;
};

Value storedValue(const store::Statement& rows, int column) {
    using enum store::Statement::Storage;
    switch (rows.storage(column)) {
    case Null:
        return {};
    case Whole:
        return rows.whole(column);
    case Number:
        return rows.number(column);
    case Text:
        return rows.text(column);
    }
    throw std::logic_error("a storage without a value");
}

void countTable(const store::Inquiry& books, const TableView& view, Report& report) {
    std::string names;
    for (const store::ColumnDef& column : view.columns)
        names += (names.empty() ? "[" : ", [") + column.name + ']';
    const auto rows = books.prepare("SELECT " + names + " FROM [" + view.table->name + ']');
    TableCounter counter(report, view);
    std::vector<Value> row(view.columns.size());
    while (rows->step()) {
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = storedValue(*rows, static_cast<int>(i));
        counter.add(row);
    }
}

// Millionths as "1.234,56", a half kuruş away from zero.
std::string money(std::int64_t millionths) {
    const std::int64_t kurus = (std::abs(millionths) + kKurus / 2) / kKurus;
    std::string lira = std::to_string(kurus / 100);
    for (std::size_t at = lira.size(); at > 3;)
        lira.insert(at -= 3, 1, '.');
    const std::string sign = millionths < 0 && kurus != 0 ? "-" : "";
    return sign + lira + ',' + std::to_string(100 + kurus % 100).substr(1);
}

bool isPlainNumber(std::string_view text) {
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

void printAccount(std::ostream& out, const Account& account) {
    out << "satış " << money(account.lines) << ", indirim " << money(account.discounts) << ", ödeme "
        << money(account.payments) << ", bakiye " << money(account.balance()) << '\n';
}

} // namespace

bool ByNumber::operator()(const std::string& one, const std::string& other) const {
    const auto key = [](const std::string& text) {
        const bool isNumber = isPlainNumber(text);
        return std::tuple(!isNumber, isNumber ? text.size() : 0, std::string_view(text));
    };
    return key(one) < key(other);
}

TableCounter::TableCounter(Report& report, const TableView& view)
    : report_(report), tally_(report.tables.size()), table_(view.table->name) {
    report.tables.push_back({table_, 0, 0});
    for (std::size_t i = 0; i < view.columns.size(); ++i)
        places_[view.columns[i].name] = i;
}

const Value& TableCounter::at(std::span<const Value> row, const char* column) const {
    static const Value missing;
    const auto found = places_.find(std::string_view(column));
    return found == places_.end() ? missing : row[found->second];
}

Account& TableCounter::accountOf(const Value& number) {
    return report_.accounts[upperTurkish(textOf(number))];
}

void TableCounter::addAmount(std::span<const Value> row) {
    if (table_ == "MUSTKAYIT") {
        Account& account = accountOf(at(row, "HSTNO"));
        std::string name = textOf(at(row, "AD")) + ' ' + textOf(at(row, "SOYAD"));
        if (!account.hasCard || name < account.name) account.name = std::move(name);
        account.hasCard = true;
        return;
    }
    const auto account = [&]() -> Account& { return accountOf(at(row, "MUSTNO")); };
    if (table_ == "URUNAL") {
        const double amount = numberOf(at(row, "ADET")) * numberOf(at(row, "FIYAT"));
        addTo(account().lines, millionths(amount, table_), table_);
    }
    if (table_ == "ISLEMNOTABLO")
        addTo(account().discounts, millionths(numberOf(at(row, "INDIRIM_YTL")), table_), table_);
    if (table_ == "TAKSITODENEN")
        addTo(account().payments, millionths(numberOf(at(row, "ODMIKTAR")), table_), table_);
}

// The rows' prints are added up, because the two files need not hand them out in one order.
void TableCounter::add(std::span<const Value> row) {
    Print print;
    for (const Value& value : row)
        print.take(value);
    TableTally& tally = report_.tables[tally_];
    tally.print += print.sum();
    ++tally.rows;
    addAmount(row);
}

Report readBooks(const std::string& file, const std::vector<TableView>& views) {
    const auto engine = openBooks(store::placeOf(file), std::chrono::seconds(1));
    const store::Inquiry books(*engine);
    Report report;
    for (const TableView& view : views)
        countTable(books, view, report);
    return report;
}

void print(std::ostream& out, const Report& report, Detail detail) {
    for (const TableTally& table : report.tables)
        out << table.name << ": " << table.rows << " satır\n";
    Account total;
    std::size_t withoutCard = 0;
    for (const auto& [number, account] : report.accounts) {
        addTo(total.lines, account.lines, "URUNAL");
        addTo(total.discounts, account.discounts, "ISLEMNOTABLO");
        addTo(total.payments, account.payments, "TAKSITODENEN");
        if (!account.hasCard) ++withoutCard;
        if (detail == Detail::Totals) continue;
        // A terminal obeys control characters; the file's names are a stranger's.
        out << visibleText(number + ' ' + (account.hasCard ? account.name : "(kartı yok)")) << ": ";
        printAccount(out, account);
    }
    if (withoutCard > 0) out << "Kartı olmayan hesap: " << withoutCard << '\n';
    out << "Toplam: ";
    printAccount(out, total);
}

} // namespace veldona::aktar
