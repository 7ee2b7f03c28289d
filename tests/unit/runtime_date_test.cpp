// Dates: the two orders, masks, months; and text in the Turkish alphabet.
#include <gtest/gtest.h>

#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "tests/support/raised.h"

namespace veldona {
namespace {

using test::shown;

TEST(Dates, TextIsReadDayFirstALiteralMonthFirst) {
    struct {
        const char* text;
        const char* date;
        const char* literal;
    } const cases[] = {
        {"11,05,2026", "11/05/2026", "05/11/2026"},
        {"11/05/2026", "11/05/2026", "05/11/2026"},
        {"13/05/2026", "13/05/2026", "13/05/2026"},
        {"05/13/2026", "13/05/2026", "13/05/2026"},
        {"1.2.06", "01/02/2006", "02/01/2006"},
        {"1-2.29", "01/02/2029", "02/01/2029"},
        {"1/2/30", "01/02/1930", "02/01/1930"},
        {"2026-05-11", "11/05/2026", "11/05/2026"},
        {"2026-05-11 09:08:07", "11/05/2026 09:08:07", "11/05/2026 09:08:07"},
        {"11/05/2026 23:59:59", "11/05/2026 23:59:59", "05/11/2026 23:59:59"},
        {"11/05/2026 9:05", "11/05/2026 09:05:00", "05/11/2026 09:05:00"},
        {" 11,05,2026  00:00:01 ", "11/05/2026 00:00:01", "05/11/2026 00:00:01"},
        {"29/02/2028", "29/02/2028", "29/02/2028"},
        {"01/01/0100", "01/01/0100", "01/01/0100"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(shown([&] { return readDate(each.text); }), each.date) << each.text;
        EXPECT_EQ(shown([&] { return readDateLiteral(each.text); }), each.literal) << each.text;
        EXPECT_TRUE(isDate(each.text)) << each.text;
    }
}

TEST(Dates, WhatIsNoDateIsATypeMismatch) {
    for (const char* each : {"",
                             " ",
                             "11/05",
                             "31/02/2026",
                             "29/02/2027",
                             "13/13/2026",
                             "0/5/2026",
                             "2026/13/05",
                             "11/05/202",
                             "11/05/20266",
                             "11/2026/05",
                             "2026/5/2026",
                             "11 05 2026",
                             "11/05/2026x",
                             "11/05/2026 24:00",
                             "11//2026",
                             "-1/5/2026",
                             "11/05/2026 9",
                             "11/05/2026 9:60",
                             "11/05/2026 9:05:",
                             "abc",
                             "10:30",
                             "11/05/2026 9:5:5:5",
                             "01/01/0099",
                             "99999999999/1/1"}) {
        EXPECT_EQ(shown([&] { return readDate(each); }), "hata 13") << '"' << each << '"';
        EXPECT_EQ(shown([&] { return readDateLiteral(each); }), "hata 13") << '"' << each << '"';
        EXPECT_FALSE(isDate(each)) << '"' << each << '"';
    }
    EXPECT_FALSE(isDate(Null{}));
    EXPECT_EQ(shown([] { return toDate(Null{}); }), "hata 94");
}

TEST(Dates, Masks) {
    const Value date = DateTime::of(2026, 5, 9, 14, 7, 3);
    const std::pair<const char*, const char*> cases[] = {
        {"dd/mm/yyyy", "09/05/2026"},
        {"DD/MM/YYYY", "09/05/2026"},
        {"mm,dd,yyyy", "05,09,2026"},
        {"hh:mm:ss", "14:07:03"},
        {"HH:MM:SS", "14:07:03"},
        {"d.m.yy h:n", "9.5.26 14:7"},
        {"dd/mm/yyyy hh:mm", "09/05/2026 14:07"},
        {"hh:mm dd/mm", "14:07 09/05"},
        {"mm", "05"},
    };
    for (const auto& [mask, expected] : cases)
        EXPECT_EQ(format(date, mask), expected) << mask;
    EXPECT_EQ(format("9.5.2026", "mm,dd,yyyy"), "05,09,2026");
    EXPECT_EQ(format("", "dd/mm/yyyy"), "");
    EXPECT_EQ(format("bugün", "dd/mm/yyyy"), "bugün");
    EXPECT_EQ(format(Null{}, "dd/mm/yyyy"), "");
}

TEST(Dates, DayZeroAndDaysAsNumbers) {
    EXPECT_EQ(toText(DateTime()), "30/12/1899");
    EXPECT_EQ(toText(toDate(2.5)), "01/01/1900 12:00:00");
    EXPECT_EQ(toDouble(DateTime::of(1899, 12, 31, 6)), 1.25);
    EXPECT_EQ(toText(DateTime::ofSeconds(-1)), "29/12/1899 23:59:59");
    EXPECT_EQ(toText(DateTime::of(1899, 12, 29, 23).date()), "29/12/1899");
    EXPECT_EQ(shown([] { return toDate(1e12); }), "hata 6");
    EXPECT_EQ(shown([] { return DateTime::of(2026, 2, 29); }), "hata 5");
}

TEST(Dates, Months) {
    const auto later = [](int year, int month, int day, int months) {
        return shown([=] { return addMonths(DateTime::of(year, month, day, 10), months); });
    };
    EXPECT_EQ(later(2026, 1, 31, 1), "28/02/2026 10:00:00");
    EXPECT_EQ(later(2028, 1, 31, 1), "29/02/2028 10:00:00");
    EXPECT_EQ(later(2026, 12, 31, 2), "28/02/2027 10:00:00");
    EXPECT_EQ(later(2026, 3, 31, -1), "28/02/2026 10:00:00");
    EXPECT_EQ(later(2026, 1, 15, -1), "15/12/2025 10:00:00");
    EXPECT_EQ(later(2026, 1, 15, 0), "15/01/2026 10:00:00");
    EXPECT_EQ(later(9999, 12, 1, 1), "hata 5");
    EXPECT_EQ(later(2026, 1, 1, 2'000'000'000), "hata 5");
    EXPECT_EQ(shown([] { return DateTime::of(9999, 12, 31).plusDays(1); }), "hata 5");
    EXPECT_EQ(monthsBetween(DateTime::of(2026, 1, 31), DateTime::of(2026, 2, 1)), 1);
    EXPECT_EQ(monthsBetween(DateTime::of(2026, 1, 1), DateTime::of(2025, 11, 30)), -2);
}

TEST(Text, TurkishCase) {
    const std::pair<const char*, const char*> pairs[] = {
        {"iı", "İI"},       {"istanbul ılgaz", "İSTANBUL ILGAZ"},
        {"çğöşü", "ÇĞÖŞÜ"}, {"ince 12,-", "İNCE 12,-"},
        {"", ""},           {"kırık", "KIRIK"},
    };
    for (const auto& [lower, upper] : pairs) {
        EXPECT_EQ(upperTurkish(lower), upper);
        EXPECT_EQ(lowerTurkish(upper), lower);
    }
}

TEST(Text, PartsAreCountedInCharacters) {
    EXPECT_EQ(length("şöyle"), 5U);
    EXPECT_EQ(left("şöyle", 2), "şö");
    EXPECT_EQ(left("şöyle", 0), "");
    EXPECT_EQ(left("şöyle", 99), "şöyle");
    EXPECT_EQ(mid("11/05/2026", 4, 2), "05");
    EXPECT_EQ(mid("şöyle", 2, 1), "ö");
    EXPECT_EQ(mid("şöyle", 4), "le");
    EXPECT_EQ(mid("şöyle", 6), "");
    EXPECT_EQ(shown([] { return mid("a", 0); }), "hata 5");
    EXPECT_EQ(trim("  a b\t "), "a b\t");
    EXPECT_EQ(trim("   "), "");
    EXPECT_EQ(replaceAll("1.234.567", ".", ""), "1234567");
    EXPECT_EQ(replaceAll("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(replaceAll("abc", "", "x"), "abc");
}

TEST(Text, BrokenSequencesAreMended) {
    const std::pair<const char*, const char*> cases[] = {
        {"şı€😀", "şı€😀"},
        {"a\xC5", "a\uFFFD"},
        {"\x80z", "\uFFFDz"},
        {"\xC0\xAF", "\uFFFD\uFFFD"},           // overlong
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"}, // surrogate
        {"\xF0\x9F\x98x", "\uFFFDx"},
        {"\xF5\xFF", "\uFFFD\uFFFD"},
        {"\xE2\x82\xC5\x9F", "\uFFFDş"},
    };
    for (const auto& [broken, mended] : cases)
        EXPECT_EQ(validUtf8(broken), mended);
}

TEST(Text, OnlyWhatCanBeSeenIsTyped) {
    EXPECT_EQ(visibleText("Ayşe Işık 7"), "Ayşe Işık 7");
    EXPECT_EQ(visibleText("7\x01\u200B\uFEFF8"), "78");
    EXPECT_EQ(visibleText("a\tb\r\nc"), "a b  c");
    EXPECT_EQ(visibleText(std::string("a\0b", 3)), "ab");
    EXPECT_EQ(visibleText("\xC5"), "\uFFFD");
}

} // namespace
} // namespace veldona
