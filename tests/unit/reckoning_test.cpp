// What is kept of the shop while this till and another one write, against the same read anew.
#include <gtest/gtest.h>

#include <random>
#include <sstream>

#include "core/delivered.h"
#include "daybook/calllist.h"
#include "platform/runtime/conversion.h"
#include "platform/store/faces/workspace.h"
#include "tests/support/shop.h"

namespace veldona::test {

namespace {

const DateTime kToday = DateTime::of(2026, 11, 22);
constexpr int kCards = 200; // four ranges of accounts

std::string dump(adodb::Connection& books, ShopReckoning& shop) {
    const CallList list = readCallList(books, shop, kToday);
    std::ostringstream out;
    out.precision(17);
    out << list.overdue.column() << ' ' << list.dueToday.column() << ' ' << list.expected.column() << '\n';
    for (const CallRow& row : list.rows)
        out << row.account << ' ' << row.name << ' ' << row.overdue.column() << ' ' << row.overdueCount << ' '
            << row.daysOverdue << ' ' << row.dueToday.column() << ' ' << row.isNeverPaid << ' '
            << row.oldestSale << ' ' << (row.lastPayment ? toText(row.lastPayment->at) : "") << '\n';
    for (const StoredAmount each : shop.ages(kToday).sums)
        out << each.column() << '\n';
    for (const MonthFigures& month : shop.months(kToday, 36))
        out << toText(month.first) << ' ' << month.due.column() << ' ' << month.received.column() << ' '
            << month.sold.column() << ' ' << month.sales << '\n';
    return out.str();
}

class Tills {
public:
    explicit Tills(unsigned seed) : random_(seed) {
        store::WorkspaceConfig config;
        config.toNativePath = [this](std::string_view path) { return shop.desktop.paths.toNative(path); };
        workspace_ = std::make_unique<store::Workspace>(std::move(config));
        other = std::make_unique<adodb::Connection>(*workspace_);
        other->openFile(kDatabasePath, kDeliveredPassword);
        own().beginTrans();
        for (int number = 1; number <= kCards; ++number)
            shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD) VALUES ('" + std::to_string(number) + "','Ad')");
        for (int i = 0; i < 80; ++i)
            sell(own());
        own().commitTrans();
    }

    [[nodiscard]] adodb::Connection& own() { return *shop.session.gBaglanti; }
    int pick(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }
    void act(adodb::Connection& till) {
        const bool isUndone = pick(1, 10) == 1;
        if (isUndone) till.beginTrans();
        write(till);
        if (isUndone) till.rollbackTrans();
    }

    Shop shop;
    std::unique_ptr<adodb::Connection> other;

private:
    // A few accounts of each range, in two spellings, without a card, reserved, and none.
    std::string account() {
        static const char* const odd[] = {"'m3'", "'M3'", "'İ1'", "'TI'", "'yok'", "NULL"};
        return pick(1, 4) == 1 ? odd[pick(0, 5)] : "'" + std::to_string(17 * pick(1, 11)) + "'";
    }
    std::string day(int from, int to) { return "'" + toText(kToday.plusDays(pick(from, to))) + "'"; }
    std::string amount() { return std::to_string(pick(1, 90) * 1'000'000); }
    std::string sale() { return std::to_string(pick(1, sales_)); }
    std::string idOf(const char* table) {
        const auto rows = shop.rows(std::string("SELECT ID FROM ") + table);
        return rows.empty() ? "0"
                            : rows[static_cast<std::size_t>(pick(0, static_cast<int>(rows.size()) - 1))];
    }

    void sell(adodb::Connection& till) {
        const std::string key = account() + "," + std::to_string(++sales_) + ",";
        const std::string sold = day(-400, 0);
        till.execute("INSERT INTO ISLEMNOTABLO (MUSTNO,ISLEMNO,TRH,INDIRIM_YTL) VALUES (" + key + sold + "," +
                     (pick(1, 3) == 1 ? amount() : "0") + ")");
        for (int line = pick(1, 2); line > 0; --line)
            till.execute("INSERT INTO URUNAL (MUSTNO,ISLEMNO,TRH,ADET,FIYAT) VALUES (" + key + sold + ",1," +
                         amount() + ")");
        for (int due = pick(1, 4); due > 0; --due)
            till.execute("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES (" + key +
                         day(-300, 20) + "," + amount() + ")");
    }
    void write(adodb::Connection& till) {
        switch (pick(1, 14)) {
        case 1:
            return sell(till);
        case 2:
            till.execute("UPDATE TAKSITODENEN SET ODMIKTAR=" + amount() +
                         " WHERE ID=" + idOf("TAKSITODENEN"));
            return;
        case 3:
            till.execute("DELETE FROM TAKSITODENEN WHERE ID=" + idOf("TAKSITODENEN"));
            return;
        case 4: // a payment is given to another account
            till.execute("UPDATE TAKSITODENEN SET MUSTNO=" + account() + " WHERE ID=" + idOf("TAKSITODENEN"));
            return;
        case 5:
            till.execute("UPDATE URUNSAT SET ODTRH=" + day(-300, 20) + " WHERE ISLEMNO=" + sale());
            return;
        case 6:
            till.execute("UPDATE ISLEMNOTABLO SET INDIRIM_YTL=" + amount() + " WHERE ISLEMNO=" + sale());
            return;
        case 7: // the head of a sale that lies elsewhere
            till.execute("UPDATE ISLEMNOTABLO SET MUSTNO=" + account() + ",TRH=" + day(-400, 0) +
                         " WHERE ISLEMNO=" + sale());
            return;
        case 8:
            till.execute("UPDATE URUNAL SET FIYAT=" + amount() + " WHERE ID=" + idOf("URUNAL"));
            return;
        case 9:
            for (const char* table : {"ISLEMNOTABLO", "URUNAL", "URUNSAT", "TAKSITODENEN"})
                till.execute(std::string("DELETE FROM ") + table + " WHERE ISLEMNO=" + sale());
            return;
        case 10: // an account under another number, as the ID of its card stays
            till.execute("UPDATE MUSTKAYIT SET HSTNO=" + account() +
                         ",AD='Yeni' WHERE ID=" + idOf("MUSTKAYIT"));
            return;
        case 11:
            till.execute("DELETE FROM MUSTKAYIT WHERE ID=" + idOf("MUSTKAYIT"));
            return;
        default:
            till.execute("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES (" + account() +
                         "," + sale() + "," + day(-200, 0) + "," + amount() + ")");
        }
    }

    std::mt19937 random_;
    int sales_ = 0;
    std::unique_ptr<store::Workspace> workspace_;
};

class Reckoning : public ::testing::TestWithParam<unsigned> {};

} // namespace

TEST_P(Reckoning, IsAsIfReadAnewBehindWhateverAnyTillWrites) {
    Tills tills(GetParam());
    ShopReckoning kept;
    for (int look = 0; look < 60; ++look) {
        SCOPED_TRACE(look);
        for (int act = tills.pick(0, 5); act > 0; --act) {
            tills.act(tills.pick(1, 12) == 1 ? *tills.other : tills.own());
            for (int slices = tills.pick(0, 2); slices > 0; --slices)
                static_cast<void>(kept.readAhead(tills.own(), [] { return false; }));
        }
        ShopReckoning anew;
        ASSERT_EQ(dump(tills.own(), kept), dump(*tills.other, anew));
    }
}

INSTANTIATE_TEST_SUITE_P(Shops, Reckoning, ::testing::Values(1u, 2u, 3u, 4u));

TEST(ReckoningAhead, ReadsOneSliceBehindAnOwnPaymentAndNothingInATransaction) {
    Tills tills(5);
    ShopReckoning shop;
    const auto slices = [&] {
        int count = 0;
        while (shop.readAhead(tills.own(), [] { return false; }))
            ++count;
        return count;
    };
    EXPECT_GT(slices(), 4);
    EXPECT_EQ(slices(), 0);
    tills.shop.run("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('17',1,'2026-11-22',5)");
    EXPECT_EQ(slices(), 1);
    tills.other->execute("UPDATE MUSTKAYIT SET AD='Can' WHERE ID=1");
    EXPECT_EQ(slices(), 1) << "of another till's, too";
    tills.own().beginTrans();
    tills.shop.run("DELETE FROM URUNSAT");
    EXPECT_TRUE(shop.readAhead(tills.own(), [] { return false; })) << "there is more, but not now";
    tills.own().rollbackTrans();
    EXPECT_EQ(slices(), 0);
}

} // namespace veldona::test
