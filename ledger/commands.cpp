#include "ledger/commands.h"

#include <filesystem>

#include "backup/place.h"
#include "core/database.h"
#include "core/delivered.h"
#include "core/formframe.h"
#include "core/session.h"
#include "core/showscreen.h"
#include "daybook/reminders.h"
#include "daybook/statement.h"
#include "ledger/openaccount.h"
#include "ledger/takenback.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

enum class ReportMode { Expected = 1, Overdue = 2 };

void openReport(FrmMainVeldona& f, const char* screen, const char* title, ReportMode kip) {
    FormKayitTemizle(f.session);
    f.session.gFormKayit.Baslik = title;
    f.session.gFormKayit.ReportMode = static_cast<std::int32_t>(kip);
    showScreen(f.session, screen, Kip::Modeless);
}

// Hands the customer on show over; one without a card hands over nothing.
void giveCustomer(FrmMainVeldona& f, const std::string& hstno) {
    if (hstno.empty()) return;
    RecordsetPtr rs;
    KayitSetiAc(f.session, rs, "SELECT ID,HSTNO,AD,SOYAD From MUSTKAYIT WHERE HSTNO = '" + hstno + "'",
                adodb::CursorLocation::Client);
    if (rs->eof()) return;
    FormKayit& record = f.session.gFormKayit;
    record.CariID = toLong(rs->value("ID"));
    record.HSTNO = joinText(rs->value("HSTNO"));
    record.Unvan = joinText(rs->value("AD")) + "  " + joinText(rs->value("SOYAD"));
    f.session.gHSTNO = hstno;
}

constexpr const char* kAbout =
    "Veldona Taksit 1.0\n\nTaksitle satış yapan dükkânlar için müşteri kartı, satış, tahsilat, makbuz ve "
    "sözleşme.\n\nTuşlar: F1";

void tellOfWindow(Session& session) {
    session.desktop.dialogs.tell("Bu komut yalnız programın penceresinde çalışır.", Icon::Information);
}

// The books get another password when this run has let go of them: all screens close for it.
void mnuParola_Click(FrmMainVeldona& f) {
    if (backup::areOnServer(f.session.desktop.paths.toNative(kDatabasePath)))
        return f.session.desktop.dialogs.tell(
            "Defter bir sunucuda: parolası sunucunun parolasıdır, orada değiştirilir.", Icon::Information);
    Forms& forms = f.forms();
    Session& session = f.session;
    showScreen(session, "frmParola", Kip::Modal);
    if (!session.behindTheEnd) return;
    for (Form* open : forms.loadedForms())
        forms.unload(*open);
}

void bindMenuBar(FrmMainVeldona& f) {
    // Where there is a window, the program gives them its acts.
    for (MenuItem* entry : {&f.mnuYedektenDon, &f.mnuTuslar})
        entry->onClick = [&f] { tellOfWindow(f.session); };
    f.mnuEkstre.onClick = [&f] { showStatement(f.session, f.Text1.text(), StatementNotes::None); };
    f.mnuEkstreNotlu.onClick = [&f] { showStatement(f.session, f.Text1.text(), StatementNotes::Last); };
    f.mnuEkstre.setToolTip("Müşterinin ekstresini hazırlar");
    f.mnuMektup.onClick = [&f] { showReminderLetters(f.session, {f.Text1.text()}); };
    f.mnuGrafik.setEnabled(f.forms().isKnown("frmGrafik"));
    f.mnuGrafik.onClick = [&f] { showScreen(f.session, "frmGrafik", Kip::Modal); };
    f.mnuYedekAl.onClick = [&f] { showScreen(f.session, "frmYedek", Kip::Modal); };
    f.mnuGunluk.onClick = [&f] { showScreen(f.session, "frmGunluk", Kip::Modal); };
    f.mnuParola.onClick = [&f] { mnuParola_Click(f); };
    f.mnuBugun.onClick = [&f] { openPickedIn(f, "frmBugun"); };
    f.mnuAra.onClick = [&f] { openPickedIn(f, "frmArama"); };
    f.mnuSonIslemler.onClick = [&f] { openRecentActs(f); };
    f.mnuSonIslemler.setToolTip("Son işlemleri gösterir, geri alır");
    f.mnuBugun.setToolTip("Bugün aranacak müşterileri ve günün tutarlarını gösterir");
    f.mnuAra.setToolTip("Ad, telefon, numara ya da ürünle hesabı ve satışı bulur");
    f.mnuKilavuz.onClick = [&f] {
        if (f.session.showGuide)
            f.session.showGuide(f.name());
        else
            tellOfWindow(f.session);
    };
    f.mnuHakkinda.onClick = [&f] {
        f.session.desktop.dialogs.show({kAbout, "Hakkında", Icon::Information, Buttons::Ok});
    };
}

void bindTo(FrmMainVeldona& f, CommandButton& button, const char* screen, std::function<void()> open) {
    button.setEnabled(f.forms().isKnown(screen));
    button.onClick = std::move(open);
}

} // namespace

void cmdSatis_Click(FrmMainVeldona& f) {
    const std::string hstno = trim(f.Text1.text());
    if (hstno.empty() || trim(f.Label7.caption()).empty()) {
        f.session.desktop.dialogs.tell("Müşteri Seçiniz", Icon::Exclamation);
        return;
    }
    FormKayitTemizle(f.session);
    giveCustomer(f, hstno);
    f.session.gFormKayit.Kip = FormModu::Yeni;
    const std::string customer = f.session.gHSTNO;
    const std::int32_t sale = f.session.gISLEMNO;
    showScreen(f.session, "frmSatis", Kip::Modal);
    // Customer and sale on show here have stayed: a plan still to be saved is theirs, not the other screen's.
    f.session.gHSTNO = customer;
    f.session.gISLEMNO = sale;
}

void cmdOnlineYardimIste_Click(FrmMainVeldona& f) {
    Desktop& desktop = f.session.desktop;
    const std::string program = desktop.paths.appPath() + "\\YARDIM.exe";
    const std::string file = desktop.paths.toNative(program);
    const bool isThere = std::filesystem::exists(file);
    if (!isThere && f.session.showGuide)
        f.session.showGuide(f.name());
    else if (!isThere)
        desktop.dialogs.tell("Yardım programı bulunamadı: " + program, Icon::Exclamation);
    else if (!desktop.opener.open(file))
        desktop.dialogs.tell("Yardım programı açılamadı: " + program, Icon::Exclamation);
}

void bindCommands(FrmMainVeldona& f) {
    Session& session = f.session;
    bindTo(f, f.cmdSatis, "frmSatis", [&f] { cmdSatis_Click(f); });
    bindTo(f, f.cmdBeklenenTaksitler, "rprbeklenentahsilat",
           [&f] { openReport(f, "rprbeklenentahsilat", "Beklenen Tahsilar Raporu", ReportMode::Expected); });
    bindTo(f, f.cmdGunuGecenOdemeler, "rprodemesigecen",
           [&f] { openReport(f, "rprodemesigecen", "Günü Geçen Ödemeler Raporu", ReportMode::Overdue); });
    bindTo(f, f.cmdTahsilatListesi, "rptGelirGider",
           [&session] { showScreen(session, "rptGelirGider", Kip::Modal); });
    bindTo(f, f.cmdAntetBilgisi, "frmAntetBilgisi", [&session] {
        FormKayitTemizle(session); // the ID of a customer picked before is no ID of the letterhead
        showScreen(session, "frmAntetBilgisi", Kip::Modal);
    });
    f.cmdOnlineYardimIste.onClick = [&f] { cmdOnlineYardimIste_Click(f); };
    bindMenuBar(f);
}

} // namespace veldona
