#include "daybook/statement.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "core/amountwords.h"
#include "core/database.h"
#include "core/money.h"
#include "core/reporting.h"
#include "core/salebalance.h"
#include "core/session.h"
#include "daybook/agegroups.h"
#include "daybook/arrears.h"
#include "daybook/callnotes.h"
#include "daybook/paperrows.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

using report::DataSet;
using namespace columntype;

constexpr std::size_t kMostNotes = 10;

struct StatedSale {
    SaleBalance sums;
    Value soldOn, paymentType, note; // Null where the sale has no head
    std::optional<DateTime> lastPaid;
};

class Statement {
public:
    Statement(Session& session, std::string account)
        : session_(session), account_(std::move(account)), today_(session.desktop.clock.today()) {}

    // False where nobody has the account.
    [[nodiscard]] bool read(StatementNotes notes);
    [[nodiscard]] std::vector<DataSet> take();
    [[nodiscard]] const std::string& name() const { return name_; }

private:
    [[nodiscard]] RecordsetPtr ask(const std::string& select, const std::string& order) const;
    void readGoods();
    void readHeads();
    void readPayments();
    void readPlans();
    void addPlan(std::int32_t sale, const std::set<std::int64_t>& downPayments);
    void addSales();
    void addCustomer();
    void addNotes();
    [[nodiscard]] std::string stateOf(const Installment& row, bool isDownPayment) const;

    Session& session_;
    std::string account_;
    DateTime today_;
    std::string name_;
    std::map<std::int32_t, StatedSale> sales_; // by number: the order in which they were made
    std::map<std::int32_t, SaleArrears> arrears_;
    DataSet customer_{"musteri",
                      {{"HSTNO"},
                       {"AD_SOYAD"},
                       {"TELEFON"},
                       {"ADRES"},
                       {"SATIS_SAYISI", kWhole},
                       {"TUTAR", kMoney},
                       {"INDIRIM", kMoney},
                       {"ODENEN", kMoney},
                       {"KALAN", kMoney},
                       {"GECIKEN", kMoney},
                       {"GELECEK", kMoney},
                       {"GUN_1_30", kMoney},
                       {"GUN_31_60", kMoney},
                       {"GUN_61_90", kMoney},
                       {"GUN_90_USTU", kMoney},
                       {"DURUM"}}};
    DataSet saleRows_{"satislar",
                      {{"ISLEMNO", kWhole},
                       {"TRH", kDate},
                       {"ODEME_TIPI"},
                       {"ACIKLAMA"},
                       {"TUTAR", kMoney},
                       {"INDIRIM", kMoney},
                       {"ODENEN", kMoney},
                       {"SON_ODEME", kDate},
                       {"KALAN", kMoney},
                       {"GECIKEN", kMoney},
                       {"GECIKME"}}};
    DataSet goods_{"mallar",
                   {{"ISLEMNO", kWhole},
                    {"URUNCINS"},
                    {"ACIKLAMA"},
                    {"ADET", kNumber},
                    {"FIYAT", kMoney},
                    {"TUTAR", kMoney}}};
    DataSet plan_{
        "plan", {{"ISLEMNO", kWhole}, {"ODTRH", kDate}, {"ODMIKTAR", kMoney}, {"KALAN", kMoney}, {"DURUM"}}};
    DataSet payments_{"odemeler", {{"ISLEMNO", kWhole}, {"ODTRH", kDate}, {"ODMIKTAR", kMoney}, {"KASA"}}};
    DataSet notes_{"notlar", {{"TARIH", kDate}, {"METIN"}, {"SOZ"}}};
};

// Rows of the account alone.
RecordsetPtr Statement::ask(const std::string& select, const std::string& order) const {
    RecordsetPtr rs;
    KayitSetiAc(session_, rs,
                select + " WHERE MUSTNO='" + quoted(account_) + "' AND ISLEMNO IS NOT NULL ORDER BY " + order,
                adodb::CursorLocation::Client);
    return rs;
}

bool Statement::read(StatementNotes notes) {
    const auto party = readParty(session_, account_);
    if (!party) return false;
    name_ = party->name;
    customer_.addRow({party->account, party->name, party->telephones, party->address});
    for (const auto& [sale, sums] : balancesOf(*session_.gBaglanti, account_))
        sales_[sale].sums = sums;
    readGoods();
    readHeads();
    readPayments();
    for (SaleArrears& each : arrearsOfAccount(*session_.gBaglanti, account_))
        arrears_.insert_or_assign(each.sale, std::move(each));
    readPlans();
    addSales();
    addCustomer();
    if (notes == StatementNotes::Last) addNotes();
    return true;
}

void Statement::readGoods() {
    const RecordsetPtr rs = ask("SELECT URUNAL.ISLEMNO, URUNTANITIM.URUNCINS, URUNAL.ACIKLAMA, URUNAL.ADET, "
                                "URUNAL.FIYAT, URUNAL.ADET*URUNAL.FIYAT AS TUTAR FROM URUNAL "
                                "LEFT JOIN URUNTANITIM ON URUNAL.URKOD = URUNTANITIM.URKOD",
                                "URUNAL.ISLEMNO, URUNAL.ID");
    for (int i = 0; i < rs->recordCount(); ++i)
        goods_.addRow({rs->at(i, 0), rs->at(i, 1), rs->at(i, 2), rs->at(i, 3),
                       amountOf(rs->at(i, 4)).working(), amountOf(rs->at(i, 5)).working()});
}

void Statement::readHeads() {
    const RecordsetPtr rs = ask("SELECT ISLEMNO, TRH, ODEME_TIPI, ACIKLAMA FROM ISLEMNOTABLO", "ID DESC");
    // The first row of a number is the one that the ledger takes, so it is the last one read.
    for (int i = 0; i < rs->recordCount(); ++i) {
        const auto sale = sales_.find(toLong(rs->at(i, 0)));
        if (sale == sales_.end() || sale->second.sums.lineCount == 0) continue;
        sale->second.soldOn = rs->at(i, 1);
        sale->second.paymentType = rs->at(i, 2);
        sale->second.note = rs->at(i, 3);
    }
}

void Statement::readPayments() {
    const RecordsetPtr rs =
        ask("SELECT TAKSITODENEN.ISLEMNO, TAKSITODENEN.ODTRH, TAKSITODENEN.ODMIKTAR, "
            "T_KASA_TANITIM.KASA_ADI FROM TAKSITODENEN LEFT JOIN T_KASA_TANITIM ON TAKSITODENEN.KASA_ID = "
            "T_KASA_TANITIM.ID",
            "TAKSITODENEN.ISLEMNO, TAKSITODENEN.ODTRH, TAKSITODENEN.ID");
    for (int i = 0; i < rs->recordCount(); ++i) {
        const StoredAmount paid = amountOf(rs->at(i, 2));
        if (!rs->at(i, 1).isNull()) sales_[toLong(rs->at(i, 0))].lastPaid = toDate(rs->at(i, 1));
        payments_.addRow({rs->at(i, 0), rs->at(i, 1), paid.working(), rs->at(i, 3)});
    }
}

void Statement::readPlans() {
    const RecordsetPtr rs = ask("SELECT ISLEMNO, ID, PESINAT FROM URUNSAT", "ID");
    std::map<std::int32_t, std::set<std::int64_t>> downPayments; // of each sale that has a plan
    for (int i = 0; i < rs->recordCount(); ++i) {
        std::set<std::int64_t>& ids = downPayments[toLong(rs->at(i, 0))];
        if (!rs->at(i, 2).isNull() && toLong(rs->at(i, 2)) == 1) ids.insert(toLong(rs->at(i, 1)));
    }
    for (const auto& [sale, ids] : downPayments)
        addPlan(sale, ids);
}

void Statement::addPlan(std::int32_t sale, const std::set<std::int64_t>& downPayments) {
    sales_.try_emplace(sale);
    for (const Installment& row : installmentsOf(*session_.gBaglanti, account_, sale))
        if (!row.amount.working().isZero())
            plan_.addRow({sale, row.due, row.amount.working(), row.open.working(),
                          stateOf(row, downPayments.contains(row.id))});
}

// In words, so that it is read without colour.
std::string Statement::stateOf(const Installment& row, bool isDownPayment) const {
    if (row.isCovered()) return isDownPayment ? "peşinat" : "ödendi";
    if (row.due < today_) return std::to_string(daysBetween(row.due, today_)) + " gün geçti";
    if (row.due == today_) return "bugün";
    return row.open < row.amount ? "eksik ödendi" : "";
}

void Statement::addSales() {
    for (const auto& [number, sale] : sales_) {
        const SaleBalance& sums = sale.sums;
        const auto behind = arrears_.find(number);
        const auto since = behind == arrears_.end() ? std::nullopt : behind->second.overdueSince(today_);
        saleRows_.addRow({number, sale.soldOn, sale.paymentType, sale.note, sums.lines.working(),
                          sums.discount.working(), sums.paid.working(),
                          sale.lastPaid ? Value(*sale.lastPaid) : Value(), sums.remaining().working(),
                          since ? behind->second.overdue(today_).working() : Currency{},
                          since ? std::to_string(daysBetween(*since, today_)) + " gün" : std::string()});
    }
}

std::string balanceInWords(Currency balance) {
    if (balance.isZero()) return "Hesabın borcu yoktur.";
    if (balance < Currency{}) return "Fazla ödenen: Yalnız " + YaziyaCevir(-balance) + ".";
    return "Kalan borç: Yalnız " + YaziyaCevir(balance) + ".";
}

void Statement::addCustomer() {
    SaleBalance all;
    for (const auto& [number, sale] : sales_)
        all += sale.sums;
    AgeGroups ages;
    StoredAmount coming;
    for (const auto& [number, sale] : arrears_)
        for (const OpenInstallment& row : sale.open)
            if (!ages.add(row, today_)) coming += row.open;
    customer_.cells.insert(customer_.cells.end(),
                           {static_cast<std::int64_t>(sales_.size()), all.lines.working(),
                            all.discount.working(), all.paid.working(), all.remaining().working(),
                            ages.total().working(), coming.working(), ages.sums[0].working(),
                            ages.sums[1].working(), ages.sums[2].working(), ages.sums[3].working(),
                            balanceInWords(all.remaining().roundedToKurus().working())});
}

void Statement::addNotes() {
    for (const CallNote& note : callNotesOf(*session_.gBaglanti, account_, today_, kMostNotes)) {
        std::string promise;
        if (note.promise)
            promise = toText(note.promise->day) + "   " + format(note.promise->amount.lira(), kMoneyMask) +
                      " YTL   " + nameOf(note.promise->state);
        notes_.addRow({note.at, note.text, promise});
    }
}

std::vector<DataSet> Statement::take() {
    // One sale needs no list of sales.
    DataSet overview = saleRows_;
    overview.name = "ozet";
    if (overview.rowCount() < 2) overview.cells.clear();
    return {letterhead(session_), std::move(customer_), std::move(overview),  std::move(saleRows_),
            std::move(goods_),    std::move(plan_),     std::move(payments_), std::move(notes_)};
}

} // namespace

void showStatement(Session& session, const std::string& account, StatementNotes notes) {
    Statement statement(session, trim(account));
    if (!statement.read(notes))
        return session.desktop.dialogs.tell("Önce müşteriyi seçin. Bu numarada müşteri yok.");
    showReportWithData(session, "Ekstre", statement.take(), [&](report::Layout& layout) {
        layout.fileName = "Ekstre " + trim(account) + " " + statement.name();
    });
}

} // namespace veldona
