#include "sales/salerows.h"

#include <utility>

#include "core/money.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr const char* kOnlyProduct = "1"; // the one product that a sale sells
constexpr int kNone = -1;

StoredText scaled(const FrmSatis& f, const Value& tutar) {
    return ParaOku(f.session, tutar, {}, MoneyMode::Deger);
}

// A record of this sale, its customer and number set.
KayitYapisi saleRow(const FrmSatis& f, const std::string& tablo) {
    KayitYapisi rec;
    KayitYapisiTemizle(rec);
    rec.Islem = KayitYapisi::Add;
    rec.Tablo = tablo;
    rec.add("MUSTNO", f.session.gHSTNO);
    rec.add("ISLEMNO", f.session.gISLEMNO);
    return rec;
}

void addAudit(FrmSatis& f, KayitYapisi& rec) {
    rec.add("KONTROL_KIM", trim(f.session.gKullanici));
    rec.add("KONTROL_NE_ZAMAN", f.session.desktop.clock.now());
}

KayitYapisi paymentRow(FrmSatis& f, const std::string& tablo, const Value& odtrh, const Value& tutar) {
    KayitYapisi rec = saleRow(f, tablo);
    rec.add("ODTRH", odtrh);
    rec.add("ODMIKTAR", scaled(f, tutar));
    return rec;
}

KayitYapisi todaysPayment(FrmSatis& f, const std::string& tablo, const std::string& tutar) {
    KayitYapisi rec = paymentRow(f, tablo, VarsayilanDeger(f, SaleField::Trh), tutar);
    addAudit(f, rec);
    return rec;
}

// Without a remainder the total is spread over the grid's rows, the heading counted.
Value installmentAmount(const FrmSatis& f, int satir, int rowCount) {
    if (f.MskKalan.text().empty()) return divide(toDouble(f.MskToplamUcret.text()), rowCount);
    return f.grdYapilacakOdeme.textMatrix(satir, PaymentColumn::Miktar);
}

Value saleTime(FrmSatis& f) {
    if (f.dtIslemTarihi.value().isNull()) return "";
    return f.dtIslemTarihi.text() + " " + format(f.session.desktop.clock.now(), "hh:mm:ss");
}

} // namespace

Value VarsayilanDeger(FrmSatis& f, int kod) {
    switch (kod) {
    case SaleField::KefilCariId:
    case SaleField::SatisElemaniId:
    case SaleField::BankaId:
    case SaleField::DepoId:
        return kNone;
    case SaleField::OdemeTipi:
        return "Senet";
    case SaleField::Indirim:
        return 0;
    case SaleField::TopBorc:
        return scaled(f, toCurrency(f.MskToplamUcret.text()));
    case SaleField::Trh:
        return saleTime(f);
    case SaleField::IndirimYtl:
        return scaled(f, 0);
    case SaleField::TeslimEdilenTrh:
        return f.session.desktop.clock.now();
    case SaleField::TeslimEdildi:
        return 1;
    default: // KrediKarti, Aciklama, TeslimatTrh
        return "";
    }
}

void IslemBasligiEkle(FrmSatis& f, SaleRoute route, SaleRows& rows) {
    KayitYapisi rec = saleRow(f, "ISLEMNOTABLO");
    rec.add("KEFIL_CARI_ID", VarsayilanDeger(f, SaleField::KefilCariId));
    rec.add("ODEME_TIPI", VarsayilanDeger(f, SaleField::OdemeTipi));
    rec.add("KREDI_KARTI", VarsayilanDeger(f, SaleField::KrediKarti));
    rec.add("SATIS_ELEMANI_ID", VarsayilanDeger(f, SaleField::SatisElemaniId));
    rec.add("INDIRIM", VarsayilanDeger(f, SaleField::Indirim));
    rec.add("ACIKLAMA", VarsayilanDeger(f, SaleField::Aciklama));
    rec.add("TOPBORC", VarsayilanDeger(f, SaleField::TopBorc));
    rec.add("TRH", VarsayilanDeger(f, SaleField::Trh));
    rec.add("INDIRIM_YTL", VarsayilanDeger(f, SaleField::IndirimYtl));
    rec.add("TESLIMAT_TRH", VarsayilanDeger(f, SaleField::TeslimatTrh));
    rec.add("TESLIM_EDILEN_TRH", VarsayilanDeger(f, SaleField::TeslimEdilenTrh));
    rec.add("TESLIM_EDILDI", VarsayilanDeger(f, SaleField::TeslimEdildi));
    rec.add("BANKA_ID", VarsayilanDeger(f, SaleField::BankaId));
    if (route == SaleRoute::Changed) addAudit(f, rec);
    rows.push_back(std::move(rec));
}

void SatisSatiriEkle(FrmSatis& f, SaleRows& rows) {
    const std::string total = trim(f.MskToplamUcret.text());
    KayitYapisi rec = saleRow(f, "URUNAL");
    rec.add("URKOD", kOnlyProduct);
    rec.add("ADET", 1);
    rec.add("TRH", VarsayilanDeger(f, SaleField::Trh));
    rec.add("FIYAT", total.empty() ? Value("NULL") : Value(scaled(f, total)));
    rec.add("ACIKLAMA", trim(f.txtAciklama.text()));
    rec.add("KDV", 0);
    rec.add("KDV_DAHIL_HARIC", 1);
    addAudit(f, rec);
    rec.add("TESLIM_EDILDI", VarsayilanDeger(f, SaleField::TeslimEdildi));
    rec.add("DEPO_ID", VarsayilanDeger(f, SaleField::DepoId));
    rec.add("SATIS_ELEMANI_ID", VarsayilanDeger(f, SaleField::SatisElemaniId));
    rows.push_back(std::move(rec));
}

std::optional<KayitYapisi> soldUnit(Session& session) {
    return stockRecord(session, kOnlyProduct, 1, StockMovement::Sale, StockDirection::Out);
}

void PesinatEkle(FrmSatis& f, const std::string& tablo, SaleRows& rows) {
    KayitYapisi rec = todaysPayment(f, tablo, f.MskAlinanPesinat.text());
    if (tablo == "TAKSITODENEN")
        rec.add("KASA_ID", VarsayilanDeger(f, SaleField::BankaId));
    else
        rec.add("PESINAT", 1);
    rows.push_back(std::move(rec));
}

void TaksitSatirlariEkle(FrmSatis& f, SaleRoute route, SaleRows& rows) {
    const FlexGrid& grid = f.grdYapilacakOdeme;
    const std::uint8_t rowCount = toByte(grid.rows());
    for (int satir = 1; satir < rowCount; ++satir) {
        const std::string& dueDay = grid.textMatrix(satir, PaymentColumn::Tarih);
        if (dueDay.empty()) continue;
        KayitYapisi rec = paymentRow(f, "URUNSAT", dueDay, installmentAmount(f, satir, rowCount));
        if (route == SaleRoute::Yeni) {
            addAudit(f, rec);
            rec.add("PESINAT", satir == 1 && toDouble(f.MskAlinanPesinat.text()) > 0 ? 1 : 0);
        }
        rows.push_back(std::move(rec));
    }
}

void PesinSatisPlaniEkle(FrmSatis& f, const std::string& tablo, SaleRows& rows) {
    KayitYapisi rec = todaysPayment(f, tablo, f.MskToplamUcret.text());
    rec.add("PESINAT", 1);
    rows.push_back(std::move(rec));
}

void PesinOdemeEkle(FrmSatis& f, SaleRows& rows) {
    rows.push_back(todaysPayment(f, "TAKSITODENEN", f.MskToplamUcret.text()));
}

bool addPayments(FrmSatis& f) {
    const FlexGrid& grid = f.grdYapilanOdeme;
    for (int satir = 1; satir < grid.rows(); ++satir) {
        const std::string& miktar = grid.textMatrix(satir, PaymentColumn::Miktar);
        if (miktar.empty()) continue;
        KayitYapisi rec = paymentRow(f, "TAKSITODENEN", grid.textMatrix(satir, PaymentColumn::Tarih), miktar);
        addAudit(f, rec);
        if (!KayitYaz(f.session, rec)) return false;
    }
    return true;
}

bool deleteRows(Session& session, const std::string& tablo, const std::string& islemno) {
    return SqlCalistir(session, *session.gBaglanti, "Delete from " + tablo + " Where ISLEMNO= " + islemno);
}

bool SatisKayitlariniSil(Session& session, const std::string& islemno) {
    for (const char* tablo : {"URUNSAT", "TAKSITODENEN", "URUNAL", "ISLEMNOTABLO"})
        if (!deleteRows(session, tablo, islemno)) return false;
    return true;
}

} // namespace veldona
