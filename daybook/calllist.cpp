#include "daybook/calllist.h"

#include <algorithm>
#include <array>
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

bool isReserved(std::string_view account) {
    constexpr std::array<std::string_view, 3> reserved = {"G3", "G4", "TI"};
    return std::ranges::any_of(
        reserved, [&](std::string_view each) { return store::Alphabet::turkish().isSame(each, account); });
}

// A customer's sales as one row, before the card is known.
struct Gathered {
    CallRow row;
    StoredAmount expected;
    std::optional<DateTime> oldestDue;
    bool hasCard = false;
};

void add(Gathered& customer, const SaleArrears& sale, const CallList& list) {
    CallRow& row = customer.row;
    row.overdue += sale.overdue(list.today);
    row.overdueCount += sale.overdueCount(list.today);
    row.dueToday += sale.openBetween(list.today, list.today);
    row.isNeverPaid |= sale.isNeverPaid;
    customer.expected += sale.openBetween(list.today, list.weekEnd);
    if (!customer.oldestDue || sale.open.front().due < *customer.oldestDue) {
        customer.oldestDue = sale.open.front().due;
        row.oldestSale = sale.sale;
    }
    if (sale.lastPayment && (!row.lastPayment || sale.lastPayment->at > row.lastPayment->at))
        row.lastPayment = sale.lastPayment;
}

std::string joined(const Statement& row, std::initializer_list<int> columns, std::string_view between) {
    std::string text;
    for (const int column : columns) {
        const std::string part = trim(row.text(column));
        if (!part.empty()) text.append(text.empty() ? "" : between).append(part);
    }
    return text;
}

void readCards(adodb::Connection& books, std::vector<Gathered>& customers, const AccountPlaces& places) {
    books.walk("SELECT HSTNO,AD,SOYAD,GSM,EVTEL,ISTEL FROM MUSTKAYIT", [&](const Statement& card) {
        const auto place = places.find(card.text(0));
        if (!place || isReserved(card.text(0))) return;
        Gathered& customer = customers[*place];
        customer.hasCard = true;
        customer.row.account = card.text(0);
        customer.row.name = joined(card, {1, 2}, " ");
        customer.row.telephones = joined(card, {3, 4, 5}, "   ");
    });
}

std::vector<Gathered> gather(adodb::Connection& books, const CallList& list) {
    std::vector<Gathered> customers;
    AccountPlaces places;
    for (const SaleArrears& sale : arrearsOfAll(books, list.today)) {
        const std::size_t place = places.placeOf(sale.account, customers.size());
        if (place == customers.size()) customers.emplace_back();
        add(customers[place], sale, list);
    }
    readCards(books, customers, places);
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

CallList readCallList(adodb::Connection& books, DateTime today) {
    CallList list;
    list.today = today;
    list.weekEnd = today.plusDays(kDaysOfWeek - 1);
    for (Gathered& customer : gather(books, list)) {
        if (!customer.hasCard) continue;
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
