// The overdue and the expected report against the same rules on plain rows, over random shops and windows.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <tuple>

#include "core/money.h"
#include "core/session.h"
#include "core/showscreen.h"
#include "platform/controls/userinput.h"
#include "platform/report/desk.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"
#include "reports/accountnames.h"
#include "reports/income.h"
#include "reports/receivablesscreen.h"
#include "tests/support/shop.h"

namespace veldona::test {

namespace {

// Takes the rows of the report that was shown last, cells joined by "|"; Null as "NULL". MUSTNO is the number
// on the card in any spelling.
class PaperDesk : public report::ReportDesk {
public:
    using Paper = std::vector<std::string>;

    void preview(const report::Document& document) override {
        paper_.emplace();
        const report::DataSet& data = document.data.front();
        for (std::size_t row = 0; row < data.rowCount(); ++row) {
            std::string line;
            for (std::size_t column = 0; column < data.columns.size(); ++column) {
                const Value& cell = data.at(row, column);
                if (data.columns[column].name == "MUSTNO")
                    EXPECT_EQ(lowerTurkish(toText(cell)), toText(data.at(row, 0)));
                else
                    line += (line.empty() ? "" : "|") + (cell.isNull() ? "NULL" : toText(cell));
            }
            paper_->push_back(line);
        }
    }
    void opened(const report::Document&) override {}
    bool print(const report::Document&) override { return true; }
    void writeFile(const report::Document&, const std::string&) override {}

    // Nothing where none was shown since.
    [[nodiscard]] std::optional<Paper> take() { return std::exchange(paper_, std::nullopt); }

private:
    std::optional<Paper> paper_;
};

using Paper = PaperDesk::Paper;

struct Customer {
    std::string number; // as the card has it
    int ad, soyad;      // places in the list of names
    bool hasCard, hasHomePhone, hasMobile;
    double cheques = 0;
};

struct Row {
    std::size_t customer;
    int sale;
    DateTime day;
    double amount;
};

struct Window {
    std::optional<DateTime> first, last;
};

// In the order of the Turkish alphabet.
const std::vector<std::string> kNames = {"Ali",   "Can",  "Çiğdem", "Ece", "Gün",
                                         "Ilgın", "İnci", "Şule",   "Ümit"};

class Books {
public:
    Books(Shop& shop, unsigned seed) : random_(seed), shop_(shop) {
        shop_.session.gBaglanti->beginTrans();
        for (int i = 0; i < 60; ++i)
            addCustomer(i);
        for (int sale = 1; sale <= 300; ++sale)
            addSale(sale);
        shop_.session.gBaglanti->commitTrans();
    }

    int pick(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }
    bool chance(int percent) { return pick(1, 100) <= percent; }
    DateTime day() { return DateTime::of(2026, 1, 1).plusDays(pick(0, 120)); }

    std::vector<Customer> customers;
    std::vector<Row> schedule, payments;

private:
    // The store takes two spellings for one account.
    std::string spelt(std::size_t customer) {
        const std::string& number = customers[customer].number;
        return "'" + (chance(5) ? upperTurkish(number) : number) + "'";
    }
    void addCustomer(int i) {
        Customer c{"ş" + std::to_string(i), pick(0, 8), pick(0, 8), chance(90), chance(70), chance(70)};
        customers.push_back(c);
        const std::string phones =
            std::string(c.hasHomePhone ? "'212'" : "NULL") + "," + (c.hasMobile ? "'532'" : "NULL");
        if (c.hasCard)
            shop_.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD,EVTEL,GSM) VALUES ('" + c.number + "','" +
                      kNames[static_cast<std::size_t>(c.ad)] + "','" +
                      kNames[static_cast<std::size_t>(c.soyad)] + "'," + phones + ")");
        if (!chance(25)) return;
        for (int cheque = pick(1, 3); cheque > 0; --cheque) {
            const int quarters = pick(1, 100'000'000);
            const bool booked = chance(80);
            shop_.run("INSERT INTO ALINANCEK (FIRMANO,TUTAR,CARI_HESAP_ISLE) VALUES (" +
                      spelt(customers.size() - 1) + "," + std::to_string(quarters / 4) + "." +
                      std::to_string(quarters % 4 * 25) + ",'" + (booked ? "1'" : "0'") + ")");
            if (booked) customers.back().cheques += quarters / 4.0;
        }
    }
    void addSale(int sale) {
        const auto customer = static_cast<std::size_t>(pick(0, static_cast<int>(customers.size()) - 1));
        const double instalment = chance(10) ? pick(3000, 7000) : pick(1, 200) * 1'250'000.0;
        const DateTime begin = day();
        const int count = pick(1, 6);
        for (int i = 0; i < count; ++i)
            add("URUNSAT", schedule, {customer, sale, addMonths(begin, i), instalment});
        for (int paid = pick(0, count + 1); paid > 0; --paid)
            add("TAKSITODENEN", payments,
                {customer, sale, day().plusSeconds(chance(50) ? 0 : pick(1, 86399)),
                 chance(70) ? instalment : pick(-5, 100) * 1'000'000.0});
    }
    void add(const char* table, std::vector<Row>& rows, const Row& row) {
        rows.push_back(row);
        shop_.run(std::string("INSERT INTO ") + table + " (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES (" +
                  spelt(row.customer) + "," + std::to_string(row.sale) + ",'" + toText(row.day) + "'," +
                  toText(row.amount) + ")");
    }

    std::mt19937 random_;
    Shop& shop_;
};

struct Claim {
    std::size_t customer = 0;
    int sale = 0;
    DateTime last;
    double due = 0, paid = 0, inPeriod = 0;
    bool hasPeriod = false;
    double left = 0;
};

template <class Test> double sumOf(const std::vector<Row>& rows, int sale, const Test& counts) {
    double sum = 0;
    for (const Row& row : rows)
        if (row.sale == sale && counts(row.day)) sum += row.amount;
    return sum;
}

// The sales that have a schedule row which counts, with the sums of what counts.
template <class Test> std::vector<Claim> claims(const Books& books, const Test& counts) {
    std::map<int, Claim> bySale;
    for (const Row& row : books.schedule) {
        if (!counts(row.day)) continue;
        Claim& claim = bySale[row.sale];
        claim.customer = row.customer;
        claim.sale = row.sale;
        claim.last = std::max(claim.last, row.day);
        claim.due += row.amount;
    }
    std::vector<Claim> all;
    for (auto& [sale, claim] : bySale) {
        claim.paid = sumOf(books.payments, sale, counts);
        all.push_back(claim);
    }
    return all;
}

std::string lineOf(const Books& books, const Claim& claim, const char* between) {
    const Customer& c = books.customers[claim.customer];
    const std::string ad = kNames[static_cast<std::size_t>(c.ad)];
    const std::string soyad = kNames[static_cast<std::size_t>(c.soyad)];
    const std::string phones = c.hasHomePhone && c.hasMobile ? std::string("212") + between + "532" : "NULL";
    return c.number + "|" + ad + "|" + soyad + "|" + phones + "|" + toText(claim.last) + "|" +
           std::to_string(claim.sale) + "|" + toText(claim.left / 1'000'000);
}

// Half a kuruş is the least that is shown.
Paper paperOf(const Books& books, std::vector<Claim> all, const char* between, bool byName) {
    std::erase_if(all, [&](const Claim& c) { return c.left < 5000 || !books.customers[c.customer].hasCard; });
    const auto key = [&](const Claim& c) {
        const Customer& customer = books.customers[c.customer];
        const DateTime none;
        return std::tuple(byName ? none : c.last, customer.ad, customer.soyad, byName ? c.last : none,
                          c.sale);
    };
    std::ranges::sort(all, {}, key);
    Paper paper;
    for (const Claim& claim : all)
        paper.push_back(lineOf(books, claim, between));
    return paper;
}

std::optional<Paper> overdueByPlainRules(const Books& books, const Window& w, bool byName) {
    const auto counts = [&](DateTime day) {
        if (w.first && w.last) return day >= *w.first && day < *w.last;
        return day <= (w.last ? *w.last : *w.first);
    };
    std::vector<Claim> all = claims(books, counts);
    if (all.empty()) return std::nullopt;
    for (Claim& claim : all)
        claim.left = claim.due - claim.paid - books.customers[claim.customer].cheques;
    return paperOf(books, all, "@", byName);
}

std::optional<Paper> expectedByPlainRules(const Books& books, const Window& w) {
    const DateTime first = w.first.value_or(*w.last);
    std::vector<Claim> all = claims(books, [&](DateTime day) { return day <= *w.last; });
    if (all.empty()) return std::nullopt;
    std::erase_if(all, [&](const Claim& c) { return c.last < first; });
    for (Claim& claim : all)
        claim.left = std::min(claim.due - claim.paid, sumOf(books.schedule, claim.sale, [&](DateTime day) {
                                  return day >= first && day <= *w.last;
                              }));
    // By name, and then by the sale.
    Paper paper;
    std::ranges::sort(all, {}, [&](const Claim& c) {
        const Customer& customer = books.customers[c.customer];
        return std::tuple(customer.ad, customer.soyad, c.sale);
    });
    for (const Claim& c : all)
        if (c.left >= 5000 && books.customers[c.customer].hasCard) paper.push_back(lineOf(books, c, "--"));
    return paper;
}

class Receivables : public ::testing::TestWithParam<unsigned> {
protected:
    Receivables() : books(shop, GetParam()) {
        shop.session.reportDesk = &desk;
        shop.forms.add("rprodemesigecen", [this](Forms& f) { return makeRprOdemesiGecen(f, shop.session); });
        shop.forms.add("rprbeklenentahsilat",
                       [this](Forms& f) { return makeRprBeklenenTahsilat(f, shop.session); });
    }
    ReportScreen& open(const char* name) {
        showScreen(shop.session, name, Kip::Modeless);
        return dynamic_cast<ReportScreen&>(*shop.forms.loaded(name));
    }
    Window randomWindow() {
        Window w{books.day(), books.day()};
        if (*w.last < *w.first && books.chance(80)) std::swap(w.first, w.last);
        if (books.chance(25)) w.first.reset();
        return w;
    }
    std::optional<Paper> run(ReportScreen& f, const Window& w) {
        f.dtRaporTarihi.setValue(w.first ? Value(*w.first) : Value());
        f.dtRaporTarihiSon.setValue(w.last ? Value(*w.last) : Value());
        EXPECT_TRUE(user::click(f.cmdRapor));
        EXPECT_EQ(shop.rows("SELECT COUNT(*) FROM GUNUGECENODM"), Paper{"0"});
        return desk.take();
    }
    void expectSaidForEmpty(const std::optional<Paper>& paper) {
        EXPECT_EQ(shop.said(),
                  paper && paper->empty() ? Paper{"Kriterlere Uygun Kayıt Bulunamadı"} : Paper{});
    }

    Shop shop;
    Books books;
    PaperDesk desk;
};

} // namespace

TEST_P(Receivables, TheOverdueReportKeepsItsRulesRowByRow) {
    ReportScreen& f = open("rprodemesigecen");
    for (int i = 0; i < 40; ++i) {
        Window w = randomWindow();
        if (!w.first && books.chance(30)) std::swap(w.first, w.last);
        const bool byName = books.chance(50);
        f.cboSiralamaKriteri->setText(byName ? "Ad Soyad" : books.chance(50) ? "Tarih" : "Adrese Göre");
        SCOPED_TRACE((w.first ? toText(*w.first) : "-") + " " + (w.last ? toText(*w.last) : "-"));
        const auto expected = overdueByPlainRules(books, w, byName);
        ASSERT_EQ(run(f, w), expected);
        expectSaidForEmpty(expected);
    }
}

TEST_P(Receivables, TheExpectedReportKeepsItsRulesRowByRow) {
    ReportScreen& f = open("rprbeklenentahsilat");
    for (int i = 0; i < 40; ++i) {
        const Window w = randomWindow();
        SCOPED_TRACE((w.first ? toText(*w.first) : "-") + " " + toText(*w.last));
        const auto expected = expectedByPlainRules(books, w);
        ASSERT_EQ(run(f, w), expected);
        expectSaidForEmpty(expected);
    }
}

// The windows are let in twice in a run; the operator may close the screen there, or press the button again.
TEST(ReceivablesRun, AClosedScreenReleasesTheAccount) {
    for (const int closedAt : {1, 2, 0}) {
        Shop shop;
        shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('1','Ali','Can')");
        shop.run("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('1',1,'01/11/2026',5000000)");
        PaperDesk desk;
        shop.session.reportDesk = &desk;
        shop.forms.add("rprodemesigecen", [&](Forms& f) { return makeRprOdemesiGecen(f, shop.session); });
        showScreen(shop.session, "rprodemesigecen", Kip::Modeless);
        auto& f = dynamic_cast<ReportScreen&>(*shop.forms.loaded("rprodemesigecen"));
        const std::function<void()> act = [&] {
            shop.pump.next = act;
            static_cast<void>(user::click(shop.pump.calls == closedAt ? f.cmdCikis : f.cmdRapor));
        };
        shop.pump.next = act;
        ASSERT_TRUE(user::click(f.cmdRapor));
        EXPECT_EQ(shop.pump.calls, closedAt == 1 ? 1 : 2);
        EXPECT_EQ(desk.take().has_value(), closedAt == 0);
        EXPECT_EQ(shop.rows("SELECT COUNT(*) FROM GUNUGECENODM"), Paper{"0"});
        EXPECT_EQ(shop.forms.loaded("rprodemesigecen") != nullptr, closedAt == 0);
        if (closedAt == 0) shop.forms.unload(f);
    }
}

// Whatever the store refuses is told in its own words, and the screen stays.
TEST(IncomeRun, AnErrorOfAQueryIsTold) {
    Shop shop;
    shop.forms.add("rptGelirGider", [&](Forms& f) { return makeRptGelirGider(f, shop.session); });
    showScreen(shop.session, "rptGelirGider", Kip::Modeless);
    shop.session.gBaglanti->close();
    cmdTamam_Click(dynamic_cast<RptGelirGider&>(*shop.forms.loaded("rptGelirGider")));
    const Paper said = shop.said();
    ASSERT_EQ(said.size(), 1u);
    EXPECT_FALSE(said[0].empty());
    EXPECT_NE(shop.forms.loaded("rptGelirGider"), nullptr);
}

// Read all at once, they are what a look-up each finds; also where the store takes two cards for one account.
TEST(AccountNames, AreThoseOfTheLookUps) {
    Shop shop;
    const auto found = [&](std::size_t lookUps) {
        std::string all;
        AccountNames names(shop.session, lookUps);
        for (const char* account : {"k1", "K1", "k2", "k3", "yok", ""})
            all += names.of(account).AD + '|' + names.of(account).SOYAD + '\n';
        return all;
    };
    const auto add = [&](const char* card) {
        shop.run(std::string("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES (") + card + ")");
    };
    for (const char* card : {"'k2',NULL,'Öz'", "'k1','Ali','Can'", "NULL,'Hiç','Kimse'", "'k3','Ece',NULL"})
        add(card);
    EXPECT_EQ(found(1), "Ali|Can\nAli|Can\n|Öz\nEce|\n|\n|\n");
    EXPECT_EQ(found(100'000), found(1));
    add("'K1','Eski','Kart'");
    add("'K3','Yeni','Kart'");
    EXPECT_EQ(found(100'000), found(1));
}

INSTANTIATE_TEST_SUITE_P(Shops, Receivables, ::testing::Values(1u, 2u, 3u));

} // namespace veldona::test
