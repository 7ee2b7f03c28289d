#include "customers/customerfinder.h"

#include "core/customerfields.h"
#include "core/database.h"
#include "customers/cardfields.h"
#include "customers/cardrecord.h"
#include "customers/findersearch.h"

namespace veldona {

namespace {

void setProperties(FrmCarihesapSec& f) {
    f.filters.at<TextBox>("txtGrupID").setVisible(false);
    f.grdList.setColumns(customerListColumns());
}

void bindCycle(FrmCarihesapSec& f) {
    RecordCycle& k = f.record;
    k.viewState = FormModu::Search;
    k.goster = [&f] { f.grdList.refresh(); };
    k.alanlariTemizle = k.goster; // without a row the grid is empty
    k.remove = [&f](std::int32_t id) { return CariSil(f.session, id); };
}

// Enter searches and goes to the hits; without any the filter is still to be mended.
void filter_KeyDown(FrmCarihesapSec& f, KeyEvent& event) {
    if (event.key != Key::Enter) return;
    event.swallowed = true;
    FrmCmdBul(f, "cmdBul");
    if (f.grdList.rowCount() > 0) f.grdList.setFocus();
}

void grdList_KeyDown(FrmCarihesapSec& f, KeyEvent& event) {
    if (event.key != Key::Enter) return;
    event.swallowed = true;
    cmdKayitSec_Click(f);
}

void bindEvents(FrmCarihesapSec& f) {
    for (const auto& filter : f.filters.all())
        filter->control().onKeyDown = [&f](KeyEvent& event) { filter_KeyDown(f, event); };
    for (CommandButton* button : {&f.cmdBul, &f.cmdTemizle, &f.cmdCikis, &f.cmdKayitSec})
        button->onClick = [&f, button] { FrmCmdBul(f, button->name()); };
    f.cmdYazici.onClick = [&f] { cmdYazici_Click(f); };
    f.BarIslemler.onToolClick = [&f](const std::string& toolName) { FrmCmdBul(f, toolName); };
    f.grdList.onKeyDown = [&f](KeyEvent& event) { grdList_KeyDown(f, event); };
    f.grdList.onDblClick = [&f] { cmdKayitSec_Click(f); };
    f.grdList.onHeadClick = [&f](int column) { grdList_HeadClick(f, column); };
}

void Form_Load(FrmCarihesapSec& f) {
    enterState(f.record, FormModu::Search);
    openCustomers(f, " 1 = 2 ");
    groupList(f.session, f.filters.at<ComboBox>("cboGrup"), f.filters.at<TextBox>("txtGrupID"));
    fillList(f.session, f.filters.at<ComboBox>("cboOzelKod1"),
             "SELECT DISTINCT OZEL_KOD1 AS  OZEL_KOD11, OZEL_KOD1  FROM MUSTKAYIT WHERE  OZEL_KOD1 <>''",
             "OZEL_KOD1", "OZEL_KOD11");
}

void Form_Unload(FrmCarihesapSec& f) {
    f.grdList.bind(nullptr);
    KayitSetiKapat(f.record.rs);
}

void Form_KeyPress(FrmCarihesapSec& f, KeyPress& press) {
    if (press.character != static_cast<char32_t>(Key::Escape)) return;
    press.swallowed = true;
    FrmCmdExit(f);
}

} // namespace

FrmCarihesapSec::FrmCarihesapSec(Forms& forms, Session& itsSession)
    : Form(forms, "frmCarihesapSec", "Müşteri Seç"), session(itsSession) {
    buildBar(BarIslemler);
    setProperties(*this);
    markFocus(*this);
    bindCycle(*this);
    bindEvents(*this);
    onLoad = [this] { Form_Load(*this); };
    onUnload = [this] { Form_Unload(*this); };
    onKeyDown = [this](KeyEvent& event) { toolKeys(BarIslemler, event); };
    onKeyPress = [this](KeyPress& press) { Form_KeyPress(*this, press); };
}

std::unique_ptr<Form> makeFrmCarihesapSec(Forms& forms, Session& session) {
    return std::make_unique<FrmCarihesapSec>(forms, session);
}

} // namespace veldona
