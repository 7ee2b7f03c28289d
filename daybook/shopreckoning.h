// What the call list and the charts are made of, kept in memory: each sale on which something is open, what
// was due, came in and was sold in each month, and whom to call.
//
// It is read in slices, accounts by their order and other rows by their counters. A row that any till wrote
// has its slice read anew and no other; where it can't be told what was written, all are. So it can be read
// ahead, slice by slice, while nobody waits.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "daybook/agegroups.h"
#include "daybook/arrears.h"
#include "daybook/idslices.h"
#include "platform/store/faces/rowwatch.h"

namespace veldona {

struct CustomerCard {
    std::string account; // MUSTKAYIT.HSTNO
    std::string name;
    std::string telephones;
};

struct MonthFigures {
    DateTime first;        // its first day
    StoredAmount due;      // of the whole month, down payments included
    StoredAmount received; // payments of whatever installment, down payments included
    StoredAmount sold;     // the lines, before a discount
    int sales = 0;
};

class ShopReckoning {
public:
    ShopReckoning();

    // As the books stand at one moment. Raises what the store raises.
    void bringUpToDate(adodb::Connection& books);
    // The same bit by bit, for as long as `goOn` says so and at least for one slice; no lock is waited for.
    // False where nothing is left to be read.
    bool readAhead(adodb::Connection& books, const std::function<bool()>& goOn);

    // Nothing of it is known any more.
    void forget();

    // What follows is as the books stood then. Sales by account and number, of those who can be called: not
    // of the reserved accounts, nor of one without a card, as in the overdue report.
    template <class Visit> void eachSaleOfCustomers(const Visit& visit) const {
        const SaleArrears* before = nullptr;
        const CustomerCard* card = nullptr;
        for (const RangeArrears& range : ranges_)
            for (const SaleArrears& sale : range.sales) {
                if (!before || before->account != sale.account) card = cardOf(sale.account);
                before = &sale;
                if (card) visit(*card, sale);
            }
    }
    // What is overdue of them.
    [[nodiscard]] AgeGroups ages(DateTime today) const;
    // The last one is the month of today.
    [[nodiscard]] std::vector<MonthFigures> months(DateTime today, int count) const;

private:
    struct SoldLine {
        int month = 0; // 0: of no day
        std::int64_t sale = 0;
        StoredAmount sum;
    };
    void takeWrites(adodb::Connection& books);
    void take(adodb::Connection& books, const adodb::RowWatch::Values& written);
    void layOutAccounts(adodb::Connection& books);
    void touchAccount(const Value& account);
    [[nodiscard]] AccountRange rangeOf(std::size_t part) const;
    bool readNext(adodb::Connection& books);
    bool readNextRange(adodb::Connection& books);
    void findCards();
    [[nodiscard]] const CustomerCard* cardOf(const std::string& account) const; // nullptr: none

    adodb::RowWatch written_;
    bool isWhole_ = false; // nothing is stale

    std::vector<std::string> bounds_;  // the last account of each range but those of nobody and the last one
    std::vector<RangeArrears> ranges_; // the first one that of nobody
    StaleParts staleRanges_;
    std::optional<SaleDiscounts> discounts_;
    IdSlices<SoldLine> lines_;
    IdSlices<CustomerCard> cards_;
    // In small letters; nothing while cards are read.
    std::optional<std::unordered_map<std::string, const CustomerCard*>> cardsByAccount_;
};

} // namespace veldona
