// The plan of a sale: the laws that hold for every total, down payment, count and amount.
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "sales/plan.h"
#include "sales/planarithmetic.h"
#include "salestage.h"

namespace veldona {

namespace {

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

} // namespace

} // namespace veldona
