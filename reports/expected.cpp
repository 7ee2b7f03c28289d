#include "reports/expected.h"

#include <optional>

#include "core/database.h"
#include "reports/receivables.h"
#include "reports/salesums.h"

namespace veldona {

namespace {

std::string donemKosulu(const TarihAraligi& aralik) {
    return "  ODTRH >= #" + aralik.baslangic + "# And  ODTRH <=#" + aralik.son + "# ";
}

// `planlanan` up to the end, `odenen` up to the end, `donem` in the period, or nothing where no row falls
// in it. What such a sale gets is of no account: its last date lies before the period, so the paper leaves it
// out.
StoredAmount beklenen(StoredAmount planlanan, StoredAmount odenen, std::optional<StoredAmount> donem) {
    StoredAmount kalan = planlanan - odenen;
    if (donem)
        kalan = *donem;
    else
        odenen = {};
    return planlanan - odenen <= kalan ? planlanan - odenen : kalan;
}

bool hesapla(RaporEkrani& f, const TarihAraligi& aralik, GecikmeDizisi& dizi) {
    Session& session = f.session;
    const std::string kosul = " WHERE ODTRH <=   #" + aralik.son + "# ";
    KayitSeti rs;
    std::string hata;
    if (!KayitSetiAcKontrollu(session, rs, TaksitGruplari(kosul), hata) || rs->eof()) return false;
    SatisToplamlari odenenler, donemler;
    if (!odenenler.oku(session, {"TAKSITODENEN", kosul})) return false;
    if (!donemler.oku(session, {"URUNSAT", "Where  " + donemKosulu(aralik)})) return false;
    for (; !rs->eof(); rs->moveNext()) {
        GecikmeKaydi kayit;
        GrubuAl(*rs, kayit);
        const auto odenen = odenenler.bul(session, kayit.MUSTNO, kayit.ISLEMNO).value_or(StoredAmount{});
        kayit.KALAN =
            beklenen(TamTutar(rs->value(2)), odenen, donemler.bul(session, kayit.MUSTNO, kayit.ISLEMNO));
        dizi.uzat() = std::move(kayit);
        dizi.ilerle();
    }
    return true;
}

void ayrintiyiBosalt(RaporEkrani& f, const TarihAraligi& aralik) {
    if (SqlCalistir(f.session, *f.session.gBaglanti,
                    "Delete from GUNUGECENODM WHERE NOT  (" + donemKosulu(aralik) + "  )"))
        GunuGecenBosalt(f.session);
}

std::string raporSorgusu(const RaporEkrani&, const TarihAraligi& aralik) {
    return RaporSutunlari("--") + "AND " + donemKosulu(aralik) +
           "   ORDER BY [MUSTKAYIT].[AD], [MUSTKAYIT].[SOYAD],GUNUGECENODM.ISLEMNO,GUNUGECENODM.ODTRH";
}

} // namespace

void BeklenenRaporu(RaporEkrani& f) {
    RaporCalistir(f, {hesapla, ayrintiyiBosalt, raporSorgusu});
}

} // namespace veldona
