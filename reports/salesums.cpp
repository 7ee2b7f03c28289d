#include "reports/salesums.h"

#include <utility>

#include "core/database.h"
#include "platform/runtime/conversion.h"

namespace veldona {

namespace {

std::string toplamSorgusu(const SatisSorgusu& sorgu, const std::string& satis) {
    return "SELECT  MUSTNO,ISLEMNO,SUM(ODMIKTAR) as OdenenPara From " + sorgu.tablo + "  " + sorgu.kosul +
           satis + " GROUP BY MUSTNO,ISLEMNO";
}

} // namespace

bool SatisToplamlari::oku(Session& session, SatisSorgusu sorgu) {
    sorgu_ = std::move(sorgu);
    KayitSeti rs;
    std::string hata;
    if (!KayitSetiAcKontrollu(session, rs, toplamSorgusu(sorgu_, ""), hata)) return false;
    satislar_.reserve(static_cast<std::size_t>(rs->recordCount()));
    for (; !rs->eof(); rs->moveNext()) {
        if (rs->value(0).isNull() || rs->value(1).isNull()) continue; // belongs to no sale that is asked for
        satislar_[toLong(rs->value(1))].push_back({toText(rs->value(0)), rs->value(2)});
    }
    return true;
}

std::optional<StoredAmount> SatisToplamlari::bul(Session& session, const std::string& mustno,
                                                 std::int16_t islemno) const {
    const auto satis = satislar_.find(islemno);
    if (satis == satislar_.end()) return std::nullopt;
    for (const Toplam& toplam : satis->second)
        if (toplam.mustno == mustno) return TamTutar(toplam.tutar);
    KayitSeti rs;
    KayitSetiAc(session, rs,
                toplamSorgusu(sorgu_, "  And MUSTNO='" + mustno + "' And ISLEMNO=" + std::to_string(islemno)),
                adodb::CursorLocation::Client);
    if (rs->eof()) return std::nullopt;
    return TamTutar(rs->value(2));
}

StoredAmount TamTutar(const Value& tutar) {
    return StoredAmount::ofColumn(tutar).rounded();
}

} // namespace veldona
