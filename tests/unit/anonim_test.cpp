#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "apps/anonim/nameless.h"
#include "apps/anonim/options.h"
#include "apps/denetle/check.h"
#include "apps/tool/optionreader.h"
#include "backup/proof.h"
#include "backup/refusal.h"
#include "schema/tables.h"
#include "tests/support/answer.h"
#include "tests/support/sampleshop.h"

namespace veldona::anonim {
namespace {

namespace fs = std::filesystem;
using store::ColumnType;

class NamelessCopy : public ::testing::Test {
protected:
    [[nodiscard]] std::string books() const { return shop.books(); }
    [[nodiscard]] std::string copy() const { return shop / "adsiz.mdb"; }
    static std::vector<std::string> cells(store::Engine& engine, const std::string& column,
                                          const std::string& table) {
        std::vector<std::string> read;
        const auto rows = engine.prepare("SELECT " + column + " FROM " + table + " ORDER BY ID");
        while (rows->step())
            read.emplace_back(rows->text(0));
        return read;
    }

    test::SampleShop shop{60, 120};
};

using Names = std::set<std::string>;
const Names kAccounts = {"HSTNO", "MUSTNO", "FIRMANO"};
const Names kKept = {"URKOD",     "KASA_NO", "GRUP_KOD",        "ODEME_TIPI",
                     "ISLEM_TUR", "DEGER",   "CARI_HESAP_ISLE", "YAS"};

TEST_F(NamelessCopy, AccountsChangeAlikeEverywhereAmountsStay) {
    test::openBooks(books())->execute("UPDATE MUSTKAYIT SET EVAPT = 'No: 12/4' WHERE ID < 9");
    EXPECT_GT(copyWithoutNames(books(), copy(), Disguise(1)).replaced, 500);
    const auto original = test::openBooks(books());
    const auto nameless = test::openBooks(copy());
    std::map<std::string, Names> accounts, accountsBefore;
    Names flat, shifts;
    EXPECT_EQ(cells(*nameless, "ID", "GUNLUK").size(), 0U) << "the journal tells the names of before";
    for (const store::TableDef& table : schema::tables()) {
        if (table.name == "GUNLUK") continue;
        for (const store::ColumnDef& column : table.columns) {
            SCOPED_TRACE(table.name + '.' + column.name);
            const auto before = cells(*original, column.name, table.name);
            const auto after = cells(*nameless, column.name, table.name);
            ASSERT_EQ(after.size(), before.size());
            const bool isText = column.type == ColumnType::Text || column.type == ColumnType::Memo;
            const bool isKept = !isText && column.type != ColumnType::Date;
            if (isKept || kKept.contains(column.name)) {
                EXPECT_EQ(after, before);
                continue;
            }
            const std::string second = "strftime('%s', " + column.name + ")";
            const std::vector<std::string> seconds[] = {cells(*original, second, table.name),
                                                        cells(*nameless, second, table.name)};
            for (std::size_t i = 0; i < before.size(); ++i) {
                EXPECT_EQ(after[i].empty(), before[i].empty());
                if (before[i].empty() || column.name == "DOGTRH") continue;
                if (column.type == ColumnType::Date) {
                    shifts.insert(seconds[1][i].empty() ? "none"
                                                        : std::to_string((std::stoll(seconds[0][i]) -
                                                                          std::stoll(seconds[1][i])) %
                                                                         (7 * 86400)));
                } else if (kAccounts.contains(column.name)) {
                    accounts[before[i]].insert(after[i]);
                    accountsBefore[after[i]].insert(before[i]);
                } else if (column.name == "EVAPT") {
                    flat.insert(std::to_string(after[i].size()));
                } else if (before[i].size() > 5) { // short ones may come out as they were by chance
                    EXPECT_NE(after[i], before[i]);
                }
            }
        }
    }
    std::size_t same = 0;
    for (const auto& [number, made] : accounts) {
        EXPECT_EQ(made.size(), 1U) << number;
        EXPECT_EQ(made.begin()->size(), number.size());
        if (*made.begin() == number) ++same;
    }
    EXPECT_EQ(accountsBefore.size(), accounts.size()) << "two accounts became one";
    EXPECT_LT(same, accounts.size() / 2);
    EXPECT_EQ(flat, Names{"8"}) << "the shape of an address";
    EXPECT_EQ(shifts, Names{"0"}) << "whole weeks";
    EXPECT_EQ(test::answerOf(*nameless, "SELECT DOGTRH FROM MUSTKAYIT WHERE DOGTRH IS NOT NULL AND DOGTRH "
                                        "NOT LIKE '%-01-01 00:00:00'"),
              "");
}

// What a fault hangs on is still there: numbers that differ by a capital, rows of others, lost cards.
TEST_F(NamelessCopy, TheCheckFindsTheSameInTheCopy) {
    {
        const auto program = test::openBooks(books());
        for (const char* sql :
             {"DELETE FROM MUSTKAYIT WHERE ID = 5", "DELETE FROM ISLEMNOTABLO WHERE ID = 7",
              "UPDATE TAKSITODENEN SET MUSTNO = 'ab-1' WHERE ID = 3",
              "UPDATE URUNAL SET ADET = 3 WHERE ID = 9", "UPDATE MUSTKAYIT SET HSTNO = 'Çt7' WHERE ID = 11",
              "UPDATE URUNSAT SET MUSTNO = 'ÇT7' WHERE ID = 4",
              "INSERT INTO MUSTKAYIT (HSTNO,AD) VALUES ('G3','Kasa'),('ÇT7','Şükrü'),('12345678901','Işık')",
              "INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODMIKTAR) VALUES ('12345678901',900,1)",
              ("UPDATE MUSTKAYIT SET UYARI = 'TC 12345678901, 0532 111 22 33', GSM = '0532-1112233' "
               "WHERE ID = 2")})
            program->execute(sql);
    }
    copyWithoutNames(books(), copy(), Disguise(2));
    const auto original = test::openBooks(books());
    const auto nameless = test::openBooks(copy());
    const auto found = [](store::Engine& engine) {
        std::vector<std::string> lines;
        for (const denetle::Finding& each : denetle::checkBooks(engine).all)
            lines.push_back(std::to_string(static_cast<int>(each.fault)) + ' ' + each.subject + ' ' +
                            std::to_string(each.expected) + ' ' + std::to_string(each.found));
        std::sort(lines.begin(), lines.end());
        return lines;
    };
    EXPECT_GT(found(*original).size(), 6U);
    EXPECT_EQ(found(*nameless), found(*original));
    const auto ask = [&](const std::string& sql) { return test::answerOf(*nameless, sql); };
    EXPECT_NE(ask("SELECT 1 FROM MUSTKAYIT WHERE HSTNO = 'G3'"), "") << "the house's own";
    const std::string number = ask("SELECT HSTNO FROM MUSTKAYIT ORDER BY ID DESC LIMIT 1");
    const std::string warning = ask("SELECT UYARI FROM MUSTKAYIT WHERE ID = 2");
    const std::string phone = ask("SELECT GSM FROM MUSTKAYIT WHERE ID = 2");
    EXPECT_NE(number, "12345678901");
    EXPECT_EQ(warning.substr(3, 11), number) << "in a text, too";
    const auto digits = [](std::string text) {
        std::erase_if(text, [](char letter) { return letter < '0' || letter > '9'; });
        return text;
    };
    EXPECT_EQ(digits(warning.substr(14)), digits(phone)) << "one telephone, written in two fashions";
    EXPECT_NE(digits(phone), "05321112233");
}

// The engine's own pages, decrypted: a free page or the rest of a cell would still hold the name.
TEST_F(NamelessCopy, FreedPagesDoNotPassIntoTheCopy) {
    {
        const auto program = test::openBooks(books());
        program->execute("INSERT INTO GRUPLAR (GRUP_ADI) SELECT AD || SOYAD || hex(zeroblob(1500)) "
                         "FROM MUSTKAYIT");
        program->execute("DELETE FROM GRUPLAR WHERE length(GRUP_ADI) > 1500");
    }
    copyWithoutNames(books(), copy(), Disguise(1));
    const auto freePages = [](const std::string& file) {
        return test::answerOf(*test::openBooks(file), "PRAGMA freelist_count");
    };
    EXPECT_NE(freePages(books()), "0");
    EXPECT_EQ(freePages(copy()), "0");
}

TEST_F(NamelessCopy, TheBooksAndAnExistingFileStay) {
    const backup::Fingerprint before = backup::inspect(books());
    copyWithoutNames(books(), copy(), Disguise());
    EXPECT_EQ(shop.filesInside(), 2) << "a file with names was left";
    EXPECT_THROW(copyWithoutNames(books(), copy(), Disguise()), backup::Refusal);
    const fs::path startedIn = fs::current_path();
    fs::current_path(fs::path(copy()).parent_path());
    fs::remove(copy());
    EXPECT_NO_THROW(copyWithoutNames(books(), "adsiz.mdb", Disguise())) << "a name without a folder";
    fs::current_path(startedIn);
    EXPECT_TRUE(fs::exists(copy()));
    EXPECT_THROW(copyWithoutNames(books(), books(), Disguise()), backup::Refusal);
    EXPECT_EQ(backup::inspect(books()), before);
    fs::remove(copy());
    fs::resize_file(books(), fs::file_size(books()) / 2);
    EXPECT_ANY_THROW(copyWithoutNames(books(), copy(), Disguise()));
    EXPECT_EQ(shop.filesInside(), 1) << "a half copy was left";
}

TEST(NamelessText, TheShapeStaysTheLettersChange) {
    Disguise disguise(3);
    EXPECT_EQ(disguise(""), "");
    EXPECT_EQ(disguise(" .,'-/"), " .,'-/");
    const std::string made = disguise("Şükrü Işık 0532-11");
    EXPECT_EQ(made.size(), std::string("Şükrü Işık 0532-11").size());
    EXPECT_EQ(made.substr(made.size() - 3, 1), "-");
    EXPECT_NE(disguise("Mehmet Yılmaz"), disguise("Mehmet Yılmaz")) << "a frequent name could be counted";
    EXPECT_EQ(disguise("名前").find("名"), std::string::npos);
    EXPECT_EQ(disguise("\xff\xc5").size(), 4U) << "broken bytes become letters";
}

TEST(NamelessOptions, AnUnreadableRowIsRefused) {
    const auto read = [](std::vector<const char*> arguments) { return readOptions(arguments); };
    EXPECT_EQ(read({"--kok", "x", "kopya.mdb"}).target, "kopya.mdb");
    const std::vector<std::vector<const char*>> refused = {{}, {"--kok"}, {"--bilinmez"}, {"a", "b"}, {""}};
    for (const auto& arguments : refused)
        EXPECT_THROW(static_cast<void>(read(arguments)), UsageError);
}

} // namespace
} // namespace veldona::anonim
