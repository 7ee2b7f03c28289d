// The ledger's plan over many debts and counts: what it adds up to, what comes back from the books, how far a
// byte counts.
#include <gtest/gtest.h>

#include "ledger/correctionswalk.h"
#include "ledger/ledgerplan.h"
#include "ledger/loading.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "tests/support/shop.h"

namespace veldona {

namespace {

using Rows = std::vector<std::string>;

class LedgerPlan : public testing::Test {
protected:
    LedgerPlan() {
        shop.forms.add("frmMainVeldona",
                       [this](Forms& forms) { return makeFrmMainVeldona(forms, shop.session); });
        shop.run("INSERT INTO MUSTKAYIT (HSTNO) VALUES ('1')");
        shop.run("INSERT INTO ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC) VALUES ('1',4,0)");
        shop.run("INSERT INTO URUNAL (MUSTNO,ISLEMNO,URKOD,ADET,FIYAT) VALUES ('1',4,'1',1,0)");
        shop.forms.show("frmMainVeldona", Kip::Modeless);
        f().Text1.setText("1");
        f().L3.setListIndex(0);
        L3_DblClick(f());
        openPanel();
    }

    FrmMainVeldona& f() { return static_cast<FrmMainVeldona&>(*shop.forms.loaded("frmMainVeldona")); }

    void openPanel() {
        f().fraTaksitlendir.setVisible(true);
        f().dtBaslangicTarihi.setValue("31/01/2027");
    }
    void byCount(const std::string& debt, const std::string& count) {
        f().mskBorc.setText(debt);
        f().MskTaksitAdedi.setText(count);
        MskTaksitAdedi_KeyUp(f());
    }
    void byAmount(const std::string& debt, const std::string& amount) {
        f().mskBorc.setText(debt);
        f().mskTaksitTutari.setText(amount);
        mskTaksitTutari_KeyUp(f());
    }
    double total() {
        double sum = 0;
        for (const std::string& amount : f().L5.rows())
            sum += toDouble(amount);
        return sum;
    }

    test::Shop shop;
};

TEST_F(LedgerPlan, EqualSharesAddUpToTheDebtBeforeAndAfterTheyAreWritten) {
    for (const char* debt : {"0,01", "1", "100", "999,99", "1.000,00", "123.456,78"})
        for (const int count : {1, 2, 3, 7, 11, 12, 36}) {
            byCount(debt, std::to_string(count));
            ASSERT_EQ(f().L5.count(), count) << debt;
            EXPECT_NEAR(total(), toDouble(debt), 1e-9) << debt << " in " << count;
            cmdTaksitKaydet_Click(f());
            const Rows stored = shop.rows("SELECT SUM(ODMIKTAR) AS T FROM URUNSAT");
            EXPECT_NEAR(toDouble(stored.at(0)), toDouble(debt) * 1e6, 0.01 * count)
                << debt << " in " << count;
            shop.run("DELETE FROM URUNSAT");
            openPanel();
        }
}

TEST_F(LedgerPlan, ByAmountTheLastRowClosesTheSum) {
    struct Case {
        const char* debt;
        const char* amount;
        Rows rows;
    };
    const Case cases[] = {
        {"1000", "300", {"300", "300", "400,00"}},
        {"1000", "400", {"400", "600,00"}},               // 2,5 is 2
        {"1400", "400", {"400", "400", "400", "200,00"}}, // 3,5 is 4
        {"1000", "1000", {"1.000,00"}},
        {"500", "400", {"500,00"}},
        {"1000", "3000", {}},
        {"1000", "2000", {}}, // a half is 0
        {"1000", "1999", {"1.000,00"}},
        {"100,01", "33,33", {"33,33", "33,33", "33,35"}},
        {"0", "100", {}},
        {"1000", "-100", {}}, // -10 fits no byte
    };
    for (const Case& c : cases) {
        byAmount(c.debt, c.amount);
        EXPECT_EQ(f().L5.rows(), c.rows) << c.debt << " by " << c.amount;
    }
    byAmount("2551", "10");
    EXPECT_EQ(f().L5.count(), 255);
    EXPECT_EQ(f().L5.list(254), "11,00");
    for (const char* amount : {"", "0", "0,00", "on"}) {
        byAmount("1000", amount);
        EXPECT_EQ(f().L5.count(), 0) << amount;
    }
}

TEST_F(LedgerPlan, TheLastRowIsThe255th) {
    byCount("255", "255");
    EXPECT_EQ(f().L5.count(), 255);
    byCount("256", "256"); // loses its last digit
    EXPECT_EQ(f().L5.count(), 25);
    shop.run("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('1',4,'30/01/2027',1000000)");
    byCount("255", "255");
    EXPECT_EQ(f().L5.count(), 256) << "from row 1 to row 255";
    shop.run("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('1',4,'30/01/2027',1000000)");
    byCount("255", "255");
    EXPECT_EQ(f().L5.count(), 2) << "row 256 cannot be counted";
    byCount("254", "254");
    EXPECT_EQ(f().L5.count(), 256);
    static_cast<void>(shop.said());
    cmdTaksitKaydet_Click(f());
    EXPECT_EQ(shop.said().at(0), "İşlem Tamamlandı");
    EXPECT_EQ(shop.rows("SELECT COUNT(*) AS N FROM URUNSAT"), Rows{"2"})
        << "stepping past row 255 takes the whole plan back";
}

} // namespace
} // namespace veldona
