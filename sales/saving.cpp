#include "sales/saving.h"

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

bool writeNewSale(FrmSatis& f, std::int32_t& id) {
    if (!IslemBasligiEkle(f, SaleRoute::Yeni)) return false;
    if (const double newId = SonKimlik(f.session, "ISLEMNOTABLO"); newId >= 1) id = toLong(newId);
    if (!f.chkOtomatikTaksitHesapla.checked())
        return PesinOdemeEkle(f) && SatisSatiriEkle(f) && PesinSatisPlaniEkle(f, "URUNSAT");
    if (!SatisSatiriEkle(f)) return false;
    if (toDouble(f.MskAlinanPesinat.text()) > 0 && !PesinatEkle(f, "TAKSITODENEN")) return false;
    return TaksitSatirlariEkle(f, SaleRoute::Yeni);
}

bool rewriteSale(FrmSatis& f) {
    Session& session = f.session;
    session.gISLEMNO = toLong(f.txtIslemNo.text());
    session.gHSTNO = f.txtCariKod.text();
    const std::string no = std::to_string(session.gISLEMNO);
    if (!SatisKayitlariniSil(session, no) || !IslemBasligiEkle(f, SaleRoute::Changed)) return false;
    if (!deleteRows(session, "URUNAL", no) || !SatisSatiriEkle(f)) return false;
    if (!f.chkOtomatikTaksitHesapla.checked() &&
        (!deleteRows(session, "URUNSAT", no) || !PesinSatisPlaniEkle(f, "URUNSAT")))
        return false;
    if (!deleteRows(session, "TAKSITODENEN", no) || !addPayments(f)) return false;
    return deleteRows(session, "URUNSAT", no) && TaksitSatirlariEkle(f, SaleRoute::Changed);
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
    if (!inTransaction(f.session, [&] { return rewriteSale(f); })) return false;
    tellDone(f);
    return true;
}

} // namespace veldona
