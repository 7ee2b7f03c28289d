#include "core/database.h"

#include <charconv>

#include "core/session.h"
#include "core/tell.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/store/faces/adodb.h"

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

void KayitSetiAc(Session& session, RecordsetPtr& rs, std::string_view sql, adodb::CursorLocation konum) {
    KayitSetiKapat(rs);
    rs = std::make_unique<adodb::Recordset>();
    rs->cursorLocation = konum;
    rs->cursorType = kStaticCursor;
    rs->lockType = kOptimisticLock;
    rs->open(sql, *session.gBaglanti);
}

void KayitSetiKapat(RecordsetPtr& rs) {
    if (!rs) return;
    if (rs->isOpen()) rs->close();
    rs.reset();
}

bool KayitSetiAcKontrollu(Session& session, RecordsetPtr& rs, std::string_view sql, std::string& hata) {
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
    std::string cursor;
    Err err;
    attempt(err, [&] { cursor = std::to_string(rs.bookmark()); });
    return cursor;
}

bool ImlecGit(adodb::Recordset& rs, const std::string& cursor) {
    adodb::Recordset::Bookmark place = 0;
    const auto read = std::from_chars(cursor.data(), cursor.data() + cursor.size(), place);
    Err err;
    return read.ec == std::errc() && attempt(err, [&] { rs.setBookmark(place); });
}

Value AlanDegeriOku(Session& session, const std::string& alan, const std::string& tablo,
                    const std::string& key, const std::string& deger) {
    RecordsetPtr rs;
    KayitSetiAc(session, rs, "Select " + alan + " from " + tablo + " where " + key + "='" + deger + "'",
                adodb::CursorLocation::Client);
    return rs->eof() ? Value(true) : rs->value(0);
}

// The two names are one look-up: callers of the one want the field, of the other the row's key.
Value KayitDegeri(Session& session, const std::string& alan, const std::string& tablo, const std::string& key,
                  const std::string& deger) {
    return AlanDegeriOku(session, alan, tablo, key, deger);
}

double SonKimlik(Session& session, const std::string& tablo) {
    RecordsetPtr rs;
    KayitSetiAc(session, rs, "SELECT @@IDENTITY from " + tablo, adodb::CursorLocation::Client);
    const double newId = rs->eof() ? 0 : val(rs->value(0));
    return newId == 0 ? -1 : newId;
}

void KomutCalistir(Session& session, RecordsetPtr& rs, const std::string& sql) {
    auto connection = std::make_unique<adodb::Connection>(session.workspace);
    connection->commandTimeout = session.gBaglanti->commandTimeout;
    connection->connectionTimeout = session.gBaglanti->connectionTimeout;
    connection->open("DSN=" + session.gDsnAdi);
    session.gBaglanti = std::move(connection);
    rs = std::make_unique<adodb::Recordset>();
    rs->open(sql, *session.gBaglanti);
}

std::string YeniNo(Session& session, const std::string& alan, const std::string& tablo,
                   const std::string& kosul, FieldKind kind) {
    const std::string count = kind == FieldKind::Text ? "Cdbl(val(" + alan + "))" : "Cdbl(" + alan + ")";
    std::string sql = "SELECT max (" + count + ") FROM " + tablo;
    if (!kosul.empty()) sql += " WHERE " + kosul;

    std::string no;
    Err err; // a column that does not read as numbers leaves the number to the operator
    attempt(err, [&] {
        RecordsetPtr rs;
        KomutCalistir(session, rs, sql);
        const Value highest = rs->eof() ? Value() : rs->value(0);
        no = highest.isNull() ? "1" : toText(toDouble(highest) + 1);
    });
    return no;
}

std::optional<bool> TekilMi(Session& session, const std::string& tablo,
                            const std::vector<UniqueField>& fields, const std::string& key,
                            const std::string& id) {
    std::string kosul;
    for (const UniqueField& a : fields) {
        if (!kosul.empty()) kosul += " And ";
        kosul += a.alan + (a.kind == FieldKind::Number ? " = " + a.deger : " = '" + a.deger + "'");
    }
    if (!id.empty()) kosul += " And Not " + key + " = " + id;

    Err err;
    std::optional<bool> unique;
    attempt(err, [&] {
        RecordsetPtr rs;
        KayitSetiAc(session, rs, "Select " + fields.front().alan + " FROM " + tablo + " Where " + kosul,
                    adodb::CursorLocation::Client);
        unique = rs->eof();
    });
    if (!unique) session.desktop.dialogs.tell("Tekil İndex Kontrolü Yapılırken " + err.description);
    return unique;
}

} // namespace veldona
