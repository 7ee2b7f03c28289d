// An amount as the words that a receipt and a contract carry: "Bin ikiyüzotuzdört YTL  Beş YKR".
//
// The words of a group of three digits stand without a blank between them, a group's name ends in one, and
// each of the two amounts starts with a capital of its own. Nothing is written in digits, "00".
#pragma once

#include <string>

#include "platform/runtime/value.h"

namespace veldona {

// The value rounded to two places, in words. What is no number gives a sentence that says so, in place of the
// words; more than 15 digits before the decimal sign: error 5.
[[nodiscard]] std::string YaziyaCevir(const Value& value);

// At most 15 decimal digits in words; `digits` is left padded with "0" to 15. Error 5 where it is longer, 13
// where it holds anything but digits.
[[nodiscard]] std::string SayiYaz(std::string& digits);

} // namespace veldona
