// The card of one customer: identity, tax data, group, a home address and a work address.
//
// Opened for a new customer or on one that stands in the books; its recordset holds the rows that it was
// opened on and those that were saved since. Birth date, warning, picture and barcode stand in its statements
// and are never filled from the screen, so a save empties them.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "core/recordcycle.h"
#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"

namespace veldona {

struct Session;

struct FrmCariEkle : Form {
    FrmCariEkle(Forms& forms, Session& itsSession);

    Session& session;

    ToolBar BarIslemler{*this, "BarIslemler"};
    Label lblBookmark{*this, "lblBookmark"}; // the state line

    Frame fraGenel{*this, "fraGenel"};
    TextBox txtKod{*this, "txtKod"};
    TextBox txtAd{*this, "txtAd"};
    TextBox txtSoyad{*this, "txtSoyad"};
    DateBox dtYas{*this, "dtYas", DateBox::Style::Combo};
    TextBox txtYas{*this, "txtYas"};
    ComboBox cboMedeniHali{*this, "cboMedeniHali"};
    ComboBox cboCinsiyet{*this, "cboCinsiyet"};
    TextBox txtMeslek{*this, "txtMeslek"};
    TextBox txtVergiDairesi{*this, "txtVergiDairesi"};
    TextBox txtVergiNo{*this, "txtVergiNo"};
    ComboBox cboGrup{*this, "cboGrup"};
    TextBox txtGrupID{*this, "txtGrupID"};
    CheckBox chkKaydiKopyala{*this, "chkKaydiKopyala", "Adresler Aynı Kalsın"};

    TabControl SSTab1{*this, "SSTab1"};
    Frame fraEvAdresi{*this, "fraEvAdresi", "Ev Adresi"};
    ComboBox cboEvMahalle{*this, "cboEvMahalle"};
    ComboBox cboEvCdSk{*this, "cboEvCdSk"};
    TextBox txtEvApt{*this, "txtEvApt"};
    TextBox txtIlce{*this, "txtIlce"};
    TextBox txtil{*this, "txtil"};
    TextBox txtPostaKodu{*this, "txtPostaKodu"};
    TextBox txtEvTel{*this, "txtEvTel"};
    TextBox txtEvTel2{*this, "txtEvTel2"};
    TextBox txtGSM{*this, "txtGSM"};
    Frame fraIsAdresi{*this, "fraIsAdresi", "İş Adresi"};
    ComboBox cboIsMahalle{*this, "cboIsMahalle"};
    TextBox txtCdSk{*this, "txtCdSk"};
    TextBox txtIsApt{*this, "txtIsApt"};
    TextBox txtIsIlce{*this, "txtIsIlce"};
    TextBox txtIsIl{*this, "txtIsIl"};
    TextBox txtIsPostaKodu{*this, "txtIsPostaKodu"};
    TextBox txtIsTelefon{*this, "txtIsTelefon"};
    TextBox txtFax{*this, "txtFax"};

    RecordCycle record{*this, session, &BarIslemler};
    std::vector<std::int32_t> cards; // the IDs that the recordset is restricted to
    bool lastSaveWasNew = false;
    bool fillingFields = false; // by a record, not by the operator
};

[[nodiscard]] std::unique_ptr<Form> makeFrmCariEkle(Forms& forms, Session& session);

} // namespace veldona
