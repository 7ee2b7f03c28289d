#include "daybook/paperrows.h"

#include <initializer_list>
#include <utility>

#include "core/database.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

// The columns that hold a text, in their order.
std::string joined(const adodb::Recordset& rs, std::initializer_list<const char*> columns,
                   const char* between) {
    std::string all;
    for (const char* column : columns) {
        const std::string text = trim(joinText(rs.value(column)));
        if (!text.empty()) all += (all.empty() ? "" : between) + text;
    }
    return all;
}

} // namespace

std::string quoted(const std::string& text) {
    return replaceAll(text, "'", "''");
}

StoredAmount amountOf(const Value& column) {
    return column.isNull() ? StoredAmount{} : StoredAmount::ofColumn(column).roundedToKurus();
}

report::DataSet letterhead(Session& session) {
    RecordsetPtr rs;
    KayitSetiAc(session, rs, "SELECT FIRMA, GIRIS, ADRES, TELEFON, FAX1, GSM, WEB, MAIL FROM FIRMABILGISI",
                adodb::CursorLocation::Client);
    report::DataSet shop{"firma", {{"FIRMA"}, {"GIRIS"}, {"ADRES"}, {"TELEFON"}, {"ILETISIM"}, {"YAZISMA"}}};
    if (rs->eof()) return shop;
    std::string reached;
    for (const auto& [name, column] : {std::pair{"Tel: ", "TELEFON"}, {"Faks: ", "FAX1"}, {"GSM: ", "GSM"}}) {
        const std::string number = trim(joinText(rs->value(column)));
        if (!number.empty()) reached += (reached.empty() ? "" : "   ") + (name + number);
    }
    shop.addRow({rs->value("FIRMA"), rs->value("GIRIS"), rs->value("ADRES"), rs->value("TELEFON"), reached,
                 joined(*rs, {"WEB", "MAIL"}, "   ")});
    return shop;
}

std::optional<Party> readParty(Session& session, const std::string& account) {
    RecordsetPtr rs;
    KayitSetiAc(session, rs,
                "SELECT HSTNO,AD,SOYAD,EVTEL,EVTEL2,ISTEL,GSM,EVMH,EVCD,EVAPT,EVILCE,EVIL,ISMH,ISCD,ISAPT,"
                "ISILCE,ISIL FROM MUSTKAYIT WHERE HSTNO='" +
                    quoted(account) + "'",
                adodb::CursorLocation::Client);
    if (account.empty() || rs->eof()) return std::nullopt;
    Party party{trim(joinText(rs->value("HSTNO"))), joined(*rs, {"AD", "SOYAD"}, " "),
                joined(*rs, {"GSM", "EVTEL", "EVTEL2", "ISTEL"}, ", "),
                joined(*rs, {"EVMH", "EVCD", "EVAPT", "EVILCE", "EVIL"}, " ")};
    if (party.address.empty()) party.address = joined(*rs, {"ISMH", "ISCD", "ISAPT", "ISILCE", "ISIL"}, " ");
    return party;
}

} // namespace veldona
