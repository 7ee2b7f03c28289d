#include "daybook/shopfigures.h"

#include <charconv>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>

#include "platform/runtime/text.h"
#include "platform/store/engine/engine.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

using store::Statement;

class Months {
public:
    Months(DateTime today, int count) {
        const DateTime current = DateTime::of(today.year(), today.month(), 1);
        for (int i = count - 1; i >= 0; --i)
            rows_.push_back({addMonths(current, -i), {}, {}, {}, 0});
        firstMonth_ = numberOf(rows_.front().first.year(), rows_.front().first.month());
    }

    // The month of a stored date ("2026-11-22 …"), which is not read further; nullptr: none of these.
    [[nodiscard]] MonthFigures* of(std::string_view stored) {
        int year = 0, month = 0;
        if (stored.size() < 7 || !readNumber(stored.substr(0, 4), year) ||
            !readNumber(stored.substr(5, 2), month))
            return nullptr;
        const int place = numberOf(year, month) - firstMonth_;
        if (place < 0 || place >= static_cast<int>(rows_.size())) return nullptr;
        return &rows_[static_cast<std::size_t>(place)];
    }
    // The condition that leaves other months out.
    [[nodiscard]] std::string where(const std::string& column) const {
        const DateTime end = addMonths(rows_.back().first, 1);
        return " WHERE " + column + ">=" + literal(rows_.front().first) + " AND " + column + "<" +
               literal(end);
    }
    [[nodiscard]] std::vector<MonthFigures> take() { return std::move(rows_); }

private:
    [[nodiscard]] static int numberOf(int year, int month) { return year * 12 + month; }
    [[nodiscard]] static bool readNumber(std::string_view digits, int& number) {
        const auto [end, failed] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
        return failed == std::errc{} && end == digits.data() + digits.size();
    }
    [[nodiscard]] static std::string literal(DateTime day) {
        return "#" + std::to_string(day.month()) + "/" + std::to_string(day.day()) + "/" +
               std::to_string(day.year()) + "#";
    }

    std::vector<MonthFigures> rows_;
    int firstMonth_ = 0;
};

void addSums(adodb::Connection& books, Months& months, const std::string& table,
             StoredAmount MonthFigures::*sum) {
    books.walk("SELECT ODTRH,ODMIKTAR FROM " + table + months.where("ODTRH"), [&](const Statement& row) {
        if (MonthFigures* month = months.of(row.text(0)))
            month->*sum += StoredAmount::ofColumn(row.number(1)).rounded();
    });
}

void addSales(adodb::Connection& books, Months& months) {
    std::set<std::int64_t> counted; // a sale of several lines is one
    books.walk("SELECT TRH,ADET*FIYAT,ISLEMNO FROM URUNAL" + months.where("TRH"), [&](const Statement& row) {
        MonthFigures* month = months.of(row.text(0));
        if (!month) return;
        month->sold += StoredAmount::ofColumn(row.number(1)).roundedToKurus();
        if (counted.insert(row.whole(2)).second) ++month->sales;
    });
}

// Nobody can be called where there is no card, and the reserved accounts are no customers: as in the call
// list.
std::unordered_set<std::string> customersOf(adodb::Connection& books) {
    std::unordered_set<std::string> accounts;
    books.walk("SELECT HSTNO FROM MUSTKAYIT WHERE HSTNO NOT IN ('G3','G4','TI')",
               [&](const Statement& row) { accounts.insert(lowerTurkish(row.text(0))); });
    return accounts;
}

} // namespace

std::vector<MonthFigures> readMonths(adodb::Connection& books, DateTime today, int months) {
    Months rows(today, months);
    addSums(books, rows, "URUNSAT", &MonthFigures::due);
    addSums(books, rows, "TAKSITODENEN", &MonthFigures::received);
    addSales(books, rows);
    return rows.take();
}

AgeGroups readAges(adodb::Connection& books, DateTime today) {
    const std::unordered_set<std::string> customers = customersOf(books);
    AgeGroups ages;
    for (const SaleArrears& sale : arrearsOfAll(books, today)) {
        if (!customers.contains(lowerTurkish(sale.account))) continue;
        for (const OpenInstallment& row : sale.open)
            ages.add(row, today);
    }
    return ages;
}

} // namespace veldona
