#include "journal/words.h"

#include <algorithm>
#include <map>
#include <set>

#include "journal/captions.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"

namespace veldona::journal {

namespace {

using Kind = Entry::Kind;

constexpr const char* kAudit[] = {"KONTROL_KIM", "KONTROL_NE_ZAMAN"};

struct TableWords {
    const char* table;
    const char* counted; // "3 ödeme"
    const char* amount;  // the column that adds up; "" for none
};
// What a sale is made of, in the order in which it is told.
constexpr TableWords kParts[] = {
    {"URUNAL", "satır", ""}, {"URUNSAT", "taksit", ""}, {"TAKSITODENEN", "ödeme", "ODMIKTAR"}};
constexpr const char* kSales = "ISLEMNOTABLO";
constexpr const char* kPayments = "TAKSITODENEN";
constexpr const char* kCustomers = "MUSTKAYIT";

// What an act came to for one row: a row that is written and removed again is none.
struct Outcome {
    Kind kind;
    const Entry* first;
    const Entry* last;
};

std::vector<Outcome> outcomesOf(const Act& act) {
    std::vector<std::pair<const Entry*, const Entry*>> rows;
    std::map<std::pair<std::string, std::int64_t>, std::size_t> places;
    for (const Entry& entry : act.entries) {
        if (entry.kind == Kind::Noted) continue;
        const auto [place, isNew] = places.emplace(std::pair(entry.table, entry.key), rows.size());
        if (isNew)
            rows.emplace_back(&entry, &entry);
        else
            rows[place->second].second = &entry;
    }
    std::vector<Outcome> outcomes;
    for (const auto& [first, last] : rows) {
        const bool wasThere = first->kind != Kind::Added, isThere = last->kind != Kind::Removed;
        if (!wasThere && !isThere) continue;
        const Kind kind = !wasThere ? Kind::Added : isThere ? Kind::Changed : Kind::Removed;
        outcomes.push_back({kind, first, last});
    }
    return outcomes;
}

// The same act run backwards.
Act inverseOf(const Act& act) {
    Act inverse = act;
    std::reverse(inverse.entries.begin(), inverse.entries.end());
    for (Entry& entry : inverse.entries) {
        std::swap(entry.before, entry.after);
        if (entry.kind == Kind::Added || entry.kind == Kind::Removed)
            entry.kind = entry.kind == Kind::Added ? Kind::Removed : Kind::Added;
    }
    return inverse;
}

double amountIn(const Fields& fields, const char* column) {
    const Value* value = find(fields, column);
    return value && value->kind() == Value::Kind::Double ? value->get<double>() : 0;
}

bool isAudit(const std::string& column) {
    return column == "ID" || std::find(std::begin(kAudit), std::end(kAudit), column) != std::end(kAudit);
}

// A correction writes the time at which it was made into the day of a payment.
bool isSameDay(const std::string& was, const std::string& is) {
    constexpr std::size_t kDay = 10;
    return was.size() > kDay && is.size() > kDay && was[2] == '/' &&
           was.substr(0, kDay) == is.substr(0, kDay);
}

// "Vade 01/12/2026 → 05/12/2026, Taksit 200,00 → 250,00"; more than two are named alone.
std::string changesIn(const Outcome& outcome) {
    constexpr std::size_t kInFull = 2;
    std::vector<std::string> names, full;
    const Fields& after = outcome.last->after;
    for (const auto& [column, value] : after) {
        const Value* before = find(outcome.first->before, column);
        if (isAudit(column) || (before && *before == value)) continue;
        const std::string was = before ? shownIn(column, *before) : "…", is = shownIn(column, value);
        if (isSameDay(was, is)) continue;
        names.push_back(captionOf(outcome.last->table, column));
        full.push_back(names.back() + ' ' + was + " → " + is);
    }
    std::string words;
    for (const std::string& each : full.size() <= kInFull ? full : names)
        words += (words.empty() ? "" : ", ") + each;
    return words;
}

void add(std::string& words, const std::string& more, const char* between = ", ") {
    if (more.empty()) return;
    if (!words.empty()) words += between;
    words += more;
}

// What became of the rows of a sale, by table and kind.
struct Rows {
    std::vector<const Outcome*> outcomes[3]; // by Kind
    [[nodiscard]] const std::vector<const Outcome*>& of(Kind kind) const {
        return outcomes[static_cast<std::size_t>(kind)];
    }
};
using OfSale = std::map<std::string, Rows>;

const Fields& valuesOf(const Outcome& outcome) {
    return outcome.kind == Kind::Removed ? outcome.first->before : outcome.last->after;
}

double sumOf(const std::vector<const Outcome*>& outcomes, const char* column) {
    double sum = 0;
    for (const Outcome* each : outcomes)
        sum += amountIn(valuesOf(*each), column);
    return sum;
}

// "1 satır, 5 taksit, 3 ödeme, 460,00 tahsilat".
std::string partsOf(const OfSale& sale, Kind kind) {
    std::string words;
    for (const TableWords& part : kParts) {
        const auto rows = sale.find(part.table);
        if (rows == sale.end() || rows->second.of(kind).empty()) continue;
        add(words, std::to_string(rows->second.of(kind).size()) + ' ' + part.counted);
        if (*part.amount) add(words, shownAmount(sumOf(rows->second.of(kind), part.amount)) + " tahsilat");
    }
    return words;
}

// "1 taksit silindi (200,00)", "150,00 tahsilat yapıldı".
std::string rowsWords(const TableWords& part, const Rows& rows) {
    std::string words;
    const char* column = std::string_view(part.table) == "URUNAL" ? "FIYAT" : "ODMIKTAR";
    for (const Kind kind : {Kind::Removed, Kind::Added}) {
        const auto& some = rows.of(kind);
        if (some.empty()) continue;
        const std::string amount = shownAmount(sumOf(some, column));
        if (kind == Kind::Added && std::string_view(part.table) == kPayments && some.size() == 1)
            add(words, amount + " tahsilat yapıldı");
        else
            add(words, std::to_string(some.size()) + ' ' + part.counted +
                           (kind == Kind::Added ? " yazıldı (" : " silindi (") + amount + ')');
    }
    const auto& changed = rows.of(Kind::Changed);
    if (changed.size() == 1)
        add(words, std::string(part.counted) + " değişti: " + changesIn(*changed.front()));
    else if (!changed.empty())
        add(words, std::to_string(changed.size()) + ' ' + part.counted + " değişti");
    return words;
}

std::string saleWords(std::int64_t number, const OfSale& sale) {
    const std::string name = std::to_string(number) + " numaralı satış";
    const auto heads = sale.find(kSales);
    const bool isAdded = heads != sale.end() && !heads->second.of(Kind::Added).empty();
    const bool isRemoved = heads != sale.end() && !heads->second.of(Kind::Removed).empty();
    if (isAdded || isRemoved) {
        const char* verb = isAdded && isRemoved ? " yeniden kaydedildi"
                           : isAdded            ? " kaydedildi"
                                                : " silindi";
        const std::string parts = partsOf(sale, isAdded ? Kind::Added : Kind::Removed);
        return name + verb + (parts.empty() ? "" : ": " + parts);
    }
    std::string words;
    for (const TableWords& part : kParts)
        if (const auto rows = sale.find(part.table); rows != sale.end())
            add(words, rowsWords(part, rows->second));
    if (heads != sale.end() && words.empty()) words = changesIn(*heads->second.of(Kind::Changed).front());
    return name + ": " + words;
}

const char* verbOf(Kind kind) {
    return kind == Kind::Added ? "eklendi" : kind == Kind::Removed ? "silindi" : "değişti";
}

std::string otherWords(const Outcome& outcome) {
    const Entry& entry = *outcome.last;
    const std::string changes = outcome.kind == Kind::Changed ? changesIn(outcome) : std::string();
    std::string words;
    if (entry.table == kCustomers) {
        const char* verb = outcome.kind == Kind::Added     ? "açıldı"
                           : outcome.kind == Kind::Removed ? "silindi"
                                                           : "değişti";
        words = entry.account + " numaralı müşterinin kartı " + verb;
    } else if (entry.table == "ARAMA_NOTU") {
        const Value* text = find(valuesOf(outcome), "ACIKLAMA");
        words = entry.account + " numaralı müşterinin görüşme notu " + verbOf(outcome.kind);
        if (changes.empty() && text && text->isText()) add(words, text->get<std::string>(), ": ");
    } else {
        words = rowWords(entry) + ' ' + verbOf(outcome.kind);
    }
    add(words, changes, ": ");
    return words;
}

std::string noteWords(const std::string& note) {
    if (note == "toplu") return "kayıtlar topluca yazıldı";
    if (note == "basladi") return "günlük başladı";
    if (note == "geri") return "defter bir yedekten geri kondu";
    if (note == "yerine") return "yeni defter öncekinin yerine kondu";
    if (note == "kuyruk") return "günlüğün sonunun silindiği görüldü";
    if (note == "incelt") return "günlüğün eski kayıtları çıkarıldı";
    return note == "onarildi" ? "günlük onarıldı" : note;
}

std::string summaryOfRows(const Act& act) {
    constexpr std::size_t kMostTold = 3;
    const std::vector<Outcome> outcomes = outcomesOf(act);
    std::map<std::int64_t, OfSale> sales;
    std::vector<std::string> told;
    bool hasOthers = false;
    for (const Outcome& each : outcomes)
        if (each.last->sale) {
            sales[*each.last->sale][each.last->table].outcomes[static_cast<std::size_t>(each.kind)].push_back(
                &each);
        }
    told.reserve(sales.size());
    for (const auto& [number, sale] : sales)
        told.push_back(saleWords(number, sale));
    for (const Outcome& each : outcomes) {
        if (each.last->sale) continue;
        // What a sale moves of its products goes without saying.
        if (each.last->table == "URUNTANITIM" && !sales.empty()) continue;
        told.push_back(otherWords(each));
        hasOthers = true;
    }
    std::string words;
    for (std::size_t i = 0; i < std::min(told.size(), kMostTold); ++i)
        add(words, told[i], "; ");
    if (told.size() > kMostTold)
        words +=
            "; ve " + std::to_string(told.size() - kMostTold) + (hasOthers ? " kayıt daha" : " satış daha");
    for (const Entry& entry : act.entries)
        if (entry.kind == Kind::Noted) add(words, noteWords(entry.note), "; ");
    return words.empty() ? "hiçbir kayıt değişmedi" : words;
}

std::string moment(DateTime at) {
    return format(at, "dd/mm/yyyy hh:mm");
}

} // namespace

ActKind kindOf(const Act& act) {
    if (!takenBackBy(act).empty()) return ActKind::TakenBack;
    bool isSaleAdded = false, isSaleRemoved = false, isPaid = false, isOfSale = false, isCustomer = false;
    for (const Outcome& each : outcomesOf(act)) {
        const std::string& table = each.last->table;
        isSaleAdded = isSaleAdded || (table == kSales && each.kind == Kind::Added);
        isSaleRemoved = isSaleRemoved || (table == kSales && each.kind == Kind::Removed);
        isPaid = isPaid || (table == kPayments && each.kind == Kind::Added);
        isCustomer = isCustomer || table == kCustomers;
        isOfSale = isOfSale || each.last->sale;
    }
    if (isSaleAdded) return ActKind::Sale;
    if (isSaleRemoved) return ActKind::SaleRemoved;
    if (isPaid) return ActKind::Collection;
    if (isOfSale) return ActKind::Plan;
    return isCustomer ? ActKind::Customer : ActKind::Other;
}

std::string summaryOf(const Act& act) {
    if (takenBackBy(act).empty()) return summaryOfRows(act);
    return "Geri alındı: " + summaryOfRows(inverseOf(act));
}

std::string accountOf(const Act& act) {
    for (const Entry& entry : act.entries)
        if (!entry.account.empty()) return entry.account;
    return {};
}

std::string nameOf(const Act& act) {
    return takenBackBy(act).empty() ? act.name : "Geri Al";
}

std::string whenAndWho(const Act& act) {
    std::string words = moment(act.moment);
    for (const std::string& each : {nameOf(act), act.machine, act.user})
        add(words, each);
    return words;
}

std::string takingBackName(const std::string& id) {
    return std::string(kTakingBack) + id;
}

std::string takenBackBy(const Act& act) {
    const std::string_view name = act.name;
    return name.starts_with(kTakingBack) ? std::string(name.substr(kTakingBack.size())) : std::string();
}

std::string rowWords(const std::string& table, const Fields& row) {
    const Value* number = find(row, "ISLEMNO");
    std::string sale = number && number->kind() == Value::Kind::Whole
                           ? std::to_string(number->get<std::int64_t>()) + " numaralı satış"
                           : "satış";
    if (table == kSales) return sale;
    if (table == "URUNAL") return sale + "ın satırı (" + shownAmount(amountIn(row, "FIYAT")) + ')';
    if (table == "URUNSAT") return sale + "ın taksidi (" + shownAmount(amountIn(row, "ODMIKTAR")) + ')';
    if (table == kPayments) return sale + "ın ödemesi (" + shownAmount(amountIn(row, "ODMIKTAR")) + ')';
    const Value* account = find(row, table == kCustomers ? "HSTNO" : "MUSTNO");
    const std::string customer =
        account && account->isText() ? account->get<std::string>() + " numaralı müşterinin " : std::string();
    if (table == kCustomers) return customer + "kartı";
    if (table == "ARAMA_NOTU") return customer + "görüşme notu";
    if (table == "FIRMABILGISI") return "Antet";
    if (table == "T_KASA_TANITIM") return "Kasa tanımı";
    if (table == "T_KASA_HAREKETLERI") return "Kasa hareketi";
    return table == "URUNTANITIM" ? "Ürün" : table;
}

std::string rowWords(const Entry& entry) {
    Fields row = entry.kind == Kind::Removed ? entry.before : entry.after;
    if (entry.kind == Kind::Changed) {
        if (entry.sale) row.emplace_back("ISLEMNO", *entry.sale);
        if (!entry.account.empty())
            row.emplace_back(entry.table == kCustomers ? "HSTNO" : "MUSTNO", entry.account);
        const bool isWithoutAmount = (entry.table == "URUNAL" && !find(row, "FIYAT")) ||
                                     (entry.sale && entry.table != "URUNAL" && !find(row, "ODMIKTAR"));
        if (isWithoutAmount && entry.table != kSales) {
            const std::string words = rowWords(entry.table, row);
            return words.substr(0, words.rfind(" ("));
        }
    }
    return rowWords(entry.table, row);
}

std::vector<Detail> detailsOf(const Act& act) {
    std::vector<Detail> details;
    for (const Entry& entry : act.entries) {
        if (entry.kind == Kind::Noted) continue;
        std::string row = rowWords(entry);
        row += std::string(" ") + verbOf(entry.kind);
        const Fields& shown = entry.kind == Kind::Removed ? entry.before : entry.after;
        for (const auto& [column, value] : shown) {
            const Value* before = find(entry.before, column);
            const Value* after = find(entry.after, column);
            if (entry.kind == Kind::Changed && column == "ID") continue;
            if (entry.kind != Kind::Changed && value.isNull()) continue;
            details.push_back({std::exchange(row, std::string()), captionOf(entry.table, column),
                               before ? shownIn(column, *before) : std::string(),
                               after ? shownIn(column, *after) : std::string()});
        }
    }
    return details;
}

} // namespace veldona::journal
