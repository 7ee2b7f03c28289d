#include "ledger/openaccount.h"

#include "core/formframe.h"
#include "core/session.h"
#include "core/showscreen.h"
#include "ledger/customergrid.h"
#include "ledger/loading.h"

namespace veldona {

namespace {

// As if the number were typed. A sale that the account has is then opened as Enter in L3 opens it.
void openAccount(FrmMainVeldona& f, const std::string& hstno, std::int32_t sale) {
    blankAccount(f);
    f.session.gHSTNO = hstno; // before the load, in the middle of which another customer may be typed
    f.Text1.setText(hstno);
    if (sale == 0 || f.Text1.text() != hstno) return;
    for (int row = 0; row < f.L3.count(); ++row) {
        if (f.L3.list(row) != std::to_string(sale)) continue;
        f.L3.setListIndex(row);
        openSelectedSale(f);
        return;
    }
}

} // namespace

void openSelectedSale(FrmMainVeldona& f) {
    if (!L3_DblClick(f)) return;
    f.mskOdenenPara.setFocus();
    f.mskOdenenPara.selectAll();
}

void openPickedIn(FrmMainVeldona& f, const char* screen) {
    FormKayitTemizle(f.session);
    openPicked(f, screen);
}

void openPicked(FrmMainVeldona& f, const char* screen) {
    showScreen(f.session, screen, Kip::Modal);
    const FormKayit picked = f.session.gFormKayit;
    FormKayitTemizle(f.session);
    if (picked.Sonuc == Currency::ofWhole(FormResult::Chosen)) openAccount(f, picked.HSTNO, picked.KayitID);
}

} // namespace veldona
