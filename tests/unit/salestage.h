// The sale screen of a shop with one customer, opened as the main screen opens it.
#pragma once

#include <gtest/gtest.h>

#include "core/showscreen.h"
#include "core/tell.h"
#include "platform/controls/userinput.h"
#include "sales/salescreen.h"
#include "tests/support/shop.h"

namespace veldona {

class SaleScreen : public testing::Test {
protected:
    SaleScreen() {
        shop.forms.onUncaught = [this](const RuntimeError& error) { uncaughtError(session, error); };
        shop.forms.add("frmSatis", [this](Forms& forms) { return makeFrmSatis(forms, session); });
        shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('7','Ayşe','Yılmaz')");
        session.gHSTNO = "7";
    }

    FrmSatis& open() {
        FormKayit& record = session.gFormKayit;
        record.Kip = FormModu::Yeni;
        record.CariID = 1;
        record.HSTNO = "7";
        record.Unvan = "Ayşe  Yılmaz";
        showScreen(session, "frmSatis", Kip::Modeless);
        return static_cast<FrmSatis&>(*shop.forms.active());
    }

    void press(FrmSatis& f, Key key) { user::pressKey(f, {.key = key}); }

    // Types total, down payment and count, and leaves the plan's fields.
    void fill(FrmSatis& f, const std::string& total, const std::string& pesinat, const std::string& adet) {
        user::put(f.MskToplamUcret, total);
        user::put(f.MskAlinanPesinat, pesinat);
        user::put(f.MskTaksitAdedi, adet);
        user::focus(f.txtAciklama);
    }

    test::Shop shop;
    Session& session = shop.session;
};

} // namespace veldona
