// What is open of each sale, against the same said with coins: a plan is a row of kuruş coins by day, of
// which the discount takes the last and the payments the first.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <tuple>

#include "core/session.h"
#include "daybook/arrears.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"
#include "tests/support/shop.h"

namespace veldona::test {

namespace {

const DateTime kToday = DateTime::of(2026, 11, 22);

struct Sale {
    std::string account;
    int number;
    DateTime soldOn;
    int lines;
    int discount;                               // kuruş
    std::vector<std::pair<DateTime, int>> plan; // kuruş
    std::vector<std::pair<DateTime, int>> payments;
};

class Books {
public:
    Books(Shop& shop, unsigned seed) : random_(seed), shop_(shop) {
        shop.session.gBaglanti->beginTrans();
        for (int number = 1; number <= 150; ++number)
            write(make(number));
        shop.session.gBaglanti->commitTrans();
    }
    std::vector<Sale> sales;

private:
    int pick(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }
    bool chance(int percent) { return pick(1, 100) <= percent; }

    Sale make(int number) {
        static const std::vector<std::string> accounts = {"7", "12", "m3", "M3", "İ1"};
        Sale sale{accounts[static_cast<std::size_t>(pick(0, 4))],
                  number,
                  kToday.plusDays(-pick(0, 150)),
                  0,
                  0,
                  {},
                  {}};
        sale.discount = chance(30) ? pick(1, 60) : 0;
        const int down = chance(40) ? pick(1, 40) : 0;
        int planned = 0;
        const auto due = [&](DateTime day, int amount) {
            sale.plan.emplace_back(day, amount);
            planned += amount;
        };
        if (down > 0) due(sale.soldOn, down);
        const int count = pick(0, 6);
        for (int i = 1; i <= count; ++i)
            due(addMonths(sale.soldOn, chance(10) ? 1 : i), pick(0, 60));
        // A plan of the net amount, of the whole one, or of neither.
        sale.lines = planned + (chance(40) ? sale.discount : chance(70) ? 0 : pick(-20, 20));
        if (down > 0) sale.payments.emplace_back(sale.soldOn.plusSeconds(36'000), down);
        for (int i = pick(0, 5); i > 0 && chance(80); --i)
            sale.payments.emplace_back(sale.soldOn.plusDays(pick(0, 160)),
                                       chance(8) ? -pick(1, 30) : pick(1, 70));
        return sale;
    }
    // Another spelling of an account is the same one to the store.
    void write(Sale sale) {
        const auto amount = [](int kurus) { return std::to_string(std::int64_t{kurus} * 10'000); };
        const std::string key = "'" + sale.account + "'," + std::to_string(sale.number) + ",'";
        shop_.run("INSERT INTO ISLEMNOTABLO (MUSTNO,ISLEMNO,TRH,INDIRIM_YTL) VALUES (" + key +
                  toText(sale.soldOn.plusSeconds(36'000)) + "'," + amount(sale.discount) + ")");
        shop_.run("INSERT INTO URUNAL (MUSTNO,ISLEMNO,TRH,ADET,FIYAT) VALUES (" + key + toText(sale.soldOn) +
                  "',1," + amount(sale.lines) + ")");
        for (const auto& [table, rows] :
             {std::pair{"URUNSAT", &sale.plan}, std::pair{"TAKSITODENEN", &sale.payments}})
            for (const auto& [day, kurus] : *rows)
                shop_.run(std::string("INSERT INTO ") + table + " (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES (" +
                          (rows == &sale.payments ? replaceAll(key, "m3", "M3") : key) + toText(day) + "'," +
                          amount(kurus) + ")");
        sales.push_back(std::move(sale));
    }

    std::mt19937 random_;
    Shop& shop_;
};

// The days of the coins that nobody paid.
std::vector<DateTime> coinsLeft(const Sale& sale) {
    std::vector<DateTime> coins;
    auto plan = sale.plan;
    std::ranges::stable_sort(plan);
    for (const auto& [day, kurus] : plan)
        coins.insert(coins.end(), static_cast<std::size_t>(kurus), day);
    const int planned = static_cast<int>(coins.size());
    int paid = 0;
    for (const auto& payment : sale.payments)
        paid += payment.second;
    // What was given back is owed on the plan's first day.
    while (paid < 0 && !plan.empty() && ++paid <= 0)
        coins.insert(coins.begin(), plan.front().first);
    for (int i = std::min(sale.discount, planned - (sale.lines - sale.discount)); i > 0 && !coins.empty();
         --i)
        coins.pop_back();
    coins.erase(coins.begin(), coins.begin() + std::clamp<std::ptrdiff_t>(paid, 0, std::ssize(coins)));
    return coins;
}

using Open = std::map<DateTime, std::int64_t>; // kuruş by day

class Arrears : public ::testing::TestWithParam<unsigned> {};

} // namespace

TEST_P(Arrears, OpenInstallmentsAreTheSameCoinByCoin) {
    Shop shop;
    const Books books(shop, GetParam());
    adodb::Connection& store = *shop.session.gBaglanti;
    const std::vector<SaleArrears> all = arrearsOfRange(store, {}, readDiscounts(store)).sales;
    std::size_t found = 0;
    for (const Sale& sale : books.sales) {
        SCOPED_TRACE(sale.number);
        Open expected;
        for (const DateTime day : coinsLeft(sale))
            ++expected[day];
        const auto one = arrearsOfSale(store, sale.account, sale.number);
        ASSERT_EQ(one.has_value(), !expected.empty());
        if (!one) continue;
        const auto same = std::ranges::find(all, sale.number, &SaleArrears::sale);
        ASSERT_NE(same, all.end());
        ++found;
        for (const SaleArrears* arrears : {&*one, &*same}) {
            Open open;
            for (const OpenInstallment& row : arrears->open)
                open[row.due] += static_cast<std::int64_t>(row.open.column()) / 10'000;
            EXPECT_EQ(open, expected);
            const bool isPaid = std::ranges::any_of(
                sale.payments, [&](const auto& payment) { return payment.first.date() > sale.soldOn; });
            EXPECT_EQ(arrears->isNeverPaid, !isPaid);
            ASSERT_EQ(arrears->lastPayment.has_value(), !sale.payments.empty());
            if (arrears->lastPayment) {
                EXPECT_EQ(arrears->lastPayment->at, std::ranges::max(sale.payments).first);
            }
        }
        Open byRow;
        for (const Installment& row : installmentsOf(store, sale.account, sale.number))
            if (!row.isCovered()) byRow[row.due] += static_cast<std::int64_t>(row.open.column()) / 10'000;
        EXPECT_EQ(byRow, expected);
    }
    EXPECT_EQ(all.size(), found);
}

INSTANTIATE_TEST_SUITE_P(Shops, Arrears, ::testing::Values(1u, 2u, 3u, 4u));

} // namespace veldona::test
