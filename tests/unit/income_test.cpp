// The income list against the same rules computed from plain rows, over a random shop and random days.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <set>
#include <tuple>

#include "platform/controls/userinput.h"
#include "reportpaper.h"
#include "reports/income.h"
#include "tests/support/shop.h"

namespace veldona::test {

namespace {

using Paper = PaperDesk::Paper;

struct Receipt {
    bool isPayment;
    std::string customer; // "Ad Soyad", or " " where there is no card
    DateTime at;
    std::int64_t stored;
    std::string text;
    int kind = 1; // of a cash movement
    std::string box;
};

class Till {
public:
    explicit Till(Shop& shop) : shop_(shop) {
        for (int i = 1; i <= 3; ++i)
            shop_.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('" + std::to_string(i) + "','Şule','" +
                      std::string(1, static_cast<char>('A' + i)) + "')");
        shop_.session.gBaglanti->beginTrans();
        for (int i = 0; i < 700; ++i)
            pick(0, 2) ? addPayment() : addMovement();
        shop_.session.gBaglanti->commitTrans();
    }
    int pick(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }
    DateTime day() { return DateTime::of(2026, 1, 1).plusDays(pick(0, 60)); }

    std::vector<Receipt> receipts;

private:
    // Few different ones, so that some are equal; the seconds at the ends of the day are frequent.
    DateTime moment() {
        constexpr std::array<int, 5> kSeconds = {0, 1, 36000, 86399, 50000};
        return day().plusSeconds(kSeconds[static_cast<std::size_t>(pick(0, 4))]);
    }
    std::int64_t amount() { return pick(1, 8) * 1'005'000; }
    static std::string nameOf(int customer) {
        return customer > 3 ? " " : "Şule " + std::string(1, static_cast<char>('A' + customer));
    }
    void addPayment() {
        const int customer = pick(1, 4);
        const int box = pick(1, 2);
        receipts.push_back(
            {true, nameOf(customer), moment(), amount(), "Taksit Ödemesi", 1, std::to_string(box)});
        const Receipt& r = receipts.back();
        shop_.run("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR,KASA_ID) VALUES ('" +
                  std::to_string(customer) + "',1,'" + toText(r.at) + "'," + std::to_string(r.stored) + "," +
                  r.box + ")");
    }
    void addMovement() {
        const int customer = pick(1, 3);
        const bool isSilent = pick(0, 3) == 0;
        receipts.push_back({false, nameOf(customer), moment(), amount(), isSilent ? "NULL" : "Kasa -  elden",
                            pick(1, 3), "NULL"});
        const Receipt& r = receipts.back();
        shop_.run("INSERT INTO T_KASA_HAREKETLERI (ISLEM_ID,CARI_ID,TARIH,ALACAK_TUTAR,ISLEM_TUR,ACIKLAMA) "
                  "VALUES (" +
                  std::to_string(r.kind) + "," + std::to_string(customer) + ",'" + toText(r.at) + "'," +
                  std::to_string(r.stored) + ",'Kasa'," + (isSilent ? "NULL" : "'elden'") + ")");
    }

    std::mt19937 random_{7};
    Shop& shop_;
};

// Two decimals, a half to the even one.
double rounded(std::int64_t stored) {
    const std::int64_t cents = stored / 10'000;
    const std::int64_t rest = stored % 10'000;
    const bool up = rest > 5'000 || (rest == 5'000 && cents % 2 == 1);
    return static_cast<double>(cents + (up ? 1 : 0)) / 100;
}

// The last day whose own rule is decided by the first one.
DateTime lastDay(DateTime first, DateTime last) {
    return first.day() > 12 && last.day() < 13 ? DateTime::of(last.year(), last.day(), last.month()) : last;
}

std::string lineOf(const Receipt& r) {
    const std::string month = toText(r.at).substr(3, 2);
    return month + "|" + r.customer + "|" + toText(r.at) + "|" + toText(rounded(r.stored)) + "|" + r.text +
           "|" + (r.isPayment ? "1" : "2") + "|Gelir|NULL|" + r.box;
}

// By date; what is equal in every column is one.
Paper byPlainRules(const std::vector<Receipt>& receipts, DateTime first, DateTime last) {
    const DateTime begin = first.plusSeconds(1);
    const DateTime end = lastDay(first, last).plusSeconds(86399);
    std::set<std::pair<DateTime, std::string>> lines;
    for (const Receipt& r : receipts)
        if (r.at >= begin && r.at <= end && (r.isPayment || r.kind != 2)) lines.emplace(r.at, lineOf(r));
    Paper paper;
    for (const auto& [at, line] : lines)
        paper.push_back(line);
    return paper;
}

// Lines of one moment come in any order.
Paper inOrder(Paper paper) {
    const auto dateOf = [](const std::string& line) {
        const std::size_t first = line.find('|', line.find('|') + 1) + 1;
        return readDate(line.substr(first, line.find('|', first) - first));
    };
    EXPECT_TRUE(std::ranges::is_sorted(paper, {}, dateOf));
    std::ranges::sort(paper, {}, [&](const std::string& line) { return std::pair(dateOf(line), line); });
    return paper;
}

} // namespace

TEST(Income, TahsilatListesiKurallariSatirSatirTutar) {
    Shop shop;
    Till till(shop);
    PaperDesk desk;
    shop.session.reportDesk = &desk;
    shop.forms.add("rptGelirGider", [&](Forms& f) { return makeRptGelirGider(f, shop.session); });
    EkranGoster(shop.session, "rptGelirGider", Kip::Modeless);
    auto& f = dynamic_cast<RptGelirGider&>(*shop.forms.loaded("rptGelirGider"));
    for (int i = 0; i < 60; ++i) {
        const DateTime first = till.day();
        const DateTime last = first.plusDays(till.pick(0, 30));
        SCOPED_TRACE(toText(first) + " " + toText(last));
        f.dtTarih.setValue(first);
        f.dtSonTarih.setValue(last);
        ASSERT_TRUE(user::click(f.cmdTamam));
        const Paper expected = byPlainRules(till.receipts, first, last);
        const auto paper = desk.take();
        ASSERT_EQ(paper.has_value(), !expected.empty());
        EXPECT_EQ(inOrder(paper.value_or(Paper{})), expected);
        EXPECT_EQ(shop.said(), paper ? Paper{} : Paper{"Kriterlere Uygun Kayıt Bulunamadı"});
    }
}

// Whatever the store refuses is told in its own words, and the screen stays.
TEST(Income, SorguHatasiSoylenir) {
    Shop shop;
    shop.forms.add("rptGelirGider", [&](Forms& f) { return makeRptGelirGider(f, shop.session); });
    EkranGoster(shop.session, "rptGelirGider", Kip::Modeless);
    auto& f = dynamic_cast<RptGelirGider&>(*shop.forms.loaded("rptGelirGider"));
    shop.session.gBaglanti->close();
    cmdTamam_Click(f);
    const Paper said = shop.said();
    ASSERT_EQ(said.size(), 1u);
    EXPECT_FALSE(said[0].empty());
    EXPECT_NE(shop.forms.loaded("rptGelirGider"), nullptr);
}

} // namespace veldona::test
