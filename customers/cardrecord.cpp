#include "customers/cardrecord.h"

#include "core/database.h"
#include "core/session.h"
#include "customers/cardfields.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr const char* kTable = "MUSTKAYIT";

void warn(FrmCariEkle& f, std::string text) {
    f.session.desktop.dialogs.show({std::move(text), f.caption(), Icon::Exclamation, Buttons::Ok});
}

Value firstCell(Session& session, const std::string& sql) {
    RecordsetPtr rs;
    KayitSetiAc(session, rs, sql, adodb::CursorLocation::Client);
    return rs->eof() ? Value() : rs->value(0);
}

void addFields(const FrmCariEkle& f, KayitYapisi& rec) {
    for (const CustomerField* field : savedFields())
        if (rec.Islem == KayitYapisi::Add || field->saved != CustomerField::Saved::OnceAsText)
            rec.add(field->column, CariAlanDegeri(f, *field));
}

// What stands in the books now comes to the fields beside what the operator has typed. False where the card
// is gone from them.
bool tellOvertaken(FrmCariEkle& f, const journal::Act& act) {
    const std::int32_t card = f.record.KayitID;
    openCards(f);
    f.record.rs->find("ID = " + std::to_string(card));
    const bool stands = !f.record.rs->eof();
    if (stands) showFieldsAnew(f);
    warn(f, "Bu kart açıkken bir işlem geri alındı.\n\n" + journal::takenBackWords(act) +
                (stands ? "\n\nKart kaydedilmedi. Alanlarda artık defterdeki son hâl ile sizin yazdıklarınız "
                          "var; bakın, doğruysa yeniden kaydedin."
                        : "\n\nKart artık defterde yok, kaydedilemez. Gerekiyorsa yeni kart açın."));
    return stands;
}

} // namespace

bool YeniCariEkle(FrmCariEkle& f) {
    return inTransaction(f.session, [&] {
        KayitYapisi rec;
        rec.Islem = KayitYapisi::Add;
        rec.Tablo = kTable;
        addFields(f, rec);
        if (!KayitYaz(f.session, rec)) return false;
        f.record.KayitID = toLong(SonKimlik(f.session, kTable));
        f.cards.push_back(f.record.KayitID);
        f.lastSaveWasNew = true;
        return true;
    });
}

bool CariGuncelle(FrmCariEkle& f) {
    f.lastSaveWasNew = false;
    const auto isOurs = [&](const journal::Entry& entry) {
        return entry.table == kTable && entry.key == f.record.KayitID;
    };
    const journal::TakenBackSince before = f.takenBack;
    std::optional<journal::Act> overtaken;
    const bool saved = inTransaction(f.session, [&] {
        overtaken = f.takenBack.newestOn(*f.session.gBaglanti, isOurs);
        if (overtaken) return false;
        KayitYapisi rec;
        rec.Islem = KayitYapisi::Change;
        rec.Tablo = kTable;
        rec.Kosul = " ID = " + std::to_string(f.record.KayitID);
        addFields(f, rec);
        return KayitYaz(f.session, rec);
    });
    if (overtaken && !tellOvertaken(f, *overtaken)) f.takenBack = before; // and is told of each time
    return saved;
}

bool CariSil(Session& session, std::int32_t id) {
    const std::string card = " where ID = " + std::to_string(id);
    const Value account = firstCell(session, std::string("Select HSTNO from ") + kTable + card);
    if (!SqlCalistir(session, *session.gBaglanti, std::string("Delete from ") + kTable + card)) return false;
    if (account.isNull()) return true;
    const std::string itself = "'" + replaceAll(toText(account), "'", "''") + "'";
    if (!firstCell(session, "Select ID from MUSTKAYIT where HSTNO = " + itself).isNull()) return true;
    return SqlCalistir(session, *session.gBaglanti, "Delete from ARAMA_NOTU where MUSTNO = " + itself);
}

bool MinimumInputKontrolu(FrmCariEkle& f) {
    std::vector<std::string> missing;
    for (const FieldControl* each : fieldsOf(f))
        if (each->field.isRequired && trim(each->text()).empty()) missing.push_back(each->field.card.caption);
    if (missing.empty()) return true;
    warn(f, emptyFieldWords(missing, "", "ve "));
    return false;
}

bool MantikliInputKontrolu(FrmCariEkle& f) {
    if (f.record.durum == FormModu::Change) return true;
    const std::string kod = trim(f.txtKod.text());
    const std::optional<bool> unique = TekilMi(f.session, kTable, {{"HSTNO", kod, FieldKind::Text}});
    if (unique == false) warn(f, "Dikkat,   " + kod + "   ,Kaydı Daha Önce Yapılmış");
    if (unique != true) return false;
    // Barcodes may repeat; asked is only whether the books can be asked for them.
    Err err;
    return attempt(err, [&] {
        RecordsetPtr rs;
        KayitSetiAc(f.session, rs, "Select BARKOD_KODU From MUSTKAYIT Where BARKOD_KODU= ''",
                    adodb::CursorLocation::Client);
    });
}

void openCards(FrmCariEkle& f) {
    f.takenBack.begin(*f.session.gBaglanti);
    std::string ids;
    for (const std::int32_t id : f.cards)
        ids += (ids.empty() ? "" : ",") + std::to_string(id);
    const std::string kosul = ids.empty() ? " 1 = 2 " : std::string(kTable) + ".ID in (" + ids + ")";
    KayitSetiAc(f.session, f.record.rs, std::string("Select * from ") + kTable + " Where " + kosul,
                adodb::CursorLocation::Client);
}

void beginNewCustomer(FrmCariEkle& f) {
    if (f.lastSaveWasNew) f.chkKaydiKopyala.setChecked(false);
    const std::string no = YeniNo(f.session, "HSTNO", kTable, "", FieldKind::Number);
    // Among numbers with letters there is none to fill in; the highest of the others is a hint.
    if (no.empty())
        f.txtKod.placeholder = "sıradaki: " + YeniNo(f.session, "HSTNO", kTable, "", FieldKind::Text);
    f.txtKod.setText(no);
    f.SSTab1.setTab(0);
    f.txtAd.setFocus();
}

} // namespace veldona
