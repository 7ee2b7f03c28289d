#include "core/recordcycle.h"

#include "platform/controls/handlers.h"
#include "platform/runtime/conversion.h"

namespace veldona {

namespace {

constexpr const char* kYeniKayit = "Yeni kayıt giriliyor";
constexpr const char* kSilinsinMi = "Bu Kaydı silmek İstediğinizden Eminmisiniz";
constexpr const char* kSilBasligi = "Kayıt Silinecek Emin misiniz ";

bool hasRow(const KayitDongusu& k) {
    return k.rs && k.rs->isOpen() && k.rs->absolutePosition() > 0;
}

bool passes(const std::function<bool()>& test) {
    return !test || test();
}

void showNoRow(KayitDongusu& k) {
    k.KayitID = 0;
    k.imlec.clear();
    call(k.durumSatiri, kYeniKayit);
    call(k.alanlariTemizle);
}

void readAgain(KayitDongusu& k) {
    if (k.yenidenOku)
        call(k.yenidenOku);
    else if (k.rs)
        k.rs->requery();
}

// The row just written is looked for; one that the recordset does not hold leaves it where it stands.
void standOn(KayitDongusu& k, std::int32_t id) {
    if (!hasRow(k)) return;
    k.rs->find("ID = " + std::to_string(id));
    if (k.rs->eof()) k.rs->moveFirst();
}

// Behind the rows that are left, so that the previous one is the last.
void standBefore(KayitDongusu& k, int position) {
    if (!k.rs || k.rs->recordCount() == 0) return;
    if (position <= k.rs->recordCount()) {
        k.rs->setAbsolutePosition(position);
    } else {
        k.rs->moveLast();
        k.rs->moveNext();
    }
}

} // namespace

void SonucVer(KayitDongusu& k, int sonuc) {
    FormKayit& kayit = k.session.gFormKayit;
    kayit.Sonuc = Currency::ofWhole(sonuc);
    if (sonuc == FormSonucu::Secildi) {
        kayit.KayitID = k.KayitID;
        call(k.sonucDoldur, kayit);
    }
    k.form.forms().unload(k.form);
}

bool IslemIcinde(Session& session, const std::function<bool()>& adimlar) {
    if (!IslemBaslat(session)) return false;
    if (adimlar() && IslemOnayla(session)) return true;
    IslemGeriAl(session);
    return false;
}

void DurumaGec(KayitDongusu& k, int durum) {
    k.durum = durum;
    if (k.bar) BarDurumAyarla(durum, *k.bar, 0);
}

Err KayitGoster(KayitDongusu& k) {
    Err err;
    if (!hasRow(k)) {
        showNoRow(k);
        return err;
    }
    const bool read = attempt(err, [&] {
        k.KayitID = toLong(k.rs->value("ID"));
        k.imlec = ImlecAl(*k.rs);
        call(k.goster);
    });
    const std::string yer =
        std::to_string(k.rs->absolutePosition()) + ":" + std::to_string(k.rs->recordCount());
    call(k.durumSatiri, read ? yer : KayitDurumu(err));
    return err;
}

void FormGezinme(KayitDongusu& k, Gezinme yon) {
    if (k.rs && k.rs->isOpen()) KayitGez(*k.rs, yon);
    if (const Err err = KayitGoster(k); err.number != 0) k.session.desktop.dialogs.tell(KayitDurumu(err));
}

void YeniKayit(KayitDongusu& k) {
    DurumaGec(k, FormModu::Yeni);
    k.KayitID = 0;
    call(k.durumSatiri, kYeniKayit);
    call(k.alanlariTemizle);
    call(k.yeniBaslat);
}

void KayitDegistir(KayitDongusu& k) {
    if (hasRow(k) && k.KayitID > 0) DurumaGec(k, FormModu::Degistir);
}

void KayitKaydet(KayitDongusu& k) {
    {
        const Mesgul mesgul(k.form);
        if (!passes(k.minimumInput) || !passes(k.mantikliInput)) return;
        if (!passes(k.durum == FormModu::Yeni ? k.ekle : k.guncelle)) return;
        const std::int32_t id = k.KayitID;
        DurumaGec(k, k.bakisDurumu);
        readAgain(k);
        standOn(k, id);
        KayitGoster(k);
    }
    if (k.secici) SonucVer(k, FormSonucu::Secildi);
}

void KayitVazgec(KayitDongusu& k) {
    if (k.secici) {
        SonucVer(k, FormSonucu::Vazgecildi);
        return;
    }
    if (k.rs && k.rs->isOpen()) ImlecGit(*k.rs, k.imlec);
    DurumaGec(k, k.bakisDurumu);
    KayitGoster(k);
}

void KayitSil(KayitDongusu& k) {
    if (!hasRow(k) || k.KayitID <= 0) return;
    const Mesgul mesgul(k.form);
    if (!k.session.desktop.dialogs.confirmDeleting(kSilinsinMi, kSilBasligi)) return;
    const int position = k.rs->absolutePosition();
    if (!IslemIcinde(k.session, [&] { return k.sil && k.sil(k.KayitID); })) return;
    DurumaGec(k, k.bakisDurumu);
    readAgain(k);
    standBefore(k, position);
    FormGezinme(k, Gezinme::Onceki);
}

void BarTiklandi(KayitDongusu& k, std::string_view arac) {
    const Mesgul mesgul(k.form);
    if (arac == "cmdYeni") YeniKayit(k);
    if (arac == "cmdDegistir") KayitDegistir(k);
    if (arac == "cmdSil") KayitSil(k);
    if (arac == "cmdKaydet") KayitKaydet(k);
    if (arac == "cmdVazgec") KayitVazgec(k);
    if (arac == "cmdCikis") k.form.forms().unload(k.form);
    if (arac == "cmdOnceki") FormGezinme(k, Gezinme::Onceki);
    if (arac == "cmdSonraki") FormGezinme(k, Gezinme::Sonraki);
}

} // namespace veldona
