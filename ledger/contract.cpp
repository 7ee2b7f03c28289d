#include "ledger/contract.h"

#include "core/amountwords.h"
#include "core/database.h"
#include "core/money.h"
#include "core/reporting.h"
#include "ledger/partytexts.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

// At shown scale.
struct SozlesmeTutarlari {
    Currency satis;   // what was sold
    Currency borc;    // the whole debt
    Currency pesinat; // the down payment
};

Currency shown(const FrmMainVeldona& f, const Value& stored) {
    return stored.isNull() ? Currency{} : toCurrency(ParaGoster(f.session, storedIn(stored)));
}

Currency discountOnShow(const FrmMainVeldona& f) {
    const std::string& caption = f.lblIndirim.caption();
    return trim(caption).empty() ? Currency{} : toCurrency(caption);
}

KayitSeti query(FrmMainVeldona& f, const std::string& sql) {
    KayitSeti rs;
    KayitSetiAc(f.session, rs, sql, adodb::CursorLocation::Client);
    return rs;
}

// One row of a scratch table for each row with an amount; the first failed insert ends the walk.
void copyRows(FrmMainVeldona& f, adodb::Recordset& rs, const std::string& tablo, bool named) {
    for (; !rs.eof(); rs.moveNext()) {
        const Value& amount = rs.value("ODMIKTAR");
        if (amount.isNull() || toDouble(amount) <= 0) continue;
        KayitYapisi rec;
        rec.Islem = KayitYapisi::Ekle;
        rec.Tablo = tablo;
        rec.ekle("MUSTNO", rs.value("MUSTNO"));
        rec.ekle("ISLEMNO", rs.value("ISLEMNO"));
        rec.ekle("ODTRH", rs.value("ODTRH"));
        rec.ekle("KALAN", toText(shown(f, amount)));
        if (named) rec.ekle("AD_SOYAD", "AD_SOYAD"); // the word itself: no name is printed from this table
        if (!KayitYaz(f.session, rec)) return;
    }
}

void SOZLESME_BEKLENEN_YAZ(FrmMainVeldona& f, adodb::Recordset& rs) {
    copyRows(f, rs, "BEKLENENODM", false);
}

void SOZLESME_GECIKEN_YAZ(FrmMainVeldona& f, adodb::Recordset& rs) {
    copyRows(f, rs, "GUNUGECENODM", true);
}

SozlesmeTutarlari readAmounts(FrmMainVeldona& f, const std::string& islemno) {
    SozlesmeTutarlari t;
    const KayitSeti head = query(
        f, "SELECT ISLEMNOTABLO.ISLEMNO, ISLEMNOTABLO.TOPBORC, URUNSAT.ODMIKTAR  FROM ISLEMNOTABLO INNER "
           "JOIN URUNSAT  ON ISLEMNOTABLO.ISLEMNO =  URUNSAT.ISLEMNO  WHERE URUNSAT.ISLEMNO=" +
               islemno + " AND PESINAT=1");
    if (!head->eof()) {
        t.borc = shown(f, head->value("TOPBORC"));
        t.pesinat = shown(f, head->value("ODMIKTAR"));
    } else {
        const KayitSeti plan =
            query(f, "SELECT sum(ODMIKTAR) as TUTAR  FROM  URUNSAT WHERE ISLEMNO = " + islemno);
        if (!plan->eof() && !plan->value("TUTAR").isNull()) {
            t.borc = shown(f, plan->value("TUTAR"));
            t.satis = t.borc + discountOnShow(f);
        }
    }
    const KayitSeti lines =
        query(f, "SELECT sum(URUNAL.FIYAT* URUNAL.ADET) as TUTAR FROM  URUNAL   INNER JOIN URUNSAT  ON "
                 "URUNAL.ISLEMNO =URUNSAT.ISLEMNO WHERE URUNSAT.ISLEMNO=" +
                     islemno + " AND PESINAT=1");
    if (!lines->eof() && !lines->value("TUTAR").isNull()) t.satis = shown(f, lines->value("TUTAR"));
    return t;
}

void SOZLESME_GENEL_YAZ(FrmMainVeldona& f, const SozlesmeTutarlari& t, const Value& sonTaksit) {
    const Currency kalan = t.satis - ((t.satis - t.borc) + t.pesinat);
    KayitYapisi rec = GenelKayit(f.sozlesmeTarafi, "");
    // The block of a second party, which nothing fills: its telephone line carries the captions alone.
    rec.ekle("ALAN_2", "");
    rec.ekle("ALAN_5", "");
    rec.ekle("ALAN_7", TelefonMetni("", "", ""));
    rec.ekle("ACIKLAMA_3", "");
    rec.ekle("ACIKLAMA_4", "");
    rec.ekle("ID_1", f.Text5.text());
    rec.ekle("SAYI_1", toText(t.satis));
    rec.ekle("SAYI_2", toText(t.borc));
    rec.ekle("SAYI_3", toText(t.pesinat));
    rec.ekle("TARIH_1", toText(sonTaksit));
    rec.ekle("DENEME", YaziyaCevir(format(kalan, kParaMaskesi)));
    KayitYaz(f.session, rec);
}

} // namespace

void SOZLESME_PLAN_YUKLE(FrmMainVeldona& f, std::int32_t islemno) {
    SqlCalistir(f.session, *f.session.gBaglanti, "Delete from BEKLENENODM ");
    const KayitSeti rs = query(f, "SELECT * From URUNSAT WHERE ISLEMNO = " + std::to_string(islemno) +
                                      " AND PESINAT<>1 ORDER BY ODTRH");
    SOZLESME_BEKLENEN_YAZ(f, *rs);
}

void SOZLESME_ODEME_YUKLE(FrmMainVeldona& f, std::int32_t islemno) {
    SqlCalistir(f.session, *f.session.gBaglanti, "Delete from GUNUGECENODM ");
    const KayitSeti rs =
        query(f, "SELECT * From TAKSITODENEN WHERE ISLEMNO = " + std::to_string(islemno) + " ORDER BY ODTRH");
    SOZLESME_GECIKEN_YAZ(f, *rs);
}

void SOZLESME_HAZIRLA(FrmMainVeldona& f, std::int32_t islemno) {
    if (islemno <= 0) return;
    SqlCalistir(f.session, *f.session.gBaglanti, "Delete from T_TEMP_GENEL");
    if (!trim(f.Text1.text()).empty()) TarafOku(f.session, f.Text1.text(), f.sozlesmeTarafi);
    const SozlesmeTutarlari tutarlar = readAmounts(f, std::to_string(islemno));
    // A plan without a row has no last day, and the contract no head.
    const KayitSeti son = query(f, "SELECT MAX(ODTRH) AS TRH FROM BEKLENENODM");
    if (son->eof() || son->value("TRH").isNull()) return;
    SOZLESME_GENEL_YAZ(f, tutarlar, son->value("TRH"));
}

void SOZLESME_INDIRIM_YAZ(FrmMainVeldona& f) {
    SqlCalistir(f.session, *f.session.gBaglanti,
                "UPDATE T_TEMP_GENEL SET SAYI_4= " + replaceAll(toText(discountOnShow(f)), ",", "."));
}

void RaporYazdir(FrmMainVeldona& f) {
    SablonRaporGoster(f.session, "\\Rapor\\SozlesmeAntetli.rpt",
                      {.dosyaAdi = "Sözleşme " + trim(f.Text5.text()) + " " + trim(f.Label7.caption())});
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
