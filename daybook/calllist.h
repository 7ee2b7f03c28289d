// Whom to call today: one row for each customer with anything overdue or due today, and the day's figures.
//
// Who can't be called is left out everywhere.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "daybook/callnotes.h"
#include "daybook/shopreckoning.h"

namespace veldona {

struct CallRow {
    std::string account;
    std::string name;
    std::string telephones;
    StoredAmount overdue;
    int overdueCount = 0;
    std::optional<DateTime> overdueSince;
    int daysOverdue = 0;
    StoredAmount dueToday;
    bool isNeverPaid = false;    // of a sale with something overdue
    std::int32_t oldestSale = 0; // whose overdue installment is the oldest, else the one due today
    std::optional<ReceivedPayment> lastPayment;
    std::optional<LastCall> call;
    std::string plain; // all that is searched, in plain letters
};

struct CashReceived {
    std::string box; // its name; empty where none was chosen
    StoredAmount amount;
};

struct CallList {
    DateTime today;
    DateTime weekEnd; // the last of seven days that begin today
    std::vector<CallRow> rows;
    StoredAmount overdue;
    StoredAmount dueToday;
    StoredAmount expected;              // in the seven days
    std::vector<CashReceived> received; // today, by cash box
};

// Of what `shop` holds, which is brought up to date. Raises what the store raises.
[[nodiscard]] CallList readCallList(adodb::Connection& books, ShopReckoning& shop, DateTime today);

// The notes anew, in place.
void readCalls(adodb::Connection& books, CallList& list);

} // namespace veldona
