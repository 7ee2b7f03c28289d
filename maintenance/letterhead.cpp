#include "maintenance/letterhead.h"

#include <utility>
#include <vector>

#include "core/formframe.h"
#include "core/recordcycle.h"
#include "core/session.h"
#include "core/showscreen.h"
#include "platform/controls/forms.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr const char* kNotice =
    "            Burdaki antet bilgileri müşteriye vereceğiniz mak buzda kullanılacaktır.  "
    "Antet Bilgilerini Girmediğinizde Makbuzda eksiklik olacaktır.";

// Columns with their boxes, in the order of the statement.
std::vector<std::pair<const char*, TextBox*>> fields(FrmAntetBilgisi& f) {
    return {{"FIRMA", &f.txtUnvan},
            {"ADRES", &f.txtAdres},
            {"TELEFON", &f.txtTel},
            {"GIRIS", &f.txtFirmaAdi},
            {"YETKILI1_AD", &f.txtYetkili1},
            {"FAX1", &f.txtFax1},
            {"FAX2", &f.txtFax2},
            {"GSM", &f.txtGSM},
            {"GSM2", &f.txtGSM2},
            {"WEB", &f.txtWeb},
            {"MAIL", &f.txtMail}};
}

void loadRecord(FrmAntetBilgisi& f) {
    KayitSetiAc(f.session, f.rs, "Select * from " + f.tablo, adodb::CursorLocation::Client);
    if (f.kayitID > 0) f.rs->find("ID = " + toText(f.kayitID));
}

void showRecord(FrmAntetBilgisi& f) {
    if (f.rs->recordCount() == 0) {
        f.lblDurum.setCaption("Yeni kayıt giriliyor");
        for (const auto& [column, box] : fields(f))
            box->setText("");
        return;
    }
    Err err;
    attempt(err, [&] {
        f.kayitID = toDouble(f.rs->value("ID"));
        for (const auto& [column, box] : fields(f))
            box->setText(trim(joinText(f.rs->value(column))));
    });
    f.lblDurum.setCaption(err.number == 0 ? "" : saveStatus(err));
}

bool writeRecord(FrmAntetBilgisi& f) {
    KayitYapisi rec;
    rec.Islem = KayitYapisi::Change;
    rec.Tablo = f.tablo;
    rec.Kosul = " ID = " + toText(f.kayitID);
    for (const auto& [column, box] : fields(f))
        rec.add(column, trim(box->text()));
    rec.add("DEGER", "1");
    return KayitYaz(f.session, rec);
}

// The first use ends here; later the main screen stands behind this one, which gives way to it.
void showMainScreen(FrmAntetBilgisi& f) {
    RecordsetPtr rs;
    KayitSetiAc(f.session, rs, "SELECT DEGER FROM  FIRMABILGISI", adodb::CursorLocation::Client);
    if (rs->eof() || joinText(rs->value("DEGER")) != "1") return;
    if (!FormAcikMi(f.forms(), "frmMainVeldona")) showScreen(f.session, "frmMainVeldona", Kip::Modeless);
    f.forms().unload(f);
}

void cmdKaydet_Click(FrmAntetBilgisi& f) {
    IsaretGoster(f, false);
    const bool saved = inTransaction(f.session, [&] { return writeRecord(f); });
    if (saved) {
        loadRecord(f);
        showRecord(f);
    }
    IsaretGoster(f, true);
    if (saved) showMainScreen(f);
}

} // namespace

FrmAntetBilgisi::FrmAntetBilgisi(Forms& itsForms, Session& itsSession)
    : Form(itsForms, "frmAntetBilgisi", "Antet Bilgisi"), session(itsSession) {
    place(fraZorunlu, {&txtUnvan, &txtAdres, &txtFirmaAdi, &txtTel});
    place(fraDiger, {&txtYetkili1, &txtFax1, &txtFax2, &txtGSM, &txtGSM2, &txtWeb, &txtMail});
    markFocus(*this);
    onLoad = [this] {
        lbluyari.setCaption(kNotice);
        kayitID = session.gFormKayit.KayitID;
        loadRecord(*this);
    };
    onActivate = [this] { showRecord(*this); };
    onUnload = [this] { KayitSetiKapat(rs); };
    cmdKaydet.onClick = [this] { cmdKaydet_Click(*this); };
    onKeyDown = [this](KeyEvent& event) {
        if (event.key != Key::F2) return;
        forms().pressesFor(cmdKaydet);
        cmdKaydet_Click(*this);
    };
    cmdsil.onClick = [this] { forms().unload(*this); };
}

std::unique_ptr<Form> makeFrmAntetBilgisi(Forms& forms, Session& session) {
    return std::make_unique<FrmAntetBilgisi>(forms, session);
}

} // namespace veldona
