#include "daybook/calllist.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_map>

#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/engine/alphabet.h"
#include "platform/store/engine/engine.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

using store::Statement;

constexpr int kDaysOfWeek = 7;

// Accounts by their numbers, in whatever spelling.
class AccountPlaces {
public:
    // The place of the account, `next` where it is new.
    std::size_t placeOf(std::string_view account, std::size_t next) {
        return places_.try_emplace(lowerTurkish(account), next).first->second;
    }
    [[nodiscard]] std::optional<std::size_t> find(std::string_view account) const {
        const auto found = places_.find(lowerTurkish(account));
        return found == places_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::unordered_map<std::string, std::size_t> places_;
};

// A customer's sales as one row.
struct Gathered {
    CallRow row;
    StoredAmount expected;
    std::optional<DateTime> oldestDue;
};

void add(Gathered& customer, const SaleArrears& sale, const CallList& list) {
    CallRow& row = customer.row;
    row.overdue += sale.overdue(list.today);
    row.overdueCount += sale.overdueCount(list.today);
    row.dueToday += sale.openBetween(list.today, list.today);
    row.isNeverPaid |= sale.isNeverPaid && sale.isOverdue(list.today);
    customer.expected += sale.openBetween(list.today, list.weekEnd);
    if (!customer.oldestDue || sale.open.front().due < *customer.oldestDue) {
        customer.oldestDue = sale.open.front().due;
        row.oldestSale = sale.sale;
    }
    if (sale.lastPayment && (!row.lastPayment || sale.lastPayment->at > row.lastPayment->at))
        row.lastPayment = sale.lastPayment;
}

std::vector<Gathered> gather(const ShopReckoning& shop, const CallList& list) {
    std::vector<Gathered> customers;
    const CustomerCard* before = nullptr;
    shop.eachSaleOfCustomers([&](const CustomerCard& card, const SaleArrears& sale) {
        if (before != &card) {
            CallRow& row = customers.emplace_back().row;
            row.account = card.account;
            row.name = card.name;
            row.telephones = card.telephones;
        }
        before = &card;
        add(customers.back(), sale, list);
    });
    return customers;
}

// Payments, and what the cash boxes received besides, as the list of what came in counts it.
std::vector<CashReceived> receivedOn(adodb::Connection& books, DateTime day) {
    const std::string first = "'" + toText(day) + "'";
    const std::string last = "'" + toText(day.plusSeconds(kSecondsADay - 1)) + "'";
    std::unordered_map<std::int64_t, std::string> names;
    books.walk("SELECT ID,KASA_ADI FROM T_KASA_TANITIM",
               [&](const Statement& row) { names.emplace(row.whole(0), row.text(1)); });
    std::vector<CashReceived> received;
    const auto add = [&](const Statement& row) {
        const auto found = names.find(row.whole(0));
        const std::string box = found == names.end() ? std::string() : found->second;
        auto place = std::ranges::find(received, box, &CashReceived::box);
        if (place == received.end()) place = received.insert(place, {box, {}});
        place->amount += StoredAmount::ofColumn(row.number(1)).rounded();
    };
    books.walk("SELECT KASA_ID,ODMIKTAR FROM TAKSITODENEN WHERE ODTRH>=" + first + " AND ODTRH<=" + last,
               add);
    books.walk("SELECT KASA_ID,ALACAK_TUTAR FROM T_KASA_HAREKETLERI WHERE TARIH>=" + first +
                   " AND TARIH<=" + last + " AND ISLEM_ID IN (1,3)",
               add);
    std::ranges::sort(received, std::greater{}, &CashReceived::amount);
    return received;
}

} // namespace

CallList readCallList(adodb::Connection& books, ShopReckoning& shop, DateTime today) {
    const adodb::OneMoment moment(books);
    shop.bringUpToDate(books);
    CallList list;
    list.today = today;
    list.weekEnd = today.plusDays(kDaysOfWeek - 1);
    for (Gathered& customer : gather(shop, list)) {
        CallRow& row = customer.row;
        list.overdue += row.overdue;
        list.dueToday += row.dueToday;
        list.expected += customer.expected;
        if (row.overdue < kLeastClaim && row.dueToday < kLeastClaim) continue;
        if (*customer.oldestDue < today) {
            row.overdueSince = customer.oldestDue;
            row.daysOverdue =
                static_cast<int>((today.seconds() - customer.oldestDue->seconds()) / kSecondsADay);
        }
        list.rows.push_back(std::move(row));
    }
    list.received = receivedOn(books, today);
    readCalls(books, list);
    return list;
}

void readCalls(adodb::Connection& books, CallList& list) {
    AccountPlaces places;
    for (std::size_t place = 0; place < list.rows.size(); ++place) {
        list.rows[place].call.reset();
        static_cast<void>(places.placeOf(list.rows[place].account, place));
    }
    for (LastCall& call : lastCalls(books, list.today))
        if (const auto place = places.find(call.note.account)) list.rows[*place].call = std::move(call);
    for (CallRow& row : list.rows)
        row.plain = store::Alphabet::plain(row.account + '\n' + row.name + '\n' + row.telephones + '\n' +
                                           (row.call ? row.call->note.text : std::string()));
}

} // namespace veldona
