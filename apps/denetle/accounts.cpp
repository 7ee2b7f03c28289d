#include "apps/denetle/accounts.h"

#include <algorithm>

namespace veldona::denetle {
namespace {

bool isPlainNumber(const std::string& account) {
    return account.find_first_not_of("0123456789") == std::string::npos;
}

} // namespace

Accounts::Accounts(store::Engine& books) : compare_(books.prepare("SELECT ?1 = ?2 COLLATE TURKISH")) {
    const auto cards = books.prepare("SELECT HSTNO FROM MUSTKAYIT");
    while (cards->step()) {
        ++numbers_[std::string(cards->text(0))];
        ++cards_;
    }
}

bool Accounts::isSame(const std::string& one, const std::string& other) {
    if (one == other) return true;
    if (isPlainNumber(one) && isPlainNumber(other)) return false; // the alphabet has no say in these
    compare_->bind(1, one);
    compare_->bind(2, other);
    const bool same = compare_->step() && compare_->whole(0) != 0;
    compare_->reset();
    return same;
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
