#include "daybook/callrows.h"

#include <algorithm>

#include "core/money.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/engine/alphabet.h"

namespace veldona {

namespace {

constexpr const char* kDay = "dd/mm/yyyy";

bool isOfKind(const CallRow& row, CallKind kind) {
    using enum CallPromise::State;
    const auto promises = [&](CallPromise::State state) {
        return row.call && row.call->promise && row.call->promise->state == state;
    };
    switch (kind) {
    case CallKind::All:
        return true;
    case CallKind::DueToday:
        return row.dueToday >= kLeastClaim;
    case CallKind::Overdue:
        return row.overdue >= kLeastClaim;
    case CallKind::NeverPaid:
        return row.isNeverPaid;
    case CallKind::PromiseOpen:
        return promises(Open);
    case CallKind::PromiseBroken:
        return promises(Broken);
    }
    return false;
}

std::vector<std::string> wordsOf(const std::string& typed) {
    std::vector<std::string> words(1);
    for (const char letter : store::Alphabet::plain(typed))
        if (letter != ' ')
            words.back() += letter;
        else if (!words.back().empty())
            words.emplace_back();
    if (words.back().empty()) words.pop_back();
    return words;
}

bool isChosen(const CallRow& row, const CallChoice& choice, const std::vector<std::string>& words) {
    const auto& days = choice.days;
    return isOfKind(row, choice.kind) &&
           (!days || (row.daysOverdue >= days->first && (!days->last || row.daysOverdue <= *days->last))) &&
           row.overdue + row.dueToday >= choice.atLeast &&
           std::ranges::all_of(
               words, [&](const std::string& word) { return row.plain.find(word) != std::string::npos; });
}

Value amountOrNone(StoredAmount amount) {
    return amount < kLeastClaim ? Value() : Value(amount.lira());
}

Value valueOf(const CallRow& row, CallColumn column) {
    switch (column) {
    case CallColumn::Account:
        return row.account;
    case CallColumn::Name:
        return row.name;
    case CallColumn::Telephones:
        return row.telephones;
    case CallColumn::Overdue:
        return amountOrNone(row.overdue);
    case CallColumn::Count:
        return row.overdueCount == 0 ? Value() : Value(row.overdueCount);
    case CallColumn::Days:
        return row.daysOverdue;
    case CallColumn::DueToday:
        return amountOrNone(row.dueToday);
    case CallColumn::LastPayment:
        return row.lastPayment ? Value(row.lastPayment->at.date()) : Value();
    case CallColumn::LastAmount:
        return row.lastPayment ? Value(row.lastPayment->amount.lira()) : Value();
    case CallColumn::Promise:
        return row.call && row.call->promise ? Value(promiseWords(*row.call->promise)) : Value();
    case CallColumn::Note:
        return row.call ? Value(row.call->note.text) : Value();
    }
    return {};
}

// Below, equal to or above zero. Numbers of accounts are texts that mostly are numbers: 2 comes before 10.
int compare(const CallRow& one, const CallRow& other, CallColumn column) {
    const auto sign = [](auto order) { return order < 0 ? -1 : order > 0 ? 1 : 0; };
    if (column == CallColumn::Promise) {
        const auto day = [](const CallRow& row) {
            return row.call && row.call->promise ? row.call->promise->day : DateTime{};
        };
        return sign(day(one) <=> day(other));
    }
    const Value left = valueOf(one, column), right = valueOf(other, column);
    if (left.isNull() || right.isNull()) return int(right.isNull()) - int(left.isNull());
    if (left.kind() == Value::Kind::Date) return sign(toDate(left) <=> toDate(right));
    const bool isNumber =
        !left.isText() || (column == CallColumn::Account && isNumeric(left) && isNumeric(right));
    if (isNumber) return sign(toDouble(left) <=> toDouble(right));
    return store::Alphabet::turkish().compare(toText(left), toText(right));
}

std::string wordsOf(const Value& value) {
    if (value.kind() == Value::Kind::Date) return format(value, kDay);
    if (value.kind() == Value::Kind::Double) return format(value, kMoneyMask);
    return joinText(value);
}

} // namespace

const std::vector<DataGrid::Column>& CallRows::columns() {
    static const std::vector<DataGrid::Column> all = {{"Müşteri No", "HSTNO", 76},
                                                      {"Adı Soyadı", "UNVAN", 150},
                                                      {"Telefon", "TEL", 222},
                                                      {"Günü Geçen", "GECEN", 86, true},
                                                      {"Taksit", "ADET", 48, true},
                                                      {"Gün", "GUN", 44, true},
                                                      {"Bugün Vadeli", "BUGUN", 86, true},
                                                      {"Son Ödeme", "SON_ODEME", 86},
                                                      {"Son Tutar", "SON_TUTAR", 80, true},
                                                      {"Söz", "SOZ", 190},
                                                      {"Son Not", "SON_NOT", 145}};
    return all;
}

void CallRows::show(const CallList& list, const CallChoice& choice) {
    const std::string account = current() ? current()->account : std::string();
    const std::vector<std::string> words = wordsOf(choice.typed);
    shown_.clear();
    totals_ = {};
    for (const CallRow& row : list.rows) {
        if (!isChosen(row, choice, words)) continue;
        shown_.push_back(&row);
        totals_.overdue += row.overdue;
        totals_.dueToday += row.dueToday;
        totals_.installments += row.overdueCount;
    }
    std::ranges::stable_sort(shown_, [&](const CallRow* one, const CallRow* other) {
        const int order = compare(*one, *other, choice.order);
        return choice.descending ? order > 0 : order < 0;
    });
    current_ = shown_.empty() ? -1 : 0;
    moveTo(account);
}

const CallRow* CallRows::current() const {
    return current_ < 0 ? nullptr : shown_[static_cast<std::size_t>(current_)];
}

void CallRows::moveTo(std::string_view account) {
    const auto found = std::ranges::find(shown_, account, &CallRow::account);
    if (found != shown_.end()) current_ = static_cast<int>(found - shown_.begin());
}

Value CallRows::value(int row, CallColumn column) const {
    return valueOf(*shown_[static_cast<std::size_t>(row)], column);
}

Value CallRows::printed(int row, CallColumn column) const {
    const Value known = value(row, column);
    return known.isNull() && column == CallColumn::LastPayment ? Value("Hiç ödemedi") : known;
}

std::string CallRows::cell(int row, std::string_view field) const {
    const auto column = std::ranges::find(columns(), field, &DataGrid::Column::field);
    return wordsOf(printed(row, static_cast<CallColumn>(column - columns().begin())));
}

std::string promiseWords(const CallPromise& promise) {
    std::string words = std::string(nameOf(promise.state)) + " " + format(promise.day, kDay);
    if (promise.amount >= kLeastClaim) words += "  " + amountWords(promise.amount);
    return words;
}

std::string amountWords(StoredAmount amount) {
    return format(amount.lira(), kMoneyMask);
}

} // namespace veldona
