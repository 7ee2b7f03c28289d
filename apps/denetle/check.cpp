#include "apps/denetle/check.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

#include "apps/denetle/accounts.h"
#include "core/salebalance.h"
#include "platform/runtime/storedamount.h"

namespace veldona::denetle {
namespace {

// Less is the fraction of a share, and no difference.
constexpr StoredAmount kHalfKurus = StoredAmount::ofLira(0.005);

bool isNear(StoredAmount one, StoredAmount other) {
    return one - other < kHalfKurus && other - one < kHalfKurus;
}

struct Tally {
    std::int64_t rows = 0;
    StoredAmount sum;
};

struct Sale {
    std::string account;
    StoredAmount total;
    SaleBalance balance; // without its payments, which come as sums
    int headers = 0;
    Tally lines, schedule, payments;

    // What is owed, as the main screen has it: the lines decide, and the total only where there are none.
    [[nodiscard]] StoredAmount debt() const { return lines.rows == 0 ? total : balance.debt(); }
    // Whether an amount is the debt, or is it but for the fractions that its lines carry.
    [[nodiscard]] bool isDebt(StoredAmount amount) const {
        return isNear(amount, debt()) || (lines.rows != 0 && isNear(amount, lines.sum - balance.discount));
    }
};

// Rows of one sale under one account, in a table of which the sale is the parent.
struct Child {
    const char* sql; // ISLEMNO, MUSTNO, rows, sum
    Tally Sale::*tally;
    Fault orphaned;
};

// The long indexes hold what the two sums need, so that no row of these tables is read.
constexpr Child kChildren[] = {
    {"SELECT ISLEMNO, MUSTNO, 1, ADET * FIYAT FROM URUNAL", &Sale::lines, Fault::LinesWithoutHeader},
    {"SELECT ISLEMNO, MUSTNO, count(*), sum(ODMIKTAR) FROM URUNSAT GROUP BY MUSTNO, ISLEMNO", &Sale::schedule,
     Fault::ScheduleWithoutHeader},
    {"SELECT ISLEMNO, MUSTNO, count(*), sum(ODMIKTAR) FROM TAKSITODENEN GROUP BY MUSTNO, ISLEMNO",
     &Sale::payments, Fault::PaymentsWithoutSale},
};

class Check {
public:
    explicit Check(store::Engine& books) : books_(books), accounts_(books_) {}

    Findings run() {
        findings_.customers = findings_.rows = accounts_.cards();
        readHeaders();
        for (const Child& child : kChildren)
            readChildren(child);
        findings_.sales = static_cast<std::int64_t>(sales_.size());
        for (const auto& [number, sale] : sales_)
            judge(number, sale);
        judgeCards();
        sortByAccount();
        judgeStock();
        return std::move(findings_);
    }

private:
    void add(Fault fault, const std::string& account, std::string subject, double expected = 0,
             double found = 0) {
        findings_.all.push_back({fault, account, std::move(subject), expected, found});
    }

    // Of two headers the first by ID is the sale; the screens find that one.
    void readHeaders() {
        const auto rows =
            books_.prepare("SELECT ISLEMNO, MUSTNO, TOPBORC, INDIRIM_YTL FROM ISLEMNOTABLO ORDER BY ID");
        while (rows->step()) {
            ++findings_.rows;
            Sale& sale = sales_[rows->whole(0)];
            std::string account(rows->text(1));
            if (!accounts_.isKnown(account)) strangers_[account] += 1;
            if (++sale.headers > 1) continue;
            sale.account = std::move(account);
            sale.total = StoredAmount::ofColumn(rows->number(2));
            sale.balance.setDiscount(StoredAmount::ofColumn(rows->number(3)));
        }
    }

    void readChildren(const Child& child) {
        std::map<std::pair<std::int64_t, std::string>, Tally> orphans, misplaced;
        const auto rows = books_.prepare(child.sql);
        while (rows->step()) {
            const std::int64_t number = rows->whole(0);
            const std::string account(rows->text(1));
            const auto sum = StoredAmount::ofColumn(rows->number(3));
            const Tally read{rows->whole(2), sum};
            findings_.rows += read.rows;
            const auto into = [&](Tally& tally) {
                tally.rows += read.rows;
                tally.sum += read.sum;
            };
            if (!accounts_.isKnown(account)) strangers_[account] += read.rows;
            const auto sale = sales_.find(number);
            if (sale == sales_.end()) {
                into(orphans[{number, account}]);
                continue;
            }
            into(sale->second.*child.tally);
            if (child.tally == &Sale::lines) sale->second.balance.addLine(sum);
            if (!accounts_.isSame(sale->second.account, account)) into(misplaced[{number, account}]);
        }
        for (const auto& [key, tally] : orphans)
            add(child.orphaned, key.second, std::to_string(key.first), 0, tally.sum.lira());
        for (const auto& [key, tally] : misplaced)
            add(Fault::RowsOfAnotherAccount, key.second, std::to_string(key.first), 0,
                static_cast<double>(tally.rows));
    }

    void judge(std::int64_t number, const Sale& sale) {
        const std::string subject = std::to_string(number);
        const StoredAmount debt = sale.debt();
        const auto note = [&](Fault fault, StoredAmount expected, StoredAmount found) {
            add(fault, sale.account, subject, expected.lira(), found.lira());
        };
        if (sale.headers > 1) add(Fault::TwoHeaders, sale.account, subject, 1, sale.headers);
        if (sale.lines.rows == 0) add(Fault::HeaderWithoutLines, sale.account, subject);
        if (!sale.isDebt(sale.schedule.sum)) note(Fault::ScheduleDiffers, debt, sale.schedule.sum);
        if (!sale.isDebt(sale.total)) note(Fault::LinesDiffer, sale.total, debt);
        if (sale.payments.sum - debt >= kHalfKurus)
            note(Fault::NegativeRemainder, {}, debt - sale.payments.sum);
    }

    void judgeCards() {
        for (const auto& [account, rows] : strangers_)
            add(Fault::CustomerMissing, account, "", 0, static_cast<double>(rows));
        for (const auto& [account, cards] : accounts_.numbers())
            if (cards > 1) add(Fault::TwoCards, account, "", 1, cards);
    }

    // Account numbers are texts that mostly are numbers: 2 comes before 10, and both before G3.
    void sortByAccount() {
        const auto key = [](const Finding& finding) {
            char* end = nullptr;
            const double number = std::strtod(finding.account.c_str(), &end);
            const bool isNumber = end != finding.account.c_str() && *end == '\0';
            return std::tuple(!isNumber, isNumber ? number : 0, std::string_view(finding.account),
                              std::atoll(finding.subject.c_str()), finding.fault);
        };
        std::sort(findings_.all.begin(), findings_.all.end(),
                  [&](const Finding& a, const Finding& b) { return key(a) < key(b); });
    }

    void judgeStock() {
        const auto rows = books_.prepare(
            "SELECT p.URKOD, p.TOPLAM_ALINAN, p.TOPLAM_SATILAN, p.KALAN, NZ(u.SATILAN, 0) "
            "FROM URUNTANITIM p LEFT JOIN (SELECT URKOD, sum(ADET) AS SATILAN FROM URUNAL GROUP BY URKOD) u "
            "ON u.URKOD = p.URKOD ORDER BY p.ID");
        while (rows->step()) {
            ++findings_.rows;
            const std::string code(rows->text(0));
            const double sold = rows->number(2);
            const double left = rows->number(1) - sold;
            if (rows->number(4) != sold) add(Fault::StockDiffersSold, "", code, rows->number(4), sold);
            if (rows->number(3) != left) add(Fault::StockDiffersLeft, "", code, left, rows->number(3));
        }
    }

    store::Inquiry books_;
    Accounts accounts_;
    std::map<std::int64_t, Sale> sales_;
    std::map<std::string, std::int64_t> strangers_; // numbers without a card, and the rows that carry them
    Findings findings_;
};

} // namespace

Findings checkBooks(store::Engine& books) {
    books.beginReading();
    Findings findings = Check(books).run();
    books.commit();
    return findings;
}

Measure measureOf(Fault fault) {
    switch (fault) {
    case Fault::HeaderWithoutLines:
        return Measure::None;
    case Fault::RowsOfAnotherAccount:
    case Fault::TwoHeaders:
    case Fault::CustomerMissing:
    case Fault::TwoCards:
    case Fault::StockDiffersSold:
    case Fault::StockDiffersLeft:
        return Measure::Count;
    case Fault::LinesWithoutHeader:
    case Fault::ScheduleWithoutHeader:
    case Fault::PaymentsWithoutSale:
    case Fault::ScheduleDiffers:
    case Fault::LinesDiffer:
    case Fault::NegativeRemainder:
        break;
    }
    return Measure::Amount;
}

} // namespace veldona::denetle
