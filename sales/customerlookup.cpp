#include "sales/customerlookup.h"

#include "core/session.h"
#include "core/showscreen.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

// False where no customer has this number; the operator has been told.
bool findByNumber(FrmSatis& f) {
    const std::string hstno = trim(f.txtCariKod.text());
    if (hstno.empty()) return true;
    const Value id = AlanDegeriOku(f.session, "ID", "MUSTKAYIT", "HSTNO", hstno);
    if (id.kind() != Value::Kind::Boolean) {
        f.txtKod.setText(toText(id));
        return true;
    }
    f.session.desktop.dialogs.tell("Bu koda Ait Cari Kaydı Bulunamadı", Icon::Exclamation);
    return false;
}

void chooseByFinder(FrmSatis& f) {
    FormKayit& record = f.session.gFormKayit;
    FormKayitTemizle(f.session);
    showScreen(f.session, "frmCarihesapSec", Kip::Modal);
    if (record.Sonuc != Currency::ofWhole(FormResult::Chosen)) return;
    const std::string id = std::to_string(record.KayitID);
    f.txtKod.setText(id);
    RecordsetPtr rs;
    KayitSetiAc(f.session, rs, "SELECT ID,HSTNO  FROM MUSTKAYIT WHERE ID= " + id,
                adodb::CursorLocation::Client);
    if (rs->eof()) return;
    const std::string hstno = joinText(rs->value("HSTNO"));
    f.txtCariKod.setText(hstno);
    if (!trim(hstno).empty()) f.session.gHSTNO = trim(hstno);
}

} // namespace

void txtCariKod_KeyDown(FrmSatis& f, KeyEvent& event) {
    if (event.key == Key::F10) chooseByFinder(f);
    if (event.key == Key::Enter && findByNumber(f)) nextField(f);
}

void txtKod_Change(FrmSatis& f) {
    const std::string id = f.txtKod.text();
    if (id.empty()) return;
    Err err;
    std::string unvan;
    resumeNext(
        err,
        [&] {
            RecordsetPtr rs;
            KayitSetiAc(f.session, rs,
                        "SELECT HSTNO,(AD +'     ' + SOYAD) AS UNVAN  FROM MUSTKAYIT WHERE ID= " + id,
                        adodb::CursorLocation::Client);
            if (!rs->eof()) unvan = joinText(rs->value("UNVAN"));
        },
        [&] { f.txtUnvan.setText(unvan); });
    if (err.number != 0) f.session.desktop.dialogs.tell(err.description, Icon::Exclamation);
}

} // namespace veldona
