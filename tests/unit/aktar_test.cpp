#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "apps/aktar/apart.h"
#include "apps/aktar/jettext.h"
#include "apps/aktar/options.h"
#include "apps/hazirla/firstbooks.h"
#include "apps/tool/optionreader.h"
#include "jetshop.h"

namespace veldona::aktar {
namespace {

using hazirla::Refusal;
using namespace std::string_literals;

// The sums come from an export of the file, added up elsewhere.
TEST_F(MovingIn, TheReportCountsRowsAndBalances) {
    const Examination seen = look();
    EXPECT_TRUE(seen.problems.empty());
    std::ostringstream out;
    print(out, seen.report, Detail::Customers);
    EXPECT_NE(out.str().find("MUSTKAYIT: 12 satır\n"), std::string::npos) << out.str();
    EXPECT_NE(out.str().find("Toplam: satış 59.574,02, indirim 250,00, ödeme 36.049,86, bakiye 23.274,16\n"),
              std::string::npos)
        << out.str();
    const auto remarked = [&](const char* text) {
        return std::find(seen.remarks.begin(), seen.remarks.end(), text) != seen.remarks.end();
    };
    EXPECT_TRUE(remarked("Bilinmeyen alan aktarılmaz: MUSTKAYIT.ESKI_ALAN"));
    EXPECT_TRUE(remarked("Bilinmeyen tablo aktarılmaz: ESKI_TABLO (1 satır)"));
    EXPECT_TRUE(remarked("Dosyada olmayan tablo: TAKSITALINAN"));
}

TEST_F(MovingIn, FillsEmptyBooksLeavesFullOnes) {
    hazirla::deliver(target(), hazirla::Existing::Keep, [](const std::string&) {});
    move();
    EXPECT_EQ(answer("SELECT HSTNO, typeof(DOGTRH), EVMH, BARKOD_KODU IS NULL FROM MUSTKAYIT WHERE ID = 3"),
              "TI|text|Bahçelievler|1");
    EXPECT_EQ(answer("SELECT ID, KASA_ADI FROM T_KASA_TANITIM ORDER BY ID"), "1|Merkez\n2|Şube");
    EXPECT_EQ(answer("SELECT TARIH, ALACAK_TUTAR FROM T_KASA_HAREKETLERI WHERE ID = 1"),
              "2024-05-06 11:00:00|250000000.0");
    EXPECT_EQ(answer("SELECT DEGER, FIRMA FROM FIRMABILGISI"), "1|Örnek Ticaret Ltd. Şti.");
    const std::string before = answer("SELECT count(*), sum(ODMIKTAR) FROM TAKSITODENEN");
    EXPECT_THROW(move(), Refusal);
    EXPECT_EQ(answer("SELECT count(*), sum(ODMIKTAR) FROM TAKSITODENEN"), before);
}

// A long text lies in its row, on a page of its own, or in a chain of pieces that each name the next.
TEST_F(MovingIn, ALongTextIsReadWhereverItLies) {
    const std::size_t text = bytes.find("D\0i\0k\0k\0a\0t\0:\0"s);
    ASSERT_NE(text, std::string::npos);
    const std::string letters = bytes.substr(text, 30), head = bytes.substr(text - 12, 12);
    ASSERT_EQ(head, "\x1e\0\0\x80"s + std::string(8, '\0'));
    const std::string whole = bytes;
    const auto page = static_cast<char>(whole.size() / kPage);
    const auto place = [&](const std::string& newHead, const std::vector<std::string>& rows) {
        std::string added(kPage, '\0');
        added.replace(0, 2, "\x01\x01").replace(4, 4, "LVAL");
        added[12] = static_cast<char>(rows.size());
        std::size_t end = kPage;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            end -= rows[i].size();
            added.replace(end, rows[i].size(), rows[i]);
            added[14 + 2 * i] = static_cast<char>(end & 0xFF);
            added[15 + 2 * i] = static_cast<char>(end >> 8);
        }
        bytes = whole + added;
        bytes.replace(text - 12, 12, newHead + std::string(12 - newHead.size(), '\0'));
        bytes.replace(text, 30, 30, 'x');
    };
    const std::string second = "\x01"s + page + "\0\0"s;
    const Report inRow = look().report;
    place("\x1e\0\0\x40\0"s + page, {letters});
    EXPECT_TRUE(look().report == inRow);
    place("\x1e\0\0\0\0"s + page, {second + letters.substr(0, 10), "\0\0\0\0"s + letters.substr(10)});
    EXPECT_TRUE(look().report == inRow);
    place("\x1e\0\0\0\0"s + page, {second + letters.substr(0, 10), second + letters.substr(10)});
    EXPECT_THROW(look(), Damaged); // a chain that never ends
    place("\xff\xff\xff\x3f\0"s + page, {second + letters.substr(0, 10), second + letters.substr(10)});
    EXPECT_EQ(runApart({1024, 5},
                       [&] {
                           EXPECT_THROW(look(), Damaged);
                           return HasFailure() ? 1 : 0;
                       })
                  .code,
              0)
        << "a gigabyte of it";
    place("\x40\0\0\x40\0"s + page, {letters});
    EXPECT_THROW(look(), Damaged); // shorter than it says
    place("\x1e\0\0\x40\0"s + page, {letters});
    bytes.replace(whole.size() + 4, 4, 4, '\0');
    EXPECT_THROW(look(), Damaged); // on a page that holds no long texts
}

TEST_F(MovingIn, BooksMadeAtTheFirstStartAreEmpty) {
    hazirla::deliver(target(), hazirla::Existing::Keep, [](const std::string& file) {
        hazirla::runStatements(file, {hazirla::kAskForLetterhead});
    });
    move();
    EXPECT_EQ(answer("SELECT DEGER, FIRMA FROM FIRMABILGISI"), "1|Örnek Ticaret Ltd. Şti.");
}

// A row that grew leaves a pointer in its place; deleted rows stay on their page until they are overwritten.
TEST_F(MovingIn, AMovedRowIsReadADeletedOneIsNot) {
    const Report before = look().report;
    const std::size_t row = bytes.find("\x08\0\x02\0\0\0"s); // the second of the schedule
    const std::size_t page = row / kPage * kPage;
    const auto number = [&](std::size_t at) {
        return static_cast<unsigned char>(bytes[at]) | static_cast<unsigned char>(bytes[at + 1]) << 8;
    };
    ASSERT_EQ(page + static_cast<std::size_t>(number(page + 16)), row);
    const std::string letters =
        bytes.substr(row, static_cast<std::size_t>(number(page + 14) - number(page + 16)));
    const std::string whole = bytes;
    std::string added(kPage, '\0');
    added.replace(0, 8, whole.substr(page, 8)).replace(12, 2, "\x01\0"s);
    const std::size_t place = kPage - letters.size();
    added.replace(place, letters.size(), letters);
    const auto mark = [](std::string& at, std::size_t where, std::size_t offset, unsigned marks) {
        at[where] = static_cast<char>(offset & 0xFF);
        at[where + 1] = static_cast<char>((offset | marks) >> 8);
    };
    mark(added, 14, place, 0x8000);
    bytes.append(added);
    mark(bytes, page + 16, row - page, 0x4000);
    bytes.replace(row, 4, "\0"s + static_cast<char>(whole.size() / kPage) + "\0\0"s);
    EXPECT_TRUE(look().report == before);
    mark(bytes, whole.size() + 14, place, 0);
    EXPECT_THROW(look(), Damaged) << "a pointer to a row of its own";
    bytes.replace(row, 1, "\x01");
    EXPECT_THROW(look(), Damaged) << "a pointer to no row";
    bytes = whole;
    mark(bytes, page + 16, row - page, 0xC000);
    EXPECT_THROW(look(), Damaged) << "a row less than the table's count";
    const std::size_t count = tableCount("URUNSAT");
    --bytes[count];
    const Report less = look().report;
    EXPECT_EQ(less.tables.at(3).rows + 1, before.tables.at(3).rows);
}

TEST_F(MovingIn, AnEmptyTextStaysEmptyNullStaysNull) {
    move();
    EXPECT_EQ(
        answer(
            "SELECT DISTINCT typeof(KREDI_KARTI), length(KREDI_KARTI), typeof(ACIKLAMA) FROM ISLEMNOTABLO"),
        "text|0|null");
}

// A name that is damaged must not make a table or a sum vanish with no more than a remark.
TEST_F(MovingIn, ATableOrColumnWithABrokenNameIsNoticed) {
    const auto wide = [](const std::string& text) {
        std::string made;
        for (const char letter : text)
            made += letter + "\0"s;
        return made;
    };
    const std::string whole = bytes;
    replaceBytes(wide("INDIRIM_YTL"), wide("INDIRIN_YTL"));
    EXPECT_THROW(look(), Damaged);
    bytes = whole;
    replaceBytes(wide("BANKA_ID"), wide("BAN\x0b"
                                        "A_ID"));
    EXPECT_THROW(look(), Damaged);
    bytes = whole;
    replaceBytes(wide("FAX2"), wide("FAX1"));
    EXPECT_THROW(look(), Damaged) << "two fields of one name";
    bytes = whole;
    replaceBytes("TAKSITODENEN", "TAKSITODENEM");
    EXPECT_THROW(look(), Damaged);
}

TEST_F(MovingIn, DoubtfulValuesAreTold) {
    EXPECT_TRUE(look().doubts.empty());
    const std::string whole = bytes;
    replaceBytes("T\0I\0\xff\xfeO'Neil"s, "T\0'\0\xff\xfeO\x9bNeil"s);
    const Examination strange = look();
    EXPECT_EQ(strange.doubts.back(),
              "Şüpheli: MUSTKAYIT.HSTNO, 1 değer: ekranların açamadığı hesap numarası: "
              "\"T'\" (ilki 3. satırda)");
    std::ostringstream out;
    print(out, strange.report, Detail::Customers);
    EXPECT_EQ(out.str().find("\xc2\x9b"), std::string::npos) << "a sign that a terminal obeys";
    bytes = whole;
    replaceBytes("Bah\xe7"s, "B\xd0h\xe7"s); // a letter that Turkish Windows has not
    const Examination seen = look();
    ASSERT_EQ(seen.doubts.size(), 2U);
    EXPECT_EQ(seen.doubts.back().find("Şüpheli: MUSTKAYIT.EVMH, 12 değer:"), 0U) << seen.doubts.back();
    EXPECT_TRUE(seen.problems.empty());
}

TEST_F(MovingIn, OneRowWrittenByHandAlreadyMakesBooksFull) {
    hazirla::deliver(target(), hazirla::Existing::Keep, [](const std::string& file) {
        hazirla::runStatements(file, {"UPDATE FIRMABILGISI SET FIRMA='Bizim Dükkân'"});
    });
    EXPECT_THROW(move(), Refusal);
    EXPECT_EQ(answer("SELECT FIRMA FROM FIRMABILGISI"), "Bizim Dükkân");
}

// The password stands behind a mask of exclusive ors, so that it can be put into the file as it is.
TEST_F(MovingIn, ThePasswordIsAskedFor) {
    const std::string password = "g\0i\0z\0l\0i\0"s;
    for (std::size_t i = 0; i < password.size(); ++i)
        bytes[0x42 + i] = static_cast<char>(bytes[0x42 + i] ^ password[i]);
    EXPECT_THROW(look(), Refusal);
    EXPECT_THROW(look("Gizli"), Refusal);
    EXPECT_THROW(look("gizli2"), Refusal);
    EXPECT_TRUE(look("gizli").problems.empty());
}

TEST_F(MovingIn, ACutFileIsNoticed) {
    const std::string whole = bytes;
    for (std::size_t size = 0; size < whole.size(); size += kPage) {
        for (const std::size_t extra : {std::size_t{0}, std::size_t{100}}) {
            bytes = whole.substr(0, size + extra);
            EXPECT_THROW(look(), Refusal) << size + extra;
        }
    }
}

TEST_F(MovingIn, ABrokenPageOrValueIsNoticed) {
    const std::string whole = bytes;
    const std::string secondOfEight = "\x08\0\x02\0\0\0"s; // row 2 of a table of eight columns
    for (const std::size_t row : {whole.find(secondOfEight), whole.rfind(secondOfEight)}) {
        const std::size_t page = row / kPage * kPage;
        bytes = whole;
        bytes.replace(page, kPage, kPage, '\0');
        EXPECT_THROW(look(), Refusal) << page;
        bytes = whole;
        bytes.replace(page + 4, 1, "\x7f"); // now of another table
        EXPECT_THROW(look(), Refusal) << page;
    }
    bytes = whole;
    replaceBytes("Bah\xe7"s, "B\x01h\xe7"s);
    EXPECT_THROW(look(), Damaged);
    EXPECT_FALSE(fs::exists(target()));
}

TEST_F(MovingIn, ACounterGivenTwiceDoesNotFit) {
    replaceBytes("\x08\0\x02\0\0\0"s, "\x08\0\x01\0\0\0"s);
    const Examination seen = look();
    ASSERT_FALSE(seen.problems.empty());
    EXPECT_NE(seen.problems.front().find("TAKSITODENEN.ID, 1 değer"), std::string::npos)
        << seen.problems.front();
}

TEST(JetText, OnlyLettersAreRead) {
    struct Case {
        std::string bytes;
        std::optional<std::string> text;
    };
    const Case cases[] = {
        {"", ""},
        {"A\0\x1f\x01"s, "Ağ"},                    // ğ is U+011F
        {"\xff\xfe"s + "A\xe7k", "Açk"},           // one byte a letter
        {"\xff\xfe"s + "A\0\x5f\x01\0k"s, "Aşk"},  // and two in between
        {"\x3d\xd8\x00\xde"s, "\xf0\x9f\x98\x80"}, // a pair
        {"A\0\x1f"s, std::nullopt},                // half a letter
        {"\x3d\xd8"s + "A\0"s, std::nullopt},      // half a pair
        {"\x00\xde"s, std::nullopt},               // the other half
        {"\0\0"s, std::nullopt},                   // a control sign
        {"\xff\xff"s, std::nullopt},               // no letter at all
        {"\xff\xfe"s + "A\0\x5f"s, std::nullopt},
    };
    for (const Case& each : cases)
        EXPECT_EQ(decodeJetText(each.bytes), each.text) << testing::PrintToString(each.bytes);
}

TEST(JetText, ALetterThatTheTurkishCodePageLacksIsFound) {
    EXPECT_EQ(foreignLetter("Şükrü IĞDIR ı İ € “â” \t"), std::nullopt);
    EXPECT_EQ(foreignLetter("3е"), "е"); // Cyrillic
    EXPECT_EQ(foreignLetter("að"), "ð");
    EXPECT_EQ(foreignLetter("x\xf0\x9f\x98\x80"), "\xf0\x9f\x98\x80");
}

TEST(Sigma, WhatLosesNothingFits) {
    using enum store::ColumnType;
    EXPECT_EQ(fitted(Value(), {"PESINAT", Small, 0}), Value(0));
    EXPECT_EQ(fitted(-1, {"PESINAT", Small, 0}), Value(-1));
    struct Case {
        Value value;
        store::ColumnType type;
        std::optional<Value> fits;
    };
    const Case cases[] = {
        {Value(), Small, Value()},
        {32767, Small, Value(32767)},
        {32768, Small, std::nullopt},
        {true, Small, Value(-1)},
        {3.0, Whole, Value(3)},
        {2.5, Whole, std::nullopt},
        {3e9, Whole, std::nullopt},
        {7, Number, Value(7.0)},
        {42, Text, Value("42")},
        {"12", Whole, Value(12)},
        {"yok", Number, std::nullopt},
        {"", Date, Value()},
        {"", Text, Value("")},
        {DateTime::of(2026, 11, 22, 9, 30), Date, Value("2026-11-22 09:30:00")},
    };
    for (const Case& each : cases)
        EXPECT_EQ(fitted(each.value, each.type), each.fits) << &each - cases;
}

TEST(MovingInOptions, FileAndOptions) {
    const char* given[] = {"eski.mdb", "--dene", "--parola", "-", "--kok", "k"};
    const Options options = readOptions(given);
    EXPECT_EQ(options.source, "eski.mdb");
    EXPECT_EQ(options.root, "k");
    EXPECT_TRUE(options.trial && options.passwordFromInput);
    for (const std::vector<const char*>& bad :
         {std::vector<const char*>{}, {"a.mdb", "b.mdb"}, {"a.mdb", "--parola"}, {"a.mdb", "--baska"}})
        EXPECT_THROW(static_cast<void>(readOptions(bad)), UsageError);
}

} // namespace
} // namespace veldona::aktar
