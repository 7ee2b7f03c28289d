#include "sales/lifecycle.h"

#include <initializer_list>

#include "core/session.h"
#include "platform/controls/forms.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/store/faces/adodb.h"
#include "sales/deleting.h"
#include "sales/plan.h"
#include "sales/saving.h"

namespace veldona {

namespace {

constexpr int kFixedWidth = 300; // twips
constexpr int kAmountWidth = 900;
constexpr int kDateWidth = 1300;

void prepareGrid(FlexGrid& grid, std::initializer_list<const char*> headings) {
    grid.setRows(2);
    grid.setColumns(4);
    grid.setColumnWidth(0, kFixedWidth);
    grid.setColumnWidth(PaymentColumn::Miktar, kAmountWidth);
    grid.setColumnWidth(PaymentColumn::Tarih, kDateWidth);
    int column = PaymentColumn::Miktar;
    for (const char* heading : headings)
        grid.setTextMatrix(0, column++, heading);
}

void readParameters(FrmSatis& f) {
    const FormKayit& record = f.session.gFormKayit;
    f.durum = record.Kip;
    f.isPicker = record.Sonuc == Currency::ofWhole(FormResult::Requested);
    f.m_KayitID = record.KayitID;
    if (record.CariID > 0) f.customer = {std::to_string(record.CariID), record.HSTNO, record.Unvan};
}

void takeRow(FrmSatis& f) {
    if (!f.rs->bof() && !f.rs->eof()) f.m_KayitID = toLong(f.rs->value("ID"));
}

void beginNew(FrmSatis& f) {
    enterState(f, FormModu::Yeni);
    YeniKayitBaslat(f);
}

void giveUp(FrmSatis& f) {
    if (!f.cursor.empty() && ImlecGit(*f.rs, f.cursor)) takeRow(f);
    enterState(f, FormModu::Navigation);
    if (!f.isPicker) return;
    f.session.gFormKayit.Sonuc = Currency::ofWhole(FormResult::GivenUp);
    f.forms().unload(f);
}

} // namespace

void Form_Load(FrmSatis& f) {
    prepareGrid(f.grdYapilanOdeme, {"Miktar", "Tarih"});
    prepareGrid(f.grdYapilacakOdeme, {"Miktar", "Tarih", "Peşinat"});
    readParameters(f);
    f.takenBack.begin(*f.session.gBaglanti);
    KayitSetiAc(f.session, f.rs, "SELECT ID FROM ISLEMNOTABLO", adodb::CursorLocation::Client);
    enterState(f, f.durum);
    YeniKayitBaslat(f);
}

void Form_Unload(FrmSatis& f) {
    KayitSetiKapat(f.rs);
}

void Form_KeyDown(FrmSatis& f, KeyEvent& event) {
    switch (event.key) {
    case Key::F2:
        if (f.durum == FormModu::Yeni || f.durum == FormModu::Change) saleCommand(f, "cmdKaydet");
        break;
    case Key::F3:
        saleCommand(f, "cmdYeni");
        break;
    case Key::F4:
        saleCommand(f, "cmdVazgec");
        break;
    case Key::F5:
        saleCommand(f, "cmdDegistir");
        break;
    case Key::F6:
        saleCommand(f, "cmdSil");
        break;
    default:
        break;
    }
}

void YeniKayitBaslat(FrmSatis& f) {
    if (f.durum == FormModu::Yeni) {
        AlanlariTemizle(f);
        const DateTime today = f.session.desktop.clock.today();
        f.dtIslemTarihi.setValue(today);
        f.dtTaksitBaslangicTarihi.setValue(today);
        numberSale(f);
    }
    chkOtomatikTaksitHesapla_Click(f);
    if (!f.customer.ID.empty() && !f.customer.HSTNO.empty()) {
        f.txtKod.setText(f.customer.ID);
        f.txtCariKod.setText(f.customer.HSTNO);
        f.txtUnvan.setText(f.customer.Unvan);
    }
    chkTaksitAdetGir_Click(f);
}

void AlanlariTemizle(FrmSatis& f) {
    for (TextBox* box : {&f.txtIslemNo, &f.txtKod, &f.txtCariKod, &f.txtUnvan})
        box->setText("");
    f.dtIslemTarihi.setValue(Null{});
    for (TextBox* box :
         {&f.txtAciklama, &f.MskToplamUcret, &f.MskAlinanPesinat, &f.MskKalan, &f.MskTaksitAdedi})
        box->setText("");
    f.dtTaksitBaslangicTarihi.setValue(Null{});
}

double YeniIslemNo(Session& session, const std::string& alan, const std::string& tablo) {
    const std::string no = YeniNo(session, alan, tablo, {}, FieldKind::Number);
    return no.empty() ? 0 : toDouble(no);
}

void numberSale(FrmSatis& f) {
    const double no = YeniIslemNo(f.session, "ISLEMNO", "ISLEMNOTABLO");
    f.session.gISLEMNO = toLong(no);
    f.txtIslemNo.setText(no > 0 ? toText(no) : std::string());
}

void enterState(FrmSatis& f, int durum) {
    f.durum = durum;
    BarDurumAyarla(durum, f.BarIslemler, 0);
    for (const char* toolName : {"cmdOnceki", "cmdSonraki"})
        f.BarIslemler.setToolVisible(toolName, false);
}

void FormGezinme(FrmSatis& f, Navigation yon) {
    if (yon == Navigation::Bul)
        f.rs->find("ID = " + std::to_string(f.m_KayitID));
    else
        walkRecords(*f.rs, yon);
    takeRow(f);
}

void readSalesAgain(FrmSatis& f) {
    f.rs->requery();
    FormGezinme(f, Navigation::Bul);
    f.cursor = ImlecAl(*f.rs);
}

void saleCommand(FrmSatis& f, std::string_view toolName) {
    if (const ToolBar::Tool* tool = f.BarIslemler.find(toolName)) f.forms().pressesFor(tool->caption);
    if (toolName == "cmdKaydet") SatisKaydet(f);
    if (toolName == "cmdYeni") beginNew(f);
    if (toolName == "cmdVazgec") giveUp(f);
    if (toolName == "cmdDegistir" && f.m_KayitID > 0) enterState(f, FormModu::Change);
    if (toolName == "cmdSil") {
        SatisSil(f, f.m_KayitID);
        AlanlariTemizle(f);
    }
    if (toolName == "cmdCikis") f.forms().unload(f);
}

} // namespace veldona
