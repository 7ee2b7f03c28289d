#include "core/database.h"

#include <charconv>

#include "platform/runtime/conversion.h"

namespace veldona {

namespace {

constexpr int kStaticCursor = 3;
constexpr int kOptimisticLock = 3;

// True where `step` went through; what it raised is told in a plain box.
template <class Step> bool shown(Session& session, std::string& hata, Step&& step) {
    Err err;
    if (attempt(err, step)) return true;
    hata = err.description;
    tell(session, {.text = err.description});
    return false;
}

} // namespace

void KayitSetiAc(Session& session, KayitSeti& rs, std::string_view sql, adodb::CursorLocation konum) {
    KayitSetiKapat(rs);
    rs = std::make_unique<adodb::Recordset>();
    rs->cursorLocation = konum;
    rs->cursorType = kStaticCursor;
    rs->lockType = kOptimisticLock;
    rs->open(sql, *session.gBaglanti);
}

void KayitSetiKapat(KayitSeti& rs) {
    if (!rs) return;
    if (rs->isOpen()) rs->close();
    rs.reset();
}

bool KayitSetiAcKontrollu(Session& session, KayitSeti& rs, std::string_view sql, std::string& hata) {
    rs = std::make_unique<adodb::Recordset>();
    if (shown(session, hata, [&] { rs->open(sql, *session.gBaglanti); })) return true;
    KayitSetiKapat(rs);
    return false;
}

bool IslemBaslat(Session& session) {
    Err err;
    if (attempt(err, [&] { session.gBaglanti->beginTrans(); })) return true;
    session.desktop.dialogs.tell(err.description, Icon::None); // there is no end of its own to wait for
    return false;
}

bool IslemOnayla(Session& session) {
    std::string hata;
    if (!shown(session, hata, [&] { session.gBaglanti->commitTrans(); })) return false;
    tellDeferred(session);
    return true;
}

bool IslemGeriAl(Session& session) {
    std::string hata;
    const bool undone = !session.gBaglanti->inTransaction() ||
                        shown(session, hata, [&] { session.gBaglanti->rollbackTrans(); });
    tellDeferred(session);
    return undone;
}

std::string ImlecAl(const adodb::Recordset& rs) {
    std::string imlec;
    Err err;
    attempt(err, [&] { imlec = std::to_string(rs.bookmark()); });
    return imlec;
}

bool ImlecGit(adodb::Recordset& rs, const std::string& imlec) {
    adodb::Recordset::Bookmark yer = 0;
    const auto read = std::from_chars(imlec.data(), imlec.data() + imlec.size(), yer);
    Err err;
    return read.ec == std::errc() && attempt(err, [&] { rs.setBookmark(yer); });
}

Value AlanDegeriOku(Session& session, const std::string& alan, const std::string& tablo,
                    const std::string& anahtar, const std::string& deger) {
    KayitSeti rs;
    KayitSetiAc(session, rs, "Select " + alan + " from " + tablo + " where " + anahtar + "='" + deger + "'",
                adodb::CursorLocation::Client);
    return rs->eof() ? Value(true) : rs->value(0);
}

// The two names are one look-up: callers of the one want the field, of the other the row's key.
Value KayitDegeri(Session& session, const std::string& alan, const std::string& tablo,
                  const std::string& anahtar, const std::string& deger) {
    return AlanDegeriOku(session, alan, tablo, anahtar, deger);
}

double SonKimlik(Session& session, const std::string& tablo) {
    KayitSeti rs;
    KayitSetiAc(session, rs, "SELECT @@IDENTITY from " + tablo, adodb::CursorLocation::Client);
    const double kimlik = rs->eof() ? 0 : val(rs->value(0));
    return kimlik == 0 ? -1 : kimlik;
}

void KomutCalistir(Session& session, KayitSeti& rs, const std::string& sql) {
    auto baglanti = std::make_unique<adodb::Connection>(session.workspace);
    baglanti->commandTimeout = session.gBaglanti->commandTimeout;
    baglanti->connectionTimeout = session.gBaglanti->connectionTimeout;
    baglanti->open("DSN=" + session.gDsnAdi);
    session.gBaglanti = std::move(baglanti);
    rs = std::make_unique<adodb::Recordset>();
    rs->open(sql, *session.gBaglanti);
}

std::string YeniNo(Session& session, const std::string& alan, const std::string& tablo,
                   const std::string& kosul, AlanTuru tur) {
    const std::string sayi = tur == AlanTuru::Metin ? "Cdbl(val(" + alan + "))" : "Cdbl(" + alan + ")";
    std::string sql = "SELECT max (" + sayi + ") FROM " + tablo;
    if (!kosul.empty()) sql += " WHERE " + kosul;

    std::string no;
    Err err; // a column that does not read as numbers leaves the number to the operator
    attempt(err, [&] {
        KayitSeti rs;
        KomutCalistir(session, rs, sql);
        const Value enBuyuk = rs->eof() ? Value() : rs->value(0);
        no = enBuyuk.isNull() ? "1" : toText(toDouble(enBuyuk) + 1);
    });
    return no;
}

std::optional<bool> TekilMi(Session& session, const std::string& tablo, const std::vector<TekilAlan>& alanlar,
                            const std::string& anahtar, const std::string& id) {
    std::string kosul;
    for (const TekilAlan& a : alanlar) {
        if (!kosul.empty()) kosul += " And ";
        kosul += a.alan + (a.tur == AlanTuru::Sayi ? " = " + a.deger : " = '" + a.deger + "'");
    }
    if (!id.empty()) kosul += " And Not " + anahtar + " = " + id;

    Err err;
    std::optional<bool> tekil;
    attempt(err, [&] {
        KayitSeti rs;
        KayitSetiAc(session, rs, "Select " + alanlar.front().alan + " FROM " + tablo + " Where " + kosul,
                    adodb::CursorLocation::Client);
        tekil = rs->eof();
    });
    if (!tekil) session.desktop.dialogs.tell("Tekil İndex Kontrolü Yapılırken " + err.description);
    return tekil;
}

} // namespace veldona
