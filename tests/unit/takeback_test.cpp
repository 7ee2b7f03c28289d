// The law of taking back: whatever was done, taken back it gives the books of before, row for row; and what
// stands in the way of it.
#include "journal/takeback.h"

#include <iostream>
#include <random>

#include <gtest/gtest.h>

#include "apps/denetle/check.h"
#include "core/database.h"
#include "core/delivered.h"
#include "journal/chain.h"
#include "journal/takenback.h"
#include "journal/words.h"
#include "platform/store/engine/act.h"
#include "platform/store/faces/database.h"
#include "schema/tables.h"
#include "tests/support/shop.h"

namespace veldona {
namespace {

using Books = std::vector<std::string>; // every row of every journaled table, its values in full
using journal::Act;

class TakingBack : public testing::Test {
protected:
    TakingBack() {
        for (const char* account : {"7", "8"})
            shop.run(std::string("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('") + account +
                     "','Ayşe','Yılmaz')");
    }

    void act(const std::string& name, const std::vector<std::string>& statements) {
        const store::ActScope scope("frmMainVeldona", name);
        shop.session.gBaglanti->beginTrans();
        for (const std::string& sql : statements)
            shop.run(sql);
        shop.session.gBaglanti->commitTrans();
    }
    void sell(int sale, const std::string& account = "7") {
        const std::string of = "('" + account + "'," + std::to_string(sale) + ",";
        act("Kaydet",
            {"INSERT INTO ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC) VALUES " + of + "600000000)",
             "INSERT INTO URUNAL (MUSTNO,ISLEMNO,URKOD,ADET,FIYAT,ACIKLAMA) VALUES " + of +
                 "'1',1,600000000,'it''s \"ş\" \\')",
             "UPDATE URUNTANITIM SET TOPLAM_SATILAN=TOPLAM_SATILAN+1, KALAN=KALAN-1 WHERE URKOD='1'",
             "INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES " + of +
                 "'20/12/2026',400000000.0000001)",
             "INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES " + of + "'20/01/2027',200000000)"});
    }
    void pay(int sale, int lira, const std::string& account = "7") {
        act("Tahsilat",
            {"INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('" + account + "'," +
             std::to_string(sale) + ",'22/11/2026 10:30:00'," + std::to_string(lira) + "000000)"});
    }
    void removeSale(int sale) {
        std::vector<std::string> statements = {
            "UPDATE URUNTANITIM SET TOPLAM_SATILAN=TOPLAM_SATILAN-1, KALAN=KALAN+1 WHERE URKOD='1'"};
        for (const char* table : {"URUNSAT", "TAKSITODENEN", "URUNAL", "ISLEMNOTABLO"})
            statements.push_back(std::string("DELETE FROM ") + table +
                                 " WHERE ISLEMNO=" + std::to_string(sale));
        act("Satışı Sil", statements);
    }

    Books books() {
        Books rows;
        for (const store::TableDef& table : schema::tables())
            if (table.isJournaled)
                for (const std::string& row : shop.rows("SELECT * FROM " + table.name + " ORDER BY ID"))
                    rows.push_back(table.name + ": " + row);
        return rows;
    }
    std::vector<Act> acts(std::size_t most = 1000) {
        return journal::ActReader(*shop.session.gBaglanti).more(most);
    }
    Act newest() { return acts(1).front(); }
    std::optional<journal::Obstacle> takeBack(const Act& of) {
        return journal::takeBack(*shop.session.gBaglanti, of);
    }
    std::size_t faults() {
        store::Engine& engine = shop.session.workspace.open(kDatabasePath, "")->engine();
        journal::Strays strays;
        EXPECT_FALSE(journal::examine(engine, {}, &strays).broken);
        EXPECT_EQ(strays.all, 0) << describe(strays);
        return denetle::checkBooks(engine).all.size();
    }

    test::Shop shop;
};

// Takes back the newest act: the books must be those of before; and back again, those of behind it.
TEST_F(TakingBack, WhateverWasDoneGivesTheBooksOfBefore) {
    constexpr std::uint32_t kSeed = 20261123;
    std::mt19937 random(kSeed);
    std::cout << "seed " << kSeed << '\n';
    const auto below = [&](int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); };
    const Books morning = books();
    const std::int64_t first = journal::lastEntry(*shop.session.gBaglanti);
    int nextSale = 1;
    std::vector<int> sales;
    for (int round = 0; round < 60; ++round) {
        const Books before = books();
        const std::size_t faultsBefore = faults();
        const int what = sales.empty() ? 0 : below(7);
        const std::size_t place =
            sales.empty() ? 0 : static_cast<std::size_t>(below(static_cast<int>(sales.size())));
        const std::string of = sales.empty() ? "" : std::to_string(sales[place]);
        if (what == 0) sell(sales.emplace_back(nextSale++), below(2) ? "7" : "8");
        if (what == 1) pay(sales[place], 1 + below(300));
        if (what == 2)
            act("Kaydet", {"UPDATE URUNSAT SET ODMIKTAR=" + std::to_string(below(1'000'000'000) / 3.0) +
                           ", ODTRH='05/05/2027' WHERE ISLEMNO=" + of});
        if (what == 3) {
            removeSale(sales[place]);
            sales.erase(sales.begin() + static_cast<std::ptrdiff_t>(place));
        }
        if (what == 4) // saved again: each row goes and comes anew
            act("Kaydet",
                {"DELETE FROM URUNSAT WHERE ISLEMNO=" + of, "DELETE FROM TAKSITODENEN WHERE ISLEMNO=" + of,
                 "DELETE FROM ISLEMNOTABLO WHERE ISLEMNO=" + of,
                 "INSERT INTO ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC) VALUES ('7'," + of + ",1000000)",
                 "INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('7'," + of +
                     ",'20/12/2026',1000000)"});
        if (what == 5) act("Kaydet", {"UPDATE MUSTKAYIT SET EVTEL='" + of + "', UYARI=NULL WHERE HSTNO='8'"});
        if (what == 6) act("Sil", {"DELETE FROM MUSTKAYIT WHERE ID IN (SELECT MAX(ID) FROM MUSTKAYIT)"});
        if (what == 6) act("Kaydet", {"INSERT INTO MUSTKAYIT (HSTNO,AD) VALUES ('8','Can')"});
        const Books behind = books();
        if (what == 6) continue;        // two acts at once
        if (before == behind) continue; // of no rows
        ASSERT_FALSE(takeBack(newest())) << "round " << round << ", act " << what;
        ASSERT_EQ(books(), before) << "round " << round << ", act " << what;
        ASSERT_EQ(faults(), faultsBefore);
        ASSERT_FALSE(takeBack(newest()));
        ASSERT_EQ(books(), behind) << "round " << round << ", act " << what;
    }
    for (const Act& act : acts(10'000)) {
        if (act.first() <= first) continue;
        ASSERT_FALSE(takeBack(act)) << journal::summaryOf(act);
    }
    EXPECT_EQ(books(), morning);
}

TEST_F(TakingBack, SaysWhatStandsInTheWay) {
    const auto ofTheMaking = takeBack(acts().back()); // rows that the program doesn't work without
    ASSERT_TRUE(ofTheMaking && ofTheMaking->isItself);
    sell(219);
    const Act sold = newest();
    pay(219, 150);
    const Act paid = newest();
    const Books before = books();
    auto obstacle = takeBack(sold);
    ASSERT_TRUE(obstacle);
    EXPECT_EQ(obstacle->what, "219 numaralı satış: üzerine sonradan kayıt yapılmış.");
    EXPECT_EQ(obstacle->act->id, paid.id);
    EXPECT_EQ(books(), before);

    act("Düzelt", {"UPDATE TAKSITODENEN SET ODMIKTAR=160000000 WHERE ISLEMNO=219"});
    obstacle = journal::obstacleTo(*shop.session.gBaglanti, paid);
    ASSERT_TRUE(obstacle);
    EXPECT_EQ(obstacle->what, "219 numaralı satışın ödemesi (150,00): sonradan değiştirilmiş.");
    EXPECT_EQ(obstacle->act->name, "Düzelt");

    // The number of a removed sale was given anew; the payment of a removed sale has nothing to come back to.
    act("Ödeme Sil", {"DELETE FROM TAKSITODENEN WHERE ISLEMNO=219"});
    const Act payment = newest();
    removeSale(219);
    const Act removed = newest();
    obstacle = takeBack(payment);
    ASSERT_TRUE(obstacle);
    EXPECT_EQ(obstacle->what, "219 numaralı satışın ödemesi (160,00): bağlı olduğu kayıt sonradan silinmiş.");
    EXPECT_EQ(obstacle->act->id, removed.id);
    sell(219, "8");
    obstacle = takeBack(removed);
    ASSERT_TRUE(obstacle);
    EXPECT_EQ(obstacle->what, "219 numaralı satış: numarası yeniden verilmiş.");
    EXPECT_EQ(obstacle->act->name, "Kaydet");

    // Once those are gone again, it comes back, and then not a second time.
    ASSERT_FALSE(takeBack(newest()));
    ASSERT_FALSE(takeBack(removed));
    obstacle = takeBack(removed);
    ASSERT_TRUE(obstacle);
    EXPECT_EQ(journal::takenBackBy(*obstacle->act), removed.id);
    ASSERT_FALSE(takeBack(payment));
}

// Another till has sold the same product since.
TEST_F(TakingBack, LeavesTheSalesOfOthersInTheStock) {
    sell(1);
    const Act first = newest();
    sell(2);
    ASSERT_FALSE(takeBack(first));
    EXPECT_EQ(shop.rows("SELECT TOPLAM_ALINAN,TOPLAM_SATILAN,KALAN FROM URUNTANITIM"),
              std::vector<std::string>{"0|1|-1"});
    ASSERT_FALSE(takeBack(newest()));
    EXPECT_EQ(shop.rows("SELECT TOPLAM_ALINAN,TOPLAM_SATILAN,KALAN FROM URUNTANITIM"),
              std::vector<std::string>{"0|2|-2"});
}

TEST_F(TakingBack, IsToldInTheWordsOfTheShop) {
    std::int64_t seen = journal::kNothingSeen;
    EXPECT_TRUE(journal::takenBackSince(*shop.session.gBaglanti, seen).empty());
    sell(219);
    const Act sold = newest();
    EXPECT_EQ(journal::summaryOf(sold), "219 numaralı satış kaydedildi: 1 satır, 2 taksit");
    EXPECT_EQ(journal::accountOf(sold), "7");
    for (const int lira : {200, 160, 100})
        pay(219, lira);
    EXPECT_EQ(journal::summaryOf(newest()), "219 numaralı satış: 100,00 tahsilat yapıldı");
    removeSale(219);
    const Act removed = newest();
    EXPECT_EQ(journal::summaryOf(removed),
              "219 numaralı satış silindi: 1 satır, 2 taksit, 3 ödeme, 460,00 tahsilat");
    EXPECT_EQ(journal::kindOf(removed), journal::ActKind::SaleRemoved);
    EXPECT_TRUE(journal::takenBackSince(*shop.session.gBaglanti, seen).empty());
    ASSERT_FALSE(takeBack(removed));
    EXPECT_EQ(journal::summaryOf(newest()),
              "Geri alındı: 219 numaralı satış silindi: 1 satır, 2 taksit, 3 ödeme, 460,00 tahsilat");
    EXPECT_EQ(journal::takenBackSince(*shop.session.gBaglanti, seen).size(), 1U);

    act("Kaydet", {"UPDATE URUNSAT SET ODMIKTAR=250000000 WHERE ODTRH='20/01/2027'"});
    EXPECT_EQ(journal::summaryOf(newest()), "219 numaralı satış: taksit değişti: Taksit 200,00 → 250,00");
    const auto details = journal::detailsOf(newest());
    ASSERT_EQ(details.size(), 1U);
    EXPECT_EQ(details[0].row, "219 numaralı satışın taksidi (250,00) değişti");
    EXPECT_EQ(details[0].before + '>' + details[0].after, "200,00>250,00");
    act("Kaydet", {"UPDATE MUSTKAYIT SET EVTEL='1', GSM='2', UYARI='3' WHERE HSTNO='8'"});
    EXPECT_EQ(journal::summaryOf(newest()), "8 numaralı müşterinin kartı değişti: Ev Telefonu 1, GSM, Uyarı");

    // Of one day alone.
    shop.clock.set(shop.clock.now().plusDays(1));
    const auto ofToday = journal::ActReader(*shop.session.gBaglanti, sold.moment).more(100);
    EXPECT_EQ(ofToday.back().id, acts().back().id);
    EXPECT_TRUE(journal::ActReader(*shop.session.gBaglanti, sold.moment.plusDays(-1)).more(100).empty());
    // Also behind much that was written while the clock ran ahead.
    const DateTime today = shop.clock.now();
    shop.clock.set(today.plusDays(400));
    std::vector<std::string> many;
    for (int i = 0; i < 1500; ++i)
        many.push_back("UPDATE MUSTKAYIT SET EVTEL='" + std::to_string(i) + "' WHERE HSTNO='8'");
    act("Kaydet", many);
    shop.clock.set(today);
    pay(219, 10);
    EXPECT_EQ(journal::ActReader(*shop.session.gBaglanti, today).more(100).size(), 1U);
}

} // namespace
} // namespace veldona
