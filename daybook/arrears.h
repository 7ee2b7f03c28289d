// How far each sale is behind its plan: which installments its payments cover, and what is open, by day.
//
// The payments of a sale are one sum, whatever their days, and cover its installments in the order of their
// days; a down payment counts on both sides, as it stands in both tables. A discount is not paid: it takes
// away the end of the plan, as far as the plan still stands above what is owed (the lines less the discount),
// so that a plan that was made of the net amount keeps all its rows. Less than half a kuruş is no claim.
//
// Numbers are exact: each row counts as a whole number of stored units. The sales of a range of accounts are
// read in two scans.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "daybook/monthsums.h"
#include "platform/runtime/datetime.h"
#include "platform/runtime/storedamount.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

// What an amount must reach to be one: half a kuruş, which is shown as 0,01.
inline constexpr StoredAmount kLeastClaim = StoredAmount::ofLira(0.005);

struct OpenInstallment {
    DateTime due; // a day
    StoredAmount open;
};

struct ReceivedPayment {
    DateTime at;
    StoredAmount amount;
};

// One sale on which something is open.
struct SaleArrears {
    std::string account; // as the plan's rows carry it
    std::int32_t sale = 0;
    std::vector<OpenInstallment> open; // in the order of their days; the first may be paid in part
    std::optional<ReceivedPayment> lastPayment;
    bool isNeverPaid = false; // since the day of the sale: a down payment is none

    [[nodiscard]] bool isOverdue(DateTime today) const { return open.front().due < today; }

    // What is open of the installments from `first` to `last`, both included.
    [[nodiscard]] StoredAmount openBetween(DateTime first, DateTime last) const;
    // Of those that fell due before `today`.
    [[nodiscard]] StoredAmount overdue(DateTime today) const;
    [[nodiscard]] int overdueCount(DateTime today) const;
    [[nodiscard]] std::optional<DateTime> overdueSince(DateTime today) const;
};

// By account and number. Raises what the store raises, as do those below.
[[nodiscard]] std::vector<SaleArrears> arrearsOfAccount(adodb::Connection& books, const std::string& account);
[[nodiscard]] std::optional<SaleArrears> arrearsOfSale(adodb::Connection& books, const std::string& account,
                                                       std::int32_t sale);

// The discount of each sale that has one.
using SaleDiscounts = std::unordered_map<std::int64_t, StoredAmount>;
[[nodiscard]] SaleDiscounts readDiscounts(adodb::Connection& books);

// Accounts that follow one another in the order of the books: those above `above` up to and with `upTo`, or
// the rows that name none.
struct AccountRange {
    std::optional<std::string> above{}, upTo{}; // empty: from the first, to the last
    bool isOfNobody = false;
};

struct RangeArrears {
    std::vector<SaleArrears> sales; // by account and number
    MonthSums months;               // of all rows of the range, also of those that belong to no sale
};
[[nodiscard]] RangeArrears arrearsOfRange(adodb::Connection& books, const AccountRange& range,
                                          const SaleDiscounts& discounts);

struct Installment {
    std::int64_t id = 0; // URUNSAT.ID
    DateTime due;
    StoredAmount amount;
    StoredAmount open; // more than `amount` only on the first one, where more was given back than was paid
    [[nodiscard]] bool isCovered() const { return open < kLeastClaim; }
};

// Every installment of one sale in the order in which payments cover them.
[[nodiscard]] std::vector<Installment> installmentsOf(adodb::Connection& books, const std::string& account,
                                                      std::int32_t sale);

} // namespace veldona
