// The search screen of the customers: filters, a grid of hits, one of them handed back to the caller.
//
// Nothing is searched until it is asked for. The reserved accounts G3, G4 and TI never show here. The caller
// finds the answer 4 and the row's ID in gFormKayit, or no answer where nothing was chosen.
#pragma once

#include <memory>
#include <string>

#include "core/recordcycle.h"
#include "core/rowsource.h"
#include "customers/fieldcontrols.h"
#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"

namespace veldona {

struct Session;

struct FrmCarihesapSec : Form {
    FrmCarihesapSec(Forms& forms, Session& itsSession);

    Session& session;

    ToolBar BarIslemler{*this, "BarIslemler"};

    FieldControls filters{*this, filterFields(), &CustomerField::filter};
    CommandButton cmdBul{*this, "cmdBul", "&Bul"};
    CommandButton cmdTemizle{*this, "cmdTemizle", "&Temizle"};

    DataGrid grdList{*this, "grdList"};
    CommandButton cmdKayitSec{*this, "cmdKayitSec", "&Seç"};
    CommandButton cmdYazici{*this, "cmdYazici", "&Yazdır"};
    CommandButton cmdCikis{*this, "cmdCikis", "&Çıkış"};

    RecordCycle record{*this, session, &BarIslemler};
    RecordsetRows rows;    // what the grid shows of the hits
    std::string query;     // the statement of the hits on show
    bool searched = false; // a search was asked for since the screen was opened
    std::string lastOrder; // the column and direction that a click on the grid's head chose last
};

[[nodiscard]] std::unique_ptr<Form> makeFrmCarihesapSec(Forms& forms, Session& session);

} // namespace veldona
