#include "ledger/contract.h"

#include "core/amountwords.h"
#include "core/database.h"
#include "core/money.h"
#include "core/reporting.h"
#include "core/session.h"
#include "ledger/partytexts.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

// At shown scale.
struct ContractAmounts {
    Currency sale;      // what was sold
    Currency wholeDebt; // the whole debt
    Currency pesinat;   // the down payment
};

Currency shown(const FrmMainVeldona& f, const Value& stored) {
    return stored.isNull() ? Currency{} : toCurrency(ParaGoster(f.session, storedIn(stored)));
}

Currency discountOnShow(const FrmMainVeldona& f) {
    const std::string& caption = f.lblIndirim.caption();
    return trim(caption).empty() ? Currency{} : toCurrency(caption);
}

RecordsetPtr query(FrmMainVeldona& f, const std::string& sql) {
    RecordsetPtr rs;
    KayitSetiAc(f.session, rs, sql, adodb::CursorLocation::Client);
    return rs;
}

// One row of a scratch table for each row with an amount; the first failed insert ends the walk.
void copyRows(FrmMainVeldona& f, adodb::Recordset& rs, const std::string& tablo, bool named) {
    for (; !rs.eof(); rs.moveNext()) {
        const Value& amount = rs.value("ODMIKTAR");
        if (amount.isNull() || toDouble(amount) <= 0) continue;
        KayitYapisi rec;
        rec.Islem = KayitYapisi::Add;
        rec.Tablo = tablo;
        rec.add("MUSTNO", rs.value("MUSTNO"));
        rec.add("ISLEMNO", rs.value("ISLEMNO"));
        rec.add("ODTRH", rs.value("ODTRH"));
        rec.add("KALAN", toText(shown(f, amount)));
        if (named) rec.add("AD_SOYAD", "AD_SOYAD"); // the word itself: no name is printed from this table
        if (!KayitYaz(f.session, rec)) return;
    }
}

void SOZLESME_BEKLENEN_YAZ(FrmMainVeldona& f, adodb::Recordset& rs) {
    copyRows(f, rs, "BEKLENENODM", false);
}

void SOZLESME_GECIKEN_YAZ(FrmMainVeldona& f, adodb::Recordset& rs) {
    copyRows(f, rs, "GUNUGECENODM", true);
}

ContractAmounts readAmounts(FrmMainVeldona& f, const std::string& islemno) {
    ContractAmounts t;
    const RecordsetPtr head = query(
        f, "SELECT ISLEMNOTABLO.ISLEMNO, ISLEMNOTABLO.TOPBORC, URUNSAT.ODMIKTAR  FROM ISLEMNOTABLO INNER "
           "JOIN URUNSAT  ON ISLEMNOTABLO.ISLEMNO =  URUNSAT.ISLEMNO  WHERE URUNSAT.ISLEMNO=" +
               islemno + " AND PESINAT=1");
    if (!head->eof()) {
        t.wholeDebt = shown(f, head->value("TOPBORC"));
        t.pesinat = shown(f, head->value("ODMIKTAR"));
    } else {
        const RecordsetPtr plan =
            query(f, "SELECT sum(ODMIKTAR) as TUTAR  FROM  URUNSAT WHERE ISLEMNO = " + islemno);
        if (!plan->eof() && !plan->value("TUTAR").isNull()) {
            t.wholeDebt = shown(f, plan->value("TUTAR"));
            t.sale = t.wholeDebt + discountOnShow(f);
        }
    }
    const RecordsetPtr lines =
        query(f, "SELECT sum(URUNAL.FIYAT* URUNAL.ADET) as TUTAR FROM  URUNAL   INNER JOIN URUNSAT  ON "
                 "URUNAL.ISLEMNO =URUNSAT.ISLEMNO WHERE URUNSAT.ISLEMNO=" +
                     islemno + " AND PESINAT=1");
    if (!lines->eof() && !lines->value("TUTAR").isNull()) t.sale = shown(f, lines->value("TUTAR"));
    return t;
}

void SOZLESME_GENEL_YAZ(FrmMainVeldona& f, const ContractAmounts& t, const Value& lastInstallment) {
    const Currency kalan = t.sale - ((t.sale - t.wholeDebt) + t.pesinat);
    KayitYapisi rec = generalRow(f.contractParty, "");
    // The block of a second party, which nothing fills: its telephone line carries the captions alone.
    rec.add("ALAN_2", "");
    rec.add("ALAN_5", "");
    rec.add("ALAN_7", phoneText("", "", ""));
    rec.add("ACIKLAMA_3", "");
    rec.add("ACIKLAMA_4", "");
    rec.add("ID_1", f.Text5.text());
    rec.add("SAYI_1", toText(t.sale));
    rec.add("SAYI_2", toText(t.wholeDebt));
    rec.add("SAYI_3", toText(t.pesinat));
    rec.add("TARIH_1", toText(lastInstallment));
    rec.add("DENEME", YaziyaCevir(format(kalan, kMoneyMask)));
    KayitYaz(f.session, rec);
}

} // namespace

void SOZLESME_PLAN_YUKLE(FrmMainVeldona& f, std::int32_t islemno) {
    SqlCalistir(f.session, *f.session.gBaglanti, "Delete from BEKLENENODM ");
    const RecordsetPtr rs = query(f, "SELECT * From URUNSAT WHERE ISLEMNO = " + std::to_string(islemno) +
                                         " AND PESINAT<>1 ORDER BY ODTRH");
    SOZLESME_BEKLENEN_YAZ(f, *rs);
}

void SOZLESME_ODEME_YUKLE(FrmMainVeldona& f, std::int32_t islemno) {
    SqlCalistir(f.session, *f.session.gBaglanti, "Delete from GUNUGECENODM ");
    const RecordsetPtr rs =
        query(f, "SELECT * From TAKSITODENEN WHERE ISLEMNO = " + std::to_string(islemno) + " ORDER BY ODTRH");
    SOZLESME_GECIKEN_YAZ(f, *rs);
}

void SOZLESME_HAZIRLA(FrmMainVeldona& f, std::int32_t islemno) {
    if (islemno <= 0) return;
    SqlCalistir(f.session, *f.session.gBaglanti, "Delete from T_TEMP_GENEL");
    if (!trim(f.Text1.text()).empty()) readParty(f.session, f.Text1.text(), f.contractParty);
    const ContractAmounts amounts = readAmounts(f, std::to_string(islemno));
    // A plan without a row has no last day, and the contract no head.
    const RecordsetPtr son = query(f, "SELECT MAX(ODTRH) AS TRH FROM BEKLENENODM");
    if (son->eof() || son->value("TRH").isNull()) return;
    SOZLESME_GENEL_YAZ(f, amounts, son->value("TRH"));
}

void SOZLESME_INDIRIM_YAZ(FrmMainVeldona& f) {
    SqlCalistir(f.session, *f.session.gBaglanti,
                "UPDATE T_TEMP_GENEL SET SAYI_4= " + replaceAll(toText(discountOnShow(f)), ",", "."));
}

void RaporYazdir(FrmMainVeldona& f) {
    showTemplateReport(f.session, "\\Rapor\\SozlesmeAntetli.rpt",
                       {.fileName = "Sözleşme " + trim(f.Text5.text()) + " " + trim(f.Label7.caption())});
}

void cmdSozlesme_Click(FrmMainVeldona& f) {
    if (trim(f.Text5.text()).empty()) {
        f.session.desktop.dialogs.tell("İşlem No  Seçiniz", Icon::Information);
        return;
    }
    const std::int32_t islemno = toLong(f.Text5.text());
    SOZLESME_PLAN_YUKLE(f, islemno);
    SOZLESME_ODEME_YUKLE(f, islemno);
    SOZLESME_HAZIRLA(f, islemno);
    SOZLESME_INDIRIM_YAZ(f);
    RaporYazdir(f);
}

} // namespace veldona
