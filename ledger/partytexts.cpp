#include "ledger/partytexts.h"

#include <initializer_list>

#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

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

std::string phoneText(const std::string& home, const std::string& is, const std::string& gsm) {
    return "EvTel : " + left(home, kNumberLength) + "    IsTel : " + left(is, kNumberLength) +
           "    GSM : " + left(gsm, kNumberLength);
}

bool readParty(Session& session, const std::string& hstno, PartyTexts& party) {
    RecordsetPtr rs;
    KayitSetiAc(
        session, rs,
        "SELECT HSTNO,AD,SOYAD,EVTEL,GSM,ISTEL,EVMH,EVCD,EVAPT,EVILCE,EVIL,  ISMH,ISCD,ISAPT,ISILCE,ISIL "
        "FROM MUSTKAYIT WHERE HSTNO= '" +
            hstno + "'",
        adodb::CursorLocation::Client);
    if (rs->eof()) return false;
    const auto text = [&](const char* field) { return joinText(rs->value(field)); };
    party.HSTNO = text("HSTNO");
    party.fullName = text("AD") + " " + text("SOYAD");
    party.phones = phoneText(text("EVTEL"), text("ISTEL"), text("GSM"));
    party.homeAddress = joinedByBlank(*rs, {"EVMH", "EVCD", "EVAPT", "EVILCE", "EVIL"});
    party.workAddress = joinedByBlank(*rs, {"ISMH", "ISCD", "ISAPT", "ISILCE", "ISIL"});
    party.homeTown = joinedByBlank(*rs, {"EVILCE", "EVIL"});
    return true;
}

KayitYapisi generalRow(const PartyTexts& party, const std::string& alan8) {
    KayitYapisi rec;
    rec.Islem = KayitYapisi::Add;
    rec.Tablo = "T_TEMP_GENEL";
    rec.add("ALAN_1", party.HSTNO);
    rec.add("ALAN_4", party.fullName);
    rec.add("ALAN_6", party.phones);
    rec.add("ALAN_8", alan8);
    rec.add("ACIKLAMA_1", party.homeAddress);
    rec.add("ACIKLAMA_2", party.workAddress);
    return rec;
}

} // namespace veldona
