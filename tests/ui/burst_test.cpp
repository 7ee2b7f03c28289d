// Keys faster than the screen, and acts in the middle of a load: whatever the speed, what stands there
// belongs to the number in Text1, and money goes to the sale that the keys opened.
#include <algorithm>
#include <functional>
#include <random>

#include <QMetaObject>

#include <gtest/gtest.h>

#include "core/session.h"
#include "ledger/mainscreen.h"
#include "platform/controls/userinput.h"
#include "platform/store/faces/adodb.h"
#include "tests/ui/programwindows.h"

namespace veldona::test {

namespace {

using Lines = std::vector<std::string>;
using Keys = std::vector<KeyEvent>;

const Lines kAccounts = {"1", "2", "23", "234", "3", "7", "12"};

Keys typed(std::string_view text) {
    Keys keys;
    for (const char each : text)
        keys.push_back({.character = static_cast<char32_t>(each)});
    return keys;
}

Keys operator+(Keys keys, const Keys& more) {
    keys.insert(keys.end(), more.begin(), more.end());
    return keys;
}

Keys times(int count, Key key) {
    return Keys(static_cast<std::size_t>(count), KeyEvent{.key = key});
}

class Burst : public ProgramWindows {
protected:
    Burst() {
        int sale = 10;
        for (const std::string& number : kAccounts)
            addCustomer(number, sale += 2);
        start();
    }

    // One with a warning for every second; two sales, of which the first is overdue by the account's number.
    void addCustomer(const std::string& number, int sale) {
        shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD,UYARI) VALUES ('" + number + "','Ad" + number +
                 "','Soyad','" + (sale % 4 == 0 ? "Dikkat " + number : "") + "')");
        for (const int no : {sale, sale + 1}) {
            const std::string key = "'" + number + "'," + std::to_string(no);
            shop.run("INSERT INTO ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC,ACIKLAMA) VALUES (" + key +
                     ",900000000,'Mal " + number + "')");
            shop.run("INSERT INTO URUNAL (MUSTNO,ISLEMNO,URKOD,ADET,FIYAT) VALUES (" + key +
                     ",'1',1,900000000)");
            for (const char* row : {"'05/11/2026',", "'05/12/2026',900000000-"})
                shop.run("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES (" + key + "," + row +
                         std::to_string(no) + "000000)");
        }
    }
    // The screen as after the start, on books without a payment.
    void startAnew() {
        if (Form* before = forms.loaded("frmMainVeldona")) forms.unload(*before);
        settle();
        session.gBaglanti->execute("DELETE FROM TAKSITODENEN");
        session.gHSTNO.clear();
        forms.show("frmMainVeldona", Kip::Modeless);
        screen = dynamic_cast<FrmMainVeldona*>(forms.loaded("frmMainVeldona"));
        settle();
        shop.dialogs.said.clear();
    }
    void quietly(const Keys& keys) {
        for (const KeyEvent& key : keys) {
            host.typeKey(*screen, key);
            settle();
        }
    }
    // All of them wait before the first one is looked at.
    void atOnce(const Keys& keys) {
        for (const KeyEvent& key : keys)
            QMetaObject::invokeMethod(
                &host, [this, key] { host.typeKey(*screen, key); }, Qt::QueuedConnection);
        settle();
    }
    // All that the screen shows and remembers, and the payments.
    Lines state() {
        Lines all = query("SELECT MUSTNO,ISLEMNO,ODMIKTAR FROM TAKSITODENEN");
        for (const Control* each : screen->controls()) {
            std::string line = each->name() + (each->isShown() ? "=" : " (hidden)=") + each->shownText();
            if (const auto* list = dynamic_cast<const ListBox*>(each)) {
                line += "@" + std::to_string(list->listIndex());
                for (const std::string& row : list->rows())
                    line += "|" + row;
            }
            all.push_back(line);
        }
        all.push_back("alert=" + screen->m_Uyari + " of " + std::to_string(screen->m_CariID));
        all.push_back("focus=" + screen->activeControl()->name());
        for (const std::string& said : shop.said())
            all.push_back("said " + said);
        return all;
    }
    void expectAsQuiet(const std::string& first, const Keys& keys, const std::string& what) {
        startAnew();
        user::focus(*screen->find(first));
        settle();
        quietly(keys);
        const Lines quiet = state();
        startAnew();
        user::focus(*screen->find(first));
        settle();
        atOnce(keys);
        EXPECT_EQ(state(), quiet) << what;
    }
    void expectOneAccount(const std::string& what);

    FrmMainVeldona* screen = nullptr;
};

// Name, sales, alert, overdue warning and grid mark are of the number that stands there; sale and schedule on
// show, if any, are its own; and no payment joins an account to another's sale.
void Burst::expectOneAccount(const std::string& what) {
    FrmMainVeldona& f = *screen;
    const std::string number = f.Text1.text();
    EXPECT_EQ(f.Label7.caption(), "  Ad" + number + "     Soyad") << what;
    const Lines sales =
        query("SELECT distinct (ISLEMNO) FROM URUNAL where MUSTNO ='" + number + "' ORDER BY ISLEMNO DESC ");
    EXPECT_EQ(f.L3.rows(), sales) << what;
    EXPECT_EQ(f.m_Uyari, query("SELECT UYARI FROM MUSTKAYIT WHERE HSTNO='" + number + "'").front()) << what;
    EXPECT_EQ(f.grdList.currentText("CariNo"), number) << what;
    EXPECT_EQ(session.gHSTNO, number) << what;
    for (const OverdueSale& each : f.overdueSales)
        EXPECT_EQ(each.MUSTNO, number) << what;
    if (const std::string sale = f.Text5.text(); !sale.empty()) {
        EXPECT_TRUE(std::ranges::find(sales, sale) != sales.end()) << what;
    }
    for (const std::string& id : f.lstYapilacakOdmID.rows())
        EXPECT_EQ(query("SELECT MUSTNO FROM URUNSAT WHERE ID=" + id), Lines{number}) << what;
    EXPECT_EQ(query("SELECT TAKSITODENEN.ID FROM TAKSITODENEN,ISLEMNOTABLO WHERE "
                    "TAKSITODENEN.ISLEMNO=ISLEMNOTABLO.ISLEMNO AND TAKSITODENEN.MUSTNO<>ISLEMNOTABLO.MUSTNO"),
              Lines{})
        << what;
}

} // namespace

TEST_F(Burst, EndsAsQuietTypingDoes) {
    startAnew();
    expectAsQuiet("Text1", typed("234"), "a number");
    expectOneAccount("a number");
    expectAsQuiet("Text1",
                  typed("234") + times(2, Key::Down) + times(1, Key::Enter) + typed("120,50") +
                      times(1, Key::F2),
                  "account, sale, amount, posting");
    expectOneAccount("account, sale, amount, posting");
    EXPECT_EQ(query("SELECT MUSTNO,ODMIKTAR FROM TAKSITODENEN"), Lines{"234|120500000"});
    EXPECT_EQ(screen->L2.rows(), Lines{"120,50"});
    expectAsQuiet("txtAd", times(5, Key::Down) + times(2, Key::Up), "the grid");
    expectOneAccount("the grid");
    expectAsQuiet("L3", times(3, Key::Right) + times(1, Key::Left), "from customer to customer");
    expectOneAccount("from customer to customer");
}

TEST_F(Burst, RandomKeysEndAsQuietTypingDoes) {
    startAnew();
    const Keys alphabet = typed("1223347,") + times(3, Key::Down) + times(2, Key::Up) + times(3, Key::Enter) +
                          times(2, Key::Backspace) + times(1, Key::Left) + times(1, Key::Right) +
                          times(2, Key::F2) + times(1, Key::Tab);
    for (unsigned seed = 1; seed <= 25; ++seed) {
        std::mt19937 random(seed);
        Keys keys;
        while (keys.size() < 20)
            keys.push_back(alphabet[random() % alphabet.size()]);
        const char* const first[] = {"Text1", "txtAd", "L3"};
        expectAsQuiet(first[seed % 3], keys, "seed " + std::to_string(seed));
        if (HasFailure()) return;
    }
}

// The mouse begins loads in the middle of which the next act runs.
TEST_F(Burst, ActsInTheMiddleOfALoadMixNothing) {
    startAnew();
    FrmMainVeldona* f = nullptr;
    const auto account = [&](std::size_t which) { user::put(f->Text1, kAccounts[which % kAccounts.size()]); };
    const auto row = [&](std::size_t which) {
        user::clickRow(f->grdList, static_cast<int>(which) % f->grdList.rowCount());
    };
    const auto open = [&](std::size_t which) {
        if (f->L3.count() > 0) user::dblClickRow(f->L3, static_cast<int>(which) % f->L3.count());
    };
    const auto pay = [&](std::size_t which) {
        user::put(f->mskOdenenPara, std::to_string(1 + which % 9));
        user::pressKey(*f, {.key = Key::F2});
    };
    const auto down = [&](std::size_t) { user::pressKey(*f, {.key = Key::Down}); };
    const std::function<void(std::size_t)> acts[] = {account, row, open, open, pay, down};
    for (unsigned seed = 1; seed <= 150; ++seed) {
        startAnew();
        f = screen;
        std::mt19937 random(seed);
        account(random());
        for (int step = 0; step < 6; ++step) {
            for (std::size_t waiting = random() % 3; waiting > 0; --waiting)
                pump.acts.push_back([act = acts[random() % 6], which = random()] { act(which); });
            acts[random() % 6](random());
            expectOneAccount("seed " + std::to_string(seed) + " step " + std::to_string(step));
        }
        if (HasFailure()) return;
    }
}

} // namespace veldona::test
