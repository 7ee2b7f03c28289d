// The table behind F1 against what the screens do with each key.
#include <set>

#include <gtest/gtest.h>

#include "apps/screens.h"
#include "core/formframe.h"
#include "core/session.h"
#include "core/startup.h"
#include "platform/controls/forms.h"
#include "platform/controls/userinput.h"
#include "tests/support/shop.h"
#include "ui/keyoverview.h"

namespace veldona::test {

namespace {

// The keys of the keyboard's top row and Esc; the others do much by themselves in the field that has the
// focus.
// F1 is the same in every window.
constexpr Key kKeys[] = {Key::F2, Key::F3, Key::F4,  Key::F5,  Key::F6,  Key::F7,
                         Key::F8, Key::F9, Key::F10, Key::F11, Key::F12, Key::Escape};

// Counts what a key leads to. A modal screen that it opens is gone at once.
class CountingHost : public FormHost {
public:
    void formShown(Form&, Kip) override { ++events; }
    void formUnloaded(Form&) override { ++events; }
    void formChanged(Form&) override { ++events; }
    void controlChanged(Control&) override { ++events; }
    void runModal(Form& form) override { form.forms().unload(form); }
    void processEnded() override { ++events; }
    int events = 0;
};

class KeyOverview : public ::testing::Test {
protected:
    KeyOverview() {
        shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('7','Ayşe','Yılmaz')");
        shop.session.gBaglanti.reset();
        registerScreens(forms, session);
        EXPECT_TRUE(startSession(session));
    }
    // What the key does to a screen that was opened anew: how much changed, and what was said.
    std::size_t effectOf(const std::string& screen, Key key, int kip) {
        if (Form* open = forms.loaded(screen)) forms.unload(*open);
        session.gFormKayit.Kip = kip;
        session.gFormKayit.CariID = 1;
        forms.show(screen, Kip::Modeless);
        Form& form = *forms.loaded(screen);
        if (screen == "frmCarihesapSec") user::click(*form.find("cmdBul"));
        host.events = 0;
        shop.dialogs.said.clear();
        user::pressKey(form, {.key = key});
        return static_cast<std::size_t>(host.events) + shop.dialogs.said.size();
    }
    bool acts(const std::string& screen, Key key) {
        // F12 has no use anywhere: what it leads to is what any key does.
        return effectOf(screen, key, FormModu::Yeni) != effectOf(screen, Key::F12, FormModu::Yeni) ||
               effectOf(screen, key, FormModu::Navigation) !=
                   effectOf(screen, Key::F12, FormModu::Navigation);
    }

    Shop shop;
    CountingHost host;
    Forms forms{host};
    Session session{shop.desktop, forms};
};

TEST_F(KeyOverview, SaysWhatTheScreensDo) {
    // The viewer goes again where it has no report; its keys are tested with it.
    for (const std::string screen :
         {"frmMainVeldona", "frmAntetBilgisi", "frmCariEkle", "frmCarihesapSec", "frmSatis",
          "rprbeklenentahsilat", "rprodemesigecen", "rptGelirGider", "taksitmustduzelt", "taksitodduzelt"}) {
        std::set<Key> told;
        effectOf(screen, Key::F12, FormModu::Navigation); // which opens it
        for (const KeyLine& line : keysOfScreen(*forms.loaded(screen)))
            told.insert(line.key);
        for (const Key key : kKeys) {
            // A sale can be changed only once one was saved.
            if (screen == "frmSatis" && key == Key::F5) continue;
            EXPECT_EQ(acts(screen, key), told.contains(key)) << screen << ", key " << static_cast<int>(key);
        }
    }
}

} // namespace

} // namespace veldona::test
