// The main screen: one customer's sales, and the lines, schedule and payments of the sale on show.
//
// Its state is the text of parallel lists: row i of one belongs to row i of its neighbours, all sums run on
// list text. The procedures stand in modules by duty: loading, saleload, balances, overdue, collection,
// customergrid …
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "backup/lastbackup.h"
#include "core/rowsource.h"
#include "daybook/arrears.h"
#include "ledger/partytexts.h"
#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"
#include "platform/controls/menus.h"
#include "platform/runtime/storedamount.h"
#include "platform/store/faces/adodb.h"
#include "platform/store/faces/dao.h"

namespace veldona {

struct Session;

// One sale of the overdue warning: what fell due in the range against all that was paid.
struct OverdueSale {
    std::string MUSTNO;
    std::int32_t ISLEMNO = 0;
    StoredAmount Due;
    StoredAmount Paid;
    StoredAmount Kalan;
    Value ODEME_TARIHI;
    Value MIN_ODEME_TARIHI;
    std::string AD;
    std::string SOYAD;
};

// What was last reckoned of the sale on show; without an account it is to be reckoned anew.
struct InstallmentsOnShow {
    adodb::ChangeWatch written{{"URUNSAT", "TAKSITODENEN", "ISLEMNOTABLO", "URUNAL"}};
    std::optional<std::string> account;
    std::string sale;
    std::vector<Installment> rows;
};

// Whose arrears are on show, and on which day; the same.
struct ArrearsOnShow {
    adodb::ChangeWatch written{{"URUNSAT", "TAKSITODENEN", "ISLEMNOTABLO", "URUNAL"}};
    std::optional<std::string> account;
    DateTime day;
};

// What was taken back of the account on show.
struct TakenBackWatch {
    adodb::ChangeWatch written{{"GUNLUK"}};
    std::int64_t seen = -1; // the last entry of the journal that was looked at; -1: none yet
    bool isPending = false;
};

struct FrmMainVeldona : Form {
    FrmMainVeldona(Forms& forms, Session& itsSession);

    Session& session;

    // Customer
    Frame fraMusteri{*this, "fraMusteri", "Müşteri"};
    TextBox Text1{*this, "Text1"};       // account number (HSTNO); each change loads the customer
    TextBox txtSoyad{*this, "txtSoyad"}; // filters of the grid: surnames that begin so
    TextBox txtAd{*this, "txtAd"};       // and first names
    CommandButton cmdCariSec{*this, "cmdCariSec", "D&etaylı Ara"};
    Label Label7{*this, "Label7"};                     // first name and surname of the customer on show
    Label lbluyari{*this, "lbluyari", "İSTİHBARAT"};   // blinks while the customer's card holds a warning
    Label lblVadeFarki{*this, "lblVadeFarki"};         // what is overdue, in a sentence
    Label lblToplamGeciken{*this, "lblToplamGeciken"}; // the same over all months and sales of the customer
    TextBox txtAdres{*this, "txtAdres"};
    TextBox txtTel{*this, "txtTel"};
    DataGrid grdList{*this, "grdList"}; // the customers of the shop

    // Sales and the sale on show
    Frame fraSatislar{*this, "fraSatislar", "Satışlar"};
    ListBox L3{*this, "L3"};       // the customer's sale numbers, highest first
    TextBox Text5{*this, "Text5"}; // number of the sale on show; a click in L3 already sets it
    TextBox Text6{*this, "Text6"}; // hidden and empty
    TextBox txtOdemeTipi{*this, "txtOdemeTipi"};
    TextBox txtAciklama{*this, "txtAciklama"};
    DateBox dtTeslimatTarihi{*this, "dtTeslimatTarihi", DateBox::Style::Combo};
    DateBox dtTeslimEdildigiTarih{*this, "dtTeslimEdildigiTarih", DateBox::Style::PickerWithCheck};
    CommandButton Command4{*this, "Command4", "Teslim &Kaydet"};

    // Sale lines, a list a column; named in the order of the screen
    Frame fraSatirlar{*this, "fraSatirlar", "Satış Satırları"};
    ListBox lstID{*this, "lstID"}; // URUNAL.ID, hidden
    ListBox List1{*this, "List1"}; // product code
    ListBox List2{*this, "List2"}; // product name; slips up a row for a code without a product
    ListBox List3{*this, "List3"}; // unit price
    ListBox List5{*this, "List5"}; // quantity
    ListBox List6{*this, "List6"}; // line total
    ListBox List4{*this, "List4"}; // date of the line; Enter corrects it
    ListBox List7{*this, "List7"}; // note

    // Schedule beside payments
    Frame fraYapilacakOdemeler{*this, "fraYapilacakOdemeler", "Yapılacak Ödemeler"};
    ListBox L4{*this, "L4"};                               // due date
    ListBox L5{*this, "L5"};                               // amount due
    ListBox lstYapilacakOdmID{*this, "lstYapilacakOdmID"}; // URUNSAT.ID, hidden; -1: a row not saved yet
    ListBox L6{*this, "L6"};                               // L2 less L5, by position, or "Peşinat"
    Label Label21{*this, "Label21"};                       // sum of L6
    Label lblToplamOdenecek{*this, "lblToplamOdenecek"};   // schedule less payments, set by the plan
    CommandButton Command3{*this, "Command3", "D&üzelt"};  // the older way to correct a row
    Frame fraYapilanOdemeler{*this, "fraYapilanOdemeler", "Yapılan Ödemeler"};
    ListBox L1{*this, "L1"};                   // date of the payment
    ListBox L2{*this, "L2"};                   // amount paid
    ListBox lstOdemeTip{*this, "lstOdemeTip"}; // "T" payment; "K" cash-box receipt and "Ç" cheque never load

    // Balances
    Frame fraBakiye{*this, "fraBakiye", "Hesap Durumu"};
    Label Label11{*this, "Label11"};       // to pay: lines less discount
    Label Label8{*this, "Label8"};         // paid: sum of L2
    Label Label9{*this, "Label9"};         // remaining: Label11 less Label8
    Label lblIndirim{*this, "lblIndirim"}; // discount of the sale
    Label Label15{*this, "Label15"};       // what the schedule does not cover
    CommandButton Command6{*this, "Command6", "Gecikme Hesa&pla"};
    // Due dates that the overdue warning counts; each reckoning sets the end to today.
    DateBox dtRaporTarihi{*this, "dtRaporTarihi", DateBox::Style::PickerWithCheck};
    DateBox dtRaporTarihiSon{*this, "dtRaporTarihiSon", DateBox::Style::PickerWithCheck};

    // Collection
    Frame fraTahsilat{*this, "fraTahsilat", "Tahsilat Yap"};
    TextBox mskOdenenPara{*this, "mskOdenenPara"}; // the amount to be posted
    DateBox DTPicker1{*this, "DTPicker1"};         // the day it was paid
    Label lblTarihNotu{*this, "lblTarihNotu"};     // that it isn't today
    ComboBox cboKasa{*this, "cboKasa"};
    TextBox txtKasaID{*this, "txtKasaID"};                  // T_KASA_TANITIM.ID of cboKasa
    CommandButton Command1{*this, "Command1", "&Tahsilat"}; // posts the payment
    Label lblSonTahsilat{*this, "lblSonTahsilat"};          // the last one of this run
    Frame frmTahsilatMakbuzu{*this, "frmTahsilatMakbuzu", "Tahsilat Makbuzu"};
    OptionButton Option1{*this, "Option1", "&Yeni Oluştur"};
    OptionButton Option2{*this, "Option2", "Hazır &Form"};
    CommandButton cmdMakbuzYazdir{*this, "cmdMakbuzYazdir", "&Makbuz"};
    CommandButton cmdVazgec{*this, "cmdVazgec", "&Vazgeç"};
    TextBox txtYaziIle{*this, "txtYaziIle"}; // the amount in words, hidden

    // Panels that open over the lists
    Frame fraDuzelt{*this, "fraDuzelt", "Taksit Düzelt"};
    DateBox dtOdemeTarihi{*this, "dtOdemeTarihi"};
    TextBox mskOdenecekMiktar{*this, "mskOdenecekMiktar"};
    CommandButton cmdKaydet{*this, "cmdKaydet", "&Kaydet"};
    CommandButton cmdVazGecKayit{*this, "cmdVazGecKayit", "&Vazgeç"};
    Frame fraIslemTarihi{*this, "fraIslemTarihi", "Satış Tarihi"};
    DateBox dtIslemTarihi{*this, "dtIslemTarihi"};
    CommandButton cmdTamam{*this, "cmdTamam", "&Tamam"};
    CommandButton cmdVazgecIslemTarihi{*this, "cmdVazgecIslemTarihi", "&Vazgec"};
    Frame fraTaksitlendir{*this, "fraTaksitlendir", "Taksitlendirme"};
    TextBox mskBorc{*this, "mskBorc"};
    DateBox dtBaslangicTarihi{*this, "dtBaslangicTarihi", DateBox::Style::Combo};
    CheckBox chkTaksitAdetGir{*this, "chkTaksitAdetGir", "Taksit Adet Girilecek ", true};
    Frame fraTaksitAdedi{*this, "fraTaksitAdedi"};
    TextBox MskTaksitAdedi{*this, "MskTaksitAdedi", "1"};
    Frame fraTaksitTutari{*this, "fraTaksitTutari"};
    TextBox mskTaksitTutari{*this, "mskTaksitTutari"};
    CheckBox chkTaksitleri{*this, "chkTaksitleri", "Mevcut Taksitlerin Üzerine Ekle"};
    CommandButton cmdTaksitKaydet{*this, "cmdTaksitKaydet", "&Kaydet"};
    CommandButton cmdTaksitVazgec{*this, "cmdTaksitVazgec", "&Vazgeç"};
    Frame frmUrunEkle{*this, "frmUrunEkle", "Ürün Ekle"};
    TextBox txtUrunAdi{*this, "txtUrunAdi"};
    TextBox MskToplamUcret{*this, "MskToplamUcret"};
    CommandButton cmdUrunKaydet{*this, "cmdUrunKaydet", "&Kaydet"};
    CommandButton cmdUrEkleVazgec{*this, "cmdUrEkleVazgec", "&Vazgeç"};

    // Commands
    CommandButton cmdMusteriKaydi{*this, "cmdMusteriKaydi", "Mü&şteri Kaydı"};
    CommandButton cmdSatis{*this, "cmdSatis", "&Satış"};
    CommandButton cmdIslemNoSil{*this, "cmdIslemNoSil", "Satışı Si&l"};
    CommandButton cmdSozlesme{*this, "cmdSozlesme", "S&özleşme"};
    CommandButton cmdBeklenenTaksitler{*this, "cmdBeklenenTaksitler", "&Beklenen Taksitler"};
    CommandButton cmdGunuGecenOdemeler{*this, "cmdGunuGecenOdemeler", "Günü Geçen Ala&caklarınız"};
    CommandButton cmdTahsilatListesi{*this, "cmdTahsilatListesi", "Tahsilat L&istesi"};
    CommandButton cmdAntetBilgisi{*this, "cmdAntetBilgisi", "Antet Bilgisi"};
    CommandButton cmdOnlineYardimIste{*this, "cmdOnlineYardimIste", "Ya&rdım"};
    CommandButton cmdCikis{*this, "cmdCikis", "&Çıkış"};
    Label lblYedek{*this, "lblYedek"}; // how old the last backup is; opens the screen that takes one
    WebPane WebBrowser1{*this, "WebBrowser1"};
    WebPane WebBrowser2{*this, "WebBrowser2"};

    // Menus that pop up from the lists
    Menu mnuUrun{*this, "mnuUrun", "Ürün"};
    MenuItem mnuSatirSil{mnuUrun, "mnuSatirSil", "Satır Sil"};
    MenuItem mnuUrunEkle{mnuUrun, "mnuUrunEkle", "Ürün Ekle"};
    Menu mnuYapilacakOdm{*this, "mnuYapilacakOdm", "Yapılacak Ödeme"};
    MenuItem mnuYapilacakOdmSatirSil{mnuYapilacakOdm, "mnuYapilacakOdmSatirSil", "Satır Sil"};
    MenuItem mnuTaksitlendirmeYap{mnuYapilacakOdm, "mnuTaksitlendirmeYap", "Taksitlendirme Yap"};

    // Menu bar
    Menu mnuGun{*this, "mnuGun", "&Gün"}; // what the day's work looks at
    MenuItem mnuBugun{mnuGun, "mnuBugun", "&Bugün", "F8"};
    MenuItem mnuAra{mnuGun, "mnuAra", "&Ara…", "Ctrl+F"};
    MenuItem mnuEkstre{mnuGun, "mnuEkstre", "&Ekstre", "F7"};
    MenuItem mnuEkstreNotlu{mnuGun, "mnuEkstreNotlu", "Ekstre, Görüşme &Notlarıyla"};
    MenuItem mnuMektup{mnuGun, "mnuMektup", "Hatırlatma &Mektubu"};
    MenuItem mnuGrafik{mnuGun, "mnuGrafik", "Gra&fikler"};
    MenuItem mnuSonIslemler{mnuGun, "mnuSonIslemler", "&Son İşlemler…", "Ctrl+Z"};
    Menu mnuYedek{*this, "mnuYedek", "Ye&dek"};
    MenuItem mnuYedekAl{mnuYedek, "mnuYedekAl", "Yedek &Al…"};
    MenuItem mnuYedektenDon{mnuYedek, "mnuYedektenDon", "Yedekten &Dön…"};
    MenuItem mnuParola{mnuYedek, "mnuParola", "Defterin &Parolası…"};
    MenuItem mnuGunluk{mnuYedek, "mnuGunluk", "&Günlüğü İncelt…"};
    Menu mnuYardim{*this, "mnuYardim", "Y&ardım"};
    MenuItem mnuKilavuz{mnuYardim, "mnuKilavuz", "&Kılavuz"};
    MenuItem mnuTuslar{mnuYardim, "mnuTuslar", "&Tuşlar", "F1"};
    MenuItem mnuHakkinda{mnuYardim, "mnuHakkinda", "&Hakkında"};

    Timer tmrUyari{*this, "tmrUyari", 700};
    Timer tmrDurum{*this, "tmrDurum", 300}; // the screen rests: the quiet lines are brought up to date

    // What the screen remembers between events
    std::optional<dao::Database> dbMain;
    std::optional<dao::Recordset> rsOdenen, rsAlinan, rsMusteri, rsSatis, rsOdenen2, rsOdenen3;
    std::unique_ptr<adodb::Recordset> rsCari; // the customers of the grid
    std::unique_ptr<adodb::Recordset> rsBul;  // the last look-up
    RecordsetRows customerRows;               // what the grid shows of rsCari
    std::string m_Uyari;                      // the customer's UYARI
    double m_CariID = 0;                      // MUSTKAYIT.ID
    bool bYeniKayit = false;
    bool bDuzeltme = false;
    std::uint8_t bSeciliSatir = 0; // rows chosen for collection
    Currency cySeciliTaksit;       // and their sum
    Currency cyOdenen;
    Currency cyTaksit;
    Currency cyMusteriBakiye; // schedule less payments, over all sales of the customer
    PartyTexts contractParty; // the customer of the contract; one who is not found leaves it as it was
    bool bTaksitKontrol = true;
    std::uint8_t DuzeltKaynak = 0;        // which schedule list was clicked last: 1 dates, 2 amounts
    bool PlanYapildi = false;             // the lists show a plan that is not saved
    std::uint8_t PlanBaslangicSatiri = 0; // the first row of L4 that the plan touched
    bool YeniDuzen = true;                // keys in the plan's fields build it
    std::int32_t gKayitSayaci = 0;
    InstallmentsOnShow installmentsOnShow;
    ArrearsOnShow arrearsOnShow;
    adodb::ChangeWatch seenJournal{{"GUNLUK"}};
    backup::KnownLastBackup lastBackup;
    TakenBackWatch takenBack;
    DateTime knownDay;      // the day on which the quiet lines were last brought up to date
    DateTime dayOfChoosing; // that on which DTPicker1 was set
    int loadsWaiting = 0;   // that let events run in their middle
    unsigned loadsRun = 0;  // loads of sale numbers and of a sale that came to their end
    std::vector<OverdueSale> overdueSales;
    Currency overdueTotal; // what is overdue over all of them
};

// The factory for the registry.
[[nodiscard]] std::unique_ptr<Form> makeFrmMainVeldona(Forms& forms, Session& session);

} // namespace veldona
