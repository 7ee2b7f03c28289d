#include "daybook/shopreckoning.h"

#include <algorithm>
#include <array>
#include <unordered_set>
#include <utility>

#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/engine/alphabet.h"

namespace veldona {

namespace {

using store::Statement;

constexpr int kAccountsOfRange = 64; // a few thousand rows, read before a key is missed

// In the order in which they are watched.
enum Written { PlanAccount, PaymentAccount, LineAccount, HeadSale, LineId, CardId };

std::vector<adodb::WatchedColumn> watchedColumns() {
    return {{"URUNSAT", "MUSTNO"},       {"TAKSITODENEN", "MUSTNO"}, {"URUNAL", "MUSTNO"},
            {"ISLEMNOTABLO", "ISLEMNO"}, {"URUNAL", "ID"},           {"MUSTKAYIT", "ID"}};
}

bool isReserved(std::string_view account) {
    constexpr std::array<std::string_view, 3> reserved = {"G3", "G4", "TI"};
    return std::ranges::any_of(
        reserved, [&](std::string_view each) { return store::Alphabet::turkish().isSame(each, account); });
}

std::string joined(const Statement& row, std::initializer_list<int> columns, std::string_view between) {
    std::string text;
    for (const int column : columns) {
        const std::string part = trim(row.text(column));
        if (!part.empty()) text.append(text.empty() ? "" : between).append(part);
    }
    return text;
}

bool isInOrder(const std::string& one, const std::string& other) {
    return store::Alphabet::turkish().compare(one, other) < 0;
}

} // namespace

ShopReckoning::ShopReckoning()
    : written_(watchedColumns()),
      lines_("URUNAL", "TRH,ISLEMNO,ADET*FIYAT",
             [](const Statement& row) {
                 return SoldLine{monthNumber(row.text(0)).value_or(0), row.whole(1),
                                 StoredAmount::ofColumn(row.number(2)).roundedToKurus()};
             }),
      cards_("MUSTKAYIT", "HSTNO,AD,SOYAD,GSM,EVTEL,ISTEL", [](const Statement& row) {
          return CustomerCard{std::string(row.text(0)), joined(row, {1, 2}, " "),
                              joined(row, {3, 4, 5}, "   ")};
      }) {}

void ShopReckoning::bringUpToDate(adodb::Connection& books) {
    const adodb::OneMoment moment(books);
    takeWrites(books);
    while (readNext(books)) {
    }
    if (!cardsByAccount_) findCards();
}

bool ShopReckoning::readAhead(adodb::Connection& books, const std::function<bool()>& goOn) {
    if (books.inTransaction()) return true;
    const adodb::NoWait noWait(books);
    const adodb::OneMoment moment(books);
    takeWrites(books);
    do {
        if (!readNext(books)) return false;
    } while (goOn());
    return true;
}

void ShopReckoning::takeWrites(adodb::Connection& books) {
    const auto written = written_.take(books);
    if (!written) return forget();
    try {
        take(books, *written);
    } catch (...) { // what was noted is gone
        forget();
        throw;
    }
}

void ShopReckoning::take(adodb::Connection& books, const adodb::RowWatch::Values& written) {
    if (std::ranges::any_of(written, [](const auto& values) { return !values.empty(); })) isWhole_ = false;
    for (const Written table : {PlanAccount, PaymentAccount, LineAccount})
        for (const Value& account : written[table])
            touchAccount(account);
    if (!written[HeadSale].empty()) discounts_.reset();
    std::vector<Value> accounts; // of the sales whose head was written, wherever the head itself belongs
    for (const Value& sale : written[HeadSale])
        if (!sale.isNull())
            books.walk("SELECT MUSTNO FROM URUNSAT WHERE ISLEMNO=" + toText(sale),
                       [&](const Statement& row) { accounts.emplace_back(std::string(row.text(0))); });
    for (const Value& account : accounts)
        touchAccount(account);
    for (const Value& line : written[LineId])
        lines_.touch(line.get<std::int64_t>());
    for (const Value& card : written[CardId])
        cards_.touch(card.get<std::int64_t>());
    if (!written[CardId].empty()) cardsByAccount_.reset();
}

void ShopReckoning::forget() {
    isWhole_ = false;
    ranges_.clear();
    bounds_.clear();
    staleRanges_.reset(0);
    discounts_.reset();
    lines_.forget();
    cards_.forget();
    cardsByAccount_.reset();
}

// Where the engine orders accounts otherwise than this program does, one range holds them all.
void ShopReckoning::layOutAccounts(adodb::Connection& books) {
    bounds_.clear();
    int account = 0;
    books.walk("SELECT HSTNO FROM MUSTKAYIT WHERE HSTNO IS NOT NULL ORDER BY HSTNO",
               [&](const Statement& row) {
                   if (++account % kAccountsOfRange == 0) bounds_.emplace_back(row.text(0));
               });
    const auto again = std::ranges::unique(bounds_, [](const std::string& one, const std::string& other) {
        return store::Alphabet::turkish().isSame(one, other);
    });
    bounds_.erase(again.begin(), again.end());
    if (std::ranges::adjacent_find(bounds_, [](const auto& one, const auto& other) {
            return !isInOrder(one, other);
        }) != bounds_.end())
        bounds_.clear();
    ranges_.resize(bounds_.size() + 2);
    staleRanges_.reset(ranges_.size());
}

void ShopReckoning::touchAccount(const Value& account) {
    if (ranges_.empty()) return;
    if (account.isNull()) return staleRanges_.touch(0);
    const auto range = std::ranges::lower_bound(bounds_, toText(account), isInOrder);
    staleRanges_.touch(static_cast<std::size_t>(range - bounds_.begin()) + 1);
}

AccountRange ShopReckoning::rangeOf(std::size_t part) const {
    if (part == 0) return {.isOfNobody = true};
    AccountRange range;
    if (part > 1) range.above = bounds_[part - 2];
    if (part <= bounds_.size()) range.upTo = bounds_[part - 1];
    return range;
}

bool ShopReckoning::readNext(adodb::Connection& books) {
    if (isWhole_) return false;
    if (cards_.readNext(books) || readNextRange(books) || lines_.readNext(books)) return true;
    isWhole_ = true;
    return false;
}

bool ShopReckoning::readNextRange(adodb::Connection& books) {
    if (ranges_.empty()) layOutAccounts(books);
    const auto part = staleRanges_.next();
    if (!part) return false;
    if (!discounts_) discounts_ = readDiscounts(books);
    ranges_[*part] = arrearsOfRange(books, rangeOf(*part), *discounts_);
    staleRanges_.markRead(*part);
    return true;
}

void ShopReckoning::findCards() {
    cardsByAccount_.emplace();
    cards_.each([this](const CustomerCard& card) {
        if (!isReserved(card.account)) cardsByAccount_->insert_or_assign(lowerTurkish(card.account), &card);
    });
}

const CustomerCard* ShopReckoning::cardOf(const std::string& account) const {
    const auto found = cardsByAccount_->find(lowerTurkish(account));
    return found == cardsByAccount_->end() ? nullptr : found->second;
}

std::vector<MonthFigures> ShopReckoning::months(DateTime today, int count) const {
    std::vector<MonthFigures> rows;
    const int last = monthNumber(today), first = last - count + 1;
    for (int month = first; month <= last; ++month) {
        MonthFigures& row = rows.emplace_back();
        row.first = DateTime::of(month / 12, month % 12 + 1, 1);
        for (const RangeArrears& range : ranges_) {
            const MonthSums::Sums sums = range.months.at(month);
            row.due += sums.due;
            row.received += sums.received;
        }
    }
    std::unordered_set<std::int64_t> counted; // a sale of several lines is one
    lines_.each([&](const SoldLine& line) {
        if (line.month < first || line.month > last) return;
        MonthFigures& row = rows[static_cast<std::size_t>(line.month - first)];
        row.sold += line.sum;
        if (counted.insert(line.sale).second) ++row.sales;
    });
    return rows;
}

AgeGroups ShopReckoning::ages(DateTime today) const {
    AgeGroups ages;
    eachSaleOfCustomers([&](const CustomerCard&, const SaleArrears& sale) {
        for (const OpenInstallment& row : sale.open)
            ages.add(row, today);
    });
    return ages;
}

} // namespace veldona
