// A walk through every window of the program: what each owes to whoever works by keyboard, by ear, or on a
// small screen.
#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

#include "apps/screens.h"
#include "core/formframe.h"
#include "ledger/mainscreen.h"
#include "tests/support/shop.h"
#include "tests/ui/manners.h"
#include "tests/ui/window_tests.h"
#include "ui/floatingpanel.h"
#include "ui/housestyle.h"
#include "ui/screens.h"
#include "ui/windowdesktop.h"

namespace veldona::test {

namespace {

// A desktop's panel and a window's own title bar are no room of ours.
constexpr QSize kSmallScreen(1366, 768 - 38 - 28);

constexpr const char* kScreens[] = {"frmMainVeldona",      "frmAntetBilgisi", "frmCariEkle",
                                    "frmCarihesapSec",     "frmCrNesne",      "frmSatis",
                                    "rprbeklenentahsilat", "rprodemesigecen", "rptGelirGider",
                                    "taksitmustduzelt",    "taksitodduzelt"};

class Manners : public ::testing::Test {
protected:
    Manners() {
        shop.run(
            "INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD,EVMH,EVCD,EVTEL,GSM,UYARI) VALUES "
            "('7','Ayşe','Yılmaz','Çınar Mah.','Gülşen Cad.','0216 333 22 11','0532 444 55 66','Dikkat')");
        shop.session.gBaglanti.reset();
        drawScreens(host);
        host.timersRun = false;
        registerScreens(forms, session);
        EXPECT_TRUE(basla(session));
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
            window.resize(kSmallScreen);
        }
        window.show();
        window.activateWindow();
        settle();
        return window;
    }
    void expectGood(QWidget& window, const std::string& what) {
        const auto none = [&](const char* manner, const QStringList& faults) {
            EXPECT_TRUE(faults.isEmpty())
                << what << ", " << manner << ":\n  " << faults.join("\n  ").toStdString();
        };
        none("no name to a screen reader", namelessControls(window));
        none("one letter for two", mnemonicClashes(window));
        none("labels", strayLabels(window));
        none("too large", overSize(window, kSmallScreen));
        none("cut words", clippedWords(window));
    }
    void picture(QWidget& window, const std::string& name) {
        leavePicture(host, dynamic_cast<FormWindow&>(window).form(), "pencere-" + name);
    }

    Shop shop;
    WindowHost host{shop.clock};
    WindowPump pump{host};
    Desktop desktop{
        shop.clock, shop.dialogs, pump, shop.opener, shop.desktop.paths, {}, shop.desktop.dataSources};
    Forms forms{host};
    Session session{desktop, forms};
};

TEST_F(Manners, EveryScreen) {
    for (const char* name : kScreens) {
        QWidget& window = open(name);
        expectGood(window, name);
        picture(window, name);
        const QStringList tabs = tabFaults(window);
        EXPECT_TRUE(tabs.isEmpty()) << name << ", tabs:\n  " << tabs.join("\n  ").toStdString();
        if (std::string(name) != "frmMainVeldona") forms.unload(*forms.loaded(name));
    }
}

TEST_F(Manners, EveryPanelOfTheMainScreen) {
    QWidget& window = open("frmMainVeldona");
    auto& form = dynamic_cast<FormWindow&>(window).form();
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
}

} // namespace

} // namespace veldona::test
