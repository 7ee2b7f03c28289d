#include "sales/saving.h"

#include <functional>
#include <optional>

#include "core/recordcycle.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/store/faces/adodb.h"
#include "sales/lifecycle.h"
#include "sales/plan.h"
#include "sales/salerows.h"
#include "sales/validation.h"

namespace veldona {

namespace {

// The stock is read first, so that nothing is asked between the writes: they go together.
bool writeNewSale(FrmSatis& f, std::int32_t& id) {
    const bool byInstallments = f.chkOtomatikTaksitHesapla.checked();
    std::optional<KayitYapisi> sold = soldUnit(f.session);
    SaleRows rows;
    IslemBasligiEkle(f, SaleRoute::Yeni, rows);
    if (!byInstallments) PesinOdemeEkle(f, rows);
    SatisSatiriEkle(f, rows);
    if (sold) {
        rows.push_back(*sold);
        if (!byInstallments) PesinSatisPlaniEkle(f, "URUNSAT", rows);
        if (byInstallments && toDouble(f.MskAlinanPesinat.text()) > 0) PesinatEkle(f, "TAKSITODENEN", rows);
        if (byInstallments) TaksitSatirlariEkle(f, SaleRoute::Yeni, rows);
    }
    std::int64_t newId = 0;
    const bool isWritten = writeRecords(f.session, rows, &newId);
    if (newId >= 1) id = toLong(newId);
    return isWritten && sold;
}

bool rewriteSale(FrmSatis& f) {
    Session& session = f.session;
    session.gISLEMNO = toLong(f.txtIslemNo.text());
    session.gHSTNO = f.txtCariKod.text();
    const std::string no = std::to_string(session.gISLEMNO);
    const auto written = [&](const std::function<void(SaleRows&)>& add) {
        SaleRows rows;
        add(rows);
        return writeRecords(session, rows);
    };
    if (!SatisKayitlariniSil(session, no) ||
        !written([&](SaleRows& rows) { IslemBasligiEkle(f, SaleRoute::Changed, rows); }))
        return false;
    if (!deleteRows(session, "URUNAL", no) || !written([&](SaleRows& rows) { SatisSatiriEkle(f, rows); }))
        return false;
    std::optional<KayitYapisi> sold = soldUnit(session);
    if (!sold || !KayitYaz(session, *sold)) return false;
    if (!f.chkOtomatikTaksitHesapla.checked() &&
        (!deleteRows(session, "URUNSAT", no) ||
         !written([&](SaleRows& rows) { PesinSatisPlaniEkle(f, "URUNSAT", rows); })))
        return false;
    if (!deleteRows(session, "TAKSITODENEN", no) || !addPayments(f)) return false;
    return deleteRows(session, "URUNSAT", no) &&
           written([&](SaleRows& rows) { TaksitSatirlariEkle(f, SaleRoute::Changed, rows); });
}

// Another till may have saved a sale under the number that this one was given when it was begun.
bool numberIsTaken(const FrmSatis& f) {
    RecordsetPtr rs;
    Err err;
    return attempt(err,
                   [&] {
                       KayitSetiAc(f.session, rs,
                                   "SELECT ISLEMNO FROM ISLEMNOTABLO WHERE ISLEMNO = " +
                                       std::to_string(f.session.gISLEMNO),
                                   adodb::CursorLocation::Client);
                   }) &&
           !rs->eof();
}

void takeNextNumber(FrmSatis& f) {
    const std::string taken = std::to_string(f.session.gISLEMNO);
    numberSale(f);
    f.session.desktop.dialogs.tell(
        taken +
            " numaralı satış bu arada başka bir yerde kaydedilmiş. Bu satış kaydedilmedi; yazdıklarınız "
            "duruyor ve yeni numarası " +
            f.txtIslemNo.text() + ". F2 ile yeniden kaydedin.",
        Icon::Exclamation);
}

void tellOvertaken(FrmSatis& f, const journal::Act& act) {
    f.session.desktop.dialogs.tell("Bu satış açıkken bir işlem geri alındı.\n\n" +
                                       journal::takenBackWords(act) +
                                       "\n\nSatış kaydedilmedi. Bu ekrandan çıkıp hesabın son hâline bakın; "
                                       "yeniden kaydederseniz ekranda "
                                       "duran yazılır.",
                                   Icon::Exclamation);
}

void tellDone(FrmSatis& f) {
    f.session.desktop.dialogs.tell("İşlem Tamamlandı", Icon::Information);
}

void answerCaller(FrmSatis& f) {
    f.session.gFormKayit.Sonuc = Currency::ofWhole(FormResult::Chosen);
    f.session.gFormKayit.KayitID = f.m_KayitID;
    f.forms().unload(f);
}

} // namespace

void cmdKaydet_Click(FrmSatis& f) {
    // Read as far as digits go, which is meant to catch zero only: less than 1,00 is refused with it.
    const auto number = f.session.gISLEMNO;
    if (val(f.MskToplamUcret.text()) == 0)
        f.session.desktop.dialogs.tell("Ödenecek Miktar Sıfır Olamaz", Icon::Exclamation);
    else
        SatisKaydet(f);
    // What was typed stays for the next F2 where the sale was given another number.
    if (f.durum == FormModu::Yeni && f.session.gISLEMNO != number) return;
    chkOtomatikTaksitHesapla_Click(f);
}

void SatisKaydet(FrmSatis& f) {
    {
        const BusyGuard busy(f);
        if (!MinimumInputKontrolu(f) || !MantikliInputKontrolu(f)) return;
        if (!(f.durum == FormModu::Yeni ? YeniSatisKaydet(f) : SatisGuncelle(f))) return;
        enterState(f, FormModu::Navigation);
        f.customer = {f.txtKod.text(), f.txtCariKod.text(), f.txtUnvan.text()};
    }
    if (f.isPicker) answerCaller(f);
}

bool YeniSatisKaydet(FrmSatis& f) {
    std::int32_t id = f.m_KayitID;
    if (!inTransaction(f.session, [&] { return writeNewSale(f, id); })) {
        if (numberIsTaken(f)) takeNextNumber(f);
        return false;
    }
    f.m_KayitID = id;
    tellDone(f);
    readSalesAgain(f);
    return true;
}

bool SatisGuncelle(FrmSatis& f) {
    const std::int32_t number = toLong(f.txtIslemNo.text());
    std::optional<journal::Act> overtaken;
    const bool saved = inTransaction(f.session, [&] {
        overtaken = f.takenBack.newestOn(*f.session.gBaglanti,
                                         [&](const journal::Entry& entry) { return entry.sale == number; });
        return !overtaken && rewriteSale(f);
    });
    if (overtaken) tellOvertaken(f, *overtaken);
    if (!saved) return false;
    tellDone(f);
    return true;
}

} // namespace veldona
