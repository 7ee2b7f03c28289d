// A walk through every window of the program: what each owes to whoever works by keyboard, by ear, on a small
// screen, or in large letters. It is run on each of the screens in screens/.
#include <set>

#include <QApplication>
#include <QCalendarWidget>
#include <QDialog>
#include <QFileDialog>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include "apps/veldona/backupmenu.h"
#include "apps/veldona/guide.h"
#include "apps/veldona/menus.h"
#include "core/formframe.h"
#include "core/session.h"
#include "ledger/mainscreen.h"
#include "tests/ui/manners.h"
#include "tests/ui/programwindows.h"
#include "ui/datefield.h"
#include "ui/dialogs.h"
#include "ui/floatingpanel.h"
#include "ui/housestyle.h"
#include "ui/keyoverview.h"
#include "ui/turkishtexts.h"

namespace veldona::test {

namespace {

// A desktop's panel and a window's own title bar are no room of ours.
QSize room() {
    return QGuiApplication::primaryScreen()->size() - QSize(0, 38 + 28);
}

std::string pictureName(const std::string& what) {
    const QSize screen = QGuiApplication::primaryScreen()->size();
    return "pencere-" + std::to_string(screen.width()) + '-' + what;
}

constexpr const char* kScreens[] = {"frmMainVeldona",      "frmAntetBilgisi", "frmCariEkle",
                                    "frmCarihesapSec",     "frmCrNesne",      "frmSatis",
                                    "rprbeklenentahsilat", "rprodemesigecen", "rptGelirGider",
                                    "taksitmustduzelt",    "taksitodduzelt",  "frmYedek",
                                    "frmGrafik",           "frmBugun",        "frmArama",
                                    "frmSonIslemler",      "frmParola",       "frmGunluk"};

class Manners : public ProgramWindows {
protected:
    Manners() {
        shop.run(
            "INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD,EVMH,EVCD,EVTEL,GSM,UYARI) VALUES "
            "('7','Ayşe','Yılmaz','Çınar Mah.','Gülşen Cad.','0216 333 22 11','0532 444 55 66','Dikkat')");
        for (const char* row :
             {"ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC,ODEME_TIPI) VALUES ('7',5,123456000000,'Taksitli')",
              "URUNAL (MUSTNO,ISLEMNO,URKOD,ADET,FIYAT,TRH,ACIKLAMA) VALUES "
              "('7',5,'1',1,123456000000,'20/11/2025 10:30:00','Buzdolabı')",
              "URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR,PESINAT) VALUES ('7',5,'20/10/2026',99999990000,0)",
              "TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES "
              "('7',5,'20/10/2026 09:00:00',12345670000)"})
            shop.run(std::string("INSERT INTO ") + row);
        followScreen(*qApp);
        host.addTo("frmMainVeldona", [this](FormWindow& window) { bindMenus(window, backups, [] {}); });
        start();
    }
    ~Manners() override { applyHouseStyle(*qApp, 1); }

    // The window of the screen, shown as on a small screen.
    QWidget& open(const std::string& name) {
        session.gFormKayit.Kip = FormModu::Yeni;
        // Without a report to show the viewer would go again.
        if (name == "frmCrNesne")
            forms.load(name);
        else
            forms.show(name, Kip::Modeless);
        Form& form = *forms.loaded(name);
        // Two buttons in one place, of which the row that is corrected shows one.
        if (name == "taksitodduzelt" || name == "taksitmustduzelt") form.find("Command3")->setVisible(false);
        QWidget& window = *host.window(form);
        host.flush();
        if (window.property("startMaximized").toBool()) {
            window.showNormal();
            window.resize(room());
        }
        window.show();
        window.activateWindow();
        settle();
        return window;
    }
    static void expectNone(const std::string& what, const QStringList& faults) {
        EXPECT_TRUE(faults.isEmpty()) << what << ":\n  " << faults.join("\n  ").toStdString();
    }
    void expectGood(QWidget& window, const std::string& what) {
        expectNone(what + ", no name to a screen reader", namelessControls(window));
        expectNone(what + ", one letter for two", mnemonicClashes(window));
        expectNone(what + ", labels", strayLabels(window));
        expectNone(what + ", too large", overSize(window, room()));
        expectNone(what + ", cut words", clippedWords(window));
    }
    // The letter of each label brings the keyboard to its field.
    void expectLettersLead(QWidget& window, const std::string& what) {
        for (const auto* label : window.findChildren<QLabel*>()) {
            const int letter = QKeySequence::mnemonic(label->text())[0].key();
            QWidget* field = label->buddy();
            // The test's keyboard has no Turkish letters.
            if (!field || !label->isVisible() || !field->isEnabled() || letter < Qt::Key_0 ||
                letter > Qt::Key_Z)
                continue;
            QTest::keyClick(&window, static_cast<Qt::Key>(letter), Qt::AltModifier);
            const QWidget* at = window.focusWidget();
            EXPECT_TRUE(at == field || field->isAncestorOf(at))
                << what << ": " << label->text().toStdString();
        }
    }
    // Does `open`, and looks at the dialog that comes up.
    void expectGoodDialog(const std::function<void()>& open, const std::string& what) {
        bool seen = false;
        QTimer::singleShot(0, &host, [&] {
            QWidget* front = QApplication::activeModalWidget();
            ASSERT_NE(front, nullptr) << what;
            settle();
            seen = true;
            expectGood(*front, what);
            expectNone(what + ", tabs", tabFaults(*front));
            leavePicture(*front, pictureName(what));
            front->close();
        });
        forms.dispatch(open);
        EXPECT_TRUE(seen) << what;
    }
    void picture(QWidget& window, const std::string& name) {
        leavePicture(host, dynamic_cast<FormWindow&>(window).form(), pictureName(name));
    }

    BackupMenu backups{host, shop.clock, shop.desktop.paths};
};

// The main screen with a customer whose amounts are long.
TEST_F(Manners, TheMainScreenWithASale) {
    QWidget& window = open("frmMainVeldona");
    auto& form = dynamic_cast<FormWindow&>(window).form();
    window.findChild<QLineEdit*>("Text1")->setFocus();
    typeText(host, form, "7");
    for (const Key key : {Key::Down, Key::Down, Key::Enter})
        pressKey(host, form, key);
    settle();
    EXPECT_EQ(window.findChild<QLabel*>("Label9")->text(), "111.110,33");
    expectGood(window, "frmMainVeldona with a sale");
    picture(window, "satis-acik");
}

// What was moved off the screens that there are comes back; what was resized keeps its size.
TEST_F(Manners, AWindowIsFoundAgainWhereItIsSeen) {
    QWidget& first = open("frmCarihesapSec");
    const QRect screen = first.screen()->availableGeometry();
    const QSize size = first.size() - QSize(scaled(20), scaled(20));
    EXPECT_TRUE(screen.contains(first.geometry()));
    first.setGeometry(QRect(QPoint(-9000, 9000), size));
    forms.unload(*forms.loaded("frmCarihesapSec"));
    settle();
    QWidget& again = open("frmCarihesapSec");
    EXPECT_TRUE(screen.contains(again.geometry()));
    EXPECT_NEAR(again.width(), size.width(), 1);
    EXPECT_EQ(again.windowHandle()->transientParent(),
              host.window(*forms.loaded("frmMainVeldona"))->windowHandle());
}

TEST_F(Manners, EveryScreen) {
    for (const char* name : kScreens) {
        QWidget& window = open(name);
        expectGood(window, name);
        picture(window, name);
        expectNone(name + std::string(", tabs"), tabFaults(window));
        expectLettersLead(window, name);
        if (std::string(name) != "frmMainVeldona") forms.unload(*forms.loaded(name));
    }
}

TEST_F(Manners, EveryPanelOfTheMainScreen) {
    QWidget& window = open("frmMainVeldona");
    auto& form = dynamic_cast<FormWindow&>(window).form();
    form.find("frmTahsilatMakbuzu")->setVisible(true);
    for (const auto* panel : window.findChildren<FloatingPanel*>()) {
        const std::string name = panel->objectName().toStdString();
        form.find(name)->setVisible(true);
        host.flush();
        settle();
        expectGood(window, name);
        picture(window, name);
        form.find(name)->setVisible(false);
        host.flush();
    }
    for (const auto* panel : window.findChildren<FloatingPanel*>())
        form.find(panel->objectName().toStdString())->setVisible(true);
    host.flush();
    expectNone("all panels", mnemonicClashes(window));
}

TEST_F(Manners, TheExportPanelOfTheViewer) {
    QWidget& window = open("frmCrNesne");
    auto& form = dynamic_cast<FormWindow&>(window).form();
    for (const char* each : {"picExport", "cmdExport"})
        form.find(each)->setVisible(true);
    host.flush();
    settle();
    expectGood(window, "picExport");
    picture(window, "picExport");
}

TEST_F(Manners, EveryDialog) {
    WindowDialogs dialogs(host);
    std::string many, wide(3000, 'w');
    for (int i = 0; i < 200; ++i)
        many += "Satır " + std::to_string(i) + " uzun bir iletinin satırıdır.\n";
    expectGoodDialog([&] { dialogs.tell("KAYIT İŞLEMİ TAMAMLANDI"); }, "ileti");
    expectGoodDialog([&] { dialogs.tell(many); }, "uzun-ileti");
    expectGoodDialog([&] { dialogs.runtimeError({13, many}); }, "uzun-hata");
    expectGoodDialog([&] { static_cast<void>(dialogs.confirm("Silinsin mi?")); }, "soru");
    expectGoodDialog([&] { static_cast<void>(dialogs.input("Aranacak söz", "Ara")); }, "girdi");
    for (const char* name : kScreens) {
        open(name);
        expectGoodDialog([&] { showKeys(host, nullptr, name, keysOfScreen(*forms.loaded(name))); },
                         std::string("tuslar-") + name);
    }
}

TEST_F(Manners, TheCalendarOpensOnTheScreenAndOnTheProgramsDay) {
    QWidget& window = open("frmMainVeldona");
    for (const char* name : {"DTPicker1", "dtRaporTarihiSon"}) {
        auto* field = window.findChild<DateField*>(name);
        field->openCalendar();
        settle();
        auto* calendar = dynamic_cast<QCalendarWidget*>(QApplication::activePopupWidget());
        ASSERT_NE(calendar, nullptr);
        EXPECT_TRUE(calendar->screen()->availableGeometry().contains(calendar->geometry()));
        EXPECT_EQ(calendar->selectedDate(), field->date());
        leavePicture(*calendar, pictureName(std::string("takvim-") + name));
        calendar->close();
    }
    auto* empty = window.findChild<DateField*>("dtTeslimatTarihi");
    empty->openCalendar();
    const DateTime day = shop.clock.today();
    EXPECT_EQ(dynamic_cast<QCalendarWidget*>(QApplication::activePopupWidget())->selectedDate(),
              QDate(day.year(), day.month(), day.day()));
    QApplication::activePopupWidget()->close();
}

TEST_F(Manners, TheGuideHasAChapterForEveryScreen) {
    offerGuide(host);
    QWidget& window = open("frmMainVeldona");
    for (const char* name : kScreens) {
        host.showGuide(&window, name);
        settle();
        auto* page = window.findChild<QTextBrowser*>("kilavuz");
        ASSERT_NE(page, nullptr);
        EXPECT_GT(page->verticalScrollBar()->value(), 0) << name << ": " << chapterOf(name).toStdString();
        EXPECT_TRUE(
            page->loadResource(QTextDocument::ImageResource, QUrl("resimler/ana-ekran.png")).isValid());
        page->verticalScrollBar()->setValue(0);
    }
    expectGood(*window.findChild<QDialog*>(), "Kılavuz");
    leavePicture(*window.findChild<QDialog*>(), "pencere-kilavuz");
}

// Hears what nobody before it had a Turkish word for.
class Untranslated : public QTranslator {
public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char*, int) const override {
        heard.insert(std::string(context) + ": " + source);
        return {};
    }
    mutable std::set<std::string> heard;
};

// With everything that is reached from them: the menu of a field, the printer's properties.
TEST_F(Manners, NoDialogOfTheToolkitSpeaksEnglish) {
    Untranslated rest;
    TurkishTexts texts;
    QCoreApplication::installTranslator(&rest);
    QCoreApplication::installTranslator(&texts);
    const auto look = [](QDialog& dialog, const char* name) {
        dialog.show();
        settle();
        leavePicture(dialog, pictureName(name));
    };
    QFileDialog file(nullptr, "PDF olarak kaydet");
    file.setOption(QFileDialog::DontUseNativeDialog);
    file.setAcceptMode(QFileDialog::AcceptSave);
    showTurkishTimes(file);
    look(file, "dosya");
    QPrinter printer;
    QPrintDialog print(&printer);
    look(print, "yazici");
    QTimer::singleShot(0, &print, [&] {
        auto* properties = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(properties, nullptr);
        for (int tab = 0; auto* tabs = properties->findChild<QTabWidget*>(); ++tab) {
            if (tab == tabs->count()) break;
            tabs->setCurrentIndex(tab);
            look(*properties, ("yazici-ozellikleri-" + std::to_string(tab)).c_str());
        }
        properties->close();
    });
    print.findChild<QAbstractButton*>("properties")->click();
    QLineEdit edit("söz");
    delete edit.createStandardContextMenu();
    QTextBrowser browser;
    delete browser.createStandardContextMenu();
    QCoreApplication::removeTranslator(&texts);
    QCoreApplication::removeTranslator(&rest);
    // No word, and the name of a key.
    for (const char* each : {"QGuiApplication: QT_LAYOUT_DIRECTION", "QShortcut: Control"})
        rest.heard.erase(each);
    for (const std::string& each : rest.heard)
        ADD_FAILURE() << each;
}

// A window that owes everything, so that no check can be one that never fails.
TEST(MannersThemselves, FindWhatIsBroken) {
    QWidget window;
    window.resize(300, 200);
    auto* first = new QPushButton("&Kaydet", &window);
    auto* second = new QPushButton("&Kapat ve bir daha açma", &window);
    second->setGeometry(0, 40, 40, 24);
    auto* nameless = new QLineEdit(&window);
    nameless->move(0, 80);
    auto* hidden = new QLineEdit(&window);
    hidden->hide();
    auto* label = new QLabel("A&d", &window);
    label->setGeometry(0, 120, 100, 24);
    label->setBuddy(hidden);
    window.show();
    first->setFocus();
    EXPECT_EQ(mnemonicClashes(window).size(), 1);
    EXPECT_EQ(namelessControls(window).size(), 1);
    EXPECT_EQ(strayLabels(window).size(), 1);
    EXPECT_EQ(clippedWords(window).size(), 1);
    EXPECT_EQ(overSize(window, {299, 200}).size(), 1);
    window.activateWindow();
    settle();
    EXPECT_TRUE(tabFaults(window).isEmpty());
    // From the second back to the first: the third is never reached.
    class Trap : public QObject {
    public:
        using QObject::QObject;
        bool eventFilter(QObject* watched, QEvent* event) override {
            if (event->type() != QEvent::KeyPress) return false;
            dynamic_cast<QWidget*>(watched)->previousInFocusChain()->setFocus();
            return true;
        }
    } trap;
    second->installEventFilter(&trap);
    first->setFocus();
    EXPECT_FALSE(tabFaults(window).isEmpty());
}

} // namespace

} // namespace veldona::test
