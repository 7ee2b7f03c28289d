#include "apps/denetle/accounts.h"

#include <algorithm>

#include "platform/store/engine/alphabet.h"

namespace veldona::denetle {

Accounts::Accounts(const store::Inquiry& books) {
    const auto cards = books.prepare("SELECT HSTNO FROM MUSTKAYIT");
    while (cards->step()) {
        ++numbers_[std::string(cards->text(0))];
        ++cards_;
    }
}

bool Accounts::isSame(const std::string& one, const std::string& other) {
    return store::Alphabet::turkish().isSame(one, other);
}

// Nearly every number is found letter by letter; the few others may differ by a capital.
bool Accounts::isKnown(const std::string& account) {
    if (numbers_.contains(account)) return true;
    const auto [answer, isNew] = askedFor_.try_emplace(account, false);
    if (isNew) {
        answer->second = std::any_of(numbers_.begin(), numbers_.end(),
                                     [&](const auto& known) { return isSame(known.first, account); });
    }
    return answer->second;
}

} // namespace veldona::denetle
