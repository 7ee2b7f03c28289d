// What no control of the main screen reaches, and the limits of its lists.
#include <gtest/gtest.h>

#include "core/money.h"
#include "core/reporting.h"
#include "core/salebalance.h"
#include "core/session.h"
#include "ledger/balances.h"
#include "ledger/collection.h"
#include "ledger/correctionswalk.h"
#include "ledger/customergrid.h"
#include "ledger/ledgerplan.h"
#include "ledger/loading.h"
#include "ledger/mainscreen.h"
#include "ledger/overdue.h"
#include "ledger/receipt.h"
#include "platform/report/page.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/conversion.h"
#include "reports/viewer.h"
#include "tests/support/shop.h"

namespace veldona {

namespace {

using Rows = std::vector<std::string>;

class Ledger : public testing::Test {
protected:
    Ledger() {
        shop.forms.add("frmMainVeldona",
                       [this](Forms& forms) { return makeFrmMainVeldona(forms, shop.session); });
        shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('1','Ali','Can')");
        shop.forms.show("frmMainVeldona", Kip::Modeless);
    }

    FrmMainVeldona& f() { return static_cast<FrmMainVeldona&>(*shop.forms.loaded("frmMainVeldona")); }

    void sale(const std::string& no, const std::string& total, const std::string& discount = "0") {
        shop.run("INSERT INTO ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC,INDIRIM_YTL) VALUES ('1'," + no + "," +
                 total + "," + discount + ")");
        shop.run("INSERT INTO URUNAL (MUSTNO,ISLEMNO,URKOD,ADET,FIYAT) VALUES ('1'," + no + ",'1',1," +
                 total + ")");
    }

    void open(const std::string& no) {
        f().Text1.setText("1");
        for (int row = 0; row < f().L3.count(); ++row)
            if (f().L3.list(row) == no) f().L3.setListIndex(row);
        L3_DblClick(f());
    }

    test::Shop shop;
};

TEST_F(Ledger, TheLoadByNumberTakesTheStoredDebtAndRowsWithADate) {
    sale("4", "300", "50000000"); // 300 stored: far below a kuruş, but a total as it stands
    shop.run("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('1',4,'01/02/2026',0)");
    shop.run("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODMIKTAR) VALUES ('1',4,7000000)");
    shop.run("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('1',4,'01/02/2026',20000000)");
    f().Text1.setText("1");
    shop.session.gISLEMNO = 4;
    UZAK_CAGIR(f());
    EXPECT_EQ(f().Text5.text(), "4");
    EXPECT_EQ(f().L5.rows(), Rows{"0,00"}) << "skipped by its date, not by its amount";
    EXPECT_EQ(f().Label11.caption(), "300,00") << "unscaled, without the discount";
    EXPECT_EQ(f().Label8.caption(), "20,00");
    EXPECT_EQ(f().Label9.caption(), "280,00");
    EXPECT_EQ(f().Label15.caption(), "300") << "what the schedule does not cover";
}

TEST_F(Ledger, TheUnplannedAmountIsReadAsFarAsDigitsGo) {
    f().L5.add("1.234,56");
    f().Label11.setCaption("1.234,56");
    f().Label8.setCaption("0,00");
    f().dbMain = shop.session.dbEngine.openDatabase(shop.session.gVeritabaniYolu);
    TAKSITLENDIRILMEMIS_MIKTAR(f());
    EXPECT_EQ(f().Label15.caption(), "-1232,766")
        << "1.234 less 1234: the grouping stops the one reading only";
    f().Label15.setCaption("x");
    f().Label8.setCaption("1.234,56");
    TAKSITLENDIRILMEMIS_MIKTAR(f());
    EXPECT_EQ(f().Label15.caption(), "x") << "left alone where paid and total read the same";
}

// The ready-made form's route, which no control takes yet: the scratch row as of the collection's day, and
// the template that shows it.
TEST_F(Ledger, TheReadyMadeReceiptCarriesTheSaleUntilItsDay) {
    shop.run("UPDATE MUSTKAYIT SET EVTEL='212 1',GSM='532 2',EVMH=' Çay Mh. ',EVCD='Gül Sk.',EVAPT='5',"
             "EVILCE='Şişli',EVIL='İstanbul',ISIL='Bursa'");
    sale("5", "1000000000");
    for (const char* row : {"'05/11/2026',300000000", "'06/11/2026',700000000"})
        shop.run("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('1',5," + std::string(row) +
                 ")");
    for (const char* row : {"'05/11/2026 23:59:00',120500000", "'06/11/2026 00:00:00',1000000"})
        shop.run("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('1',5," +
                 std::string(row) + ")");
    open("5");
    f().DTPicker1.setValue("05/11/2026");
    f().mskOdenenPara.setText("1.234,05");
    MAKBUZ_HAZIRLA(f());
    EXPECT_EQ(shop.rows("SELECT ALAN_1,ALAN_4,ALAN_6,ALAN_8,ACIKLAMA_1,ACIKLAMA_2 FROM T_TEMP_GENEL"),
              Rows{"1|Ali Can|EvTel : 212 1    IsTel :     GSM : 532 2|Şişli İstanbul|"
                   "Çay Mh. Gül Sk. 5 Şişli İstanbul|Bursa"});
    const char* words = "Yalnız  Bin ikiyüzotuzdört YTL  Beş YKR   tahsil edilmiştir";
    EXPECT_EQ(f().txtYaziIle.text(), std::string(words) + " ");
    EXPECT_EQ(shop.rows("SELECT ALAN_2,ALAN_5,ALAN_7,ACIKLAMA_3,ACIKLAMA_4,ID_1,SAYI_1,SAYI_2,SAYI_3 "
                        "FROM T_TEMP_GENEL"),
              Rows{"1234,05|1234,05|" + std::string(words) + "|||5|300|120,5|179,5"});
    installLayouts(shop.desktop.paths);
    shop.forms.add("frmCrNesne", [this](Forms& forms) { return makeFrmCrNesne(forms, shop.session); });
    RaporYazdirTahsilatMakbuzu(f());
    ASSERT_TRUE(shop.session.rapor);
    const std::string paper = report::documentText(*shop.session.rapor);
    for (const char* shown : {"TAHSİLAT MAKBUZU", "Ali Can", "1.234,05 YTL", words, "179,50"})
        EXPECT_NE(paper.find(shown), std::string::npos) << shown;
}

TEST_F(Ledger, GuarantorsAreKnownByTheirGroup) {
    shop.run("INSERT INTO GRUPLAR (GRUP_ADI,GRUP_KOD) VALUES ('Kefiller',' YM ')");
    f().Text1.setText("1");
    EXPECT_FALSE(GRUP_KONTROL(f()));
    shop.run("UPDATE MUSTKAYIT SET GURUP_ID=1");
    EXPECT_TRUE(GRUP_KONTROL(f()));
    shop.run("UPDATE GRUPLAR SET GRUP_KOD='YMX'");
    EXPECT_FALSE(GRUP_KONTROL(f()));
}

TEST_F(Ledger, ColoursMarkTheScheduleBeyondThePayments) {
    for (const char* date : {"01/10/2026", "01/11/2026", "01/12/2026"}) {
        f().L4.add(date);
        f().L5.add("100,00");
    }
    f().cyOdenen = Currency::ofWhole(200);
    f().DTPicker1.setValue("22/11/2026");
    RENK_AYARLA(f());
    EXPECT_FALSE(f().L4.foreColor()) << "200 of 200 due by then are paid";
    f().DTPicker1.setValue("01/12/2026");
    RENK_AYARLA(f());
    EXPECT_EQ(f().L4.foreColor(), Colour::CoveredByPayments);
    EXPECT_EQ(f().L2.foreColor(), Colour::CoveredByPayments);
}

// The counters of the sums have eight bits. A list of 255 rows is summed; with 257 the row is written and
// listed, and the totals stay as they were.
TEST_F(Ledger, TotalsStopAtTheEightBitCounter) {
    sale("9", "1000000000");
    for (int i = 0; i < 254; ++i)
        shop.run(
            "INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('1',9,'01/02/2026',1000000)");
    open("9");
    shop.dialogs.said.clear();
    f().mskOdenenPara.setText("1");
    Command1_Click(f());
    EXPECT_EQ(f().Label8.caption(), "255,00");
    Command1_Click(f());
    Command1_Click(f());
    EXPECT_EQ(f().L2.count(), 257);
    EXPECT_EQ(f().Label8.caption(), "255,00");
    EXPECT_EQ(shop.rows("SELECT COUNT(*) FROM TAKSITODENEN"), Rows{"257"});
    EXPECT_EQ(shop.said(),
              (Rows{"KAYIT İŞLEMİ TAMAMLANDI", "KAYIT İŞLEMİ TAMAMLANDI", "KAYIT İŞLEMİ TAMAMLANDI"}));
}

// A payment without an amount shows an empty row and counts for nothing; the others count, and the cap holds.
TEST_F(Ledger, APaymentWithoutAnAmountHidesNoOther) {
    sale("8", "1000000000");
    shop.run("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH) VALUES ('1',8,'01/02/2026')");
    shop.run(
        "INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('1',8,'02/02/2026',100000000)");
    open("8");
    EXPECT_EQ(f().L2.rows(), (Rows{"", "100,00"}));
    EXPECT_EQ(f().Label9.caption(), "900,00");
    shop.dialogs.said.clear();
    f().mskOdenenPara.setText("1000");
    Command1_Click(f());
    EXPECT_EQ(shop.said(), Rows{"ÖDENECEK MİKTAR TOPLAM BORÇTAN FAZLA OLAMAZ"});
}

// Row 255 is the last that the check adds, and it is added.
TEST_F(Ledger, AScheduleOf256RowsIsCheckedWhole) {
    sale("7", "256000000");
    for (int i = 0; i < 256; ++i)
        shop.run("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('1',7,'01/02/2026',1000000)");
    open("7");
    EXPECT_EQ(f().L5.count(), 256);
    EXPECT_TRUE(shop.said().empty());
}

TEST_F(Ledger, ACustomerBehindTheFilterIsMissedByABeep) {
    f().txtAd.setText("a");
    f().txtSoyad.setText("b");
    EXPECT_EQ(shop.dialogs.beeps, 0);
    GrideGit(f(), 1);
    EXPECT_EQ(shop.dialogs.beeps, 1);
    GrideGit(f(), 0);
    EXPECT_EQ(shop.dialogs.beeps, 1) << "with nobody looked for there is nobody to miss";
}

// Read, write, read again: whatever is taken, the figures on the screen are those that the next load gives,
// and those that the books say to who asks them.
TEST_F(Ledger, FiguresAfterAPostingAreThoseOfTheNextLoad) {
    sale("5", "5000000000", "123450000");
    shop.run("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('1',5,'01/02/2026',4876550000)");
    open("5");
    for (const char* amount : {"250,00", "0,01", "1.000", "99,99", "-12,34", "3538,89"}) {
        f().mskOdenenPara.setText(amount);
        Command1_Click(f());
        const Rows shown = {f().Label11.caption(), f().Label8.caption(), f().Label9.caption(),
                            f().Label21.caption()};
        open("5");
        EXPECT_EQ(shown, (Rows{f().Label11.caption(), f().Label8.caption(), f().Label9.caption(),
                               f().Label21.caption()}))
            << amount;
        const SaleBalance books = balancesOf(*shop.session.gBaglanti, "1").at(5);
        const auto text = [&](StoredAmount sum) { return ParaGoster(shop.session, sum); };
        EXPECT_EQ((Rows{text(books.debt()), text(books.paid), text(books.remaining())}),
                  Rows(shown.begin(), shown.begin() + 3));
    }
    EXPECT_EQ(f().Label9.caption(), "0,00");
}

// The plan over many debts and counts: what it adds up to, what the books give back, how far a byte counts.
class LedgerPlan : public Ledger {
protected:
    LedgerPlan() {
        sale("4", "0");
        open("4");
        openPanel();
    }

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
