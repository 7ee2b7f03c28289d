// The owner's details on receipt and contract: the one row of FIRMABILGISI.
//
// The start opens this screen before the main one while DEGER is "0"; the first save sets DEGER to "1" and
// opens the main screen. No field is required, whatever the group's caption says.
#pragma once

#include <memory>
#include <string>

#include "core/database.h"
#include "platform/controls/controls.h"
#include "platform/controls/forms.h"

namespace veldona {

struct Session;

struct FrmAntetBilgisi : Form {
    FrmAntetBilgisi(Forms& forms, Session& itsSession);

    Session& session;

    Label lbluyari{*this, "lbluyari"};
    Frame fraZorunlu{*this, "fraZorunlu", "Girilmesi Zorunlu Alan "};
    TextBox txtUnvan{*this, "txtUnvan"};
    TextBox txtAdres{*this, "txtAdres"};
    TextBox txtFirmaAdi{*this, "txtFirmaAdi"};
    TextBox txtTel{*this, "txtTel"};
    Frame fraDiger{*this, "fraDiger", "Diğer Bilgiler "};
    TextBox txtYetkili1{*this, "txtYetkili1"};
    TextBox txtFax1{*this, "txtFax1"};
    TextBox txtFax2{*this, "txtFax2"};
    TextBox txtGSM{*this, "txtGSM"};
    TextBox txtGSM2{*this, "txtGSM2"};
    TextBox txtWeb{*this, "txtWeb"};
    TextBox txtMail{*this, "txtMail"};
    CommandButton cmdKaydet{*this, "cmdKaydet", "&Kaydet"};
    CommandButton cmdsil{*this, "cmdsil", "&Çıkış"};
    Label lblDurum{*this, "lblDurum"};

    std::string tablo = "FIRMABILGISI";
    RecordsetPtr rs;
    double kayitID = 0;
};

[[nodiscard]] std::unique_ptr<Form> makeFrmAntetBilgisi(Forms& forms, Session& session);

} // namespace veldona
