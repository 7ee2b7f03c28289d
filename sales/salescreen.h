// The sale screen: one amount owed by one customer, and the plan by which it is paid.
//
// No goods are entered. The plan stands in the grid grdYapilacakOdeme and is recomputed by the events of the
// plan's fields; what is saved is what the grid shows, cell by cell. The procedures stand in modules by duty:
// lifecycle, customerlookup, plan, celledit, validation, saving, deleting.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "core/database.h"
#include "core/formframe.h"
#include "journal/takenback.h"
#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"

namespace veldona {

struct Session;

// The columns of both grids; column 0 is the fixed one.
namespace PaymentColumn {
inline constexpr int Miktar = 1;
inline constexpr int Tarih = 2;
inline constexpr int Pesinat = 3;
} // namespace PaymentColumn

// The customer that a new sale starts with: the caller's, then that of the sale saved last.
struct SaleCustomer {
    std::string ID; // MUSTKAYIT.ID; "" where none is given
    std::string HSTNO;
    std::string Unvan;
};

struct FrmSatis : Form {
    FrmSatis(Forms& forms, Session& itsSession);

    Session& session;

    ToolBar BarIslemler{*this, "BarIslemler"};

    // The sale
    Frame fraSatis{*this, "fraSatis", "Satış"};
    Label lblInfo0{*this, "lblInfo0", "İ&şlem No "};
    TextBox txtIslemNo{*this, "txtIslemNo"};
    Label lblInfo1{*this, "lblInfo1", "&Müşteri  No "};
    TextBox txtCariKod{*this, "txtCariKod"};
    TextBox txtKod{*this, "txtKod"}; // MUSTKAYIT.ID, hidden
    Label lblInfo2{*this, "lblInfo2", "Adı Soyadı "};
    TextBox txtUnvan{*this, "txtUnvan"};
    DateBox dtIslemTarihi{*this, "dtIslemTarihi", DateBox::Style::Combo};
    TextBox txtAciklama{*this, "txtAciklama"};
    TextBox MskToplamUcret{*this, "MskToplamUcret"};
    TextBox MskAlinanPesinat{*this, "MskAlinanPesinat"};
    TextBox MskKalan{*this, "MskKalan"};

    // The plan's inputs
    CheckBox chkOtomatikTaksitHesapla{*this, "chkOtomatikTaksitHesapla", "Taksitli İşlem Yap ", true};
    Frame fraTaksit{*this, "fraTaksit", "Taksitlendirme"};
    CheckBox chkTaksitAdetGir{*this, "chkTaksitAdetGir", "Taksit Adet &Girilecek ", true};
    Frame fraTaksitAdedi{*this, "fraTaksitAdedi"};
    TextBox MskTaksitAdedi{*this, "MskTaksitAdedi"};
    Frame fraTaksitTutari{*this, "fraTaksitTutari"};
    TextBox mskTaksitTutari{*this, "mskTaksitTutari"};
    DateBox dtTaksitBaslangicTarihi{*this, "dtTaksitBaslangicTarihi", DateBox::Style::Combo};

    // What is paid and what is to be paid, each with the three editors that lie over its current cell
    Frame fraYapilacakOdeme{*this, "fraYapilacakOdeme", "Yapılacak Ödemeler"};
    FlexGrid grdYapilacakOdeme{*this, "grdYapilacakOdeme", 2, 4};
    TextBox txtYapilacakOdmDrug{*this, "txtYapilacakOdmDrug"};
    DateBox dtYapilacakOdmTarh{*this, "dtYapilacakOdmTarh", DateBox::Style::Combo};
    TextBox txtYapilacakOdmDose{*this, "txtYapilacakOdmDose"};
    Label lblYapilacakOdeme{*this, "lblYapilacakOdeme"};
    Frame fraYapilanOdeme{*this, "fraYapilanOdeme", "Yapılan Ödemeler"};
    FlexGrid grdYapilanOdeme{*this, "grdYapilanOdeme", 2, 4};
    TextBox txtDrug{*this, "txtDrug"};
    DateBox cboUse{*this, "cboUse", DateBox::Style::Combo};
    TextBox txtDose{*this, "txtDose"};
    Label lblYapilanOdeme{*this, "lblYapilanOdeme"};

    CommandButton cmdKaydet{*this, "cmdKaydet", "&Kaydet"};
    CommandButton cmdCikis{*this, "cmdCikis", "&Çıkış"};

    // What the screen remembers between events
    int durum = FormModu::Yeni;
    std::int32_t m_KayitID = 0; // ISLEMNOTABLO.ID of the sale on show; 0: none
    bool isPicker = false;      // the caller waits for the sale: the screen closes with it
    std::string cursor;         // where cancelling returns to
    RecordsetPtr rs;            // the sales
    SaleCustomer customer;
    journal::TakenBackSince takenBack;
};

[[nodiscard]] std::unique_ptr<Form> makeFrmSatis(Forms& forms, Session& session);

} // namespace veldona
