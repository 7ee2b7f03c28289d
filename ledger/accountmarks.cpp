#include "ledger/accountmarks.h"

#include <algorithm>
#include <utility>

#include "core/delivered.h"
#include "core/money.h"
#include "core/session.h"
#include "journal/seen.h"
#include "ledger/takenback.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr const char* kDay = "dd/mm/yyyy";
constexpr const char* kBetweenNames = "     "; // as Label7 shows them

int daysBetween(DateTime from, DateTime to) {
    return static_cast<int>((to.date().seconds() - from.date().seconds()) / kSecondsADay);
}

std::string shown(StoredAmount amount) {
    return format(amount.roundedToKurus().working(), kMoneyMask);
}

// Reckoned once for the lists that show it, and again when anybody wrote to the account.
const std::vector<Installment>& installmentsOnShow(FrmMainVeldona& f) {
    InstallmentsOnShow& known = f.installmentsOnShow;
    const std::string sale = trim(f.Text5.text());
    const bool isWritten = known.written.hasChanged(*f.session.gBaglanti);
    if (isWritten || known.account != f.Text1.text() || known.sale != sale) {
        known.account.reset(); // nothing is known where the reading fails
        known.rows = installmentsOf(*f.session.gBaglanti, f.Text1.text(), toLong(sale));
        known.account = f.Text1.text();
        known.sale = sale;
    }
    return known.rows;
}

RowMark markOf(const Installment& installment, DateTime today, bool& isNextFound) {
    if (installment.isCovered()) return {RowMark::Kind::Done, "ödendi"};
    RowMark mark;
    if (const int late = daysBetween(installment.due, today); late > 0)
        mark = {RowMark::Kind::Late, std::to_string(late) + " gün gecikti"};
    else if (!std::exchange(isNextFound, true))
        mark = {RowMark::Kind::Next, late == 0 ? "bugün ödenecek" : "sıradaki taksit"};
    else if (installment.open != installment.amount)
        mark.words = "ödenecek";
    else
        return mark;
    if (installment.open != installment.amount) mark.words += ", " + shown(installment.open) + " kaldı";
    return mark;
}

// Rows of a plan that is not saved have no row in the books, and no mark.
RowMarks scheduleMarks(FrmMainVeldona& f) {
    RowMarks marks;
    if (f.L4.count() == 0 || trim(f.Text5.text()).empty()) return marks;
    const std::vector<Installment>& installments = installmentsOnShow(f);
    const DateTime today = f.session.desktop.clock.today();
    bool isNextFound = false;
    bool isAnyKnown = false;
    for (int row = 0; row < f.L4.count(); ++row) {
        RowMark& mark = marks.rows.emplace_back();
        const std::string& id = f.lstYapilacakOdmID.list(row);
        const auto found =
            std::find_if(installments.begin(), installments.end(),
                         [&](const Installment& each) { return std::to_string(each.id) == id; });
        if (found == installments.end()) continue;
        isAnyKnown = true;
        mark = markOf(*found, today, isNextFound);
        if (found->due >= today && marks.lineAbove < 0) marks.lineAbove = row;
    }
    if (!isAnyKnown) return {};
    if (marks.lineAbove < 0) marks.lineAbove = f.L4.count();
    marks.lineWords = "bugün";
    marks.inSight = std::min(marks.lineAbove, f.L4.count() - 1);
    return marks;
}

// Today's money, so that a payment taken twice is seen; the newest one stands last.
RowMarks paymentMarks(FrmMainVeldona& f) {
    RowMarks marks;
    const std::string today = format(f.session.desktop.clock.today(), kDay);
    for (int row = 0; row < f.L1.count(); ++row)
        marks.rows.push_back(f.L1.list(row) == today ? RowMark{RowMark::Kind::New, "bugün alındı"}
                                                     : RowMark{});
    marks.inSight = f.L1.count() - 1;
    return marks;
}

// A list without marks reads as well: what goes wrong here is not worth a word.
template <class Marks> std::function<RowMarks()> unlessItFails(FrmMainVeldona& f, Marks marksOf) {
    return [&f, marksOf] {
        RowMarks marks;
        Err passedOver;
        attempt(passedOver, [&] { marks = marksOf(f); });
        return marks;
    };
}

std::string distance(int days) {
    if (days == 1) return "dün";
    if (days == -1) return "yarın";
    return days > 0 ? std::to_string(days) + " gün önce" : std::to_string(-days) + " gün sonra";
}

// The day that a collection is written under, where it is not today's.
void noteDay(FrmMainVeldona& f) {
    const DateTime today = f.session.desktop.clock.today();
    const Value& chosen = f.DTPicker1.value();
    const bool isToday = chosen.isNull() || toDate(chosen) == today;
    f.DTPicker1.setBackColor(isToday ? std::nullopt : std::optional(Colour::Unusual));
    f.lblTarihNotu.setVisible(!isToday);
    if (isToday) return;
    const bool isLeftOver = toDate(chosen) == f.dayOfChoosing && f.dayOfChoosing < today;
    f.lblTarihNotu.setCaption(isLeftOver ? "gün değişti" : distance(daysBetween(toDate(chosen), today)));
    f.lblTarihNotu.setToolTip(isLeftOver
                                  ? "Program açıkken gün değişti: bugün " + format(today, kDay) +
                                        ". Tahsilat " + f.DTPicker1.text() + " tarihiyle yazılır."
                                  : "Tahsilat bugünün değil, " + f.DTPicker1.text() + " tarihiyle yazılır.");
}

void showArrears(FrmMainVeldona& f) {
    const std::string account = trim(f.Text1.text());
    const DateTime today = f.session.desktop.clock.today();
    ArrearsOnShow& known = f.arrearsOnShow;
    const bool isWritten = known.written.hasChanged(*f.session.gBaglanti);
    if (!isWritten && known.account == account && known.day == today) return;
    known.account = account;
    known.day = today;
    if (isWritten) showMarksAnew(f); // perhaps by another till
    StoredAmount total;
    int sales = 0;
    if (!account.empty())
        for (const SaleArrears& sale : arrearsOfAccount(*f.session.gBaglanti, account)) {
            const StoredAmount overdue = sale.overdue(today);
            if (overdue < kLeastClaim) continue;
            total += overdue;
            ++sales;
        }
    f.lblToplamGeciken.setVisible(sales > 0);
    if (sales > 0)
        f.lblToplamGeciken.setCaption("Bütün gecikenler: " + shown(total) + " (" + std::to_string(sales) +
                                      " satış)");
}

void tmrDurum_Timer(FrmMainVeldona& f) {
    if (const DateTime today = f.session.desktop.clock.today(); f.knownDay != today) {
        f.knownDay = today;
        noteDay(f);
        showMarksAnew(f);
    }
    Err passedOver;
    resumeNext(
        passedOver, [&] { showTakenBack(f); }, [&] { showArrears(f); }, [&] { lookAtJournal(f); });
}

} // namespace

void lookAtJournal(FrmMainVeldona& f) {
    if (f.session.seenFile.empty() || !f.seenJournal.hasChanged(*f.session.gBaglanti)) return;
    const std::string books = f.session.desktop.paths.toNative(kDatabasePath);
    journal::SeenFile(f.session.seenFile).lookAt(*f.session.gBaglanti, store::placeOf(books));
}

void bindState(FrmMainVeldona& f) {
    for (ListBox* list : {&f.L4, &f.L5, &f.L6})
        list->marks = unlessItFails(f, scheduleMarks);
    for (ListBox* list : {&f.L1, &f.L2})
        list->marks = unlessItFails(f, paymentMarks);
    f.DTPicker1.onChange = [&f] {
        f.dayOfChoosing = f.session.desktop.clock.today();
        noteDay(f);
    };
    f.tmrDurum.onTimer = [&f] { tmrDurum_Timer(f); };
    f.lblToplamGeciken.setVisible(false);
    f.lblTarihNotu.setVisible(false);
    f.lblSonTahsilat.setVisible(false);
    f.lblToplamGeciken.setToolTip("Müşterinin bütün satışlarında bugüne kadar ödenmemiş taksitler");
}

void showMarksAnew(FrmMainVeldona& f) {
    for (ListBox* list : {&f.L1, &f.L2, &f.L4, &f.L5, &f.L6})
        list->marksChanged();
}

void forgetArrears(FrmMainVeldona& f) {
    f.lblToplamGeciken.setVisible(false);
    f.arrearsOnShow.account.reset();
}

void notePosting(FrmMainVeldona& f) {
    const std::string amount = format(f.mskOdenenPara.text(), kMoneyMask);
    const std::string when = format(f.session.desktop.clock.now(), "dd/mm hh:mm");
    const std::string name = replaceAll(trim(f.Label7.caption()), kBetweenNames, " ");
    f.lblSonTahsilat.setCaption("Son: " + when + "  " + amount + "  " + name);
    f.lblSonTahsilat.setToolTip("Son tahsilat: " + name + ", " + f.Text5.text() + " numaralı satış, " +
                                amount + ", " + when);
    f.lblSonTahsilat.setVisible(true);
}

} // namespace veldona
