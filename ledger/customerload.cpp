#include <optional>

#include "core/database.h"
#include "ledger/balances.h"
#include "ledger/customergrid.h"
#include "ledger/loading.h"
#include "ledger/overdue.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

constexpr const char* kAra = "     "; // between the parts of a name, an address, the telephones

std::string joined(const adodb::Recordset& rs, std::initializer_list<const char*> fields) {
    std::string text = "  ";
    const char* ara = "";
    for (const char* field : fields) {
        text += ara + joinText(rs.value(field));
        ara = kAra;
    }
    return text;
}

void showCustomer(FrmMainVeldona& f) {
    f.Label7.setCaption(joined(*f.rsBul, {"AD", "SOYAD"}));
    f.txtAdres.setText(joined(*f.rsBul, {"EVMH", "EVCD", "EVAPT", "EVILCE"}));
    f.txtTel.setText(joined(*f.rsBul, {"EVTEL", "GSM"}));
    f.session.gHSTNO = trim(joinText(f.rsBul->value("HSTNO")));
}

struct CariUyari {
    std::string UYARI;
    double ID = 0;
};

void showWarning(FrmMainVeldona& f, const std::optional<CariUyari>& uyari) {
    f.m_Uyari.clear();
    if (uyari) {
        f.m_Uyari = uyari->UYARI;
        f.m_CariID = uyari->ID;
    }
    // The label of the customer before must not stand over one without a warning.
    if (trim(f.m_Uyari).empty()) f.lbluyari.setVisible(false);
}

} // namespace

void MusteriYukle(FrmMainVeldona& f) {
    f.dbMain = f.session.dbEngine.openDatabase(f.session.gVeritabaniYolu, f.session.connectText());
    f.rsMusteri = f.dbMain->openRecordset("MUSTKAYIT");
    f.lblIndirim.setCaption("");
    const std::string hstno = trim(f.Text1.text());
    if (hstno.empty()) {
        KayitSetiKapat(f.rsBul);
        return;
    }
    KayitSetiAc(f.session, f.rsBul, "SELECT * From MUSTKAYIT WHERE HSTNO = '" + hstno + "'",
                adodb::CursorLocation::Client);
    // Loading the sale numbers lets waiting keys through, and one of them may put another customer into
    // rsBul.
    std::optional<CariUyari> uyari;
    if (!f.rsBul->eof()) {
        uyari = CariUyari{joinText(f.rsBul->value("UYARI")), toDouble(f.rsBul->value("ID"))};
        showCustomer(f);
        ISLEMNUMARALARI_YUKLE(f);
    }
    showWarning(f, uyari);
    YAKIN_CAGIR(f);
    GECIKEN_ODM(f);
    GECIKME_UYARI(f);
    GrideGit(f, f.m_CariID);
    KayitSetiKapat(f.rsBul);
}

void ISLEMNUMARALARI_YUKLE(FrmMainVeldona& f) {
    f.dbMain = f.session.dbEngine.openDatabase(f.session.gVeritabaniYolu, f.session.connectText());
    f.session.desktop.events.doEvents();
    f.L3.clear();
    if (const std::string hstno = trim(f.Text1.text()); !hstno.empty()) {
        KayitSeti rs;
        KayitSetiAc(f.session, rs,
                    "SELECT distinct (ISLEMNO) FROM URUNAL where MUSTNO ='" + hstno +
                        "' ORDER BY ISLEMNO DESC ",
                    adodb::CursorLocation::Client);
        for (; !rs->eof(); rs->moveNext())
            f.L3.add(joinText(rs->value("ISLEMNO")));
    }
    for (ListBox* list : {&f.L1, &f.L2, &f.L4, &f.L5, &f.lstOdemeTip, &f.lstYapilacakOdmID, &f.L6, &f.lstID,
                          &f.List1, &f.List2, &f.List3, &f.List4, &f.List5, &f.List6, &f.List7})
        list->clear();
    f.lblToplamOdenecek.setCaption("0");
    f.Text5.setText("");
    for (Label* label : {&f.Label8, &f.Label9, &f.Label11, &f.Label21})
        label->setCaption("");
}

} // namespace veldona
