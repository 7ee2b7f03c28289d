#include "reports/receivables.h"

#include <limits>
#include <tuple>
#include <utility>

#include "core/database.h"
#include "core/formframe.h"
#include "core/money.h"
#include "core/reporting.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

constexpr std::int32_t kBeklenenKipi = 1;

std::string gunMetni(const DateBox& kutu) {
    DateTime gun = toDate(kutu.value());
    return replaceAll(toText(TarihDuzelt(gun)), ".", "/");
}

TarihAraligi araligiOku(const RaporEkrani& f) {
    TarihAraligi aralik;
    aralik.baslangicSecili = !f.dtRaporTarihi.value().isNull();
    aralik.sonSecili = !f.dtRaporTarihiSon.value().isNull();
    if (aralik.baslangicSecili) aralik.baslangic = gunMetni(f.dtRaporTarihi);
    if (aralik.sonSecili) aralik.son = gunMetni(f.dtRaporTarihiSon);
    if (aralik.sonSecili && !aralik.baslangicSecili) aralik.baslangic = aralik.son;
    return aralik;
}

// A run under way; the screen may unload meanwhile.
class Kosu {
public:
    explicit Kosu(RaporEkrani& f) : hold_(f.forms()), f_(f) { f_.hesapliyor = true; }
    ~Kosu() { f_.hesapliyor = false; }
    Kosu(const Kosu&) = delete;
    Kosu& operator=(const Kosu&) = delete;

private:
    Forms::Hold hold_;
    RaporEkrani& f_;
};

// As the paper would show it: what reads 0,00 there is no claim.
bool alacakKaldi(const Session& session, const GecikmeKaydi& kayit) {
    return toDouble(ParaGoster(session, kayit.KALAN)) > 0;
}

void adiOku(Session& session, GecikmeKaydi& kayit) {
    for (const auto& [alan, yer] : {std::pair{"AD", &kayit.AD}, std::pair{"SOYAD", &kayit.SOYAD}}) {
        const Value deger = AlanDegeriOku(session, alan, "MUSTKAYIT", "HSTNO", kayit.MUSTNO);
        if (!deger.isNull() && deger != Value(true)) *yer = toText(deger);
    }
}

bool satirYaz(Session& session, KayitYapisi& rec, const GecikmeKaydi& kayit) {
    rec.Deger[0] = kayit.MUSTNO;
    rec.Deger[1] = kayit.AD + "    " + kayit.SOYAD;
    rec.Deger[2] = std::to_string(kayit.ISLEMNO);
    rec.Deger[3] = toText(kayit.ODTRH);
    rec.Deger[4] = toText(kayit.KALAN.column());
    rec.Deger[5] = toText(kayit.MIN_ODTRH);
    return KayitYaz(session, rec);
}

bool kayitlariYaz(Session& session, std::vector<GecikmeKaydi>& kayitlar) {
    KayitYapisi rec;
    rec.Islem = KayitYapisi::Ekle;
    rec.Tablo = "GUNUGECENODM";
    for (const char* alan : {"MUSTNO", "AD_SOYAD", "ISLEMNO", "ODTRH", "KALAN", "MIN_ODTRH"})
        rec.ekle(alan, "");
    const GecikmeKaydi* onceki = nullptr;
    for (GecikmeKaydi& kayit : kayitlar) {
        if (!alacakKaldi(session, kayit)) continue;
        if (onceki && onceki->MUSTNO == kayit.MUSTNO)
            std::tie(kayit.AD, kayit.SOYAD) = std::tie(onceki->AD, onceki->SOYAD);
        else
            adiOku(session, kayit);
        onceki = &kayit;
        if (!satirYaz(session, rec, kayit)) return false;
    }
    return true;
}

// The paper has gone: row by row, each read behind the one before it.
void DataReport_Terminate(Session& session) {
    dao::Database books = session.dbEngine.openDatabase(session.gVeritabaniYolu, session.connectText());
    dao::Recordset rs = books.openRecordset("GUNUGECENODM");
    for (; !rs.eof(); rs.moveNext())
        rs.remove();
}

void raporuGoster(RaporEkrani& f, const std::string& sorgu) {
    KayitSeti rs;
    std::string hata;
    if (!KayitSetiAcKontrollu(f.session, rs, sorgu, hata)) return;
    if (rs->eof()) f.session.desktop.dialogs.tell("Kriterlere Uygun Kayıt Bulunamadı", Icon::Information);
    const char* baslik =
        f.raporKipi == kBeklenenKipi ? "Beklenen Tahsilatlar Raporu" : "Günü Geçen Ödemeler Raporu";
    BantliRaporGoster(
        f.session, "gungecodmrprYTL", rs.get(),
        [&](report::Layout& layout) {
            layout.setText("Section2", "Label1", baslik);
            layout.title = baslik;
        },
        [&] { DataReport_Terminate(f.session); });
}

// True where the rows stand in the scratch table and the screen is still there to report on them: closing it
// while the windows were let in gives the run up.
bool tabloyuDoldur(RaporEkrani& f, const RaporKurallari& kurallar, const TarihAraligi& aralik) {
    const Mesgul mesgul(f);
    GecikmeDizisi dizi;
    if (!kurallar.hesapla(f, aralik, dizi)) return false;
    f.session.desktop.events.doEvents();
    if (f.isUnloaded()) return false;
    if (!kayitlariYaz(f.session, dizi.kayitlar())) return false;
    f.session.desktop.events.doEvents();
    if (f.isUnloaded()) GunuGecenBosalt(f.session);
    return !f.isUnloaded();
}

void calistir(RaporEkrani& f, const RaporKurallari& kurallar) {
    if (!GunuGecenBosalt(f.session)) return;
    const TarihAraligi aralik = araligiOku(f);
    if (!aralik.baslangicSecili && !aralik.sonSecili)
        return f.session.desktop.dialogs.tell(" Tarih Aralığı Seçmelisiniz ");
    if (!tabloyuDoldur(f, kurallar, aralik)) return;
    if (f.cboRapor.text() != "Basit Rapor") return kurallar.ayrintiyiBosalt(f, aralik);
    if (f.session.gParaBirimi == 1) raporuGoster(f, kurallar.raporSorgusu(f, aralik));
}

} // namespace

void GecikmeDizisi::ilerle() {
    if (sira_ == std::numeric_limits<std::int16_t>::max()) raise(ErrorNumber::Overflow);
    ++sira_;
}

GecikmeKaydi& GecikmeDizisi::uzat() {
    kayitlar_.resize(static_cast<std::size_t>(sira_) + 1);
    return kayitlar_.back();
}

void RaporCalistir(RaporEkrani& f, const RaporKurallari& kurallar) {
    if (f.hesapliyor) return;
    const Kosu kosu(f);
    calistir(f, kurallar);
}

bool GunuGecenBosalt(Session& session) {
    return SqlCalistir(session, *session.gBaglanti, "Delete from GUNUGECENODM ");
}

std::string TaksitGruplari(const std::string& kosul) {
    return "SELECT  MUSTNO,ISLEMNO,SUM(ODMIKTAR) as OdenmesiGerekenPara ,MAX(ODTRH) As ODEME_TARIHI   "
           ",MIN(ODTRH) As MIN_ODEME_TARIHI FROM URUNSAT " +
           kosul + " GROUP BY MUSTNO,ISLEMNO";
}

void GrubuAl(const adodb::Recordset& rs, GecikmeKaydi& kayit) {
    kayit.MUSTNO = toText(rs.value(0));
    kayit.ISLEMNO = toInteger(rs.value(1));
    kayit.ODTRH = toDate(rs.value(3));
    kayit.MIN_ODTRH = toDate(rs.value(4));
}

std::string RaporSutunlari(const std::string& ara) {
    return "SELECT  MUSTKAYIT.HSTNO,  MUSTKAYIT.AD,MUSTKAYIT.SOYAD,(MUSTKAYIT.EVTEL+'" + ara +
           "'+MUSTKAYIT.GSM) AS TELEFON,GUNUGECENODM.ODTRH,  GUNUGECENODM.MUSTNO,GUNUGECENODM.ISLEMNO, "
           "GUNUGECENODM.KALAN /1000000 AS KALAN  From GUNUGECENODM, MUSTKAYIT WHERE GUNUGECENODM.MUSTNO = "
           "MUSTKAYIT.HSTNO ";
}

} // namespace veldona
