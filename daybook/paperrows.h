// What the papers of the day's work have in common: the shop's letterhead, a customer's name and address,
// amounts.
#pragma once

#include <optional>
#include <string>

#include "platform/report/rows.h"
#include "platform/runtime/storedamount.h"

namespace veldona {

struct Session;

// The inside of a text between apostrophes.
[[nodiscard]] std::string quoted(const std::string& text);
// To the kuruş, as the screens show it; Null is 0.
[[nodiscard]] StoredAmount amountOf(const Value& column);

// The one row of FIRMABILGISI as "firma".
[[nodiscard]] report::DataSet letterhead(Session& session);

struct Party {
    std::string account;
    std::string name;
    std::string telephones; // those that the card has, parted by commas
    std::string address;    // of the home; where there is none, of the work
};
// Nothing where nobody has the account.
[[nodiscard]] std::optional<Party> readParty(Session& session, const std::string& account);

} // namespace veldona
