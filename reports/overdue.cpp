#include "reports/overdue.h"

#include <string>
#include <utility>
#include <vector>

#include "core/database.h"
#include "platform/runtime/conversion.h"
#include "reports/receivables.h"
#include "reports/salesums.h"

namespace veldona {

namespace {

std::string tarihKosulu(const TarihAraligi& aralik) {
    if (aralik.baslangicSecili && aralik.sonSecili)
        return " WHERE ODTRH >= #" + aralik.baslangic + "# And  ODTRH <#" + aralik.son + "# ";
    return " WHERE ODTRH <=   #" + aralik.baslangic + "# ";
}

// The cheques of one customer after another. A shop without cheques asks once.
class Cekler {
public:
    bool oku(Session& session) {
        std::string hata;
        KayitSeti rs;
        if (!KayitSetiAcKontrollu(session, rs, sorgu(""), hata)) return false;
        var_ = !rs->eof();
        return true;
    }
    // The sums of the customer's cheques, one a row of the store's answer.
    const std::vector<Value>& bul(Session& session, const std::string& mustno) {
        if (!var_ || (soruldu_ && mustno == mustno_)) return toplamlar_;
        toplamlar_.clear();
        KayitSeti rs;
        KayitSetiAc(session, rs, sorgu(" And ALINANCEK.FIRMANO= '" + mustno + "'"),
                    adodb::CursorLocation::Client);
        for (; !rs->eof(); rs->moveNext())
            toplamlar_.push_back(rs->value(1));
        mustno_ = mustno;
        soruldu_ = true;
        return toplamlar_;
    }

private:
    static std::string sorgu(const std::string& firma) {
        return "SELECT  FIRMANO,SUM(TUTAR) as CariAlacakCarininVerdigiCek   From ALINANCEK   WHERE "
               "ALINANCEK.CARI_HESAP_ISLE='1'" +
               firma + " GROUP BY FIRMANO";
    }
    bool var_ = false;
    bool soruldu_ = false;
    std::string mustno_;
    std::vector<Value> toplamlar_;
};

// Each cheque row takes an element of the array for itself, which stays empty.
Currency cekToplami(Session& session, Cekler& cekler, const std::string& mustno, GecikmeDizisi& dizi) {
    Currency toplam;
    for (const Value& tutar : cekler.bul(session, mustno)) {
        toplam += toCurrency(tutar);
        dizi.ilerle();
    }
    return toplam;
}

bool hesapla(RaporEkrani& f, const TarihAraligi& aralik, GecikmeDizisi& dizi) {
    Session& session = f.session;
    const std::string kosul = tarihKosulu(aralik);
    KayitSeti rs;
    std::string hata;
    if (!KayitSetiAcKontrollu(session, rs, TaksitGruplari(kosul), hata) || rs->eof()) return false;
    Cekler cekler;
    SatisToplamlari odenenler;
    if (!cekler.oku(session) || !odenenler.oku(session, {"TAKSITODENEN", kosul})) return false;
    for (; !rs->eof(); rs->moveNext()) {
        GecikmeKaydi kayit;
        GrubuAl(*rs, kayit);
        const Currency cek = cekToplami(session, cekler, kayit.MUSTNO, dizi);
        const auto odenen = odenenler.bul(session, kayit.MUSTNO, kayit.ISLEMNO).value_or(StoredAmount{});
        // The stored amount counts as one of lira here, and so do the cheques: both on purpose.
        const Currency fark = Currency::ofDouble((TamTutar(rs->value(2)) - odenen).column());
        kayit.KALAN = StoredAmount::ofColumn((fark - cek).toDouble());
        dizi.uzat() = std::move(kayit);
        dizi.ilerle();
    }
    return true;
}

void ayrintiyiBosalt(RaporEkrani& f, const TarihAraligi&) {
    GunuGecenBosalt(f.session);
}

std::string raporSorgusu(const RaporEkrani& f, const TarihAraligi&) {
    const std::string sorgu = RaporSutunlari("@");
    if (f.cboSiralamaKriteri->text() == "Ad Soyad")
        return sorgu + " ORDER BY [MUSTKAYIT].[AD], [MUSTKAYIT].[SOYAD],GUNUGECENODM.ODTRH,GUNUGECENODM."
                       "ISLEMNO";
    return sorgu + " ORDER BY GUNUGECENODM.ODTRH,[MUSTKAYIT].[AD], [MUSTKAYIT].[SOYAD],GUNUGECENODM.ISLEMNO";
}

} // namespace

void GunuGecenRaporu(RaporEkrani& f) {
    RaporCalistir(f, {hesapla, ayrintiyiBosalt, raporSorgusu});
}

} // namespace veldona
