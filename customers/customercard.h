// The card of one customer: identity, tax data, group, a home address and a work address.
//
// Its fields are rows of core/customerfields. Opened for a new customer or on one that stands in the books;
// its recordset holds the rows that it was opened on and those that were saved since. Birth date, warning,
// picture and barcode stand in its statements and are never filled from the screen, so a save empties them.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "core/recordcycle.h"
#include "customers/fieldcontrols.h"
#include "journal/takenback.h"
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

    FieldFrame fraGenel{*this, "fraGenel", "", CustomerField::Frame::General};
    CheckBox chkKaydiKopyala{*this, "chkKaydiKopyala", "Adresler Aynı Kalsın"};
    TabControl SSTab1{*this, "SSTab1"};
    FieldFrame fraEvAdresi{*this, "fraEvAdresi", "Ev Adresi", CustomerField::Frame::Home};
    FieldFrame fraIsAdresi{*this, "fraIsAdresi", "İş Adresi", CustomerField::Frame::Work};

    // Those that rules name.
    TextBox& txtKod = fraGenel.fields.at<TextBox>("txtKod");
    TextBox& txtAd = fraGenel.fields.at<TextBox>("txtAd");
    TextBox& txtSoyad = fraGenel.fields.at<TextBox>("txtSoyad");
    DateBox& dtYas = fraGenel.fields.at<DateBox>("dtYas");
    ComboBox& cboGrup = fraGenel.fields.at<ComboBox>("cboGrup");
    TextBox& txtGrupID = fraGenel.fields.at<TextBox>("txtGrupID");

    RecordCycle record{*this, session, &BarIslemler};
    std::vector<std::int32_t> cards; // the IDs that the recordset is restricted to
    bool lastSaveWasNew = false;
    bool fillingFields = false; // by a record, not by the operator
    journal::TakenBackSince takenBack;
    std::vector<std::string> asRead; // the fields' texts as the record filled them
};

[[nodiscard]] std::unique_ptr<Form> makeFrmCariEkle(Forms& forms, Session& session);

} // namespace veldona
