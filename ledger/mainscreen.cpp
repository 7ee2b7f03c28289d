#include "ledger/mainscreen.h"

#include <initializer_list>

#include "core/customerfields.h"
#include "core/showscreen.h"
#include "ledger/accountmarks.h"
#include "ledger/collection.h"
#include "ledger/commands.h"
#include "ledger/contract.h"
#include "ledger/corrections.h"
#include "ledger/customergrid.h"
#include "ledger/delivery.h"
#include "ledger/ledgerplan.h"
#include "ledger/lifecycle.h"
#include "ledger/loading.h"
#include "ledger/openaccount.h"
#include "ledger/overdue.h"
#include "ledger/receipt.h"
#include "ledger/takenback.h"

namespace veldona {

namespace {

using Controls = std::initializer_list<Control*>;

void placeControls(FrmMainVeldona& f) {
    place(f.fraMusteri, {&f.Text1, &f.txtSoyad, &f.txtAd, &f.cmdCariSec, &f.Label7, &f.lbluyari,
                         &f.lblVadeFarki, &f.lblToplamGeciken, &f.txtAdres, &f.txtTel, &f.grdList});
    place(f.fraSatislar, {&f.L3, &f.Text5, &f.Text6, &f.txtOdemeTipi, &f.txtAciklama, &f.dtTeslimatTarihi,
                          &f.dtTeslimEdildigiTarih, &f.Command4});
    place(f.fraSatirlar, {&f.lstID, &f.List1, &f.List2, &f.List3, &f.List5, &f.List6, &f.List4, &f.List7});
    place(f.fraYapilacakOdemeler,
          {&f.L4, &f.L5, &f.lstYapilacakOdmID, &f.L6, &f.Label21, &f.lblToplamOdenecek, &f.Command3});
    place(f.fraYapilanOdemeler, {&f.L1, &f.L2, &f.lstOdemeTip});
    place(f.fraBakiye, {&f.Label11, &f.Label8, &f.Label9, &f.lblIndirim, &f.Label15, &f.Command6,
                        &f.dtRaporTarihi, &f.dtRaporTarihiSon});
    place(f.fraTahsilat, {&f.mskOdenenPara, &f.DTPicker1, &f.lblTarihNotu, &f.cboKasa, &f.txtKasaID,
                          &f.Command1, &f.lblSonTahsilat});
    place(f.frmTahsilatMakbuzu, {&f.Option1, &f.Option2, &f.cmdMakbuzYazdir, &f.cmdVazgec});
    place(f.fraDuzelt, {&f.dtOdemeTarihi, &f.mskOdenecekMiktar, &f.cmdKaydet, &f.cmdVazGecKayit});
    place(f.fraIslemTarihi, {&f.dtIslemTarihi, &f.cmdTamam, &f.cmdVazgecIslemTarihi});
    place(f.fraTaksitlendir, {&f.mskBorc, &f.dtBaslangicTarihi, &f.chkTaksitAdetGir, &f.fraTaksitAdedi,
                              &f.fraTaksitTutari, &f.chkTaksitleri, &f.cmdTaksitKaydet, &f.cmdTaksitVazgec});
    place(f.fraTaksitAdedi, {&f.MskTaksitAdedi});
    place(f.fraTaksitTutari, {&f.mskTaksitTutari});
    place(f.frmUrunEkle, {&f.txtUrunAdi, &f.MskToplamUcret, &f.cmdUrunKaydet, &f.cmdUrEkleVazgec});
}

void setProperties(FrmMainVeldona& f) {
    for (Control* control : Controls{&f.lstID, &f.lstYapilacakOdmID, &f.txtYaziIle, &f.Text6})
        control->setVisible(false);
    for (Control* control :
         Controls{&f.txtAdres, &f.txtTel, &f.Text5, &f.txtOdemeTipi, &f.txtAciklama, &f.dtTeslimatTarihi})
        control->locked = true;
    for (ListBox* list : {&f.L4, &f.L5})
        list->popupMenu = &f.mnuYapilacakOdm;
    for (ListBox* list : {&f.List1, &f.List2, &f.List3, &f.List4, &f.List5, &f.List6, &f.List7})
        list->popupMenu = &f.mnuUrun;

    f.lbluyari.setToolTip("Müşteri Hakkında Uyarı Yazılmış");
    f.lblYedek.setToolTip("Yedek almak için tıklayın");
    f.List4.setToolTip("İşlem tarihini ENTER  tuşuna basarak düzeltebilirsiniz.");
    f.dtTeslimatTarihi.setToolTip("Ürünün Teslim Edileceği Tarih");
    f.Command4.setToolTip("Ürün Teslim Edildiğinde Kaydetmek İçin Kullanılan Buton");
    f.chkTaksitAdetGir.setToolTip(
        "Taksitleri Tutar Girerekmi Yoksa Taksit Adedi Girerekmi Oluşturacağınızı Seçersiniz.");

    f.grdList.setColumns(customerListColumns());
}

// Commands whose screens and procedures the program does not have: they are seen, and cannot be pressed.
void disableUnavailable(FrmMainVeldona& f) {
    f.cmdCariSec.setEnabled(f.forms().isKnown("frmCarihesapSec"));
    f.cmdMusteriKaydi.setEnabled(f.forms().isKnown("frmCariEkle"));
    f.Command3.setEnabled(f.forms().isKnown("taksitodduzelt"));
    f.cmdSozlesme.setEnabled(f.forms().isKnown("frmCrNesne"));
}

void bindCustomerEvents(FrmMainVeldona& f) {
    f.Text1.onChange = [&f] { MusteriYukle(f); };
    // The number as it stood before the key; one that no statement takes has been told of when it was typed.
    f.Text1.onKeyDown = [&f](KeyEvent&) {
        Err passedOver;
        attempt(passedOver, [&] { ISLEMNUMARALARI_YUKLE(f); });
    };
    f.txtAd.onChange = [&f] { FrmCmdBul(f); };
    f.txtSoyad.onChange = [&f] { FrmCmdBul(f); };
    f.txtAd.onKeyDown = [&f](KeyEvent& event) {
        if (event.key == Key::Down) f.grdList.setFocus();
    };
    f.grdList.onRowChange = [&f] { grdList_RowChange(f); };
    f.grdList.onKeyDown = [&f](KeyEvent& event) {
        if (event.key == Key::Enter) f.L3.setFocus();
        // The screen sends arrows to the sales; in the grid they walk through the customers.
        if (event.key == Key::Up || event.key == Key::Down) f.grdList.setFocus();
    };
    f.grdList.onDblClick = [&f] { grdList_DblClick(f); };
    f.cmdMusteriKaydi.onClick = [&f] { cmdMusteriKaydi_Click(f); };
    f.cmdCariSec.onClick = [&f] { cmdCariSec_Click(f); };
    f.lbluyari.onClick = [&f] { lbluyari_Click(f); };
    f.tmrUyari.onTimer = [&f] { tmrUyari_Timer(f); };
    f.Command6.onClick = [&f] { Command6_Click(f); };
    f.lblYedek.onClick = [&f] { showScreen(f.session, "frmYedek", Kip::Modal); };
}

void bindLedgerEvents(FrmMainVeldona& f) {
    f.L3.onClick = [&f] { L3_Click(f); };
    f.L3.onDblClick = [&f] { L3_DblClick(f); };
    f.L3.onKeyDown = [&f](KeyEvent& event) {
        if (event.key == Key::Enter) openSelectedSale(f);
    };
    f.L1.onClick = [&f] { L1_Click(f); };
    f.L2.onClick = [&f] { L2_Click(f); };
    f.L4.onClick = [&f] { L4_Click(f); };
    f.L5.onClick = [&f] { L5_Click(f); };
    for (ListBox* list : {&f.List1, &f.List2, &f.List4})
        list->onClick = [&f, list] { rowList_Click(f, list->listIndex()); };
    f.Command1.onClick = [&f] { Command1_Click(f); };
    f.cboKasa.onChange = [&f] { cboKasa_Change(f); };
    f.cboKasa.onClick = [&f] { cboKasa_Click(f); };
    f.mskOdenenPara.onKeyDown = [&f](KeyEvent& event) {
        if (event.key == Key::Up || event.key == Key::Down) f.L3.setFocus();
    };
    f.chkTaksitAdetGir.onClick = [&f] { TAKSIT_CERCEVE_AYARLA(f); };
    f.cmdMakbuzYazdir.onClick = [&f] { cmdMakbuzYazdir_Click(f); };
    f.cmdSozlesme.onClick = [&f] { cmdSozlesme_Click(f); };
    f.cmdVazgec.onClick = [&f] { f.frmTahsilatMakbuzu.setVisible(false); };
    f.cmdCikis.onClick = [&f] { f.forms().endProcess(); };
}

void bindDelivery(FrmMainVeldona& f) {
    f.Command4.onClick = [&f] { Command4_Click(f); };
    f.mnuUrunEkle.onClick = [&f] { mnuUrunEkle_Click(f); };
    f.cmdUrunKaydet.onClick = [&f] { cmdUrunKaydet_Click(f); };
    f.cmdUrEkleVazgec.onClick = [&f] { f.frmUrunEkle.setVisible(false); };
}

} // namespace

FrmMainVeldona::FrmMainVeldona(Forms& forms, Session& itsSession)
    : Form(forms, "frmMainVeldona", "Veldona Taksit"), session(itsSession) {
    placeControls(*this);
    setProperties(*this);
    disableUnavailable(*this);
    bindCustomerEvents(*this);
    bindLedgerEvents(*this);
    bindDelivery(*this);
    bindCorrections(*this);
    bindPlan(*this);
    bindCommands(*this);
    bindState(*this);
    guardPanels(*this);
    onLoad = [this] { Form_Load(*this); };
    onActivate = [this] { Form_Activate(*this); };
    onUnload = [this] { Form_Unload(*this); };
    onKeyDown = [this](KeyEvent& event) { Form_KeyDown(*this, event); };
    onKeyPress = [this](KeyPress& press) { Form_KeyPress(*this, press); };
}

std::unique_ptr<Form> makeFrmMainVeldona(Forms& forms, Session& session) {
    return std::make_unique<FrmMainVeldona>(forms, session);
}

} // namespace veldona
