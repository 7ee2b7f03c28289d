#include <algorithm>
#include <limits>

#include "core/database.h"
#include "core/session.h"
#include "core/tell.h"
#include "platform/runtime/columntype.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr const char* kErrorTitle = "vorelHata";
constexpr std::int32_t kUnknownType = 18172;

enum class Family { Number, Boolean, Text, LongText, Tarih, Binary, Unknown };

Family family(std::int32_t tip) {
    switch (tip) {
    case columntype::kSmall:
    case columntype::kWhole:
    case columntype::kNumber:
    case columntype::kMoney:
    case columntype::kTiny:
    case columntype::kByte:
    case columntype::kUnsignedWhole:
    case columntype::kDecimal:
        return Family::Number;
    case columntype::kBoolean:
        return Family::Boolean;
    case columntype::kFixedText:
    case columntype::kByteText:
    case columntype::kText:
        return Family::Text;
    case columntype::kByteMemo:
    case columntype::kMemo:
        return Family::LongText;
    case columntype::kDay:
    case columntype::kDate:
        return Family::Tarih;
    case columntype::kBinary:
        return Family::Binary;
    default:
        return Family::Unknown;
    }
}

std::string sayiYaz(Value& deger) {
    std::string text = toText(deger);
    if (text == "True") text = "1";
    if (text == "False") text = "0";
    if (text == "NULL") return "NULL";
    text = trim(replaceAll(text, ".", ""));
    if (const auto comma = text.find(','); comma != std::string::npos) text[comma] = '.';
    return text;
}

// A quote of either kind would end the text in the statement; a back quote stands in its place, in the value
// too.
std::string writeText(Value& deger, bool isLong) {
    std::string text = toText(deger);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\'' || c == '"'; }, '`');
    deger = text;
    return "'" + (isLong ? text : trim(text)) + "'";
}

std::string writeDate(const Value& deger) {
    const std::string text = toText(deger);
    if (text.empty() || text == "00:00:00" || text == "NULL") return "NULL";
    return "'" + text + "'";
}

std::string statementOf(KayitYapisi& rec) {
    const std::size_t n = rec.fieldCount();
    std::string fields, values, assignments;
    for (std::size_t i = 0; i < n; ++i) {
        const char* separator = i == 0 ? "" : ",";
        const std::string deger = DegerYaz(rec.Tip[i], rec.Deger[i]);
        fields += separator + rec.Alan[i];
        values += separator + deger;
        assignments += separator + rec.Alan[i] + "=" + deger;
    }
    if (rec.Islem == KayitYapisi::Add)
        return "INSERT INTO " + rec.Tablo + " (" + fields + " ) VALUES (" + values + ")";
    return "UPDATE " + rec.Tablo + " SET " + assignments + " WHERE " + rec.Kosul;
}

// Asks the back end's own catalogue which relation was broken; a back end without one raises.
std::array<std::string, 4> brokenRelation(adodb::Connection& connection, const std::string& constraint) {
    adodb::Recordset rs;
    rs.open("select  object_name(constid) as constraint_name, object_name(fkeyid) as table_name, "
            "col_name(fkeyid, fkey) as column_name, object_name(rkeyid) as referenced_table_name, "
            "col_name(rkeyid, rkey) as referenced_column_name From sysforeignkeys "
            "where object_name(constid) = '" +
                constraint + "' order by constraint_name, table_name, referenced_table_name,  keyno",
            connection);
    return {joinText(rs.value("table_name")), joinText(rs.value("column_name")),
            joinText(rs.value("referenced_table_name")), joinText(rs.value("referenced_column_name"))};
}

// The text of a broken relation; "" where the error is none, or the back end cannot tell which.
std::string relationMessage(adodb::Connection& connection, const Err& err) {
    static const std::string kInsertion = "COLUMN FOREIGN KEY constraint";
    static const std::string kDeletion = "COLUMN REFERENCE constraint";
    if (err.number != adodb::kStatementError) return {};
    const bool deletion = err.description.find(kDeletion) != std::string::npos;
    const std::string& ifade = deletion ? kDeletion : kInsertion;
    const auto nameBegin = err.description.find(ifade);
    if (nameBegin == std::string::npos) return {};
    const auto nameEnd = nameBegin + ifade.size();
    const auto partEnd = err.description.find(". The conflict", nameEnd);
    std::string text;
    Err ignored;
    attempt(ignored, [&] {
        text = relationError(
            brokenRelation(connection, trim(err.description.substr(nameEnd, partEnd - nameEnd))), deletion);
    });
    return text;
}

std::int32_t in32Bits(std::int64_t deger) {
    if (deger < std::numeric_limits<std::int32_t>::min() || deger > std::numeric_limits<std::int32_t>::max())
        raise(ErrorNumber::Overflow);
    return static_cast<std::int32_t>(deger);
}

// What a failed step raised is told, and left in `err`.
template <class Step>
bool run(Session& session, adodb::Connection& connection, const std::string& baslik, Err& err, Step&& step) {
    if (attempt(err, step)) return true;
    if (const std::string text = relationMessage(connection, err); !text.empty()) {
        tell(session, {text, "İlişkili Kayıt Hatası", Icon::Exclamation, Buttons::Ok});
        return false;
    }
    tell(session, {std::to_string(err.number) + " " + err.description,
                   baslik.empty() ? kProgramTitle : baslik, Icon::None, Buttons::Ok});
    return false;
}

// The statement of a record, whose types are asked where they are not known; false where the question failed
// and was told, `hata` saying how.
bool prepareRecord(Session& session, KayitYapisi& rec, std::string& sql, std::string& hata) {
    if (rec.Tip[0] == 0) {
        RecordsetPtr rs;
        if (!KayitSetiAcKontrollu(session, rs, "SELECT TOP 1 * FROM " + rec.Tablo, hata)) return false;
        TipleriAl(rec, *rs);
    }
    sql = statementOf(rec);
    return true;
}

bool tellUnwritten(Session& session, const std::string& text) {
    tell(session, {text, kErrorTitle, Icon::Exclamation, Buttons::Ok});
    return false;
}

} // namespace

void KayitYapisi::add(std::string alan, Value deger) {
    const std::size_t i = fieldCount();
    if (i == kMostFields) raise(ErrorNumber::SubscriptOutOfRange);
    Alan[i] = std::move(alan);
    Deger[i] = std::move(deger);
}

std::size_t KayitYapisi::fieldCount() const {
    std::size_t n = 0;
    while (n < kMostFields && !trim(Alan[n]).empty())
        ++n;
    return n;
}

void KayitYapisiTemizle(KayitYapisi& rec) {
    rec = KayitYapisi{};
}

void TipleriAl(KayitYapisi& rec, const adodb::Recordset& rs) {
    const auto positionWhere = [&](auto&& isSought) {
        int position = 0;
        while (position < rs.fieldCount() && !isSought(rs.fieldName(position)))
            ++position;
        return position;
    };
    const std::size_t n = rec.fieldCount();
    for (std::size_t i = 0; i < n; ++i) {
        int position = positionWhere([&](const std::string& name) { return name == rec.Alan[i]; });
        if (position == rs.fieldCount())
            position = positionWhere([sought = upperTurkish(rec.Alan[i])](const std::string& name) {
                return upperTurkish(name) == sought;
            });
        if (position == rs.fieldCount()) raise(ErrorNumber::NoSuchItem);
        rec.Tip[i] = rs.fieldType(position);
    }
}

std::string DegerYaz(std::int32_t tip, Value& deger) {
    if (deger.isNull() || upperTurkish(toText(deger)) == "NULL") {
        deger = "NULL";
        return "NULL";
    }
    switch (family(tip)) {
    case Family::Number:
        return sayiYaz(deger);
    case Family::Boolean:
        return toBoolean(deger) ? "-1" : "0";
    case Family::Text:
        return writeText(deger, false);
    case Family::LongText:
        return writeText(deger, true);
    case Family::Tarih:
        return writeDate(deger);
    case Family::Binary:
        deger = "NULL";
        return "NULL";
    case Family::Unknown:
        break;
    }
    throw RuntimeError(kUnknownType, "Value='" + std::to_string(tip) + "'");
}

bool KayitYaz(Session& session, KayitYapisi& rec) {
    return writeRecords(session, {&rec, 1});
}

bool writeRecords(Session& session, std::span<KayitYapisi> records, std::int64_t* firstKey) {
    std::vector<std::string> statements;
    std::string hata;
    Err err;
    for (KayitYapisi& rec : records) { // as far as they can be written as statements
        std::string sql;
        bool isReady = false;
        attempt(err, [&] { isReady = prepareRecord(session, rec, sql, hata); });
        if (!isReady) break;
        statements.push_back(std::move(sql));
    }
    adodb::Connection& connection = *session.gBaglanti;
    std::vector<std::int64_t> done;
    Err failed; // told by the runner's own box
    const bool ran = statements.empty() || run(session, connection, {}, failed, [&] {
                         if (statements.size() == 1 && firstKey == nullptr)
                             connection.execute(statements.front());
                         else
                             connection.executeAll(statements, done);
                     });
    if (!ran)
        return !records[done.size()].isStatement &&
               tellUnwritten(session, failed.description + "\nSQL: " + statements[done.size()]);
    if (firstKey != nullptr && !done.empty()) *firstKey = done.front();
    if (statements.size() == records.size()) return true;
    return tellUnwritten(session,
                         err.number == 0 ? hata + "\nSQL: " : std::to_string(err.number) + err.description);
}

std::string relationError(const std::array<std::string, 4>& satir, bool deletion) {
    const auto& [tablo, alan, parentTable, anaAlan] = satir;
    if (deletion)
        return "İlişkili Kayıtlar Olduğundan Silme İşlemi Gerçekleştirilemiyor\n\n" + tablo + " tablosunun " +
               alan + " Alanı " + parentTable + " tablosunun " + anaAlan +
               " Alanında Kullanıldığı için Bu Kaydı Silemezsiniz.\nBu Kaydı Silebilmek için önce " + tablo +
               " tablosundan İlişkili Kaydı Silmelisiniz";
    return "İlişkili Kayıtlar Olduğundan İstediğiniz İşlem Gerçekleştirilemiyor\n\n" + tablo +
           " tablosunun " + alan + " Alanına " + parentTable + " tablosunun " + anaAlan +
           " Alanında Bulunmayan Bir Değer Atılmaya Çalışılıyor.";
}

bool SqlCalistir(Session& session, adodb::Connection& connection, const std::string& sql,
                 const std::string& baslik) {
    Err err;
    return sql.empty() || run(session, connection, baslik, err, [&] { connection.execute(sql); });
}

std::optional<KayitYapisi> stockRecord(Session& session, const std::string& urkod, std::int32_t miktar,
                                       StockMovement hareket, StockDirection yon) {
    RecordsetPtr rs;
    KayitSetiAc(session, rs,
                "Select TOPLAM_ALINAN,TOPLAM_SATILAN,KALAN From URUNTANITIM Where URKOD = '" + urkod + "'",
                adodb::CursorLocation::Client);
    if (rs->eof()) return std::nullopt;
    std::int64_t bought = toLong(rs->value("TOPLAM_ALINAN"));
    std::int64_t sold = toLong(rs->value("TOPLAM_SATILAN"));
    KayitSetiKapat(rs);

    // Uneven as it looks: goods taken back inwards lower what was sold, outwards what was received.
    const bool giris = yon == StockDirection::In;
    if (hareket == StockMovement::Alis) bought += giris ? miktar : -std::int64_t{miktar};
    if (hareket == StockMovement::Sale) sold += miktar;
    if (hareket == StockMovement::TakeBack) (giris ? sold : bought) -= miktar;

    KayitYapisi rec;
    rec.Islem = KayitYapisi::Change;
    rec.Tablo = "URUNTANITIM";
    rec.Kosul = "URKOD = '" + urkod + "'";
    rec.isStatement = true;
    rec.add("TOPLAM_ALINAN", in32Bits(bought));
    rec.add("TOPLAM_SATILAN", in32Bits(sold));
    rec.add("KALAN", in32Bits(bought - sold));
    return rec;
}

bool StokGuncelle(Session& session, const std::string& urkod, std::int32_t miktar, StockMovement hareket,
                  StockDirection yon) {
    std::optional<KayitYapisi> rec = stockRecord(session, urkod, miktar, hareket, yon);
    return rec && KayitYaz(session, *rec);
}

} // namespace veldona
