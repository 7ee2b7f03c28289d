#include "ledger/customergrid.h"

#include "core/customerfields.h"
#include "core/database.h"
#include "core/session.h"
#include "core/showscreen.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

// Shows the customer that rsCari stands on.
void CariGoster(FrmMainVeldona& f) {
    Err err;
    attempt(err, [&] { static_cast<void>(f.rsCari->bookmark()); });
    if (err.number == 0) {
        std::string hstno;
        attempt(err, [&] {
            f.m_CariID = toDouble(f.rsCari->value("ID"));
            hstno = trim(joinText(f.rsCari->value("HSTNO")));
        });
        if (err.number == 0) {
            f.Text1.setText("");
            f.L3.clear();
            f.lblVadeFarki.setCaption("");
            f.session.gHSTNO = hstno;
            f.Text1.setText(hstno);
            return;
        }
    }
    f.session.desktop.dialogs.tell(saveStatus(err));
}

} // namespace

void blankAccount(FrmMainVeldona& f) {
    f.L3.clear();
    for (TextBox* box : {&f.Text1, &f.Text5, &f.txtAdres, &f.txtTel, &f.mskOdenenPara, &f.txtOdemeTipi,
                         &f.txtAciklama, &f.txtKasaID})
        box->setText("");
    f.Label7.setCaption("");
    f.dtTeslimatTarihi.setValue(Null{});
    f.dtTeslimEdildigiTarih.setValue(Null{});
    f.cboKasa.setText("");
    f.lblVadeFarki.setCaption("");
}

std::string SQLSelectHazirla(const FrmMainVeldona&) {
    return std::string("(SELECT DISTINCT HSTNO") + "  FROM " + "MUSTKAYIT";
}

std::string SQLWhereHazirla(const FrmMainVeldona& f) {
    std::vector<std::string> parts;
    if (const std::string soyad = trim(f.txtSoyad.text()); !soyad.empty())
        parts.push_back("SOYAD like '" + soyad + "%'");
    if (const std::string ad = trim(f.txtAd.text()); !ad.empty()) parts.push_back(" AD like '" + ad + "%'");
    if (parts.empty()) return {};
    std::string where = SQLSelectHazirla(f) + " WHERE ";
    for (std::size_t i = 0; i < parts.size(); ++i)
        where += (i == 0 ? "" : " AND ") + parts[i];
    return where + ")";
}

void FrmCmdBul(FrmMainVeldona& f) {
    // The system accounts are hidden only while a filter is on.
    const std::string filter = SQLWhereHazirla(f);
    const std::string sql = customerListQuery() + " " +
                            (filter.empty() ? std::string() : " WHERE " + (kWithoutSystemAccounts + filter)) +
                            " ORDER BY MUSTKAYIT.AD,MUSTKAYIT.SOYAD ";
    // The screen asks this each time that it comes to the front. The same question again costs nothing as
    // long as nobody has written a customer since.
    if (f.rsCari && f.rsCari->isOpen() && f.rsCari->source() == sql) {
        f.rsCari->requery();
        f.grdList.bind(nullptr);
    } else {
        RecordsetPtr rs;
        KayitSetiAc(f.session, rs, sql, adodb::CursorLocation::Client);
        f.grdList.bind(nullptr);
        f.rsCari = std::move(rs);
    }
    f.customerRows.follow(f.rsCari.get());
    f.grdList.bind(&f.customerRows);
}

void FormGezinme(FrmMainVeldona& f, Navigation yon) {
    walkRecords(*f.rsCari, yon);
    CariGoster(f);
    f.grdList.refresh();
}

void GrideGit(FrmMainVeldona& f, double id) {
    if (!f.rsCari)
        FrmCmdBul(f);
    else
        f.rsCari->requery();
    Err ignored;
    if (id > 0) {
        f.rsCari->find("ID = " + toText(id));
        if (f.rsCari->eof()) f.session.desktop.dialogs.beep(); // a filter hides the customer
    }
    if (id <= 0 || f.rsCari->eof()) attempt(ignored, [&] { f.rsCari->moveFirst(); });
    f.grdList.refresh();
}

void grdList_RowChange(FrmMainVeldona& f) {
    Err err;
    if (!attempt(err, [&] { f.Text1.setText(f.grdList.currentText("CariNo")); }))
        f.session.desktop.dialogs.tell("Kayıt Seçmediniz  :  " + err.description);
}

void grdList_DblClick(FrmMainVeldona& f) {
    Session& session = f.session;
    if (!f.rsCari || f.rsCari->absolutePosition() == 0) return;
    FormKayitTemizle(session);
    session.gFormKayit.Kip = FormModu::Navigation;
    session.gFormKayit.KayitID = toLong(f.rsCari->value("ID"));
    showScreen(session, "frmCariEkle", Kip::Modal);
    FormKayitTemizle(session);
}

void cmdMusteriKaydi_Click(FrmMainVeldona& f) {
    Session& session = f.session;
    FormKayitTemizle(session);
    session.gFormKayit.Kip = FormModu::Yeni;
    session.gFormKayit.Sonuc = Currency::ofWhole(FormResult::Requested);
    showScreen(session, "frmCariEkle", Kip::Modal);
    // Cancelled: the customer on show stays. Else the number brings the name as the ledger writes it.
    if (session.gFormKayit.Sonuc == Currency::ofWhole(FormResult::Chosen)) {
        f.Label7.setCaption(session.gFormKayit.Unvan);
        f.Text1.setText(session.gFormKayit.HSTNO);
    }
    FormKayitTemizle(session);
    f.Text1.setFocus();
}

void cmdCariSec_Click(FrmMainVeldona& f) {
    Session& session = f.session;
    FormKayitTemizle(session);
    showScreen(session, "frmCarihesapSec", Kip::Modal);
    if (session.gFormKayit.Sonuc != Currency::ofWhole(FormResult::Chosen)) return;
    blankAccount(f);
    RecordsetPtr rs;
    KayitSetiAc(session, rs,
                "SELECT ID,HSTNO  FROM MUSTKAYIT WHERE ID= " + std::to_string(session.gFormKayit.KayitID),
                adodb::CursorLocation::Client);
    if (rs->eof()) return;
    const std::string hstno = joinText(rs->value("HSTNO"));
    // Before the load, in the middle of which another customer may be typed.
    if (!trim(hstno).empty()) session.gHSTNO = trim(hstno);
    f.Text1.setText(hstno);
}

} // namespace veldona
