#include "sales/stock.h"

#include "core/database.h"
#include "core/session.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

bool run(Session& session, const std::string& sql) {
    return SqlCalistir(session, *session.gBaglanti, sql);
}

// A quantity as the statement reads it: its decimal sign is the point.
std::string inStatement(const Value& miktar) {
    return replaceAll(joinText(miktar), ",", ".");
}

void takeOver(Session& session, const std::string& total, const std::string& movements) {
    RecordsetPtr rs;
    KayitSetiAc(session, rs, movements, adodb::CursorLocation::Client);
    for (; !rs->eof(); rs->moveNext()) {
        const std::string miktar = inStatement(rs->value("ToplamMiktar"));
        if (miktar.empty()) continue;
        if (!run(session, "UPDATE URUNTANITIM SET " + total + " =" + miktar + " WHERE   URKOD='" +
                              joinText(rs->value("URKOD")) + "'"))
            break;
    }
    KayitSetiKapat(rs);
}

} // namespace

void StokYenidenHesapla(Session& session) {
    run(session, "UPDATE URUNTANITIM SET KALAN=0,TOPLAM_ALINAN=0, TOPLAM_SATILAN =0");
    takeOver(session, "TOPLAM_ALINAN",
             "SELECT URKOD, Sum(MIKTAR) AS ToplamMiktar From T_STOK_GRIS_CIKIS_DETAY GROUP BY URKOD ORDER BY "
             "URKOD");
    takeOver(session, "TOPLAM_SATILAN",
             "SELECT URKOD, Sum(ADET) AS ToplamMiktar From URUNAL GROUP BY URKOD ORDER BY URKOD");
    takeOver(
        session, "TOPLAM_ALINAN",
        "SELECT URKOD, Sum(MIKTAR) AS ToplamMiktar From FATURA_DETAY Where ALIS_SATIS = 0 GROUP BY URKOD "
        "ORDER BY URKOD");
    takeOver(
        session, "TOPLAM_SATILAN",
        "SELECT URKOD, Sum(MIKTAR) AS ToplamMiktar From FATURA_DETAY Where ALIS_SATIS = 1 GROUP BY URKOD "
        "ORDER BY URKOD");
    run(session, "UPDATE URUNTANITIM SET KALAN=TOPLAM_ALINAN- TOPLAM_SATILAN ");
}

} // namespace veldona
