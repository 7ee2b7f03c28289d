#include "customers/cardrecord.h"

#include "core/database.h"
#include "customers/cardfields.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

constexpr const char* kTablo = "MUSTKAYIT";

void warn(FrmCariEkle& f, std::string text) {
    f.session.desktop.dialogs.show({std::move(text), f.caption(), Icon::Exclamation, Buttons::Ok});
}

void addFields(const FrmCariEkle& f, KayitYapisi& rec) {
    for (const CariSutunu& s : cariSutunlari())
        if (rec.Islem == KayitYapisi::Ekle || s.kod != CariAlan::HSTNO)
            rec.ekle(s.sutun, CariAlanDegeri(f, s.kod));
}

} // namespace

bool YeniCariEkle(FrmCariEkle& f) {
    return IslemIcinde(f.session, [&] {
        KayitYapisi rec;
        rec.Islem = KayitYapisi::Ekle;
        rec.Tablo = kTablo;
        addFields(f, rec);
        if (!KayitYaz(f.session, rec)) return false;
        f.kayit.KayitID = toLong(SonKimlik(f.session, kTablo));
        f.kartlar.push_back(f.kayit.KayitID);
        f.sonKayitYeniydi = true;
        return true;
    });
}

bool CariGuncelle(FrmCariEkle& f) {
    f.sonKayitYeniydi = false;
    return IslemIcinde(f.session, [&] {
        KayitYapisi rec;
        rec.Islem = KayitYapisi::Degistir;
        rec.Tablo = kTablo;
        rec.Kosul = " ID = " + std::to_string(f.kayit.KayitID);
        addFields(f, rec);
        return KayitYaz(f.session, rec);
    });
}

bool CariSil(Session& session, std::int32_t id) {
    return SqlCalistir(session, *session.gBaglanti,
                       std::string("Delete from ") + kTablo + " where ID = " + std::to_string(id));
}

bool MinimumInputKontrolu(FrmCariEkle& f) {
    std::vector<std::string> missing;
    if (trim(f.txtKod.text()).empty()) missing.push_back(" Cari No ");
    if (trim(f.txtAd.text()).empty()) missing.push_back("Adı ");
    if (missing.empty()) return true;
    warn(f, BosAlanSozu(missing, "", "ve "));
    return false;
}

bool MantikliInputKontrolu(FrmCariEkle& f) {
    if (f.kayit.durum == FormModu::Degistir) return true;
    const std::string kod = trim(f.txtKod.text());
    const std::optional<bool> tekil = TekilMi(f.session, kTablo, {{"HSTNO", kod, AlanTuru::Metin}});
    if (tekil == false) warn(f, "Dikkat,   " + kod + "   ,Kaydı Daha Önce Yapılmış");
    if (tekil != true) return false;
    // Barcodes may repeat; asked is only whether the books can be asked for them.
    Err err;
    return attempt(err, [&] {
        KayitSeti rs;
        KayitSetiAc(f.session, rs, "Select BARKOD_KODU From MUSTKAYIT Where BARKOD_KODU= ''",
                    adodb::CursorLocation::Client);
    });
}

void kartlariAc(FrmCariEkle& f) {
    std::string ids;
    for (const std::int32_t id : f.kartlar)
        ids += (ids.empty() ? "" : ",") + std::to_string(id);
    const std::string kosul = ids.empty() ? " 1 = 2 " : std::string(kTablo) + ".ID in (" + ids + ")";
    KayitSetiAc(f.session, f.kayit.rs, std::string("Select * from ") + kTablo + " Where " + kosul,
                adodb::CursorLocation::Client);
}

void YeniCariBaslat(FrmCariEkle& f) {
    if (f.sonKayitYeniydi) f.chkKaydiKopyala.setChecked(false);
    const std::string no = YeniNo(f.session, "HSTNO", kTablo, "", AlanTuru::Sayi);
    // Among numbers with letters there is none to fill in; the highest of the others is a hint.
    if (no.empty())
        f.txtKod.placeholder = "sıradaki: " + YeniNo(f.session, "HSTNO", kTablo, "", AlanTuru::Metin);
    f.txtKod.setText(no);
    f.SSTab1.setTab(0);
    f.txtAd.setFocus();
}

} // namespace veldona
