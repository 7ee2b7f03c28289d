#include "sales/salerows.h"

#include "core/money.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

constexpr const char* kTekUrun = "1"; // the one product that a sale sells
constexpr int kYok = -1;

StoredText scaled(const FrmSatis& f, const Value& tutar) {
    return ParaOku(f.session, tutar, {}, ParaKipi::Deger);
}

// A record of this sale, its customer and number set.
KayitYapisi satisKaydi(const FrmSatis& f, const std::string& tablo) {
    KayitYapisi rec;
    KayitYapisiTemizle(rec);
    rec.Islem = KayitYapisi::Ekle;
    rec.Tablo = tablo;
    rec.ekle("MUSTNO", f.session.gHSTNO);
    rec.ekle("ISLEMNO", f.session.gISLEMNO);
    return rec;
}

void addAudit(FrmSatis& f, KayitYapisi& rec) {
    rec.ekle("KONTROL_KIM", trim(f.session.gKullanici));
    rec.ekle("KONTROL_NE_ZAMAN", f.session.desktop.clock.now());
}

KayitYapisi odemeKaydi(FrmSatis& f, const std::string& tablo, const Value& odtrh, const Value& tutar) {
    KayitYapisi rec = satisKaydi(f, tablo);
    rec.ekle("ODTRH", odtrh);
    rec.ekle("ODMIKTAR", scaled(f, tutar));
    return rec;
}

KayitYapisi bugunkuOdeme(FrmSatis& f, const std::string& tablo, const std::string& tutar) {
    KayitYapisi rec = odemeKaydi(f, tablo, VarsayilanDeger(f, SatisAlani::Trh), tutar);
    addAudit(f, rec);
    return rec;
}

// Without a remainder the total is spread over the grid's rows, the heading counted.
Value installmentAmount(const FrmSatis& f, int satir, int satirSayisi) {
    if (f.MskKalan.text().empty()) return divide(toDouble(f.MskToplamUcret.text()), satirSayisi);
    return f.grdYapilacakOdeme.textMatrix(satir, OdemeSutunu::Miktar);
}

Value saleTime(FrmSatis& f) {
    if (f.dtIslemTarihi.value().isNull()) return "";
    return f.dtIslemTarihi.text() + " " + format(f.session.desktop.clock.now(), "hh:mm:ss");
}

} // namespace

Value VarsayilanDeger(FrmSatis& f, int kod) {
    switch (kod) {
    case SatisAlani::KefilCariId:
    case SatisAlani::SatisElemaniId:
    case SatisAlani::BankaId:
    case SatisAlani::DepoId:
        return kYok;
    case SatisAlani::OdemeTipi:
        return "Senet";
    case SatisAlani::Indirim:
        return 0;
    case SatisAlani::TopBorc:
        return scaled(f, toCurrency(f.MskToplamUcret.text()));
    case SatisAlani::Trh:
        return saleTime(f);
    case SatisAlani::IndirimYtl:
        return scaled(f, 0);
    case SatisAlani::TeslimEdilenTrh:
        return f.session.desktop.clock.now();
    case SatisAlani::TeslimEdildi:
        return 1;
    default: // KrediKarti, Aciklama, TeslimatTrh
        return "";
    }
}

bool IslemBasligiEkle(FrmSatis& f, SatisYolu yol) {
    KayitYapisi rec = satisKaydi(f, "ISLEMNOTABLO");
    rec.ekle("KEFIL_CARI_ID", VarsayilanDeger(f, SatisAlani::KefilCariId));
    rec.ekle("ODEME_TIPI", VarsayilanDeger(f, SatisAlani::OdemeTipi));
    rec.ekle("KREDI_KARTI", VarsayilanDeger(f, SatisAlani::KrediKarti));
    rec.ekle("SATIS_ELEMANI_ID", VarsayilanDeger(f, SatisAlani::SatisElemaniId));
    rec.ekle("INDIRIM", VarsayilanDeger(f, SatisAlani::Indirim));
    rec.ekle("ACIKLAMA", VarsayilanDeger(f, SatisAlani::Aciklama));
    rec.ekle("TOPBORC", VarsayilanDeger(f, SatisAlani::TopBorc));
    rec.ekle("TRH", VarsayilanDeger(f, SatisAlani::Trh));
    rec.ekle("INDIRIM_YTL", VarsayilanDeger(f, SatisAlani::IndirimYtl));
    rec.ekle("TESLIMAT_TRH", VarsayilanDeger(f, SatisAlani::TeslimatTrh));
    rec.ekle("TESLIM_EDILEN_TRH", VarsayilanDeger(f, SatisAlani::TeslimEdilenTrh));
    rec.ekle("TESLIM_EDILDI", VarsayilanDeger(f, SatisAlani::TeslimEdildi));
    rec.ekle("BANKA_ID", VarsayilanDeger(f, SatisAlani::BankaId));
    if (yol == SatisYolu::Degisen) addAudit(f, rec);
    return KayitYaz(f.session, rec);
}

bool SatisSatiriEkle(FrmSatis& f) {
    const std::string toplam = trim(f.MskToplamUcret.text());
    KayitYapisi rec = satisKaydi(f, "URUNAL");
    rec.ekle("URKOD", kTekUrun);
    rec.ekle("ADET", 1);
    rec.ekle("TRH", VarsayilanDeger(f, SatisAlani::Trh));
    rec.ekle("FIYAT", toplam.empty() ? Value("NULL") : Value(scaled(f, toplam)));
    rec.ekle("ACIKLAMA", trim(f.txtAciklama.text()));
    rec.ekle("KDV", 0);
    rec.ekle("KDV_DAHIL_HARIC", 1);
    addAudit(f, rec);
    rec.ekle("TESLIM_EDILDI", VarsayilanDeger(f, SatisAlani::TeslimEdildi));
    rec.ekle("DEPO_ID", VarsayilanDeger(f, SatisAlani::DepoId));
    rec.ekle("SATIS_ELEMANI_ID", VarsayilanDeger(f, SatisAlani::SatisElemaniId));
    return KayitYaz(f.session, rec) &&
           StokGuncelle(f.session, kTekUrun, 1, StokHareketi::Satis, StokYonu::Cikis);
}

bool PesinatEkle(FrmSatis& f, const std::string& tablo) {
    KayitYapisi rec = bugunkuOdeme(f, tablo, f.MskAlinanPesinat.text());
    if (tablo == "TAKSITODENEN")
        rec.ekle("KASA_ID", VarsayilanDeger(f, SatisAlani::BankaId));
    else
        rec.ekle("PESINAT", 1);
    return KayitYaz(f.session, rec);
}

bool TaksitSatirlariEkle(FrmSatis& f, SatisYolu yol) {
    const FlexGrid& grid = f.grdYapilacakOdeme;
    const std::uint8_t satirSayisi = toByte(grid.rows());
    for (int satir = 1; satir < satirSayisi; ++satir) {
        const std::string& vade = grid.textMatrix(satir, OdemeSutunu::Tarih);
        if (vade.empty()) continue;
        KayitYapisi rec = odemeKaydi(f, "URUNSAT", vade, installmentAmount(f, satir, satirSayisi));
        if (yol == SatisYolu::Yeni) {
            addAudit(f, rec);
            rec.ekle("PESINAT", satir == 1 && toDouble(f.MskAlinanPesinat.text()) > 0 ? 1 : 0);
        }
        if (!KayitYaz(f.session, rec)) return false;
    }
    return true;
}

bool PesinSatisPlaniEkle(FrmSatis& f, const std::string& tablo) {
    KayitYapisi rec = bugunkuOdeme(f, tablo, f.MskToplamUcret.text());
    rec.ekle("PESINAT", 1);
    return KayitYaz(f.session, rec);
}

bool PesinOdemeEkle(FrmSatis& f) {
    KayitYapisi rec = bugunkuOdeme(f, "TAKSITODENEN", f.MskToplamUcret.text());
    return KayitYaz(f.session, rec);
}

bool YapilanOdemeleriEkle(FrmSatis& f) {
    const FlexGrid& grid = f.grdYapilanOdeme;
    for (int satir = 1; satir < grid.rows(); ++satir) {
        const std::string& miktar = grid.textMatrix(satir, OdemeSutunu::Miktar);
        if (miktar.empty()) continue;
        KayitYapisi rec = odemeKaydi(f, "TAKSITODENEN", grid.textMatrix(satir, OdemeSutunu::Tarih), miktar);
        addAudit(f, rec);
        if (!KayitYaz(f.session, rec)) return false;
    }
    return true;
}

bool SatirlariSil(Session& session, const std::string& tablo, const std::string& islemno) {
    return SqlCalistir(session, *session.gBaglanti, "Delete from " + tablo + " Where ISLEMNO= " + islemno);
}

bool SatisKayitlariniSil(Session& session, const std::string& islemno) {
    for (const char* tablo : {"URUNSAT", "TAKSITODENEN", "URUNAL", "ISLEMNOTABLO"})
        if (!SatirlariSil(session, tablo, islemno)) return false;
    return true;
}

} // namespace veldona
