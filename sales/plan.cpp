#include "sales/plan.h"

#include "core/money.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/bytecounter.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "sales/celledit.h"
#include "sales/planarithmetic.h"

namespace veldona {

namespace {

constexpr int kMostInstallments = 255;

void showRemainder(FrmSatis& f, Err& err) {
    Currency kalan;
    resumeNext(
        err, [&] { f.fraTaksit.setEnabled(true); },
        [&] { f.MskAlinanPesinat.setText(format(f.MskAlinanPesinat.text(), kMoneyMask)); },
        [&] {
            if (f.MskAlinanPesinat.text().empty()) f.MskAlinanPesinat.setText("0");
        },
        [&] {
            const std::string& total = f.MskToplamUcret.text();
            kalan = total.empty() ? Currency{} : toCurrency(total);
        },
        [&] { kalan -= toCurrency(f.MskAlinanPesinat.text()); }, [&] { f.MskKalan.setText(toText(kalan)); },
        [&] { f.MskKalan.setText(format(f.MskKalan.text(), kMoneyMask)); });
}

void blankPlanFields(FrmSatis& f) {
    for (TextBox* box : {&f.MskAlinanPesinat, &f.MskKalan, &f.MskTaksitAdedi})
        box->setText("");
    f.dtTaksitBaslangicTarihi.setValue(Null{});
}

// The count is held in 8 bits and cannot be that high, so that these words are never seen: the overflow of
// the count is what limits a plan.
bool isAboveLimit(FrmSatis& f, int adet) {
    if (adet <= kMostInstallments) return false;
    f.session.desktop.dialogs.tell("Enfazla 254 Taksit yapabilirsiniz", Icon::Information);
    return true;
}

void emptyGrids(FrmSatis& f) {
    closeCellEdit(f);
    f.grdYapilanOdeme.setRows(1);
    f.grdYapilacakOdeme.setRows(1);
    f.grdYapilacakOdeme.setRows(2);
}

// The down payment as row 1 of both grids. Returns the row of the first installment.
int writeDownPayment(FrmSatis& f, std::uint8_t adet) {
    if (f.durum != FormModu::Yeni || toDouble(f.MskAlinanPesinat.text()) <= 0) return 1;
    f.grdYapilacakOdeme.setRows(rowsWithDownPayment(adet));
    f.grdYapilanOdeme.setRows(2);
    for (FlexGrid* grid : {&f.grdYapilacakOdeme, &f.grdYapilanOdeme}) {
        grid->setRow(1);
        grid->setTextMatrix(1, PaymentColumn::Miktar, f.MskAlinanPesinat.text());
        if (!f.dtIslemTarihi.value().isNull())
            grid->setTextMatrix(1, PaymentColumn::Tarih, f.dtIslemTarihi.text());
    }
    f.grdYapilacakOdeme.setTextMatrix(1, PaymentColumn::Pesinat, "Peşinat");
    return 2;
}

// `tutar(i)` is the text of the i-th amount, from 1. With a down payment rows are appended although the grid
// was sized for the whole plan; the blank ones at the end have no date, and no save takes them for a row.
template <class Tutar> void writeInstallments(FrmSatis& f, std::uint8_t adet, int satir, Tutar&& tutar) {
    const DateTime from = toDate(f.dtTaksitBaslangicTarihi.value());
    FlexGrid& grid = f.grdYapilacakOdeme;
    int ay = 0;
    countInByte(1, adet, [&](int i) {
        grid.setRow(satir);
        if (satir < adet) grid.addRow();
        grid.setTextMatrix(satir, PaymentColumn::Miktar, tutar(i));
        grid.setTextMatrix(satir, PaymentColumn::Tarih, toText(installmentDue(from, ay)));
        ++ay;
        ++satir;
    });
}

std::string shareOfTotal(const FrmSatis& f, std::uint8_t adet) {
    return format(divide(toDouble(f.MskToplamUcret.text()), adet), kMoneyMask);
}

} // namespace

void KalanHesapla(FrmSatis& f) {
    Err err;
    if (f.chkOtomatikTaksitHesapla.checked())
        showRemainder(f, err);
    else
        resumeNext(
            err, [&] { f.fraTaksit.setEnabled(false); }, [&] { f.MskToplamUcret.setText("0"); },
            [&] { blankPlanFields(f); });
    if (err.number != 0) f.session.desktop.dialogs.tell(err.description);
}

void TaksitPlaniAdetle(FrmSatis& f) {
    if (!isNumeric(f.MskTaksitAdedi.text())) return;
    const std::uint8_t adet = toByte(f.MskTaksitAdedi.text());
    if (isAboveLimit(f, adet)) return;
    if (f.dtTaksitBaslangicTarihi.text().empty()) return;
    emptyGrids(f);
    const int satir = writeDownPayment(f, adet);
    writeInstallments(f, adet, satir, [&](int) {
        if (f.MskKalan.text().empty()) return shareOfTotal(f, adet);
        return format(divide(toDouble(f.MskKalan.text()), toDouble(f.MskTaksitAdedi.text())), kMoneyMask);
    });
}

void TaksitPlaniTutarla(FrmSatis& f) {
    if (trim(f.mskTaksitTutari.text()).empty()) return;
    const auto tutar = [&f] { return toCurrency(f.mskTaksitTutari.text()); };
    const auto kalan = [&f] { return toCurrency(f.MskKalan.text()); };
    const double count = installmentCount(kalan().toDouble(), tutar().toDouble());
    if (count > kMostInstallments - 1 || isAboveLimit(f, toByte(count))) return;
    if (f.dtTaksitBaslangicTarihi.text().empty()) return;
    emptyGrids(f);
    f.lblYapilanOdeme.setCaption("0");
    f.lblYapilacakOdeme.setCaption("0");
    const std::uint8_t adet =
        toByte(installmentCount(toDouble(f.MskKalan.text()), toDouble(f.mskTaksitTutari.text())));
    const int satir = writeDownPayment(f, adet);
    writeInstallments(f, adet, satir, [&](int i) {
        if (f.MskKalan.text().empty()) return shareOfTotal(f, adet);
        return i == adet ? toText(lastInstallment(tutar(), kalan(), adet)) : format(tutar(), kMoneyMask);
    });
}

void chkTaksitAdetGir_Click(FrmSatis& f) {
    const bool byCount = f.chkTaksitAdetGir.checked();
    f.fraTaksitAdedi.setVisible(byCount);
    f.fraTaksitTutari.setVisible(!byCount);
    if (byCount)
        f.mskTaksitTutari.setText("");
    else
        f.MskTaksitAdedi.setText("0");
}

void chkOtomatikTaksitHesapla_Click(FrmSatis& f) {
    const bool byInstallments = f.chkOtomatikTaksitHesapla.checked();
    f.fraTaksit.setEnabled(byInstallments);
    f.MskToplamUcret.setText("0");
    KalanHesapla(f);
    if (!byInstallments) blankPlanFields(f);
}

} // namespace veldona
