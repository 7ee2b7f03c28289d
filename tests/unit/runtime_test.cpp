// Numbers: text to money and back, masks, rounding, ranges.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/runtime/bytecounter.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "tests/support/raised.h"

namespace veldona {
namespace {

using test::shown;

Currency money(const char* text) {
    return toCurrency(text);
}

struct Case {
    const char* text;
    const char* expected;
};

TEST(Reading, MoneyText) {
    const Case cases[] = {
        {"12,50", "12,5"},
        {"1.234,50", "1234,5"},
        {"1.5", "15"}, // the point groups, wherever it stands
        {"1.2.3,4.5", "123,45"},
        {".5", "5"},
        {",5", "0,5"},
        {"5,", "5"},
        {"  7  ", "7"},
        {"-3,25", "-3,25"},
        {"3,25-", "-3,25"},
        {"-0", "0"},
        {"000012", "12"},
        {"0,00005", "0"}, // half to even, on the text's own digits
        {"0,00015", "0,0002"},
        {"0,00025", "0,0002"},
        {"0,000250000000000000000000000000000000000000000000000001", "0,0003"},
        {"-1,00005", "-1"},
        {"9,99995", "10"},
        {"922337203685477,5807", "922337203685477,5807"},
        {"-922.337.203.685.477,5807", "-922337203685477,5807"},
        {"922337203685477,58074", "922337203685477,5807"},
        {"922337203685477,58075", "hata 6"},
        {"922337203685477,5808", "hata 6"},
        {"-922337203685477,5808", "hata 6"},
        {"99999999999999999999999999", "hata 6"},
        {"1E+15", "hata 6"},
        {"1,5E+14", "150000000000000"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(shown([&] { return toCurrency(each.text); }), each.expected) << '"' << each.text << '"';
    EXPECT_EQ(shown([] { return toCurrency(Null{}); }), "hata 94");
}

TEST(Reading, WhatIsNoNumberIsRefusedByAllThree) {
    const char* cases[] = {"",    " ",     "-",   ",",      ".",   "--5", "-5-",     "5--",  "1,2,3",
                           "abc", "1e5",   "1E5", "5 6",    "- 5", "5 -", "5-5",     "+5",   "12 YTL",
                           "%5",  "1,5E+", "E+5", "1E+5 6", "\t5", "٣",   "1E+9999", "\xff", "True"};
    for (const char* each : cases) {
        EXPECT_FALSE(isNumeric(each)) << '"' << each << '"';
        EXPECT_EQ(shown([&] { return toCurrency(each); }), "hata 13") << '"' << each << '"';
        EXPECT_EQ(shown([&] { return toDouble(each); }), "hata 13") << '"' << each << '"';
    }
    EXPECT_FALSE(isNumeric(std::string("5\0", 2)));
    EXPECT_FALSE(isNumeric(Null{}));
    EXPECT_TRUE(isNumeric("-1.234,5"));
    EXPECT_TRUE(isNumeric(5));
}

TEST(Reading, FullTextFieldNeitherFailsNorReads) {
    const std::string nines(65'536, '9');
    EXPECT_EQ(shown([&] { return toCurrency(nines); }), "hata 6");
    EXPECT_EQ(shown([&] { return toDouble(nines); }), "hata 6");
    EXPECT_FALSE(isNumeric(nines));
    EXPECT_EQ(format(nines, "#,##0.00"), nines);
    EXPECT_EQ(val(nines), std::numeric_limits<double>::max());
    EXPECT_EQ(shown([&] { return toDouble("0," + nines); }), "1");
    EXPECT_EQ(shown([] { return toDouble("0," + std::string(65'000, '0') + "1"); }), "0");
    EXPECT_EQ(shown([] { return toCurrency(std::string(65'536, '.') + "5"); }), "5");
}

TEST(Writing, DoubleWithFifteenDigits) {
    const std::pair<double, const char*> cases[] = {
        {0, "0"},
        {-0.0, "0"},
        {1234.5, "1234,5"},
        {-200, "-200"},
        {1000.0 / 3, "333,333333333333"},
        {2000.0 / 3, "666,666666666667"},
        {0.1 + 0.2, "0,3"},
        {0.1, "0,1"},
        {1.0 / 30, "0,0333333333333333"},
        {0.00001, "0,00001"},
        {1.0 / 30000, "3,33333333333333E-05"},
        {1e-16, "1E-16"},
        {999999999999999, "999999999999999"},
        {999999999999999.9, "1E+15"},
        {12345678901234.56, "12345678901234,6"},
        {1e15, "1E+15"},
        {1e16, "1E+16"},
        {-1234567890123456, "-1,23456789012346E+15"},
        {1e100, "1E+100"},
    };
    for (const auto& [number, text] : cases)
        EXPECT_EQ(toText(number), text);
    EXPECT_EQ(shown([] { return std::nan(""); }), "hata 6");
    EXPECT_EQ(shown([] { return std::numeric_limits<double>::infinity(); }), "hata 6");
}

TEST(Writing, OtherKinds) {
    EXPECT_EQ(toText(money("0,0500")), "0,05");
    EXPECT_EQ(toText(money("-0,0001")), "-0,0001");
    EXPECT_EQ(toText(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(toText(true), "True");
    EXPECT_EQ(shown([] { return toText(Null{}); }), "hata 94");
    EXPECT_EQ(joinText(Null{}), "");
}

TEST(Format, Numbers) {
    struct {
        Value value;
        const char* mask;
        const char* expected;
    } const cases[] = {
        {12.5, "#,##0.00", "12,50"},
        {0, "#,##0.00", "0,00"},
        {-0.125, "0.00", "-0,13"},
        {-0.001, "#,##0.00", "0,00"},
        {999.995, "#,##0.00", "1.000,00"},
        {999999.994, "#,##0.00", "999.999,99"},
        {-1234567.891, "#,##0.00", "-1.234.567,89"},
        {1234.5 * 1000000, "#,##0.00", "1.234.500.000,00"},
        {money("922337203685477,5807"), "#,##0.00", "922.337.203.685.477,58"},
        {1e21, "#,##0.00", "1.000.000.000.000.000.000.000,00"},
        {0.285, "#,##0.000000", "0,285000"},
        {1234.5, "0.00", "1234,50"},
        {0.5, "0", "1"},
        {1.5, "0", "2"},
        {2.5, "0", "3"},
        {7, "000", "007"},
        {1234, "###,###,###", "1.234"},
        {0, "###,###,###", ""},
        {0.4, "###,###,###", ""},
        {-0.5, "###,###,###", "-1"},
        {123, "###,###,###", "123"},
        {1.5, "0.0#", "1,5"},
        {0.25, "#.##", ",25"},
        {1234.5, "#.##0,00", "1.234,50"}, // the mask as the layouts write it
        {3, "#,##0.00 YTL", "3,00 YTL"},
        {"1.234,505", "#,##0.00", "1.234,51"},
        {"12.50", "#,##0.00", "1.250,00"},
        {" 5 ", "#,##0.00", "5,00"},
        {"", "#,##0.00", ""},
        {"abc", "#,##0.00", "abc"},
        {"1,2,3", "###,###,###", "1,2,3"},
        {Null{}, "#,##0.00", ""},
        {12.5, "", "12,5"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(format(each.value, each.mask), each.expected) << joinText(each.value) << " / " << each.mask;
}

TEST(Val, StopsAtTheFirstOtherCharacter) {
    const std::pair<const char*, double> cases[] = {
        {"1.234,56", 1.234}, {"", 0},        {"abc", 0},  {"12abc", 12}, {"  1 2 3 x4", 123}, {"- 5", -5},
        {"+5", 5},           {"1.2.3", 1.2}, {".5", 0.5}, {"-", 0},      {"1-2", 1},          {"--1", 0},
        {"1e5", 1},          {"5\xff", 5},   {",5", 0},   {"0005", 5},   {"-.5.", -0.5},      {"5-", 5},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(val(text), expected) << '"' << text << '"';
    EXPECT_EQ(val(Value(2.5)), 2); // by way of "2,5"
    EXPECT_EQ(val(Value(Null{})), 0);
    EXPECT_FALSE(std::signbit(val("-0")));
}

TEST(Rounding, HalfToEvenOnTheDecimalValue) {
    const std::pair<std::pair<double, int>, double> cases[] = {
        {{2.5, 0}, 2},      {{3.5, 0}, 4},     {{-2.5, 0}, -2},       {{0.35 / 0.1, 0}, 4},
        {{0.135, 2}, 0.14}, {{1e20, 2}, 1e20}, {{0.05, 1}, 0},        {{0.95, 1}, 1.0},
        {{99.5, 0}, 100},   {{1e-300, 2}, 0},  {{0x1p60, 2}, 0x1p60}, {{12.3456, 10}, 12.3456},
    };
    for (const auto& [given, expected] : cases)
        EXPECT_EQ(roundHalfEven(given.first, given.second), expected) << given.first << ", " << given.second;
    EXPECT_EQ(shown([] { return roundHalfEven(1, -1); }), "hata 5");
}

// A share of a debt lies on a half or clear of it; the last bits of its double tell neither.
TEST(Rounding, AShareIsRoundedAsItsDigitsRead) {
    const auto rounded = [](std::int64_t dividend, std::int64_t divisor, bool toEven) {
        const std::int64_t quotient = dividend / divisor, twice = 2 * (dividend % divisor);
        const bool stays = twice < divisor || (twice == divisor && toEven && quotient % 2 == 0);
        return stays ? quotient : quotient + 1;
    };
    for (const std::int64_t from : {1, 90'000, 12'345'678})
        for (std::int64_t kurus = from; kurus < from + 5'000; ++kurus)
            for (int count = 1; count <= 36; ++count) {
                const double share = static_cast<double>(kurus) / 100 / count;
                const auto hundredths = [](std::int64_t n) { return Currency::ofTenThousandths(n * 100); };
                ASSERT_EQ(format(share, "0.00"), format(hundredths(rounded(kurus, count, false)), "0.00"))
                    << kurus << " / " << count;
                ASSERT_EQ(toText(roundHalfEven(share, 2)), toText(hundredths(rounded(kurus, count, true))))
                    << kurus << " / " << count;
                ASSERT_EQ(Currency::ofDouble(share).tenThousandths(), rounded(kurus * 100, count, true))
                    << kurus << " / " << count;
            }
    EXPECT_EQ(format(101.10 / 12, "#,##0.00"), "8,43");
    EXPECT_EQ(format(-1003.05 / 6, "#,##0.00"), "-167,18");
    EXPECT_EQ(format(1.65 / 6, "#,##0.00"), "0,28");
}

TEST(Rounding, WholeNumbersKeepToTheirRange) {
    EXPECT_EQ(toLong(2.5), 2);
    EXPECT_EQ(toLong("3,5"), 4);
    EXPECT_EQ(toLong(money("-2,5")), -2);
    EXPECT_EQ(toLong("2,50000000000000000000001"), 3);
    EXPECT_EQ(toByte(255.5 - 0.01), 255);
    EXPECT_EQ(toInteger("-32768"), -32768);
    EXPECT_EQ(toLong(-2147483648.5), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(shown([] { return toLong(2147483647.5); }), "hata 6");
    EXPECT_EQ(shown([] { return toInteger(32768); }), "hata 6");
    EXPECT_EQ(shown([] { return int{toByte("256")}; }), "hata 6");
    EXPECT_EQ(shown([] { return int{toByte(-1)}; }), "hata 6");
    EXPECT_EQ(shown([] { return int{toByte(255.5)}; }), "hata 6");
    EXPECT_EQ(shown([] { return toLong(1e300); }), "hata 6");
    EXPECT_EQ(shown([] { return toLong(""); }), "hata 13");
    EXPECT_EQ(shown([] { return toLong(Null{}); }), "hata 94");
}

TEST(Rounding, ByteCounterFailsBehindRow255) {
    const auto rows = [](int last) {
        int count = 0;
        const std::string end = shown([&] {
            countInByte(0, last, [&](int) { ++count; });
            return 0;
        });
        return std::to_string(count) + ": " + end;
    };
    EXPECT_EQ(rows(-1), "0: 0");
    EXPECT_EQ(rows(254), "255: 0");
    EXPECT_EQ(rows(255), "256: hata 6");
    EXPECT_EQ(rows(300), "256: hata 6");
}

TEST(Money, FixedPointArithmetic) {
    EXPECT_EQ(toText(money("0,10") + money("0,20") - money("0,30")), "0");
    EXPECT_EQ(toText(money("1,5") * money("-2,25")), "-3,375");
    EXPECT_EQ(toText(money("0,0001") * money("0,5")), "0"); // half to even
    EXPECT_EQ(toText(money("0,0003") * money("0,5")), "0,0002");
    EXPECT_EQ(toText(money("-0,0003") * money("0,5")), "-0,0002");
    EXPECT_EQ(toText(money("-0,0005") * money("0,5")), "-0,0002");
    EXPECT_EQ(toText(money("303700049,9976") * money("303700,0499")), "92233720338903,6149");
    EXPECT_EQ(money("922337203685477,5807").toDouble(), 922337203685477.5807);
}

TEST(Money, LeavingTheRangeOverflows) {
    const Currency top = money("922337203685477,5807"), least = money("0,0001");
    EXPECT_EQ(toText(-top), "-922337203685477,5807");
    EXPECT_EQ(shown([&] { return top + least; }), "hata 6");
    EXPECT_EQ(shown([&] { return -top - least; }), "hata 6");
    EXPECT_EQ(shown([&] { return top * money("1,0001"); }), "hata 6");
    EXPECT_EQ(shown([&] { return top * top; }), "hata 6");
    EXPECT_EQ(shown([&] { return -Currency::ofTenThousandths(INT64_MIN); }), "hata 6");
    EXPECT_EQ(shown([&] { return Currency::ofWhole(922'337'203'685'478); }), "hata 6");
    EXPECT_EQ(shown([&] { return Currency::ofDouble(-1e15); }), "hata 6");
    EXPECT_EQ(shown([&] { return Currency::ofDouble(std::nan("")); }), "hata 6");
    Currency kept = top;
    EXPECT_THROW(kept += least, RuntimeError);
    EXPECT_EQ(toText(kept), toText(top)); // a failed step leaves its target as it was
}

TEST(Errors, DivisionAndWords) {
    EXPECT_EQ(divide(1, 4), 0.25);
    EXPECT_EQ(shown([] { return divide(1, 0); }), "hata 11");
    EXPECT_EQ(shown([] { return divide(1e300, 1e-300); }), "hata 6");
    EXPECT_EQ(standardDescription(ErrorNumber::TypeMismatch), "Tür uyuşmazlığı");
    EXPECT_EQ(standardDescription(static_cast<ErrorNumber>(4711)), "Bilinmeyen hata 4711");
}

TEST(Errors, ResumeNextSkipsTheFailedStepAlone) {
    Err err;
    Currency sum = money("5");
    int last = 0;
    resumeNext(
        err, [&] { sum = money("abc"); }, [&] { last = 1; });
    EXPECT_EQ(toText(sum), "5");
    EXPECT_EQ(last, 1);
    EXPECT_EQ(err.number, 13);
    EXPECT_EQ(err.description, "Tür uyuşmazlığı");
    EXPECT_THROW(resumeNext(err, [] { throw std::logic_error("ours"); }), std::logic_error);
}

TEST(Booleans, ReadAndCount) {
    EXPECT_TRUE(toBoolean("TRUE"));
    EXPECT_FALSE(toBoolean("False"));
    EXPECT_TRUE(toBoolean("-1"));
    EXPECT_FALSE(toBoolean(0.0));
    EXPECT_EQ(toLong(true), -1);
    EXPECT_EQ(shown([] { return toBoolean("evet"); }), "hata 13");
}

} // namespace
} // namespace veldona
