// What a customer owes on each sale: its lines less its discount less its payments.
//
// Each row counts to the kuruş, as the ledger lists it. The ledger itself sums the texts of its lists, as is
// given: a payment that it listed counts there until the next load, also where its row could not be written,
// and rows of the account in another spelling do not. On sound books both say the same (ledger_test).
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "platform/runtime/storedamount.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

struct SaleBalance {
    std::int64_t lineCount = 0;
    StoredAmount lines, discount, paid;

    void addLine(StoredAmount amount);
    void setDiscount(StoredAmount amount) { discount = amount.roundedToKurus(); }
    void addPayment(StoredAmount amount) { paid += amount.roundedToKurus(); }
    SaleBalance& operator+=(const SaleBalance& other);

    [[nodiscard]] StoredAmount debt() const { return lines - discount; }
    [[nodiscard]] StoredAmount remaining() const { return debt() - paid; }
};

// Of each sale of the account that has lines or payments, by number. A header without lines takes no discount
// off; of two headers the first one counts, which is the one that the screens find.
[[nodiscard]] std::map<std::int32_t, SaleBalance> balancesOf(adodb::Connection& books,
                                                             const std::string& account);

} // namespace veldona
