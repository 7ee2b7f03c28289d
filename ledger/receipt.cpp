#include "ledger/receipt.h"

#include "core/amountwords.h"
#include "core/database.h"
#include "core/money.h"
#include "core/reporting.h"
#include "core/session.h"
#include "ledger/overdue.h"
#include "ledger/partytexts.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr const char* kCurrencyMark = "#YTL."; // the sign belongs to the label's design

std::string shownAmount(const FrmMainVeldona& f) {
    return format(f.mskOdenenPara.text(), kMoneyMask);
}

std::string inWords(const FrmMainVeldona& f) {
    return YaziyaCevir(shownAmount(f));
}

// Number and name of the customer, by which the shop looks for a saved paper.
std::string receiptName(const FrmMainVeldona& f) {
    return "Makbuz " + trim(f.Text1.text()) + " " + trim(f.Label7.caption());
}

void setLabels(FrmMainVeldona& f, report::Layout& layout, const adodb::Recordset& firma) {
    layout.fileName = receiptName(f);
    layout.setText("Section4", "Label8", toText(f.session.desktop.clock.today()));
    layout.setText("Section1", "lblMustNo", f.Text1.text());
    layout.setText("Section1", "lblIslemNo", f.Text5.text());
    layout.setText("Section1", "lblAdSoyad", trim(f.Label7.caption()));
    layout.setText("Section1", "Label17", shownAmount(f) + kCurrencyMark);
    layout.setText("Section1", "lblKalanBorç", format(f.cyMusteriBakiye, kMoneyMask) + kCurrencyMark);
    layout.setText("Section1", "lblYazi", f.txtYaziIle.text() + " Yukarda yazılı      ");
    layout.setText("Section1", "Label18", f.DTPicker1.text());
    if (firma.eof()) return;
    layout.setText("Section4", "lblUnvan", joinText(firma.value("FIRMA")));
    layout.setText("Section4", "lblAdres", joinText(firma.value("ADRES")));
    layout.setText("Section4", "lblTelefon", joinText(firma.value("TELEFON")));
    layout.setText("Section4", "lblBaslik", joinText(firma.value("GIRIS")));
}

// What the sale's rows of a table add up to, until the end of the collection's day.
Currency sumUntil(FrmMainVeldona& f, const std::string& select, DateTime day) {
    TarihDuzelt(day); // swapped here, and back by the literal
    RecordsetPtr rs;
    KayitSetiAc(f.session, rs,
                select + f.Text5.text() + " AND ODTRH <= #" + toText(day) + kDayEnd + "# GROUP BY ISLEMNO",
                adodb::CursorLocation::Client);
    return rs->eof() ? Currency{} : toCurrency(ParaGoster(f.session, storedIn(rs->value(0))));
}

void MAKBUZ_GENEL_YAZ(FrmMainVeldona& f, const PartyTexts& party, Currency total, Currency paid) {
    const std::string amount = toText(toCurrency(f.mskOdenenPara.text()));
    KayitYapisi rec = generalRow(party, party.homeTown);
    rec.add("ALAN_2", amount);
    rec.add("ALAN_5", amount);
    rec.add("ALAN_7", f.txtYaziIle.text());
    rec.add("ACIKLAMA_3", "");
    rec.add("ACIKLAMA_4", "");
    rec.add("ID_1", f.Text5.text());
    rec.add("SAYI_1", toText(total));
    rec.add("SAYI_2", toText(paid));
    rec.add("SAYI_3", toText(total - paid));
    KayitYaz(f.session, rec);
}

} // namespace

void cmdMakbuzYazdir_Click(FrmMainVeldona& f) {
    if (trim(f.mskOdenenPara.text()).empty()) {
        f.session.desktop.dialogs.tell("Ödenen Miktar Sıfır TL Olamaz");
        return;
    }
    Err passedOver;
    RecordsetPtr firma;
    resumeNext(
        passedOver, [&] { MUSTERI_BAKIYE(f); }, [&] { f.txtYaziIle.setText(inWords(f)); },
        [&] { KayitSetiAc(f.session, firma, "SELECT * FROM FIRMABILGISI", adodb::CursorLocation::Client); });
    if (f.Option1.value()) {
        resumeNext(
            passedOver,
            [&] {
                showBandedReport(f.session, "rprtahsilatmakbuzu", nullptr,
                                 [&](report::Layout& layout) { setLabels(f, layout, *firma); });
            },
            [&] { f.frmTahsilatMakbuzu.setVisible(false); });
    }
    KayitSetiKapat(firma);
}

void MAKBUZ_HAZIRLA(FrmMainVeldona& f) {
    f.txtYaziIle.setText("Yalnız  " + inWords(f) + "   tahsil edilmiştir ");
    SqlCalistir(f.session, *f.session.gBaglanti, "Delete from T_TEMP_GENEL");
    PartyTexts party;
    if (!trim(f.Text1.text()).empty()) readParty(f.session, f.Text1.text(), party);
    const DateTime day = toDate(f.DTPicker1.value());
    const Currency total =
        sumUntil(f, "SELECT  SUM(ODMIKTAR) AS ODENEN_MIKTAR,ISLEMNO FROM URUNSAT   where ISLEMNO=", day);
    const Currency paid = sumUntil(
        f, "SELECT  SUM(ODMIKTAR) AS YAPILAN_ODEME ,ISLEMNO FROM TAKSITODENEN    WHERE ISLEMNO=", day);
    MAKBUZ_GENEL_YAZ(f, party, total, paid);
}

void RaporYazdirTahsilatMakbuzu(FrmMainVeldona& f) {
    showTemplateReport(f.session, "\\Rapor\\TahsilatMakbuzu.rpt", {.fileName = receiptName(f)});
}

} // namespace veldona
