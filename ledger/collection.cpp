#include "ledger/collection.h"

#include "core/database.h"
#include "core/money.h"
#include "core/session.h"
#include "ledger/accountmarks.h"
#include "ledger/balances.h"
#include "ledger/overdue.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/bytecounter.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

// Why the collection may not be taken; "" where it may. The zero test comes first, the cap last.
std::string refusal(FrmMainVeldona& f) {
    Err passedOver;
    Currency amount, afterPaying, due;
    resumeNext(
        passedOver, [&] { amount = toCurrency(f.mskOdenenPara.text()); },
        [&] { afterPaying = toCurrency(f.Label8.caption()) + amount; },
        [&] { due = toCurrency(f.Label11.caption()); });
    if (amount.isZero()) return "ÖDENECEK MİKTAR 0 TL  OLAMAZ";
    if (f.Text1.text().empty()) return "Müşteri Seçimi Yapınız";
    if (f.Text5.text().empty()) return "Islem No Seçiniz";
    if (afterPaying > due) return "ÖDENECEK MİKTAR TOPLAM BORÇTAN FAZLA OLAMAZ";
    return {};
}

// False where nothing was written, which the operator is not told of.
bool writeRow(FrmMainVeldona& f) {
    Err passedOver;
    dao::Recordset& rs = *f.rsOdenen2;
    const DateTime now = f.session.desktop.clock.now();
    resumeNext(
        passedOver, [&] { rs.addNew(); }, [&] { rs.set("MUSTNO", f.Text1.text()); },
        [&] { rs.set("ODTRH", f.DTPicker1.text() + " " + format(now, "hh:mm:ss")); },
        [&] { rs.set("ODMIKTAR", ParaOku(f.session, f.mskOdenenPara.text(), {}, MoneyMode::Deger)); },
        [&] { rs.set("ISLEMNO", f.Text5.text()); },
        [&] { rs.set("KONTROL_KIM", trim(f.session.gKullanici)); }, [&] { rs.set("KONTROL_NE_ZAMAN", now); },
        // No cash box is no number, and the column takes nothing else: it stays empty.
        [&] {
            if (val(f.txtKasaID.text()) > 0) rs.set("KASA_ID", f.txtKasaID.text());
        });
    return attempt(passedOver, [&] { rs.update(); });
}

} // namespace

void Command1_Click(FrmMainVeldona& f) {
    if (trim(f.txtKasaID.text()).empty()) TAKSIT_CERCEVE_AYARLA(f);
    if (const std::string words = refusal(f); !words.empty()) {
        f.session.desktop.dialogs.tell(words, Icon::Exclamation);
        return;
    }
    const bool isWritten = writeRow(f);
    f.L1.add(f.DTPicker1.text());
    f.lstOdemeTip.add("T");
    f.L2.add(format(f.mskOdenenPara.text(), kMoneyMask));
    if (isWritten) notePosting(f);
    f.session.desktop.dialogs.tell("KAYIT İŞLEMİ TAMAMLANDI", Icon::Information);
    Err passedOver;
    resumeNext(
        passedOver, [&] { TAHSILAT_TOPLAM_YENILE(f); }, [&] { f.frmTahsilatMakbuzu.setVisible(true); },
        [&] { GECIKEN_ODM(f); }, [&] { GECIKME_UYARI(f); });
}

void TAHSILAT_TOPLAM_YENILE(FrmMainVeldona& f) {
    f.cyOdenen = Currency{};
    countInByte(0, f.L2.count() - 1, [&](int i) { f.cyOdenen += toCurrency(f.L2.list(i)); });
    f.Label8.setCaption(toText(f.cyOdenen));
    const Currency due = toCurrency(f.Label11.caption());
    const Currency paid = toCurrency(f.Label8.caption());
    f.Label11.setCaption(format(f.Label11.caption(), kMoneyMask));
    f.Label8.setCaption(format(f.Label8.caption(), kMoneyMask));
    f.Label9.setCaption(toText(due - paid));
    f.Label9.setCaption(format(f.Label9.caption(), kMoneyMask));
}

void TAKSIT_CERCEVE_AYARLA(FrmMainVeldona& f) {
    f.fraTaksitAdedi.setVisible(f.chkTaksitAdetGir.checked());
    f.fraTaksitTutari.setVisible(!f.chkTaksitAdetGir.checked());
}

void fillCboKasa(FrmMainVeldona& f) {
    RecordsetPtr rs;
    KayitSetiAc(f.session, rs, "SELECT ID,KASA_NO, KASA_ADI FROM  T_KASA_TANITIM",
                adodb::CursorLocation::Client);
    f.cboKasa.clear();
    for (; !rs->eof(); rs->moveNext())
        f.cboKasa.add(joinText(rs->value("KASA_ADI")), rs->value("ID"));
}

void cboKasa_Change(FrmMainVeldona& f) {
    if (trim(f.cboKasa.text()).empty()) f.txtKasaID.setText("");
}

void cboKasa_Click(FrmMainVeldona& f) {
    f.txtKasaID.setText(trim(f.cboKasa.boundText()));
}

} // namespace veldona
