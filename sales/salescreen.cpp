#include "sales/salescreen.h"

#include <initializer_list>

#include "core/money.h"
#include "platform/runtime/format.h"
#include "sales/celledit.h"
#include "sales/customerlookup.h"
#include "sales/lifecycle.h"
#include "sales/plan.h"
#include "sales/saving.h"

namespace veldona {

namespace {

using Controls = std::initializer_list<Control*>;

void placeControls(FrmSatis& f) {
    place(f.fraSatis,
          {&f.lblInfo0, &f.txtIslemNo, &f.lblInfo1, &f.txtCariKod, &f.txtKod, &f.lblInfo2, &f.txtUnvan,
           &f.dtIslemTarihi, &f.txtAciklama, &f.MskToplamUcret, &f.MskAlinanPesinat, &f.MskKalan});
    place(f.fraTaksit,
          {&f.chkTaksitAdetGir, &f.fraTaksitAdedi, &f.fraTaksitTutari, &f.dtTaksitBaslangicTarihi});
    place(f.fraTaksitAdedi, {&f.MskTaksitAdedi});
    place(f.fraTaksitTutari, {&f.mskTaksitTutari});
    place(f.fraYapilacakOdeme, {&f.grdYapilacakOdeme, &f.txtYapilacakOdmDrug, &f.dtYapilacakOdmTarh,
                                &f.txtYapilacakOdmDose, &f.lblYapilacakOdeme});
    place(f.fraYapilanOdeme, {&f.grdYapilanOdeme, &f.txtDrug, &f.cboUse, &f.txtDose, &f.lblYapilanOdeme});
}

void setProperties(FrmSatis& f) {
    buildBar(f.BarIslemler);
    f.txtKod.setVisible(false);
    f.txtUnvan.locked = true;
    f.chkOtomatikTaksitHesapla.setEnabled(false);
    f.chkTaksitAdetGir.setToolTip(
        "Taksitleri Tutar Girerekmi Yoksa Taksit Adedi Girerekmi Oluşturacağınızı Seçersiniz.");
}

void bindAmounts(FrmSatis& f) {
    for (TextBox* box : {&f.MskToplamUcret, &f.MskAlinanPesinat, &f.mskTaksitTutari})
        box->onGotFocus = [box] { HFocus(*box); };
    f.MskToplamUcret.onLostFocus = [&f] {
        f.MskToplamUcret.setText(format(f.MskToplamUcret.text(), kMoneyMask));
        KalanHesapla(f);
    };
    f.MskAlinanPesinat.onLostFocus = [&f] { KalanHesapla(f); };
    f.MskKalan.onLostFocus = [&f] { KalanHesapla(f); };
}

void bindPlan(FrmSatis& f) {
    f.MskTaksitAdedi.onGotFocus = [&f] {
        HFocus(f.MskTaksitAdedi);
        TaksitPlaniAdetle(f);
    };
    f.MskTaksitAdedi.onChange = [&f] { TaksitPlaniAdetle(f); };
    f.MskTaksitAdedi.onLostFocus = [&f] {
        KalanHesapla(f);
        TaksitPlaniAdetle(f);
    };
    f.mskTaksitTutari.onChange = [&f] {
        if (!f.MskKalan.text().empty()) TaksitPlaniTutarla(f);
    };
    f.chkTaksitAdetGir.onClick = [&f] { chkTaksitAdetGir_Click(f); };
    f.chkOtomatikTaksitHesapla.onClick = [&f] { chkOtomatikTaksitHesapla_Click(f); };
}

// Enter goes to the next field, and the field of the focus is marked.
void bindFields(FrmSatis& f) {
    for (Control* field :
         Controls{&f.txtIslemNo, &f.txtUnvan, &f.dtIslemTarihi, &f.txtAciklama, &f.MskToplamUcret,
                  &f.MskAlinanPesinat, &f.MskKalan, &f.MskTaksitAdedi, &f.mskTaksitTutari})
        field->onKeyDown = [&f](KeyEvent& event) {
            if (event.key == Key::Enter) nextField(f);
        };
    f.dtTaksitBaslangicTarihi.onKeyDown = [&f](KeyEvent& event) {
        if (event.key == Key::Enter) f.cmdKaydet.setFocus();
    };
    for (TextBox* box : {&f.txtIslemNo, &f.txtCariKod, &f.txtAciklama}) {
        box->onGotFocus = [&f] { HighLight(f.forms()); };
        box->onLostFocus = [box] { BGLoss(*box); };
    }
    f.txtCariKod.onKeyDown = [&f](KeyEvent& event) { txtCariKod_KeyDown(f, event); };
    f.txtKod.onChange = [&f] { txtKod_Change(f); };
}

} // namespace

FrmSatis::FrmSatis(Forms& forms, Session& itsSession)
    : Form(forms, "frmSatis", "Satış Ekranı"), session(itsSession) {
    placeControls(*this);
    setProperties(*this);
    bindAmounts(*this);
    bindPlan(*this);
    bindFields(*this);
    bindCellEdit(*this);
    BarIslemler.onToolClick = [this](const std::string& toolName) { saleCommand(*this, toolName); };
    cmdKaydet.onClick = [this] { cmdKaydet_Click(*this); };
    cmdCikis.onClick = [this] { this->forms().unload(*this); };
    onLoad = [this] { Form_Load(*this); };
    onUnload = [this] { Form_Unload(*this); };
    onKeyDown = [this](KeyEvent& event) { Form_KeyDown(*this, event); };
}

std::unique_ptr<Form> makeFrmSatis(Forms& forms, Session& session) {
    return std::make_unique<FrmSatis>(forms, session);
}

} // namespace veldona
