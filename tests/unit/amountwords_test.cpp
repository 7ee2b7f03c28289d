#include "core/amountwords.h"

#include <gtest/gtest.h>

#include "tests/support/raised.h"

namespace veldona {
namespace {

TEST(AmountWords, SayWholeAmountsAndKurus) {
    const std::pair<Value, const char*> cases[] = {
        {0, "00 YTL  00 YKR"},
        {1, "Bir YTL  00 YKR"},
        {0.50, "00 YTL  Elli YKR"},
        {10, "On YTL  00 YKR"},
        {100, "Yüz YTL  00 YKR"},
        {200, "İkiyüz YTL  00 YKR"},
        {1000, "Bin  YTL  00 YKR"},
        {1001, "Bin bir YTL  00 YKR"},
        {2000, "İkibin  YTL  00 YKR"},
        {11000, "Onbirbin  YTL  00 YKR"},
        {101000, "Yüzbirbin  YTL  00 YKR"},
        {1234.05, "Bin ikiyüzotuzdört YTL  Beş YKR"},
        {1000000, "Birmilyon  YTL  00 YKR"},
        {1001000, "Birmilyon bin  YTL  00 YKR"},
        {1200300, "Birmilyon ikiyüzbin üçyüz YTL  00 YKR"},
        {1000000000000.0, "Birtrilyon  YTL  00 YKR"},
        {Currency::ofTenThousandths(9'223'372'036'854'775'807),
         "Dokuzyüzyirmiikitrilyon üçyüzotuzyedimilyar ikiyüzüçmilyon altıyüzseksenbeşbin dörtyüzyetmişyedi "
         "YTL  Ellisekiz YKR"},
        // every digit in every place of a group
        {123, "Yüzyirmiüç YTL  00 YKR"},
        {234, "İkiyüzotuzdört YTL  00 YKR"},
        {345, "Üçyüzkırkbeş YTL  00 YKR"},
        {456, "Dörtyüzellialtı YTL  00 YKR"},
        {567, "Beşyüzaltmışyedi YTL  00 YKR"},
        {678, "Altıyüzyetmişsekiz YTL  00 YKR"},
        {789, "Yediyüzseksendokuz YTL  00 YKR"},
        {890, "Sekizyüzdoksan YTL  00 YKR"},
        {911, "Dokuzyüzonbir YTL  00 YKR"},
        // the sign before, the places as the format rounds them
        {-15.10, "Eksi Onbeş YTL  On YKR"},
        {"-15,10", "Eksi Onbeş YTL  On YKR"},
        {"15,10-", "Eksi Onbeş YTL  On YKR"},
        {-0.001, "Eksi 00 YTL  00 YKR"},
        {0.005, "00 YTL  Bir YKR"},
        {0.994, "00 YTL  Doksandokuz YKR"},
        {0.995, "Bir YTL  00 YKR"},
        {"1.234,05", "Bin ikiyüzotuzdört YTL  Beş YKR"},
        {" 900,00 ", "Dokuzyüz YTL  00 YKR"},
    };
    for (const auto& [amount, words] : cases)
        EXPECT_EQ(YaziyaCevir(amount), words);
}

TEST(AmountWords, WhatIsNoNumberSaysSo) {
    for (const Value& value : {Value("abc"), Value(""), Value(Null{})})
        EXPECT_EQ(YaziyaCevir(value), "GİRİLEN DEĞER SAYI DEĞİL!");
}

TEST(AmountWords, DigitsArePaddedAndAtMostFifteen) {
    std::string digits = "42";
    EXPECT_EQ(SayiYaz(digits), "Kırkiki");
    EXPECT_EQ(digits, "000000000000042");

    std::string full = "999999999999999";
    EXPECT_EQ(SayiYaz(full).substr(0, 10), "Dokuzyüzd");
    const auto refusal = [](std::string text) {
        return test::numberRaised([&] { static_cast<void>(SayiYaz(text)); });
    };
    EXPECT_EQ(refusal("1000000000000000"), 5);
    EXPECT_EQ(refusal("12a"), 13);
    EXPECT_THROW(static_cast<void>(YaziyaCevir(1e15)), RuntimeError);
}

} // namespace
} // namespace veldona
