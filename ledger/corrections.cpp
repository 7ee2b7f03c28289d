#include "ledger/corrections.h"

#include "core/database.h"
#include "core/money.h"
#include "core/session.h"
#include "ledger/correctionsdelete.h"
#include "ledger/correctionswalk.h"
#include "ledger/ledgerplan.h"
#include "ledger/overdue.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

// Who wrote the row and when.
enum class Check { Written, Stays };

// What differs between the twins.
struct Twin {
    const char* question;
    int satir;             // the row patched in both lists
    std::string oldAmount; // as the list shows it
    SoughtRow sought;
    Check check;
};

bool mayFallBelowPaid(FrmMainVeldona& f, Err& err, const Twin& twin) {
    Currency planned, paid; // what does not read leaves 0 here
    resumeNext(
        err,
        [&] {
            planned = sumOf(f.L5) + toCurrency(f.mskOdenecekMiktar.text()) - amountOrZero(twin.oldAmount);
        },
        [&] { paid = toCurrency(f.Label8.caption()); });
    return planned >= paid || f.session.desktop.dialogs.confirm(twin.question);
}

void writeRow(FrmMainVeldona& f, Err& err, const Twin& twin) {
    dao::Recordset& rs = *f.rsSatis;
    resumeNext(
        err, [&] { rs.edit(); }, [&] { rs.set("ODTRH", f.dtOdemeTarihi.value()); },
        [&] { rs.set("ODMIKTAR", ParaOku(f.session, f.mskOdenecekMiktar.text(), {}, MoneyMode::Deger)); });
    if (twin.check == Check::Written)
        resumeNext(
            err, [&] { rs.set("KONTROL_KIM", trim(f.session.gKullanici)); },
            [&] { rs.set("KONTROL_NE_ZAMAN", f.session.desktop.clock.now()); });
    resumeNext(
        err, [&] { rs.update(); },
        [&] { patchRow(f.L4, f.L5, twin.satir, f.dtOdemeTarihi.text(), f.mskOdenecekMiktar.text()); });
}

void correct(FrmMainVeldona& f, Err& err, const Twin& twin) {
    if (!mayFallBelowPaid(f, err, twin)) return;
    bool found = false;
    attempt(err, [&] {
        f.rsSatis = openForSale(*f.dbMain, "Select * From URUNSAT Order By ODTRH ASC", twin.sought.islemno);
        found = findRow(*f.rsSatis, twin.sought);
    });
    if (found) writeRow(f, err, twin);
    attempt(err, [&] { showRemaining(f, kMoneyMask); });
    if (err.number != 0) f.session.desktop.dialogs.tell(err.description);
}

void saveRow(FrmMainVeldona& f) {
    if (f.DuzeltKaynak == static_cast<std::uint8_t>(CorrectionSource::Tarih)) TAKSIT_DUZELT_TARIH(f);
    if (f.DuzeltKaynak == static_cast<std::uint8_t>(CorrectionSource::Tutar)) TAKSIT_DUZELT_TUTAR(f);
    f.mskOdenecekMiktar.setText("");
    f.L5.setFocus();
    f.fraDuzelt.setVisible(false);
}

// Digits and the decimal sign; Enter saves.
void mskOdenecekMiktar_KeyPress(FrmMainVeldona& f, KeyPress& press) {
    const char32_t c = press.character;
    press.swallowed = !((c >= U'0' && c <= U'9') || c == U',' || c == U'\b');
    if (c == static_cast<char32_t>(Key::Enter)) mskOdenecekMiktar_Enter(f);
}

void mskOdenecekMiktar_KeyUp(FrmMainVeldona& f, const KeyEvent& event) {
    if (event.character < U'0' || event.character > U'9') return;
    f.mskOdenecekMiktar.select(static_cast<int>(length(f.mskOdenecekMiktar.text())), 0);
}

// A cheque or a cash-box receipt is not corrected here.
void openPaymentDialog(FrmMainVeldona& f, CorrectionSource kaynak, int row) {
    const std::string& mark = f.lstOdemeTip.list(row);
    if (mark == "K" || mark == "Ç") return;
    openCorrectionBox(f, "taksitmustduzelt", {kaynak, row, f.L1.list(row), f.L2.list(row)});
}

} // namespace

void openFraDuzelt(FrmMainVeldona& f, int row) {
    const std::string& amount = f.L5.list(row);
    f.dtOdemeTarihi.setValue(f.L4.list(row));
    f.mskOdenecekMiktar.setText(trim(amount).empty() ? "0" : amount);
    f.fraDuzelt.setVisible(true);
    f.mskOdenecekMiktar.setFocus();
    f.mskOdenecekMiktar.selectAll();
}

void openFraIslemTarihi(FrmMainVeldona& f) {
    const std::string& date = f.List4.text();
    // A line without a day is given one here.
    f.dtIslemTarihi.setValue(trim(date).empty() ? Value(f.session.desktop.clock.today()) : Value(date));
    f.fraIslemTarihi.setVisible(true);
    f.dtIslemTarihi.setFocus();
}

void TAKSIT_DUZELT_TARIH(FrmMainVeldona& f) {
    Err err;
    const int row = f.L4.listIndex();
    double old = 0;
    if (trim(f.Label8.caption()).empty()) f.Label8.setCaption("0");
    attempt(err, [&] { old = trim(f.L5.list(row)).empty() ? 0 : toDouble(f.L5.list(row)); });
    const auto ofAmount = [&](const Value& odmiktar) {
        return shownAmount(f.session, odmiktar).toDouble() == old;
    };
    correct(
        f, err,
        {kDateQuestion, row, f.L5.list(row), {f.Text5.text(), onDay(f.L4.text()), ofAmount}, Check::Written});
}

void TAKSIT_DUZELT_TUTAR(FrmMainVeldona& f) {
    Err err;
    const int row = f.L5.listIndex();
    Currency old;
    attempt(err, [&] { old = amountOrZero(f.L5.text()); });
    const auto ofAmount = [&](const Value& odmiktar) { return shownAmount(f.session, odmiktar) == old; };
    correct(
        f, err,
        {kAmountQuestion, row, f.L5.text(), {f.Text5.text(), onDay(f.L4.list(row)), ofAmount}, Check::Stays});
}

void cmdKaydet_Click(FrmMainVeldona& f) {
    saveRow(f);
    GECIKME_UYARI(f);
    KALAN_TAKSITLENDIRME(f);
}

void mskOdenecekMiktar_Enter(FrmMainVeldona& f) {
    saveRow(f);
    KALAN_TAKSITLENDIRME(f);
}

void cmdVazGecKayit_Click(FrmMainVeldona& f) {
    f.fraDuzelt.setVisible(false);
    f.mskOdenecekMiktar.setText("0");
}

void cmdTamam_Click(FrmMainVeldona& f) {
    if (trim(f.Text5.text()).empty()) {
        f.session.desktop.dialogs.tell("İşlem No Seçiniz", Icon::Information);
        return;
    }
    const int row = f.List2.listIndex();
    const std::string n = std::to_string(toLong(f.Text5.text()));
    const std::string id = std::to_string(toLong(f.lstID.list(row)));
    const std::string date = f.dtIslemTarihi.text();
    Err untold;
    const bool written = attempt(untold, [&] {
        f.session.gBaglanti->execute("UPDATE URUNAL SET TRH= '" + date + "' Where ISLEMNO = " + n +
                                     " AND ID=" + id);
        f.session.gBaglanti->execute("UPDATE ISLEMNOTABLO SET TRH= '" + date + "' Where ISLEMNO = " + n);
    });
    if (!written) return;
    f.List4.setList(row, date);
    f.List4.setFocus();
    f.fraIslemTarihi.setVisible(false);
}

void Command3_Click(FrmMainVeldona& f) {
    const auto kaynak = static_cast<CorrectionSource>(f.DuzeltKaynak);
    if (kaynak != CorrectionSource::Tarih && kaynak != CorrectionSource::Tutar) return;
    const int row = kaynak == CorrectionSource::Tarih ? f.L4.listIndex() : f.L5.listIndex();
    const std::string& amount = f.L5.list(row);
    openCorrectionBox(f, "taksitodduzelt",
                      {kaynak, row, f.L4.list(row), trim(amount).empty() ? "0" : amount});
}

void L1_DblClick(FrmMainVeldona& f) {
    openPaymentDialog(f, CorrectionSource::Tarih, f.L1.listIndex());
}

void L2_DblClick(FrmMainVeldona& f) {
    openPaymentDialog(f, CorrectionSource::Tutar, f.L2.listIndex());
}

namespace {

void onDblClickOrEnter(ListBox& list, const std::function<void()>& open) {
    list.onDblClick = open;
    list.onKeyDown = [open](KeyEvent& event) {
        if (event.key == Key::Enter) open();
    };
}

} // namespace

void bindCorrections(FrmMainVeldona& f) {
    onDblClickOrEnter(f.L4, [&f] { openFraDuzelt(f, f.L4.listIndex()); });
    onDblClickOrEnter(f.L5, [&f] { openFraDuzelt(f, f.L5.listIndex()); });
    onDblClickOrEnter(f.List4, [&f] { openFraIslemTarihi(f); });
    f.mskOdenecekMiktar.onKeyPress = [&f](KeyPress& press) { mskOdenecekMiktar_KeyPress(f, press); };
    f.mskOdenecekMiktar.onKeyUp = [&f](KeyEvent& event) { mskOdenecekMiktar_KeyUp(f, event); };
    f.cmdKaydet.onClick = [&f] { cmdKaydet_Click(f); };
    f.cmdVazGecKayit.onClick = [&f] { cmdVazGecKayit_Click(f); };
    f.cmdTamam.onClick = [&f] { cmdTamam_Click(f); };
    f.cmdVazgecIslemTarihi.onClick = [&f] { f.fraIslemTarihi.setVisible(false); };
    f.Command3.onClick = [&f] { Command3_Click(f); };
    f.L1.onDblClick = [&f] { L1_DblClick(f); };
    f.L2.onDblClick = [&f] { L2_DblClick(f); };
    f.cmdIslemNoSil.onClick = [&f] { cmdIslemNoSil_Click(f); };
    f.mnuSatirSil.onClick = [&f] { mnuSatirSil_Click(f); };
    f.mnuYapilacakOdmSatirSil.onClick = [&f] { mnuYapilacakOdmSatirSil_Click(f); };
}

} // namespace veldona
