// The frame of the record screens on a small screen of its own, and the customer finder's way of sorting.
#include "core/formframe.h"

#include <gtest/gtest.h>

#include "core/recordcycle.h"
#include "customers/customerfinder.h"
#include "customers/findersearch.h"
#include "platform/controls/userinput.h"
#include "platform/store/faces/adodb.h"
#include "tests/support/shop.h"

namespace veldona {

namespace {

struct Screen : Form {
    explicit Screen(Forms& forms) : Form(forms, "frmDeneme", "Deneme") {
        locked.locked = true;
        buildBar(bar);
        markFocus(*this);
    }
    ToolBar bar{*this, "BarIslemler"};
    TextBox text{*this, "text", "Ayşe"};
    TextBox locked{*this, "locked", "Kilit"};
    TextBox empty{*this, "empty"};
};

class FormFrame : public testing::Test {
protected:
    FormFrame() {
        shop.forms.add("frmDeneme", [](Forms& f) { return std::make_unique<Screen>(f); });
        shop.forms.add("frmCarihesapSec", [this](Forms& f) { return makeFrmCarihesapSec(f, shop.session); });
    }
    Screen& open() {
        shop.forms.show("frmDeneme", Kip::Modeless);
        return static_cast<Screen&>(*shop.forms.active());
    }
    test::Shop shop;
};

TEST_F(FormFrame, TheFocusIsMarkedALockedFieldKeepsItsColour) {
    Screen& screen = open();
    ASSERT_TRUE(user::focus(screen.empty));
    ASSERT_TRUE(user::focus(screen.text));
    EXPECT_EQ(screen.text.backColor(), Colour::FocusedBackground);
    EXPECT_EQ(screen.text.selLength(), 4);
    EXPECT_EQ(screen.empty.backColor(), Colour::WindowBackground);

    screen.locked.setBackColor(Colour::CoveredByPayments);
    ASSERT_TRUE(user::focus(screen.locked));
    EXPECT_EQ(screen.locked.backColor(), Colour::CoveredByPayments);
    EXPECT_EQ(screen.locked.selLength(), 5);
    EXPECT_EQ(screen.text.backColor(), Colour::WindowBackground);
    ASSERT_TRUE(user::focus(screen.empty));
    EXPECT_EQ(screen.locked.backColor(), Colour::CoveredByPayments);

    // A field without text is not marked by the one that selects.
    screen.empty.setBackColor(std::nullopt);
    HighLight(shop.forms);
    EXPECT_EQ(screen.empty.backColor(), std::nullopt);
}

TEST_F(FormFrame, AWaitingScreenTakesNothing) {
    Screen& screen = open();
    Bekle(screen, true);
    EXPECT_EQ(screen.pointer(), MousePointer::Wait);
    EXPECT_FALSE(user::focus(screen.text));
    Bekle(screen, false);
    EXPECT_EQ(screen.pointer(), MousePointer::Default);
    EXPECT_TRUE(user::focus(screen.text));
    IsaretGoster(screen, false);
    EXPECT_EQ(screen.pointer(), MousePointer::Wait);
    EXPECT_TRUE(screen.enabled());
    IsaretGoster(screen, true);
    EXPECT_EQ(screen.pointer(), MousePointer::Default);

    EXPECT_TRUE(FormAcikMi(shop.forms, "FRMDENEME"));
    EXPECT_FALSE(FormAcikMi(shop.forms, "frmDenem"));
}

TEST(saveStatus, TellsTheErrorInWords) {
    EXPECT_EQ(saveStatus({3021, "x"}), "Geçersiz kayıt (bookmark) !");
    EXPECT_EQ(saveStatus({3167, "x"}), "Silinmiş kayıt !");
    EXPECT_EQ(saveStatus({3265, "Öğe yok"}), "Hatalı kayıt (3265, Öğe yok) !");
}

// A row whose key is 0 is none: nothing is asked and nothing deleted.
TEST_F(FormFrame, ARowWithTheKeyZeroIsNotDeleted) {
    shop.run("INSERT INTO GRUPLAR (GRUP_ADI) VALUES ('A')");
    RecordCycle k{open(), shop.session, nullptr};
    int deleted = 0;
    k.remove = [&](std::int32_t) { return ++deleted > 0; };
    KayitSetiAc(shop.session, k.rs, "SELECT 0 AS ID FROM GRUPLAR", adodb::CursorLocation::Client);
    KayitGoster(k);
    deleteRecord(k);
    EXPECT_EQ(deleted, 0);
    EXPECT_TRUE(shop.said().empty());
}

TEST_F(FormFrame, AClickOnTheGridsHeadSorts) {
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('1','Çan','A')");
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('2','Can','C')");
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('3','Dan','B')");
    shop.forms.show("frmCarihesapSec", Kip::Modeless);
    auto& f = static_cast<FrmCarihesapSec&>(*shop.forms.active());
    const auto numbers = [&] {
        std::string all;
        for (int row = 0; row < f.grdList.rowCount(); ++row)
            all += f.grdList.cell(row, 0);
        return all;
    };
    const auto clickHead = [&](const char* field) {
        EXPECT_TRUE(user::clickHead(f.grdList, f.grdList.columnOf(field)));
        return numbers();
    };
    // Nothing is searched by a head; the order waits for the first search.
    EXPECT_EQ(clickHead("AD"), "");
    ASSERT_TRUE(user::click(f.cmdBul));
    EXPECT_EQ(numbers(), "213");
    EXPECT_EQ(clickHead("AD"), "312");
    ASSERT_TRUE(user::click(f.cmdBul));
    EXPECT_EQ(numbers(), "312");
    EXPECT_EQ(clickHead("AD"), "213");
    EXPECT_EQ(clickHead("HSTNO"), "321");
    EXPECT_EQ(clickHead("HSTNO"), "123");
    EXPECT_EQ(clickHead("SOYAD"), "132");
    // A filter that breaks the statement leaves hits and order as they were.
    f.filters.at<TextBox>("txtAd").setText("'");
    EXPECT_EQ(clickHead("HSTNO"), "132");
    EXPECT_EQ(shop.said().size(), 1u);
    f.filters.at<TextBox>("txtAd").setText("");
    EXPECT_EQ(clickHead("HSTNO"), "321");
}

} // namespace

} // namespace veldona
