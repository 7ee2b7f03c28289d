// The sale screen: the laws of its plan; a sale in the books, with the writer failing at each of its
// statements in turn; the paths that no operator reaches; the stock rebuilt.
#include <gtest/gtest.h>

#include "core/showscreen.h"
#include "core/tell.h"
#include "platform/controls/userinput.h"
#include "platform/runtime/conversion.h"
#include "platform/store/faces/adodb.h"
#include "sales/lifecycle.h"
#include "sales/plan.h"
#include "sales/planarithmetic.h"
#include "sales/salerows.h"
#include "sales/salescreen.h"
#include "sales/saving.h"
#include "sales/stock.h"
#include "tests/support/shop.h"

namespace veldona {

namespace {

using Rows = std::vector<std::string>;

// Opened as the main screen opens it, in a shop with one customer.
class SaleScreen : public testing::Test {
protected:
    SaleScreen() {
        shop.forms.onUncaught = [this](const RuntimeError& error) { uncaughtError(session, error); };
        shop.forms.add("frmSatis", [this](Forms& forms) { return makeFrmSatis(forms, session); });
        shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('7','Ayşe','Yılmaz')");
        session.gHSTNO = "7";
    }

    FrmSatis& open() {
        FormKayit& record = session.gFormKayit;
        record.Kip = FormModu::Yeni;
        record.CariID = 1;
        record.HSTNO = "7";
        record.Unvan = "Ayşe  Yılmaz";
        showScreen(session, "frmSatis", Kip::Modeless);
        return static_cast<FrmSatis&>(*shop.forms.active());
    }

    void press(FrmSatis& f, Key key) { user::pressKey(f, {.key = key}); }

    // Types total, down payment and count, and leaves the plan's fields.
    void fill(FrmSatis& f, const std::string& total, const std::string& pesinat, const std::string& adet) {
        user::put(f.MskToplamUcret, total);
        user::put(f.MskAlinanPesinat, pesinat);
        user::put(f.MskTaksitAdedi, adet);
        user::focus(f.txtAciklama);
    }

    test::Shop shop;
    Session& session = shop.session;
};

// The plan of a sale: the laws that hold for every total, down payment, count and amount.
class Plan : public SaleScreen {
protected:
    // The amounts of the rows that have a date.
    std::vector<Currency> planned(const FrmSatis& f) {
        std::vector<Currency> amounts;
        for (int row = 1; row < f.grdYapilacakOdeme.rows(); ++row)
            if (!f.grdYapilacakOdeme.textMatrix(row, PaymentColumn::Tarih).empty())
                amounts.push_back(toCurrency(f.grdYapilacakOdeme.textMatrix(row, PaymentColumn::Miktar)));
        return amounts;
    }

    static Currency sum(const std::vector<Currency>& amounts) {
        Currency total;
        for (const Currency each : amounts)
            total += each;
        return total;
    }
};

// By count every row is the same, and what the rounding loses is at most half a cent a row.
TEST_F(Plan, ByCountTheCentsOfTheDivisionStayLost) {
    FrmSatis& f = open();
    for (const char* total : {"100", "99,99", "1000", "0,05", "12345,67"})
        for (const int adet : {1, 2, 3, 7, 12, 36, 254}) {
            fill(f, total, "0", std::to_string(adet));
            const auto amounts = planned(f);
            ASSERT_EQ(amounts.size(), static_cast<std::size_t>(adet));
            EXPECT_EQ(std::count(amounts.begin(), amounts.end(), amounts[0]), adet);
            const Currency lost = sum(amounts) - toCurrency(total);
            EXPECT_LE(std::abs(lost.tenThousandths()), 50L * adet) << total << " in " << adet;
        }
}

// By amount the rows sum to the remainder, to the cent, down payment apart.
TEST_F(Plan, ByAmountTheRowsSumToTheTotal) {
    FrmSatis& f = open();
    user::click(f.chkTaksitAdetGir);
    for (const char* total : {"100", "1000", "1100", "12345,67"})
        for (const char* pesinat : {"0", "0,01", "99,5"})
            for (const char* tutar : {"50", "99,99", "300", "333,33", "400"}) {
                user::put(f.MskToplamUcret, total);
                user::put(f.MskAlinanPesinat, pesinat);
                user::put(f.mskTaksitTutari, tutar);
                const auto amounts = planned(f);
                const std::size_t down = toDouble(pesinat) > 0 ? 1 : 0;
                if (amounts.size() == down) continue;
                EXPECT_EQ(sum(amounts), toCurrency(total)) << total << " " << pesinat << " " << tutar;
            }
}

TEST_F(Plan, WithoutARemainderAmountsReactToNothing) {
    FrmSatis& f = open();
    user::click(f.chkTaksitAdetGir);
    user::put(f.MskToplamUcret, "1000");
    user::focus(f.mskTaksitTutari);
    f.MskKalan.setText("");
    user::put(f.mskTaksitTutari, "0"); // would divide by zero
    EXPECT_TRUE(shop.said().empty());
    EXPECT_EQ(f.grdYapilacakOdeme.rows(), 2);
    // By count the total is shared out then.
    f.MskTaksitAdedi.setText("3");
    EXPECT_EQ(f.grdYapilacakOdeme.textMatrix(1, PaymentColumn::Miktar), "333,33");
}

// The down payment is written for a new sale only.
TEST_F(Plan, OutsideANewSaleInstallmentsAlone) {
    FrmSatis& f = open();
    fill(f, "1000", "100", "3");
    EXPECT_EQ(planned(f).size(), 4U);
    f.durum = FormModu::Change;
    TaksitPlaniAdetle(f);
    EXPECT_EQ(planned(f).size(), 3U);
    EXPECT_EQ(f.grdYapilacakOdeme.rows(), 4);
    EXPECT_EQ(f.grdYapilanOdeme.rows(), 1);
}

TEST_F(Plan, WithoutInstallmentsThePlanIsOffAndTheTotalZero) {
    FrmSatis& f = open();
    fill(f, "1000", "100", "3");
    f.chkOtomatikTaksitHesapla.setChecked(false);
    EXPECT_FALSE(f.fraTaksit.enabled());
    EXPECT_EQ(f.MskToplamUcret.text(), "0");
    EXPECT_EQ(f.MskAlinanPesinat.text(), "");
    EXPECT_EQ(f.MskKalan.text(), "");
    EXPECT_EQ(f.MskTaksitAdedi.text(), "");
    EXPECT_EQ(f.dtTaksitBaslangicTarihi.text(), "");
    EXPECT_EQ(planned(f).size(), 4U) << "the grids keep what they show";
    user::put(f.MskToplamUcret, "500");
    user::focus(f.txtAciklama);
    EXPECT_EQ(f.MskToplamUcret.text(), "0") << "leaving the total zeroes it, too";
    f.chkOtomatikTaksitHesapla.setChecked(true);
    EXPECT_TRUE(f.fraTaksit.enabled());
    EXPECT_EQ(f.MskAlinanPesinat.text(), "0");
    EXPECT_EQ(f.MskKalan.text(), "0,00");
    EXPECT_TRUE(shop.said().empty());
}

struct Writes {
    const char* table;
    int count;
};

class Sales : public SaleScreen {
protected:
    Rows books() {
        Rows all;
        for (const char* table : {"ISLEMNOTABLO", "URUNAL", "URUNSAT", "TAKSITODENEN", "URUNTANITIM"})
            for (const std::string& row : shop.rows(std::string("SELECT * FROM ") + table + " ORDER BY ID"))
                all.push_back(std::string(table) + " " + row);
        return all;
    }

    // Each single write fails once: the books stay as they are, and something is said each time.
    void failEach(std::initializer_list<Writes> writes, const std::function<void()>& act) {
        const Rows before = books();
        for (const Writes& w : writes)
            for (int nth = 1; nth <= w.count; ++nth) {
                session.workspace.failWrite(nth, w.table);
                act();
                EXPECT_EQ(books(), before) << w.table << " " << nth;
                EXPECT_FALSE(session.gBaglanti->inTransaction()) << w.table << " " << nth;
                const auto said = shop.said();
                EXPECT_TRUE(std::find(said.begin(), said.end(), "İşlem Tamamlandı") == said.end());
                EXPECT_FALSE(said.empty()) << w.table << " " << nth;
            }
    }

    int count(const std::string& table) { return std::stoi(shop.rows("SELECT COUNT(*) FROM " + table)[0]); }
};

TEST_F(Sales, NothingHalfSavedWhateverStatementFails) {
    FrmSatis& f = open();
    fill(f, "1000", "200", "4");
    failEach({{"ISLEMNOTABLO", 1}, {"URUNAL", 1}, {"URUNTANITIM", 1}, {"TAKSITODENEN", 1}, {"URUNSAT", 5}},
             [&] { SatisKaydet(f); });
    EXPECT_EQ(f.durum, FormModu::Yeni);
    EXPECT_EQ(f.pointer(), MousePointer::Default);
    SatisKaydet(f);
    EXPECT_EQ(shop.said(), Rows{"İşlem Tamamlandı"});
    EXPECT_EQ(count("URUNSAT"), 5);
    EXPECT_EQ(f.durum, FormModu::Navigation);

    // The change: deletes before inserts, in each table.
    failEach({{"URUNSAT", 7}, {"TAKSITODENEN", 3}, {"URUNAL", 3}, {"ISLEMNOTABLO", 2}, {"URUNTANITIM", 1}},
             [&] { SatisKaydet(f); });
    SatisKaydet(f);
    EXPECT_EQ(shop.said(), Rows{"İşlem Tamamlandı"});
    EXPECT_EQ(count("URUNSAT"), 5);

    // The deletion.
    const auto remove = [&] {
        f.txtIslemNo.setText("1");
        shop.dialogs.answers = {"yes", "yes"};
        press(f, Key::F6);
    };
    const Rows before = books();
    for (const char* table : {"URUNTANITIM", "URUNSAT", "TAKSITODENEN", "URUNAL", "ISLEMNOTABLO"}) {
        session.workspace.failWrite(1, table);
        remove();
        EXPECT_EQ(books(), before) << table;
        EXPECT_EQ(shop.said().size(), 3U) << table;
    }
    remove();
    EXPECT_EQ(books(), Rows{"URUNTANITIM 1|1|Ürün|NULL|NULL|NULL|NULL|NULL|0|1|-1"});
}

TEST_F(Sales, WithoutATransactionThereIsNoSale) {
    FrmSatis& f = open();
    fill(f, "1000", "0", "2");
    session.gBaglanti->beginTrans(); // somebody's transaction stands open: no second one begins
    SatisKaydet(f);
    session.gBaglanti->rollbackTrans();
    EXPECT_EQ(shop.said().size(), 1U);
    EXPECT_EQ(count("ISLEMNOTABLO"), 0);
    SatisKaydet(f);
    EXPECT_EQ(shop.said(), Rows{"İşlem Tamamlandı"});
}

// Without installments the whole total is paid at once, and kept twice like a down payment.
TEST_F(Sales, WithoutInstallments) {
    FrmSatis& f = open();
    f.chkOtomatikTaksitHesapla.setChecked(false);
    f.MskToplamUcret.setText("500");
    failEach({{"ISLEMNOTABLO", 1}, {"TAKSITODENEN", 1}, {"URUNAL", 1}, {"URUNTANITIM", 1}, {"URUNSAT", 1}},
             [&] { SatisKaydet(f); });
    SatisKaydet(f);
    EXPECT_EQ(shop.said(), Rows{"İşlem Tamamlandı"});
    EXPECT_EQ(shop.rows("SELECT ODTRH,ODMIKTAR,KASA_ID FROM TAKSITODENEN"),
              Rows{"22/11/2026 10:30:00|500000000|NULL"});
    EXPECT_EQ(shop.rows("SELECT ODTRH,ODMIKTAR,PESINAT FROM URUNSAT"),
              Rows{"22/11/2026 10:30:00|500000000|1"});

    // A change writes the grids, which then hold nothing: the row of the total goes, too.
    SatisKaydet(f);
    EXPECT_EQ(shop.said(), Rows{"İşlem Tamamlandı"});
    EXPECT_EQ(count("URUNSAT"), 0);
    EXPECT_EQ(count("TAKSITODENEN"), 0);
    EXPECT_EQ(count("URUNAL"), 1);
}

// A plan that stands while the remainder is empty shares the total over the grid's rows, heading counted.
TEST_F(Sales, WithoutARemainderTheTotalIsShared) {
    FrmSatis& f = open();
    fill(f, "1000", "0", "4");
    f.MskKalan.setText("");
    SatisKaydet(f);
    EXPECT_EQ(shop.rows("SELECT ODMIKTAR FROM URUNSAT"), Rows(4, "200000000"));
}

// A caller that waits for the sale gets its row, or learns that there is none.
TEST_F(Sales, ForACallerTheScreenClosesWithItsAnswer) {
    session.gFormKayit.Sonuc = Currency::ofWhole(FormResult::Requested);
    {
        const Forms::Hold hold(shop.forms);
        FrmSatis& f = open();
        fill(f, "100", "0", "1");
        SatisKaydet(f);
    }
    EXPECT_EQ(shop.forms.loaded("frmSatis"), nullptr);
    EXPECT_EQ(session.gFormKayit.Sonuc, Currency::ofWhole(FormResult::Chosen));
    EXPECT_EQ(session.gFormKayit.KayitID, 1);

    session.gFormKayit = {};
    session.gFormKayit.Sonuc = Currency::ofWhole(FormResult::Requested);
    press(open(), Key::F4);
    EXPECT_EQ(shop.forms.loaded("frmSatis"), nullptr);
    EXPECT_EQ(session.gFormKayit.Sonuc, Currency::ofWhole(FormResult::GivenUp));
}

TEST_F(Sales, CancellingReturnsToTheSaleSaved) {
    shop.run("INSERT INTO ISLEMNOTABLO (ISLEMNO) VALUES (1)");
    FrmSatis& f = open();
    fill(f, "100", "0", "1");
    SatisKaydet(f);
    EXPECT_EQ(f.m_KayitID, 2);
    FormGezinme(f, Navigation::Ilk);
    EXPECT_EQ(f.m_KayitID, 1);
    press(f, Key::F3);
    press(f, Key::F4);
    EXPECT_EQ(f.m_KayitID, 2);
    EXPECT_EQ(f.durum, FormModu::Navigation);
    press(f, Key::F5);
    EXPECT_EQ(f.durum, FormModu::Change);
}

TEST_F(Sales, StokYenidenHesaplaLastWriterOfATotalWins) {
    shop.run("UPDATE URUNTANITIM SET TOPLAM_ALINAN=77,TOPLAM_SATILAN=77,KALAN=77");
    for (const char* urkod : {"2", "3", "4"})
        shop.run(std::string("INSERT INTO URUNTANITIM (URKOD,TOPLAM_ALINAN,KALAN) VALUES ('") + urkod +
                 "',9,9)");
    for (const char* row : {"('2',10)", "('2',5)", "('3',8)", "('9',1)"})
        shop.run(std::string("INSERT INTO T_STOK_GRIS_CIKIS_DETAY (URKOD,MIKTAR) VALUES ") + row);
    shop.run("INSERT INTO T_STOK_GRIS_CIKIS_DETAY (URKOD) VALUES ('4')"); // no quantity
    for (const char* row : {"('1',2)", "('1',1)", "('2',4)", "('3',3)"})
        shop.run(std::string("INSERT INTO URUNAL (URKOD,ADET) VALUES ") + row);
    for (const char* row : {"('3',20,0)", "('3',7,1)", "('2',6,1)"})
        shop.run(std::string("INSERT INTO FATURA_DETAY (URKOD,MIKTAR,ALIS_SATIS) VALUES ") + row);
    StokYenidenHesapla(session);
    EXPECT_EQ(shop.rows("SELECT URKOD,TOPLAM_ALINAN,TOPLAM_SATILAN,KALAN FROM URUNTANITIM ORDER BY ID"),
              (Rows{"1|0|3|-3", "2|15|6|9", "3|20|7|13", "4|0|0|0"}));
    EXPECT_TRUE(shop.said().empty());

    // A loop stops at its first failed statement; the later steps run.
    session.workspace.failWrite(2, "URUNTANITIM");
    StokYenidenHesapla(session);
    EXPECT_EQ(shop.said().size(), 1U);
    EXPECT_EQ(shop.rows("SELECT URKOD,TOPLAM_ALINAN,TOPLAM_SATILAN,KALAN FROM URUNTANITIM ORDER BY ID"),
              (Rows{"1|0|3|-3", "2|0|6|-6", "3|20|7|13", "4|0|0|0"}));
}

} // namespace

} // namespace veldona
