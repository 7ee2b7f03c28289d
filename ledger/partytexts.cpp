#include "ledger/partytexts.h"

#include <initializer_list>

#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

constexpr std::size_t kNumberLength = 50;

std::string joinedByBlank(const adodb::Recordset& rs, std::initializer_list<const char*> fields) {
    std::string text;
    const char* between = "";
    for (const char* field : fields) {
        text += between + trim(joinText(rs.value(field)));
        between = " ";
    }
    return text;
}

} // namespace

std::string TelefonMetni(const std::string& ev, const std::string& is, const std::string& gsm) {
    return "EvTel : " + left(ev, kNumberLength) + "    IsTel : " + left(is, kNumberLength) +
           "    GSM : " + left(gsm, kNumberLength);
}

bool TarafOku(Session& session, const std::string& hstno, TarafMetinleri& taraf) {
    KayitSeti rs;
    KayitSetiAc(
        session, rs,
        "SELECT HSTNO,AD,SOYAD,EVTEL,GSM,ISTEL,EVMH,EVCD,EVAPT,EVILCE,EVIL,  ISMH,ISCD,ISAPT,ISILCE,ISIL "
        "FROM MUSTKAYIT WHERE HSTNO= '" +
            hstno + "'",
        adodb::CursorLocation::Client);
    if (rs->eof()) return false;
    const auto text = [&](const char* field) { return joinText(rs->value(field)); };
    taraf.HSTNO = text("HSTNO");
    taraf.adSoyad = text("AD") + " " + text("SOYAD");
    taraf.telefonlar = TelefonMetni(text("EVTEL"), text("ISTEL"), text("GSM"));
    taraf.evAdresi = joinedByBlank(*rs, {"EVMH", "EVCD", "EVAPT", "EVILCE", "EVIL"});
    taraf.isAdresi = joinedByBlank(*rs, {"ISMH", "ISCD", "ISAPT", "ISILCE", "ISIL"});
    taraf.evIlceIl = joinedByBlank(*rs, {"EVILCE", "EVIL"});
    return true;
}

KayitYapisi GenelKayit(const TarafMetinleri& taraf, const std::string& alan8) {
    KayitYapisi rec;
    rec.Islem = KayitYapisi::Ekle;
    rec.Tablo = "T_TEMP_GENEL";
    rec.ekle("ALAN_1", taraf.HSTNO);
    rec.ekle("ALAN_4", taraf.adSoyad);
    rec.ekle("ALAN_6", taraf.telefonlar);
    rec.ekle("ALAN_8", alan8);
    rec.ekle("ACIKLAMA_1", taraf.evAdresi);
    rec.ekle("ACIKLAMA_2", taraf.isAdresi);
    return rec;
}

} // namespace veldona
