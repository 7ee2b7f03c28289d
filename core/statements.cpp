#include <algorithm>
#include <limits>

#include "core/database.h"
#include "platform/runtime/columntype.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

constexpr const char* kHataBasligi = "vorelHata";
constexpr std::int32_t kBilinmeyenTip = 18172;

enum class Aile { Sayi, Mantik, Metin, UzunMetin, Tarih, Ikili, Bilinmiyor };

Aile aile(std::int32_t tip) {
    switch (tip) {
    case columntype::kSmall:
    case columntype::kWhole:
    case columntype::kNumber:
    case columntype::kMoney:
    case columntype::kTiny:
    case columntype::kByte:
    case columntype::kUnsignedWhole:
    case columntype::kDecimal:
        return Aile::Sayi;
    case columntype::kBoolean:
        return Aile::Mantik;
    case columntype::kFixedText:
    case columntype::kByteText:
    case columntype::kText:
        return Aile::Metin;
    case columntype::kByteMemo:
    case columntype::kMemo:
        return Aile::UzunMetin;
    case columntype::kDay:
    case columntype::kDate:
        return Aile::Tarih;
    case columntype::kBinary:
        return Aile::Ikili;
    default:
        return Aile::Bilinmiyor;
    }
}

std::string sayiYaz(Value& deger) {
    std::string metin = toText(deger);
    if (metin == "True") metin = "1";
    if (metin == "False") metin = "0";
    if (metin == "NULL") return "NULL";
    metin = trim(replaceAll(metin, ".", ""));
    if (const auto virgul = metin.find(','); virgul != std::string::npos) metin[virgul] = '.';
    return metin;
}

// A quote of either kind would end the text in the statement; a back quote stands in its place, in the value
// too.
std::string metinYaz(Value& deger, bool uzun) {
    std::string metin = toText(deger);
    std::replace_if(
        metin.begin(), metin.end(), [](char c) { return c == '\'' || c == '"'; }, '`');
    deger = metin;
    return "'" + (uzun ? metin : trim(metin)) + "'";
}

std::string tarihYaz(const Value& deger) {
    const std::string metin = toText(deger);
    if (metin.empty() || metin == "00:00:00" || metin == "NULL") return "NULL";
    return "'" + metin + "'";
}

std::string statementOf(KayitYapisi& rec) {
    const std::size_t n = rec.alanSayisi();
    std::string alanlar, degerler, atamalar;
    for (std::size_t i = 0; i < n; ++i) {
        const char* ayirac = i == 0 ? "" : ",";
        const std::string deger = DegerYaz(rec.Tip[i], rec.Deger[i]);
        alanlar += ayirac + rec.Alan[i];
        degerler += ayirac + deger;
        atamalar += ayirac + rec.Alan[i] + "=" + deger;
    }
    if (rec.Islem == KayitYapisi::Ekle)
        return "INSERT INTO " + rec.Tablo + " (" + alanlar + " ) VALUES (" + degerler + ")";
    return "UPDATE " + rec.Tablo + " SET " + atamalar + " WHERE " + rec.Kosul;
}

// Asks the back end's own catalogue which relation was broken; a back end without one raises.
std::array<std::string, 4> brokenRelation(adodb::Connection& baglanti, const std::string& kisit) {
    adodb::Recordset rs;
    rs.open("select  object_name(constid) as constraint_name, object_name(fkeyid) as table_name, "
            "col_name(fkeyid, fkey) as column_name, object_name(rkeyid) as referenced_table_name, "
            "col_name(rkeyid, rkey) as referenced_column_name From sysforeignkeys "
            "where object_name(constid) = '" +
                kisit + "' order by constraint_name, table_name, referenced_table_name,  keyno",
            baglanti);
    return {joinText(rs.value("table_name")), joinText(rs.value("column_name")),
            joinText(rs.value("referenced_table_name")), joinText(rs.value("referenced_column_name"))};
}

// The text of a broken relation; "" where the error is none, or the back end cannot tell which.
std::string relationMessage(adodb::Connection& baglanti, const Err& err) {
    static const std::string kEkleme = "COLUMN FOREIGN KEY constraint";
    static const std::string kSilme = "COLUMN REFERENCE constraint";
    if (err.number != adodb::kStatementError) return {};
    const bool silme = err.description.find(kSilme) != std::string::npos;
    const std::string& ifade = silme ? kSilme : kEkleme;
    const auto basi = err.description.find(ifade);
    if (basi == std::string::npos) return {};
    const auto adi = basi + ifade.size();
    const auto sonu = err.description.find(". The conflict", adi);
    std::string metin;
    Err ignored;
    attempt(ignored, [&] {
        metin = IliskiHatasi(brokenRelation(baglanti, trim(err.description.substr(adi, sonu - adi))), silme);
    });
    return metin;
}

std::int32_t in32Bits(std::int64_t deger) {
    if (deger < std::numeric_limits<std::int32_t>::min() || deger > std::numeric_limits<std::int32_t>::max())
        raise(ErrorNumber::Overflow);
    return static_cast<std::int32_t>(deger);
}

// SqlCalistir, which leaves what a failed statement raised in `err`.
bool calistir(Session& session, adodb::Connection& baglanti, const std::string& sql,
              const std::string& baslik, Err& err) {
    if (sql.empty()) return true;
    if (attempt(err, [&] { baglanti.execute(sql); })) return true;
    if (const std::string metin = relationMessage(baglanti, err); !metin.empty()) {
        tell(session, {metin, "İlişkili Kayıt Hatası", Icon::Exclamation, Buttons::Ok});
        return false;
    }
    tell(session, {std::to_string(err.number) + " " + err.description,
                   baslik.empty() ? kProgramTitle : baslik, Icon::None, Buttons::Ok});
    return false;
}

} // namespace

void KayitYapisi::ekle(std::string alan, Value deger) {
    const std::size_t i = alanSayisi();
    if (i == kEnFazlaAlan) raise(ErrorNumber::SubscriptOutOfRange);
    Alan[i] = std::move(alan);
    Deger[i] = std::move(deger);
}

std::size_t KayitYapisi::alanSayisi() const {
    std::size_t n = 0;
    while (n < kEnFazlaAlan && !trim(Alan[n]).empty())
        ++n;
    return n;
}

void KayitYapisiTemizle(KayitYapisi& rec) {
    rec = KayitYapisi{};
}

void TipleriAl(KayitYapisi& rec, const adodb::Recordset& rs) {
    const std::size_t n = rec.alanSayisi();
    for (std::size_t i = 0; i < n; ++i) {
        int sira = 0;
        while (sira < rs.fieldCount() && upperTurkish(rs.fieldName(sira)) != upperTurkish(rec.Alan[i]))
            ++sira;
        if (sira == rs.fieldCount()) raise(ErrorNumber::NoSuchItem);
        rec.Tip[i] = rs.fieldType(sira);
    }
}

std::string DegerYaz(std::int32_t tip, Value& deger) {
    if (deger.isNull() || upperTurkish(toText(deger)) == "NULL") {
        deger = "NULL";
        return "NULL";
    }
    switch (aile(tip)) {
    case Aile::Sayi:
        return sayiYaz(deger);
    case Aile::Mantik:
        return toBoolean(deger) ? "-1" : "0";
    case Aile::Metin:
        return metinYaz(deger, false);
    case Aile::UzunMetin:
        return metinYaz(deger, true);
    case Aile::Tarih:
        return tarihYaz(deger);
    case Aile::Ikili:
        deger = "NULL";
        return "NULL";
    case Aile::Bilinmiyor:
        break;
    }
    throw RuntimeError(kBilinmeyenTip, "Value='" + std::to_string(tip) + "'");
}

bool KayitYaz(Session& session, KayitYapisi& rec) {
    std::string sql;
    std::string hata;
    Err err;
    bool yazildi = false;
    attempt(err, [&] {
        if (rec.Tip[0] == 0) {
            KayitSeti rs;
            if (!KayitSetiAcKontrollu(session, rs, "SELECT TOP 1 * FROM " + rec.Tablo, hata)) return;
            TipleriAl(rec, *rs);
        }
        sql = statementOf(rec);
        Err told; // by the runner's own box
        yazildi = calistir(session, *session.gBaglanti, sql, {}, told);
        hata = told.description;
    });
    if (yazildi) return true;
    const std::string metin =
        err.number == 0 ? hata + "\nSQL: " + sql : std::to_string(err.number) + err.description;
    tell(session, {metin, kHataBasligi, Icon::Exclamation, Buttons::Ok});
    return false;
}

std::string IliskiHatasi(const std::array<std::string, 4>& satir, bool silme) {
    const auto& [tablo, alan, anaTablo, anaAlan] = satir;
    if (silme)
        return "İlişkili Kayıtlar Olduğundan Silme İşlemi Gerçekleştirilemiyor\n\n" + tablo + " tablosunun " +
               alan + " Alanı " + anaTablo + " tablosunun " + anaAlan +
               " Alanında Kullanıldığı için Bu Kaydı Silemezsiniz.\nBu Kaydı Silebilmek için önce " + tablo +
               " tablosundan İlişkili Kaydı Silmelisiniz";
    return "İlişkili Kayıtlar Olduğundan İstediğiniz İşlem Gerçekleştirilemiyor\n\n" + tablo +
           " tablosunun " + alan + " Alanına " + anaTablo + " tablosunun " + anaAlan +
           " Alanında Bulunmayan Bir Değer Atılmaya Çalışılıyor.";
}

bool SqlCalistir(Session& session, adodb::Connection& baglanti, const std::string& sql,
                 const std::string& baslik) {
    Err err;
    return calistir(session, baglanti, sql, baslik, err);
}

bool StokGuncelle(Session& session, const std::string& urkod, std::int32_t miktar, StokHareketi hareket,
                  StokYonu yon) {
    KayitSeti rs;
    KayitSetiAc(session, rs,
                "Select TOPLAM_ALINAN,TOPLAM_SATILAN,KALAN From URUNTANITIM Where URKOD = '" + urkod + "'",
                adodb::CursorLocation::Client);
    if (rs->eof()) return false;
    std::int64_t alinan = toLong(rs->value("TOPLAM_ALINAN"));
    std::int64_t satilan = toLong(rs->value("TOPLAM_SATILAN"));
    KayitSetiKapat(rs);

    // Uneven as it looks: goods taken back inwards lower what was sold, outwards what was received.
    const bool giris = yon == StokYonu::Giris;
    if (hareket == StokHareketi::Alis) alinan += giris ? miktar : -std::int64_t{miktar};
    if (hareket == StokHareketi::Satis) satilan += miktar;
    if (hareket == StokHareketi::GeriAlma) (giris ? satilan : alinan) -= miktar;

    const std::int32_t a = in32Bits(alinan);
    const std::int32_t s = in32Bits(satilan);
    const std::int32_t k = in32Bits(alinan - satilan);
    return SqlCalistir(session, *session.gBaglanti,
                       "UPDATE  URUNTANITIM SET TOPLAM_ALINAN=" + std::to_string(a) +
                           ", TOPLAM_SATILAN=" + std::to_string(s) + ",KALAN=" + std::to_string(k) +
                           " Where URKOD = '" + urkod + "'");
}

} // namespace veldona
