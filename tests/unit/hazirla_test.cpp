#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "apps/hazirla/firstbooks.h"
#include "apps/hazirla/options.h"
#include "apps/hazirla/shop.h"
#include "apps/tool/optionreader.h"
#include "backup/rekey.h"
#include "core/bookpasswords.h"
#include "core/delivered.h"
#include "journal/chain.h"
#include "platform/runtime/password.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "schema/tables.h"
#include "tests/support/answer.h"
#include "tests/support/sampleshop.h"

namespace veldona::hazirla {
namespace {

namespace fs = std::filesystem;

class Folder : public test::TemporaryFolder {
public:
    [[nodiscard]] std::string target() const { return *this / "alt/vorel.mdb"; }
    [[nodiscard]] std::ptrdiff_t besideTheBooks() const {
        return std::distance(fs::directory_iterator(path() / "alt"), fs::directory_iterator()) - 1;
    }
};

ShopPlan plan(int customers, int sales, std::uint64_t seed, int years = 5) {
    return {customers, sales, years, seed, DateTime::of(2026, 11, 22)};
}

std::string answerOf(const std::string& file, const std::string& sql) {
    return test::answerOf(*test::openBooks(file), sql);
}

// Every cell of every table but the journal, which tells the run, in the order of the rows' IDs.
std::string contentOf(const std::string& file) {
    const auto books = test::openBooks(file);
    std::string all;
    for (const store::TableDef& table : schema::tables())
        if (table.name != "GUNLUK")
            all += test::answerOf(*books, "SELECT * FROM " + table.name + " ORDER BY ID") + '\n';
    return all;
}

Kurus linesOf(const Sale& sale) {
    Kurus sum = 0;
    for (const Line& line : sale.lines)
        sum += line.quantity * line.price;
    return sum;
}

TEST(SampleShop, EachSaleIsConsistentInItself) {
    for (const auto& [customers, sales, years] :
         {std::tuple{1, 1, 1}, {1, 40, 1}, {2, 300, 10}, {51, 2000, 3}, {700, 900, 20}, {5, 0, 1}}) {
        for (std::uint64_t seed = 0; seed < 20; ++seed) {
            const ShopPlan asked = plan(customers, sales, seed, years);
            const Shop shop = makeShop(asked);
            ASSERT_EQ(shop.sales.size(), static_cast<std::size_t>(sales));
            std::map<std::int32_t, Kurus> paid, mirrored;
            for (const Payment& payment : shop.payments) {
                const Sale& sale = shop.sales[static_cast<std::size_t>(payment.sale)];
                ASSERT_GE(payment.at, sale.at);
                ASSERT_LT(payment.at, asked.today);
                ASSERT_GT(payment.amount, 0);
                paid[payment.sale] += payment.amount;
                if (payment.cashBox == -1 && payment.at == sale.at) mirrored[payment.sale] += payment.amount;
            }
            for (const Sale& sale : shop.sales) {
                SCOPED_TRACE("seed " + std::to_string(seed) + ", sale " + std::to_string(sale.number));
                Kurus scheduled = 0, down = 0;
                for (const Due& due : sale.schedule) {
                    ASSERT_GT(due.amount, 0);
                    scheduled += due.amount;
                    if (due.downPayment) down += due.amount;
                }
                ASSERT_LT(sale.at, asked.today);
                ASSERT_EQ(scheduled, sale.total);
                ASSERT_EQ(sale.total, linesOf(sale) - sale.discount);
                ASSERT_EQ(mirrored[sale.number - 1], down);
                ASSERT_LE(paid[sale.number - 1], sale.total);
                ASSERT_NE(customerOf(shop, sale).group, static_cast<int>(shop.groups.size()))
                    << "a guarantor buys";
                ASSERT_LT(sale.schedule.size(), 255U); // a plan that the screens count in a byte
            }
        }
    }
}

TEST(SampleShop, TheSameSeedGivesTheSameBooks) {
    const Folder first, second, other;
    test::deliverShop(first.target(), plan(60, 200, 7));
    test::deliverShop(second.target(), plan(60, 200, 7));
    test::deliverShop(other.target(), plan(60, 200, 8));
    const std::string content = contentOf(first.target());
    EXPECT_TRUE(content == contentOf(second.target()));
    EXPECT_TRUE(content != contentOf(other.target()));
}

TEST(Teslim, EmptyBooksHoldTheFirstRowsAlone) {
    const Folder folder;
    deliver(folder.target(), Existing::Keep, [](const std::string&) {});
    EXPECT_EQ(folder.besideTheBooks(), 0) << "something was left beside the database";
    for (const store::TableDef& table : schema::tables()) {
        const bool first =
            table.name == "FIRMABILGISI" || table.name == "URUNTANITIM" || table.name == "T_KASA_TANITIM";
        const char* entries = table.name == "GUNLUK" ? "3" : "0"; // one of each of them
        EXPECT_EQ(answerOf(folder.target(), "SELECT count(*) FROM " + table.name), first ? "1" : entries)
            << table.name;
    }
}

TEST(Teslim, ExistingBooksAreNotOverwrittenUnasked) {
    const Folder folder;
    test::deliverShop(folder.target(), plan(5, 5, 1));
    const std::string before = test::bytesOf(folder.target());
    EXPECT_THROW(test::deliverShop(folder.target(), plan(5, 5, 2)), Refusal);
    EXPECT_EQ(test::bytesOf(folder.target()), before);

    const auto failing = [](const std::string&) {
        throw store::StoreError(store::StoreError::Kind::DiskFull, "dolu");
    };
    EXPECT_THROW(deliver(folder.target(), Existing::Replace, failing), store::StoreError);
    EXPECT_EQ(test::bytesOf(folder.target()), before);

    {
        const auto open = test::openBooks(folder.target());
        EXPECT_THROW(test::deliverShop(folder.target(), plan(5, 5, 2), Existing::Replace), Refusal);
    }
    EXPECT_EQ(test::bytesOf(folder.target()), before);

    test::writeBytes(folder.target() + "-wal", "what a killed program left");
    fs::create_directories(fs::path(folder.target()).parent_path() / ".hazirla-killed/half");
    test::deliverShop(folder.target(), plan(5, 6, 2), Existing::Replace);
    EXPECT_EQ(answerOf(folder.target(), "SELECT count(*) FROM ISLEMNOTABLO"), "6");
    EXPECT_EQ(folder.besideTheBooks(), 0) << "a killed run's leavings were not cleared";
    const journal::Seen former{1, std::string(32, '0'), "2026-11-22 10:00:00"};
    EXPECT_FALSE(journal::examine(*test::openBooks(folder.target()), {former}).broken);

    // Those in their place have the password of those that go.
    const Secret own = passwordOf("dükkânın parolası");
    backup::rekey(folder.target(), own, DateTime::of(2026, 11, 22));
    test::deliverShop(folder.target(), plan(5, 6, 2), Existing::Replace);
    EXPECT_TRUE(opensBy(folder.target(), own));
    EXPECT_TRUE(isNotedAsOwn(folder.target()));
    passwords::forget();
}

TEST(FirstStart, BooksAreMadeOnlyWhereAskedFor) {
    const Folder folder;
    const Paths paths(fs::path(folder.target()).parent_path());
    const std::string books = paths.toNative(kDatabasePath);
    RecordingDialogs dialogs;

    EXPECT_FALSE(areThereBooks(paths));
    EXPECT_FALSE(fs::exists(paths.root()));
    EXPECT_TRUE(makeFirstBooks(paths, dialogs));
    EXPECT_TRUE(areThereBooks(paths));
    EXPECT_EQ(answerOf(books, "SELECT DEGER FROM FIRMABILGISI"), "0") << "the letterhead is not asked for";

    EXPECT_TRUE(dialogs.said.empty());
    const std::string before = test::bytesOf(books);
    EXPECT_FALSE(makeFirstBooks(paths, dialogs));
    EXPECT_EQ(test::bytesOf(books), before);

    // The log of books that went missing: whose they are is not known, so nothing is put beside it.
    fs::rename(books, books + "-wal");
    EXPECT_FALSE(makeFirstBooks(paths, dialogs));
    EXPECT_FALSE(fs::exists(books));
    EXPECT_NE(dialogs.said.back().text.find(books + "-wal"), std::string::npos);
}

TEST(ToolOptions, AnUnreadableRowIsRefused) {
    const DateTime today = DateTime::of(2026, 11, 22);
    const auto read = [&](std::vector<const char*> arguments) { return readOptions(arguments, today); };
    const Options all = read({"--ornek", "--musteri", "20000", "--satis", "100000", "--yil", "10", "--tohum",
                              "42", "--bugun", "29/02/2024", "--kok", "x", "--uzerine-yaz"});
    EXPECT_TRUE(all.sample && all.overwrite && all.root == "x");
    EXPECT_EQ(all.plan.customers, 20000);
    EXPECT_EQ(all.plan.sales, 100000);
    EXPECT_EQ(all.plan.years, 10);
    EXPECT_EQ(all.plan.seed, 42U);
    EXPECT_EQ(all.plan.today, DateTime::of(2024, 2, 29));
    EXPECT_EQ(read({}).plan.today, today);
    for (const std::vector<const char*>& arguments : {std::vector{"--bilinmez"},
                                                      {"--kok"},
                                                      {"--kok", ""},
                                                      {"--ornek", "--musteri", "0"},
                                                      {"--ornek", "--yil"},
                                                      {"--musteri", "5"},
                                                      {"--ornek", "--satis", "5x"},
                                                      {"--ornek", "--satis", "-1"},
                                                      {"--ornek", "--bugun", "29/02/2025"},
                                                      {"--ornek", "--bugun", "2026-11-22"},
                                                      {"--ornek", "--tohum", "-1"}})
        EXPECT_THROW(static_cast<void>(read(arguments)), UsageError) << arguments.back();
}

} // namespace
} // namespace veldona::hazirla
