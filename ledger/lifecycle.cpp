#include "ledger/lifecycle.h"

#include "core/database.h"
#include "core/session.h"
#include "ledger/accountmarks.h"
#include "ledger/collection.h"
#include "ledger/customergrid.h"
#include "ledger/loading.h"
#include "ledger/overdue.h"
#include "ledger/panes.h"
#include "ledger/takenback.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"

namespace veldona {

namespace {

// One table opened by name costs nothing until it is walked.
void openTables(FrmMainVeldona& f) {
    f.dbMain = f.session.dbEngine.openDatabase(f.session.desktop.paths.appPath() + "\\vorel.mdb");
    f.rsOdenen = f.dbMain->openRecordset("TAKSITODENEN");
    f.rsAlinan = f.dbMain->openRecordset("TAKSITALINAN");
    f.rsMusteri = f.dbMain->openRecordset("MUSTKAYIT");
    f.rsSatis = f.dbMain->openRecordset("URUNSAT");
    f.rsOdenen2 = f.dbMain->openRecordset("TAKSITODENEN");
    f.rsOdenen3 = f.dbMain->openRecordset("TAKSITODENEN");
}

// From the first of this month to tomorrow.
void setReportRange(FrmMainVeldona& f, DateTime today) {
    f.dtRaporTarihi.setValue(today);
    f.dtRaporTarihiSon.setValue(today.plusDays(1));
    f.dtRaporTarihi.setValue(DateTime::of(today.year(), today.month(), 1));
}

void hidePanels(FrmMainVeldona& f) {
    for (Control* control : std::initializer_list<Control*>{
             &f.mnuUrun, &f.mnuYapilacakOdm, &f.fraDuzelt, &f.fraTaksitlendir, &f.fraIslemTarihi,
             &f.frmUrunEkle, &f.frmTahsilatMakbuzu, &f.lbluyari, &f.lblVadeFarki, &f.cmdSozlesme})
        control->setVisible(false);
}

// Whatever becomes of the question, no number of another customer stays.
void fillSaleNumbers(FrmMainVeldona& f) {
    Err passedOver;
    std::vector<std::string> numbers;
    attempt(passedOver, [&] {
        dao::Database books =
            f.session.dbEngine.openDatabase(f.session.gVeritabaniYolu, f.session.connectText());
        dao::Recordset rs = books.openRecordset("SELECT distinct (ISLEMNO) FROM URUNAL where MUSTNO ='" +
                                                f.Text1.text() + "' ORDER BY ISLEMNO DESC ");
        for (; !rs.eof(); rs.moveNext())
            numbers.push_back(joinText(rs.value("ISLEMNO")));
    });
    f.L3.clear();
    for (std::string& number : numbers)
        f.L3.add(std::move(number));
}

void showBackupAge(FrmMainVeldona& f) {
    const Desktop& desktop = f.session.desktop;
    f.lblYedek.setCaption(backup::ageText(f.lastBackup.of(desktop.paths), desktop.clock.now()));
}

// A command that is not to be had now does nothing by its key either.
void click(const CommandButton& button) {
    if (!button.isUsable() || !button.onClick) return;
    button.form().forms().pressesFor(button);
    button.onClick();
}

} // namespace

void Form_Load(FrmMainVeldona& f) {
    openTables(f);
    f.session.gParaBirimi = 1;
    const DateTime today = f.session.desktop.clock.today();
    setReportRange(f, today);
    f.bYeniKayit = false;
    f.bDuzeltme = false;
    hidePanels(f);
    f.DTPicker1.setValue(today);
    f.dtOdemeTarihi.setValue(today);
    f.Option1.setValue(true);
    f.Text1.setText(f.session.gHSTNO);
    for (ListBox* list : {&f.L1, &f.L2, &f.L4, &f.L5, &f.lstOdemeTip, &f.lstYapilacakOdmID})
        list->clear();
    f.lblToplamOdenecek.setCaption("0");
    for (Label* label : {&f.Label8, &f.Label9, &f.Label11})
        label->setCaption("");
    f.bSeciliSatir = 0;
    f.cySeciliTaksit = Currency{};
    TAKSIT_CERCEVE_AYARLA(f);
    fillCboKasa(f);
    FrmCmdBul(f);
    fillPages(f);
    beginWatchingForTakenBack(f);
}

void Form_Activate(FrmMainVeldona& f) {
    Err passedOver;
    bool isNewest = true;
    resumeNext(
        passedOver, [&] { showBackupAge(f); }, [&] { fillSaleNumbers(f); },
        [&] {
            for (MenuItem* item :
                 {&f.mnuYapilacakOdmSatirSil, &f.mnuSatirSil, &f.mnuUrunEkle, &f.mnuTaksitlendirmeYap})
                item->setVisible(true);
        },
        [&] { isNewest = letEventsIntoLoad(f); }, [&] { GECIKME_UYARI(f); });
    if (f.isUnloaded()) return;
    // What the operator turned to meanwhile keeps its command and the focus.
    if (isNewest)
        resumeNext(
            passedOver, [&] { f.cmdSozlesme.setVisible(false); }, [&] { f.L3.setFocus(); });
    attempt(passedOver, [&] { FrmCmdBul(f); });
}

void Form_Unload(FrmMainVeldona& f) {
    Err passedOver; // the books don't close any later for it
    attempt(passedOver, [&] { lookAtJournal(f); });
    f.grdList.bind(nullptr);
    KayitSetiKapat(f.rsCari);
    KayitSetiKapat(f.rsBul);
}

void Form_KeyDown(FrmMainVeldona& f, KeyEvent& event) {
    switch (event.key) {
    case Key::Left:
    case Key::Right:
        f.L3.setFocus();
        FormGezinme(f, event.key == Key::Left ? Navigation::Previous : Navigation::Next);
        GECIKME_UYARI(f);
        break;
    case Key::Up:
    case Key::Down:
        f.L3.setFocus();
        break;
    case Key::F2:
        click(f.Command1);
        GECIKME_UYARI(f);
        break;
    case Key::F6:
        click(f.cmdIslemNoSil);
        GECIKME_UYARI(f);
        break;
    case Key::F9:
        click(f.cmdMakbuzYazdir);
        break;
    case Key::F10:
        click(f.cmdCariSec);
        GECIKME_UYARI(f);
        break;
    default:
        break;
    }
}

void Form_KeyPress(FrmMainVeldona& f, KeyPress& press) {
    if (press.character != static_cast<char32_t>(Key::Escape)) return;
    press.swallowed = true;
    f.forms().unload(f);
}

} // namespace veldona
