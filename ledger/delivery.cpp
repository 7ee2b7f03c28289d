#include "ledger/delivery.h"

#include "core/database.h"
#include "core/money.h"
#include "core/session.h"
#include "ledger/loading.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/columntype.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr int kUntilWritten = 1000; // milliseconds before the ledger reads through its own recordsets

bool run(FrmMainVeldona& f, const std::string& sql) {
    return SqlCalistir(f.session, *f.session.gBaglanti, sql);
}

// The stored form of a shown amount, as a statement takes it.
std::string stored(const FrmMainVeldona& f, const Value& amount) {
    Value text = ParaOku(f.session, amount, {}, MoneyMode::Deger);
    return DegerYaz(columntype::kNumber, text);
}

// What cannot be read counts as nothing.
bool isZero(const std::string& amount) {
    Currency read;
    Err passedOver;
    attempt(passedOver, [&] { read = toCurrency(amount); });
    return read.isZero();
}

// A failure is told by whoever asks, in a word of its own.
bool runUntold(FrmMainVeldona& f, const std::string& sql) {
    Err untold;
    return attempt(untold, [&] { f.session.gBaglanti->execute(sql); });
}

// The dot of a typed amount is its decimal sign here ("12.50"), unless it can only be a group's ("1.050,00").
std::string shownAmount(const std::string& typed) {
    const std::string withComma = replaceAll(typed, ".", ",");
    return format(isNumeric(withComma) ? withComma : typed, kMoneyMask);
}

void addToLists(FrmMainVeldona& f) {
    const std::string amount = shownAmount(f.MskToplamUcret.text());
    f.List1.add("1");
    f.lstID.add("1");
    f.List2.add("Ürün");
    f.List5.add("1");
    f.List3.add(amount);
    f.List6.add(amount);
    f.List7.add(f.txtUrunAdi.text());
    f.List4.add(format(f.session.desktop.clock.today(), "dd/mm/yyyy"));
}

Currency totalLessDiscount(const FrmMainVeldona& f) {
    Currency total;
    for (int i = 0; i < f.List6.count(); ++i)
        total += toCurrency(f.List6.list(i));
    const std::string discount = trim(f.lblIndirim.caption());
    return discount.empty() ? total : total - toCurrency(discount);
}

// The new line as the lists show it.
std::string insertLine(FrmMainVeldona& f) {
    const std::string& amount = f.List6.list(f.List6.count() - 1);
    Value note = f.txtUrunAdi.text();
    return "INSERT INTO URUNAL  ( MUSTNO,ISLEMNO,URKOD,TRH,FIYAT,ADET,ACIKLAMA,KDV,KDV_DAHIL_HARIC,DEPO_ID) "
           "values ('" +
           trim(f.Text1.text()) + "'," + f.Text5.text() + ",'1','" + toText(f.session.desktop.clock.today()) +
           "'," + stored(f, amount) + ",1," + DegerYaz(columntype::kMemo, note) + ",0,1,-1)";
}

} // namespace

void Command4_Click(FrmMainVeldona& f) {
    const bool delivered = !f.dtTeslimEdildigiTarih.value().isNull();
    const std::string flag = delivered ? "1" : "0";
    const std::string date = delivered ? "'" + f.dtTeslimEdildigiTarih.text() + "'" : "NULL";
    if (val(f.Text5.text()) <= 0) {
        f.session.desktop.dialogs.tell("İşlem Numarası Şeçiniz", Icon::Information);
        return;
    }
    const std::string ofSale = " WHERE ISLEMNO= " + f.Text5.text();
    run(f, "UPDATE ISLEMNOTABLO SET TESLIM_EDILDI =" + flag + " ,  TESLIM_EDILEN_TRH=" + date + ofSale);
    run(f, "UPDATE URUNAL SET TESLIM_EDILDI =" + flag + " " + ofSale);
}

void mnuUrunEkle_Click(FrmMainVeldona& f) {
    f.frmUrunEkle.setVisible(true);
    f.txtUrunAdi.setFocus();
}

void cmdUrunKaydet_Click(FrmMainVeldona& f) {
    Dialogs& dialogs = f.session.desktop.dialogs;
    if (isZero(f.MskToplamUcret.text())) {
        dialogs.tell("Toplam Borç Giriniz", Icon::Exclamation);
        return;
    }
    addToLists(f);
    if (trim(f.Text5.text()).empty()) {
        dialogs.tell("İşlem No Seçiniz", Icon::Information);
        return;
    }
    const std::string total = stored(f, totalLessDiscount(f));
    if (!runUntold(f, insertLine(f))) dialogs.tell(" URUNAL");
    if (!runUntold(f, "UPDATE ISLEMNOTABLO SET TOPBORC= " + total + " Where ISLEMNO = " + f.Text5.text()))
        dialogs.tell(" ISLEMNOTABLO ");
    f.session.desktop.clock.wait(kUntilWritten);
    L3_DblClick(f);
    f.frmUrunEkle.setVisible(false);
    f.txtUrunAdi.setText("");
    f.MskToplamUcret.setText("");
}

} // namespace veldona
