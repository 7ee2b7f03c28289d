#include "core/database.h"
#include "core/session.h"
#include "ledger/accountmarks.h"
#include "ledger/balances.h"
#include "ledger/customergrid.h"
#include "ledger/loading.h"
#include "ledger/overdue.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

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

void showWarning(FrmMainVeldona& f, const std::string& hstno) {
    KayitSetiAc(f.session, f.rsBul, "SELECT ID,UYARI From MUSTKAYIT  WHERE HSTNO = '" + hstno + "'",
                adodb::CursorLocation::Client);
    f.m_Uyari.clear();
    if (!f.rsBul->eof()) {
        f.m_Uyari = joinText(f.rsBul->value("UYARI"));
        f.m_CariID = toDouble(f.rsBul->value("ID"));
    }
    // The label of the customer before must not stand over one without a warning.
    if (trim(f.m_Uyari).empty()) f.lbluyari.setVisible(false);
}

// Another number was loaded meanwhile, with all that goes with it; an emptied field loads nothing.
bool isPast(const FrmMainVeldona& f, const std::string& hstno) {
    const std::string now = trim(f.Text1.text());
    return f.isUnloaded() || (!now.empty() && now != hstno);
}

void blankSale(FrmMainVeldona& f) {
    for (ListBox* list : {&f.L1, &f.L2, &f.L4, &f.L5, &f.lstOdemeTip, &f.lstYapilacakOdmID, &f.L6, &f.lstID,
                          &f.List1, &f.List2, &f.List3, &f.List4, &f.List5, &f.List6, &f.List7})
        list->clear();
    f.lblToplamOdenecek.setCaption("0");
    f.Text5.setText("");
    for (Label* label : {&f.Label8, &f.Label9, &f.Label11, &f.Label21})
        label->setCaption("");
}

} // namespace

bool letEventsIntoLoad(FrmMainVeldona& f) {
    const unsigned before = f.loadsRun;
    ++f.loadsWaiting;
    f.session.desktop.events.doEvents();
    --f.loadsWaiting;
    return f.loadsRun == before && !f.isUnloaded();
}

void MusteriYukle(FrmMainVeldona& f) {
    f.dbMain = f.session.dbEngine.openDatabase(f.session.gVeritabaniYolu, f.session.connectText());
    f.rsMusteri = f.dbMain->openRecordset("MUSTKAYIT");
    f.lblIndirim.setCaption("");
    forgetArrears(f);
    const std::string hstno = trim(f.Text1.text());
    if (hstno.empty()) {
        KayitSetiKapat(f.rsBul);
        return;
    }
    KayitSetiAc(f.session, f.rsBul, "SELECT * From MUSTKAYIT WHERE HSTNO = '" + hstno + "'",
                adodb::CursorLocation::Client);
    bool isNewest = true;
    if (!f.rsBul->eof()) {
        showCustomer(f);
        isNewest = ISLEMNUMARALARI_YUKLE(f);
    }
    if (isPast(f, hstno)) return;
    showWarning(f, hstno);
    // A sale that was opened meanwhile stays open.
    if (isNewest && YAKIN_CAGIR(f)) GECIKEN_ODM(f);
    if (isPast(f, hstno)) return;
    GECIKME_UYARI(f);
    GrideGit(f, f.m_CariID);
    KayitSetiKapat(f.rsBul);
}

bool ISLEMNUMARALARI_YUKLE(FrmMainVeldona& f) {
    f.dbMain = f.session.dbEngine.openDatabase(f.session.gVeritabaniYolu, f.session.connectText());
    f.L3.clear();
    blankSale(f);
    if (!letEventsIntoLoad(f)) return false;
    f.L3.clear(); // a screen that closed meanwhile has filled it
    if (const std::string hstno = trim(f.Text1.text()); !hstno.empty()) {
        RecordsetPtr rs;
        KayitSetiAc(f.session, rs,
                    "SELECT distinct (ISLEMNO) FROM URUNAL where MUSTNO ='" + hstno +
                        "' ORDER BY ISLEMNO DESC ",
                    adodb::CursorLocation::Client);
        for (; !rs->eof(); rs->moveNext())
            f.L3.add(joinText(rs->value("ISLEMNO")));
    }
    ++f.loadsRun;
    return true;
}

} // namespace veldona
