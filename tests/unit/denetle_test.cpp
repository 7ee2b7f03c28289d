#include "apps/denetle/check.h"

#include <gtest/gtest.h>

#include <set>

#include "apps/denetle/options.h"
#include "apps/denetle/report.h"
#include "apps/tool/optionreader.h"
#include "core/delivered.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "tests/support/sampleshop.h"

namespace veldona::denetle {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

class SampleBooks : public test::SampleShop {
public:
    // A copy on which one statement was run, in the form that books have which hold a sale's number twice.
    [[nodiscard]] std::string spoiled(const std::string& sql) const {
        const std::string copy = *this / "bozuk.mdb";
        fs::copy_file(books(), copy, fs::copy_options::overwrite_existing);
        const auto program = test::openBooks(copy);
        program->execute("DROP INDEX ISLEMNOTABLO_ISLEMNO");
        program->execute(sql);
        EXPECT_GT(program->rowsChanged(), 0) << sql;
        return copy;
    }
};

Findings check(const std::string& file) {
    return checkBooks(*store::openSqlcipherToRead(file, kDeliveredPassword, 1s));
}

struct Spoiled {
    const char* what;
    const char* sql;
    std::multiset<Fault> faults;
};

constexpr const char* kOneLineSaleEmptied =
    "DELETE FROM URUNAL WHERE ISLEMNO = (SELECT ISLEMNO FROM URUNAL GROUP BY ISLEMNO HAVING count(*) = 1)";

// Each case spoils a sound shop in one way, and only that is found.
const Spoiled kSpoiled[] = {
    {"a sale without lines", kOneLineSaleEmptied, {Fault::HeaderWithoutLines, Fault::StockDiffersSold}},
    {"all of a sale but its header",
     "DELETE FROM ISLEMNOTABLO WHERE ISLEMNO = (SELECT ISLEMNO FROM TAKSITODENEN WHERE ID = 1)",
     {Fault::LinesWithoutHeader, Fault::ScheduleWithoutHeader, Fault::PaymentsWithoutSale}},
    {"an installment changed by a kuruş",
     "UPDATE URUNSAT SET ODMIKTAR = ODMIKTAR + 10000 WHERE ID = 20",
     {Fault::ScheduleDiffers}},
    {"a share's fraction", "UPDATE URUNSAT SET ODMIKTAR = ODMIKTAR + 4900 WHERE ID = 20", {}},
    {"a total written unscaled",
     "UPDATE ISLEMNOTABLO SET TOPBORC = TOPBORC / 1000000 WHERE ISLEMNO = 1",
     {Fault::LinesDiffer}},
    {"a discount that the total does not know",
     "UPDATE ISLEMNOTABLO SET INDIRIM_YTL = INDIRIM_YTL + 1000000 WHERE ISLEMNO = 3",
     {Fault::LinesDiffer, Fault::ScheduleDiffers}},
    {"a header written twice",
     "INSERT INTO ISLEMNOTABLO (MUSTNO, ISLEMNO, TOPBORC) SELECT MUSTNO, ISLEMNO, 5 FROM ISLEMNOTABLO WHERE "
     "ISLEMNO = 9",
     {Fault::TwoHeaders}},
    {"a payment for more than the debt",
     "UPDATE TAKSITODENEN SET ODMIKTAR = 9e12 WHERE ID = 5",
     {Fault::NegativeRemainder}},
    {"a customer deleted",
     "DELETE FROM MUSTKAYIT WHERE HSTNO = (SELECT MUSTNO FROM ISLEMNOTABLO WHERE ISLEMNO = 4)",
     {Fault::CustomerMissing}},
    {"two cards of one number", "INSERT INTO MUSTKAYIT (HSTNO) VALUES ('12')", {Fault::TwoCards}},
    {"a payment booked on another account",
     "UPDATE TAKSITODENEN SET MUSTNO = 'g3' WHERE ID = 8",
     {Fault::RowsOfAnotherAccount}},
    {"a stock figure",
     "UPDATE URUNTANITIM SET KALAN = KALAN + 1 WHERE URKOD = '1'",
     {Fault::StockDiffersLeft}},
};

TEST(BooksCheck, EachFaultIsFoundByItsNameAndNoOther) {
    const SampleBooks sound;
    EXPECT_TRUE(check(sound.books()).all.empty()) << asText(check(sound.books()));
    for (const Spoiled& spoiled : kSpoiled) {
        const Findings found = check(sound.spoiled(spoiled.sql));
        std::multiset<Fault> faults;
        for (const Finding& finding : found.all)
            faults.insert(finding.fault);
        EXPECT_EQ(faults, spoiled.faults) << spoiled.what << "\n" << asText(found);
    }
}

TEST(BooksCheck, DoesNotTouchTheBooks) {
    const SampleBooks books;
    const std::string before = test::bytesOf(books.books());
    fs::permissions(books.books(), fs::perms(0644));
    static_cast<void>(check(books.books()));
    EXPECT_EQ(test::bytesOf(books.books()), before);
    EXPECT_EQ(fs::status(books.books()).permissions(), fs::perms(0644));
    const auto reading = store::openSqlcipherToRead(books.books(), kDeliveredPassword, 1s);
    EXPECT_THROW(reading->execute("DELETE FROM MUSTKAYIT"), store::StoreError);
    EXPECT_THROW(static_cast<void>(store::openSqlcipherToRead(books.books(), "baska", 1s)),
                 store::StoreError);
}

TEST(BooksCheck, ReadsWhatWasSavedLastWhileTheProgramWrites) {
    const SampleBooks books;
    const auto program = test::openBooks(books.books());
    program->execute(kOneLineSaleEmptied);
    program->begin();
    program->execute("DELETE FROM URUNSAT");
    EXPECT_EQ(check(books.books()).all.size(), 2U) << asText(check(books.books()));
    program->commit();
    EXPECT_GT(check(books.books()).all.size(), 50U);
}

Findings twoAccounts() {
    Findings findings;
    findings.all = {{Fault::ScheduleDiffers, "2", "45", 1000, 900.5},
                    {Fault::CustomerMissing, "=1+1", "", 0, 3},
                    {Fault::StockDiffersSold, "", "1;\"x\"", 12, 10}};
    return findings;
}

TEST(BooksCheck, TellsAccountByAccount) {
    const std::string text = asText(twoAccounts());
    EXPECT_EQ(
        text.find("Hesap 2\n  Satış 45: taksitlerin toplamı 900,50, satışın tutarı 1.000,00, fark -99,50\n"),
        0U)
        << text;
    EXPECT_NE(text.find("\nStok\n"), std::string::npos) << text;
    EXPECT_NE(text.find("3 bulgu, 2 hesapta"), std::string::npos) << text;
}

TEST(BooksCheck, ACellWrittenToASheetIsNotComputed) {
    const std::string csv = asCsv(twoAccounts());
    EXPECT_NE(csv.find("\"2\";\"45\";;"), std::string::npos) << csv;
    EXPECT_NE(csv.find(";1000,00;900,50\r\n"), std::string::npos) << csv;
    EXPECT_NE(csv.find("\"'=1+1\""), std::string::npos) << csv;
    EXPECT_NE(csv.find("\"1;\"\"x\"\"\""), std::string::npos) << csv;
}

TEST(BooksCheck, AnUnreadableRowIsRefused) {
    const auto read = [](std::vector<const char*> arguments) { return readOptions(arguments); };
    EXPECT_TRUE(read({"--csv", "--dosya", "yedek.mdb"}).csv);
    const std::vector<std::vector<const char*>> refused = {
        {"--bilinmez"}, {"--kok"}, {"--dosya", ""}, {"--kok", "a", "--dosya", "b"}, {"yedek.mdb"}};
    for (const auto& arguments : refused)
        EXPECT_THROW(static_cast<void>(read(arguments)), UsageError) << arguments.back();
}

} // namespace
} // namespace veldona::denetle
