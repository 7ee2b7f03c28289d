#include "ledger/ledgerplan.h"

#include <functional>
#include <optional>

#include "core/database.h"
#include "core/money.h"
#include "core/session.h"
#include "ledger/correctionswalk.h"
#include "ledger/loading.h"
#include "ledger/overdue.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/bytecounter.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

constexpr const char* kOnScreenOnly = "-1";
constexpr int kLastRow = 255;       // the last row that a byte counts to
constexpr int kUntilWritten = 1000; // milliseconds before the ledger reads through its own recordsets

bool isBlank(const TextBox& box) {
    return trim(box.text()).empty();
}

// Both ways of the plan ask for the count, also the one that reckons its own.
bool canBuild(const FrmMainVeldona& f) {
    return f.fraTaksitlendir.visible() && !f.dtBaslangicTarihi.value().isNull() && !isBlank(f.MskTaksitAdedi);
}

// A count beyond a byte loses its last digit; the caret stays behind the digits.
void cutCount(FrmMainVeldona& f) {
    std::string text = f.MskTaksitAdedi.text();
    if (toDouble(text) <= kLastRow) return;
    text = left(text, length(text) - 1);
    f.MskTaksitAdedi.setText(text);
    f.MskTaksitAdedi.select(static_cast<int>(length(text)), 0);
}

// The first row that is not due before the plan begins; behind the last where all are.
int firstRowFrom(const FrmMainVeldona& f, DateTime begin) {
    int row = 0;
    while (row < f.L4.count() && toDate(f.L4.list(row)) < begin)
        ++row;
    return row;
}

// The share of installment `no`, counted from 0, as text.
using Pay = std::function<std::string(int no)>;

// Puts a share on top of row `row`; one that is due before `due`, or not there yet, moves to `due`.
void mergeRow(FrmMainVeldona& f, int row, DateTime due, const std::string& share) {
    if (row == f.L4.count()) {
        f.L4.add("");
        f.L5.add("");
        f.lstYapilacakOdmID.add("");
    }
    const std::string& before = f.L5.list(row);
    const double amount = (trim(before).empty() ? 0 : toDouble(before)) + toDouble(share);
    const bool moves = f.L4.list(row).empty() || toDate(f.L4.list(row)) < due;
    f.L5.setList(row, toText(amount));
    if (!moves) return;
    f.L4.setList(row, toText(due));
    if (val(f.lstYapilacakOdmID.list(row)) <= 0) f.lstYapilacakOdmID.setList(row, kOnScreenOnly);
}

void appendRow(FrmMainVeldona& f, DateTime due, const std::string& share) {
    f.L4.add(toText(due));
    f.L5.add(share);
    f.lstYapilacakOdmID.add(kOnScreenOnly);
}

// Each due date is counted from the start, so that a start on the 31st comes back to it behind February.
void build(FrmMainVeldona& f, int count, const Pay& pay) {
    const DateTime begin = toDate(f.dtBaslangicTarihi.value());
    DateTime start = begin;
    TarihDuzelt(start);
    const int first = firstRowFrom(f, begin);
    f.PlanBaslangicSatiri = toByte(first);
    if (count == 0 || f.PlanYapildi) return;
    if (first + count - 1 > kLastRow) raise(ErrorNumber::Overflow);
    for (int no = 0; no < count; ++no) {
        const DateTime due = addMonths(start, no);
        if (f.chkTaksitleri.checked())
            mergeRow(f, first + no, due, pay(no));
        else
            appendRow(f, due, pay(no));
        f.PlanYapildi = true;
    }
}

// Drops what was built before and builds again; the warning of the load would come at each key.
void rebuild(FrmMainVeldona& f, void (&build)(FrmMainVeldona&)) {
    if (!f.YeniDuzen) return;
    Err passedOver;
    f.PlanYapildi = false;
    f.bTaksitKontrol = false;
    bool isNewest = true;
    attempt(passedOver, [&] { isNewest = L3_DblClick(f); });
    if (isNewest && !isBlank(f.mskBorc)) build(f);
}

void closePanel(FrmMainVeldona& f) {
    f.fraTaksitlendir.setVisible(false);
    f.mskBorc.setText("0");
    f.MskTaksitAdedi.setText("1");
}

bool writeRow(FrmMainVeldona& f, int row) {
    const std::string& id = f.lstYapilacakOdmID.list(row);
    KayitYapisi rec;
    rec.Tablo = "URUNSAT";
    rec.Islem = id == kOnScreenOnly ? KayitYapisi::Add : KayitYapisi::Change;
    if (rec.Islem == KayitYapisi::Change) rec.Kosul = " ID = " + id;
    rec.add("MUSTNO", f.session.gHSTNO);
    rec.add("ISLEMNO", std::int64_t{f.session.gISLEMNO});
    rec.add("ODTRH", f.L4.list(row));
    rec.add("ODMIKTAR", ParaOku(f.session, f.L5.list(row), {}, MoneyMode::Deger));
    rec.add("KONTROL_KIM", trim(f.session.gKullanici));
    rec.add("KONTROL_NE_ZAMAN", f.session.desktop.clock.now());
    return KayitYaz(f.session, rec);
}

} // namespace

void mnuTaksitlendirmeYap_Click(FrmMainVeldona& f) {
    const std::string amount = f.L5.text();
    f.fraTaksitlendir.setVisible(true);
    f.mskBorc.setText("");
    f.MskTaksitAdedi.setText("1");
    f.dtBaslangicTarihi.setValue(f.L4.list(f.L5.listIndex()));
    f.mskBorc.setText(trim(amount).empty() ? "0" : amount);
    f.mskBorc.setFocus();
}

void MskTaksitAdedi_KeyUp(FrmMainVeldona& f) {
    rebuild(f, TAKSIT_OLUSTUR_ADET);
}

void mskTaksitTutari_KeyUp(FrmMainVeldona& f) {
    rebuild(f, TAKSIT_OLUSTUR_TUTAR);
}

void TAKSIT_OLUSTUR_ADET(FrmMainVeldona& f) {
    if (!canBuild(f)) return;
    Err passedOver;
    int count = 0;
    attempt(passedOver, [&] { cutCount(f); });
    if (isBlank(f.Text5)) return;
    resumeNext(
        passedOver, [&] { cutCount(f); }, [&] { count = toByte(f.MskTaksitAdedi.text()); },
        [&] {
            build(f, count, [&](int) {
                return toText(divide(toDouble(f.mskBorc.text()), static_cast<double>(count)));
            });
        });
}

void TAKSIT_OLUSTUR_TUTAR(FrmMainVeldona& f) {
    Err passedOver;
    Currency amount, debt;
    int count = 0;
    if (!isBlank(f.mskTaksitTutari))
        attempt(passedOver, [&] { amount = toCurrency(f.mskTaksitTutari.text()); });
    if (amount.isZero() || !canBuild(f) || isBlank(f.Text5)) return;
    resumeNext(
        passedOver, [&] { debt = toCurrency(f.mskBorc.text()); },
        [&] { count = toByte(roundHalfEven(divide(debt.toDouble(), amount.toDouble()))); },
        [&] {
            build(f, count, [&](int no) -> std::string {
                if (no < count - 1) return trim(f.mskTaksitTutari.text());
                return format(amount + debt - Currency::ofWhole(count) * amount, kMoneyMask);
            });
        });
}

void cmdTaksitKaydet_Click(FrmMainVeldona& f) {
    if (isBlank(f.mskBorc) || f.dtBaslangicTarihi.value().isNull() || isBlank(f.Text5) || isBlank(f.Text1))
        return;
    if (!IslemBaslat(f.session)) return;
    Err passedOver;
    bool kept = false;
    attempt(passedOver, [&] { kept = TAKSIT_SATIR_YAZ(f) && IslemOnayla(f.session); });
    if (!kept) IslemGeriAl(f.session);
    f.session.desktop.dialogs.tell("İşlem Tamamlandı", Icon::Information);
    closePanel(f);
    f.session.desktop.clock.wait(kUntilWritten);
    resumeNext(
        passedOver, [&] { L3_DblClick(f); }, [&] { KALAN_TAKSITLENDIRME(f); }, [&] { GECIKME_UYARI(f); });
}

void cmdTaksitVazgec_Click(FrmMainVeldona& f) {
    closePanel(f);
}

bool TAKSIT_SATIR_YAZ(FrmMainVeldona& f) {
    const int first = f.PlanBaslangicSatiri;
    if (f.L4.count() == first) return false;
    bool written = true;
    countInByte(first, f.L4.count() - 1, [&](int row) { written = written && writeRow(f, row); });
    return written;
}

void KALAN_TAKSITLENDIRME(FrmMainVeldona& f) {
    f.lblToplamOdenecek.setCaption(toText(sumOf(f.L5) - sumOf(f.L2)));
}

void bindPlan(FrmMainVeldona& f) {
    f.mnuTaksitlendirmeYap.onClick = [&f] { mnuTaksitlendirmeYap_Click(f); };
    f.MskTaksitAdedi.onKeyUp = [&f](KeyEvent&) { MskTaksitAdedi_KeyUp(f); };
    f.mskTaksitTutari.onKeyUp = [&f](KeyEvent&) { mskTaksitTutari_KeyUp(f); };
    for (TextBox* box : {&f.MskTaksitAdedi, &f.mskTaksitTutari, &f.MskToplamUcret})
        box->onGotFocus = [box] { box->selectAll(); };
    f.cmdTaksitKaydet.onClick = [&f] { cmdTaksitKaydet_Click(f); };
    f.cmdTaksitVazgec.onClick = [&f] { cmdTaksitVazgec_Click(f); };
}

} // namespace veldona
