#include "daybook/arrears.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "platform/runtime/text.h"
#include "platform/store/dialect/literal.h"
#include "platform/store/engine/alphabet.h"
#include "platform/store/engine/engine.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

using store::Statement;

StoredAmount amountIn(const Statement& row, int column) {
    return StoredAmount::ofColumn(row.number(column)).rounded();
}

// A row without account or number belongs to no sale.
bool hasSale(const Statement& row) {
    return row.storage(0) != Statement::Storage::Null && row.storage(1) != Statement::Storage::Null;
}

// Account numbers are nearly always spelled alike.
bool isSameAccount(std::string_view one, std::string_view other) {
    return one == other || store::Alphabet::turkish().isSame(one, other);
}

// Takes `amount` off what is open on `rows` from the one at `first` on, the latest first. What could not be
// taken is returned.
template <class Row> StoredAmount takeOffEnd(std::vector<Row>& rows, std::size_t first, StoredAmount amount) {
    for (std::size_t i = rows.size(); i > first && amount > StoredAmount{}; --i) {
        const StoredAmount taken = std::min(rows[i - 1].open, amount);
        rows[i - 1].open -= taken;
        amount -= taken;
    }
    return amount;
}

// The installments of one sale, covered one after the other, by day. What is open goes behind the rows that
// there are.
template <class Row> class Coverage {
public:
    Coverage(std::vector<Row>& rows, StoredAmount paid) : rows_(&rows), first_(rows.size()), left_(paid) {}

    // What is open of the next one. An installment below zero takes back from those before it.
    StoredAmount take(StoredAmount amount) {
        planned_ += amount;
        if (amount < StoredAmount{}) {
            left_ += takeOffEnd(*rows_, first_, -amount);
            return {};
        }
        const StoredAmount open = std::max(amount - left_, StoredAmount{});
        left_ = std::max(left_ - amount, StoredAmount{});
        return open;
    }
    [[nodiscard]] StoredAmount planned() const { return planned_; }

private:
    std::vector<Row>* rows_;
    std::size_t first_;
    StoredAmount left_;
    StoredAmount planned_;
};

std::string quoted(const std::string& text) {
    return "'" + replaceAll(text, "'", "''") + "'";
}

// The condition that limits a question to one account or sale.
std::string whereOf(const std::string& account, std::optional<std::int32_t> sale = {}) {
    const std::string text = " WHERE MUSTNO=" + quoted(account);
    return sale ? text + " AND ISLEMNO=" + std::to_string(*sale) : text;
}

std::string whereOf(const AccountRange& range) {
    if (range.isOfNobody) return " WHERE MUSTNO IS NULL";
    std::string text;
    if (range.above) text += " WHERE MUSTNO>" + quoted(*range.above);
    if (range.upTo) text += (text.empty() ? " WHERE MUSTNO<=" : " AND MUSTNO<=") + quoted(*range.upTo);
    return text;
}

struct Paid {
    std::string account;
    StoredAmount sum;
    std::optional<ReceivedPayment> last;
};

class Payments {
public:
    Payments(adodb::Connection& books, const std::string& where, MonthSums* months) : months_(months) {
        // The last payment comes first, so that of the others no date is read.
        books.walk("SELECT MUSTNO,ISLEMNO,ODTRH,ODMIKTAR FROM TAKSITODENEN" + where +
                       " ORDER BY MUSTNO DESC,ISLEMNO DESC,ODTRH DESC,ODMIKTAR DESC,ID DESC",
                   [this](const Statement& row) { read(row); });
    }

    // Nothing where no payment of the sale stands in the books.
    [[nodiscard]] const Paid* find(std::string_view account, std::int64_t sale) const {
        const auto found = bySale_.find(sale);
        if (found == bySale_.end()) return nullptr;
        for (const Paid& paid : found->second)
            if (isSameAccount(paid.account, account)) return &paid;
        return nullptr;
    }

private:
    void read(const Statement& row) {
        const StoredAmount amount = amountIn(row, 3);
        if (months_) months_->add(row.text(2), &MonthSums::Sums::received, amount);
        if (!hasSale(row)) return;
        const std::string_view account = row.text(0);
        if (!now_ || row.whole(1) != number_ || !isSameAccount(now_->account, account)) {
            number_ = row.whole(1);
            now_ = &bySale_[number_].emplace_back(Paid{std::string(account), {}, {}});
            if (const auto at = store::dateOfStored(row.text(2))) now_->last = ReceivedPayment{*at, amount};
        }
        now_->sum += amount;
    }

    MonthSums* months_;
    std::int64_t number_ = 0;
    Paid* now_ = nullptr;
    std::unordered_map<std::int64_t, std::vector<Paid>> bySale_;
};

// A sale as the schedule's scan leaves it.
struct PlannedSale {
    SaleArrears arrears;
    StoredAmount planned;
    DateTime firstDue;
};

class Plans {
public:
    Plans(adodb::Connection& books, const std::string& where, const Payments& payments, MonthSums* months)
        : payments_(payments), months_(months) {
        books.walk("SELECT MUSTNO,ISLEMNO,ODTRH,ODMIKTAR FROM URUNSAT" + where +
                       " ORDER BY MUSTNO,ISLEMNO,ODTRH,ODMIKTAR,ID",
                   [this](const Statement& row) { read(row); });
        finish();
    }
    std::vector<PlannedSale> sales;

private:
    // Without a day nobody can be behind.
    void read(const Statement& row) {
        const StoredAmount amount = amountIn(row, 3);
        if (months_) months_->add(row.text(2), &MonthSums::Sums::due, amount);
        if (!hasSale(row) || row.storage(2) == Statement::Storage::Null) return;
        const std::string_view account = row.text(0);
        if (!coverage_ || row.whole(1) != number_ || !isSameAccount(now_.arrears.account, account))
            begin(row);
        const StoredAmount open = coverage_->take(amount);
        if (open <= StoredAmount{}) return;
        if (const auto due = store::dateOfStored(row.text(2)))
            now_.arrears.open.push_back({due->date(), open});
    }
    void begin(const Statement& row) {
        finish();
        number_ = row.whole(1);
        now_ = {};
        now_.arrears.account = row.text(0);
        now_.arrears.sale = static_cast<std::int32_t>(number_);
        now_.firstDue = store::dateOfStored(row.text(2)).value_or(DateTime{});
        const Paid* paid = payments_.find(now_.arrears.account, number_);
        if (paid) now_.arrears.lastPayment = paid->last;
        coverage_.emplace(now_.arrears.open, paid ? paid->sum : StoredAmount{});
    }
    void finish() {
        if (!coverage_) return;
        now_.planned = coverage_->planned();
        if (!now_.arrears.open.empty()) sales.push_back(std::move(now_));
    }

    const Payments& payments_;
    MonthSums* months_;
    std::int64_t number_ = 0;
    PlannedSale now_;
    std::optional<Coverage<OpenInstallment>> coverage_;
};

// What the lines of a sale come to, each shown with two decimals; nothing where it has none.
std::optional<StoredAmount> linesOf(adodb::Connection& books, const std::string& account, std::int32_t sale) {
    std::optional<StoredAmount> sum;
    books.walk("SELECT ADET*FIYAT FROM URUNAL" + whereOf(account, sale), [&](const Statement& row) {
        sum = sum.value_or(StoredAmount{}) + StoredAmount::ofColumn(row.number(0)).roundedToKurus();
    });
    return sum;
}

// Where a number stands twice, the smallest one.
SaleDiscounts discountsWhere(adodb::Connection& books, const std::string& condition) {
    SaleDiscounts bySale;
    books.walk("SELECT ISLEMNO,INDIRIM_YTL FROM ISLEMNOTABLO" + condition + " ORDER BY INDIRIM_YTL,ISLEMNO",
               [&](const Statement& row) { bySale.emplace(row.whole(0), amountIn(row, 1)); });
    return bySale;
}

// How much of the end of a plan the sale's discount takes away.
StoredAmount discountOfPlan(adodb::Connection& books, const SaleDiscounts& discounts,
                            const std::string& account, std::int32_t sale, StoredAmount planned) {
    const auto discount = discounts.find(sale);
    if (discount == discounts.end()) return {};
    const auto lines = linesOf(books, account, sale);
    if (!lines) return {};
    return std::clamp(planned - (*lines - discount->second), StoredAmount{}, discount->second);
}

// Only a payment on a later day than the sale's is one.
bool isNeverPaid(adodb::Connection& books, const PlannedSale& sale) {
    if (!sale.arrears.lastPayment) return true;
    const DateTime paidOn = sale.arrears.lastPayment->at.date();
    if (paidOn > sale.firstDue) return false;
    bool isNever = false;
    books.walk("SELECT TRH FROM ISLEMNOTABLO WHERE ISLEMNO=" + std::to_string(sale.arrears.sale),
               [&](const Statement& row) {
                   if (row.storage(0) == Statement::Storage::Null) return;
                   const auto soldAt = store::dateOfStored(row.text(0));
                   isNever = soldAt && paidOn <= soldAt->date();
               });
    return isNever;
}

// What is no claim by itself goes to the next installment, and at the end to nobody.
void dropFractions(std::vector<OpenInstallment>& open) {
    StoredAmount fraction;
    for (OpenInstallment& row : open) {
        row.open += fraction;
        fraction = row.open < kLeastClaim ? row.open : StoredAmount{};
    }
    std::erase_if(open, [](const OpenInstallment& row) { return row.open < kLeastClaim; });
}

std::vector<SaleArrears> arrearsWhere(adodb::Connection& books, const std::string& where,
                                      const SaleDiscounts& discounts, MonthSums* months) {
    const Payments payments(books, where, months);
    Plans plans(books, where, payments, months);
    std::vector<SaleArrears> all;
    for (PlannedSale& sale : plans.sales) {
        std::vector<OpenInstallment>& open = sale.arrears.open;
        static_cast<void>(takeOffEnd(
            open, 0,
            discountOfPlan(books, discounts, sale.arrears.account, sale.arrears.sale, sale.planned)));
        dropFractions(open);
        if (open.empty()) continue;
        open.shrink_to_fit(); // they are kept
        sale.arrears.isNeverPaid = isNeverPaid(books, sale);
        all.push_back(std::move(sale.arrears));
    }
    return all;
}

std::vector<SaleArrears> arrearsWhere(adodb::Connection& books, const std::string& where) {
    return arrearsWhere(books, where, discountsWhere(books, where + " AND INDIRIM_YTL>0"), nullptr);
}

} // namespace

StoredAmount SaleArrears::openBetween(DateTime first, DateTime last) const {
    StoredAmount sum;
    for (const OpenInstallment& row : open)
        if (row.due >= first && row.due <= last) sum += row.open;
    return sum;
}

StoredAmount SaleArrears::overdue(DateTime today) const {
    return openBetween(DateTime{}, today.plusDays(-1));
}

int SaleArrears::overdueCount(DateTime today) const {
    return static_cast<int>(
        std::ranges::count_if(open, [&](const OpenInstallment& row) { return row.due < today; }));
}

std::optional<DateTime> SaleArrears::overdueSince(DateTime today) const {
    if (open.empty() || open.front().due >= today) return std::nullopt;
    return open.front().due;
}

std::vector<SaleArrears> arrearsOfAccount(adodb::Connection& books, const std::string& account) {
    return arrearsWhere(books, whereOf(account));
}

std::optional<SaleArrears> arrearsOfSale(adodb::Connection& books, const std::string& account,
                                         std::int32_t sale) {
    std::vector<SaleArrears> found = arrearsWhere(books, whereOf(account, sale));
    if (found.empty()) return std::nullopt;
    return std::move(found.front());
}

SaleDiscounts readDiscounts(adodb::Connection& books) {
    return discountsWhere(books, " WHERE INDIRIM_YTL>0");
}

RangeArrears arrearsOfRange(adodb::Connection& books, const AccountRange& range,
                            const SaleDiscounts& discounts) {
    RangeArrears read;
    read.sales = arrearsWhere(books, whereOf(range), discounts, &read.months);
    return read;
}

std::vector<Installment> installmentsOf(adodb::Connection& books, const std::string& account,
                                        std::int32_t sale) {
    const std::string where = whereOf(account, sale);
    const Payments payments(books, where, nullptr);
    const Paid* paid = payments.find(account, sale);
    std::vector<Installment> rows;
    Coverage<Installment> coverage(rows, paid ? paid->sum : StoredAmount{});
    books.walk("SELECT ID,ODTRH,ODMIKTAR FROM URUNSAT" + where + " ORDER BY ODTRH,ODMIKTAR,ID",
               [&](const Statement& row) {
                   if (row.storage(1) == Statement::Storage::Null) return;
                   const auto due = store::dateOfStored(row.text(1));
                   const StoredAmount amount = amountIn(row, 2);
                   const StoredAmount open = coverage.take(amount);
                   if (due) rows.push_back({row.whole(0), due->date(), amount, open});
               });
    const SaleDiscounts discounts = discountsWhere(books, where + " AND INDIRIM_YTL>0");
    static_cast<void>(
        takeOffEnd(rows, 0, discountOfPlan(books, discounts, account, sale, coverage.planned())));
    return rows;
}

} // namespace veldona
