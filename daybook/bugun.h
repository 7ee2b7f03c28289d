// The day at a glance: whom to call, what is due, overdue, expected and come in, and what was said on the
// telephone.
//
// Whoever picks a customer finds the answer 4 in gFormKayit with the account in HSTNO and the sale to begin
// with in KayitID. What the list was narrowed to stays for the next opening, as long as the program runs.
#pragma once

#include <memory>
#include <string>

#include "daybook/callrows.h"
#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

struct Session;

// What outlives the screen.
struct CallListMemory {
    std::shared_ptr<ShopReckoning> shop;
    CallList list; // as it was read last
    CallChoice choice;
    std::string account; // the customer that was stood on
};

// What was said before, newest first.
class CallNoteRows : public RowSource {
public:
    void show(std::vector<CallNote> notes) {
        notes_ = std::move(notes);
        row_ = -1;
    }
    [[nodiscard]] int rowCount() const override { return static_cast<int>(notes_.size()); }
    [[nodiscard]] std::string cell(int row, std::string_view field) const override;
    [[nodiscard]] int currentRow() const override { return row_; }
    void moveTo(int row) override { row_ = row; }

private:
    std::vector<CallNote> notes_;
    int row_ = -1;
};

struct FrmBugun : Form {
    FrmBugun(Forms& forms, Session& itsSession, std::shared_ptr<CallListMemory> itsMemory);

    Session& session;
    std::shared_ptr<CallListMemory> memory;

    // The day's figures, each with a line that says more
    Label lblBugunVade{*this, "lblBugunVade"};
    Label lblBugunVadeNot{*this, "lblBugunVadeNot"};
    Label lblGunuGecen{*this, "lblGunuGecen"};
    Label lblGunuGecenNot{*this, "lblGunuGecenNot"};
    Label lblTahsilat{*this, "lblTahsilat"};
    Label lblTahsilatNot{*this, "lblTahsilatNot"}; // by cash box
    Label lblBeklenen{*this, "lblBeklenen"};
    Label lblBeklenenNot{*this, "lblBeklenenNot"};

    // What is shown, and in which order
    TextBox txtAra{*this, "txtAra"};
    ComboBox cboDurum{*this, "cboDurum", ComboBox::Style::ListOnly};
    ComboBox cboGecikme{*this, "cboGecikme", ComboBox::Style::ListOnly};
    TextBox txtEnAz{*this, "txtEnAz"};
    ComboBox cboSira{*this, "cboSira", ComboBox::Style::ListOnly};
    CheckBox chkTers{*this, "chkTers", "Ters&ten"};
    CommandButton cmdTemizle{*this, "cmdTemizle", "Temi&zle"};

    DataGrid grdListe{*this, "grdListe"};
    Label lblToplam{*this, "lblToplam"};

    // The call with the customer stood on
    Frame fraNot{*this, "fraNot", "Görüşme Notu"};
    TextBox txtNot{*this, "txtNot"};
    DateBox dtSozTarihi{*this, "dtSozTarihi", DateBox::Style::Combo};
    TextBox txtSozTutari{*this, "txtSozTutari"};
    CommandButton cmdNotKaydet{*this, "cmdNotKaydet", "Notu &Kaydet"};
    DataGrid grdNotlar{*this, "grdNotlar"};

    CommandButton cmdYazdir{*this, "cmdYazdir", "&Yazdır"};
    CommandButton cmdTablo{*this, "cmdTablo", "Ta&bloya Yaz"};
    CommandButton cmdMektup{*this, "cmdMektup", "&Mektuplar"}; // to those shown
    CommandButton cmdMesaj{*this, "cmdMesaj", "Mesa&jlar"};
    CommandButton cmdGrafik{*this, "cmdGrafik", "Gra&fikler"};
    CommandButton cmdEkstre{*this, "cmdEkstre", "Ekst&re"}; // of the customer stood on
    CommandButton cmdHesap{*this, "cmdHesap", "&Hesabı Aç"};
    CommandButton cmdCikis{*this, "cmdCikis", "&Çıkış"};

    CallRows rows;
    CallNoteRows notes;
    bool isFilling = false; // the fields get what was chosen last, which changes nothing
};

[[nodiscard]] std::unique_ptr<Form> makeFrmBugun(Forms& forms, Session& session,
                                                 std::shared_ptr<CallListMemory> memory);

} // namespace veldona
