// How a value of one kind becomes one of another, by the Turkish habits of the platform: "." groups, "," is
// the decimal sign, dates are day, month, year. Fixed, whatever the machine's locale says.
//
// All of them raise 94 for Null, 13 for what does not read, 6 for what does not fit.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/runtime/value.h"

namespace veldona {

// Text: blanks around are ignored, "." is dropped wherever it stands ("1.5" is 15), "," is the decimal sign,
// a leading or trailing "-" negates, more than four decimals round half to even. The exponent that toText
// writes is read too, "1e5" is not. As a number, True is -1.
[[nodiscard]] Currency toCurrency(const Value& value);
// The same reading, at once rounded to `decimals` (0 … 4), halves away from zero: what format shows, as an
// amount.
[[nodiscard]] Currency toShownCurrency(const std::string& text, int decimals);
// The same reading of a text, as a double.
[[nodiscard]] double toDouble(const Value& value);
// Half to even. 32, 16 and 8 bits (0…255).
[[nodiscard]] std::int32_t toLong(const Value& value);
[[nodiscard]] std::int16_t toInteger(const Value& value);
[[nodiscard]] std::uint8_t toByte(const Value& value);
[[nodiscard]] bool toBoolean(const Value& value);
// Text: see readDate. A number is a count of days since day zero.
[[nodiscard]] DateTime toDate(const Value& value);
// Money and doubles without grouping, "," before decimals, no trailing zeros, doubles with 15 significant
// digits; an exponent only from 1E+15 on, and below 0,0001 where more than 15 decimals would be needed. A
// date as "dd/MM/yyyy", with " hh:mm:ss" behind it where its time is not midnight; a boolean as "True" or
// "False". Error 6 for a double that is no finite number.
[[nodiscard]] std::string toText(const Value& value);
// As toText, but Null is "": the `&` join.
[[nodiscard]] std::string joinText(const Value& value);

// True where toDouble would succeed; false for "" and Null.
[[nodiscard]] bool isNumeric(const Value& value);

// Leading digits with "." as the decimal sign, blanks skipped, stopping at the first other character:
// "1.234,56" is 1.234. A leading sign is read. 0 where there are no digits. Never fails.
[[nodiscard]] double val(std::string_view text);
[[nodiscard]] inline double val(const std::string& text) {
    return val(std::string_view(text));
}
[[nodiscard]] inline double val(const char* text) {
    return val(std::string_view(text));
}
// val of the joined text: a number goes through its shown text first, so 2,5 is 2. Null is 0.
[[nodiscard]] double val(const Value& value);

// Half to even, on the decimal value (15 significant digits): round(2.5) is 2, round(0.125, 2) is 0.12.
[[nodiscard]] double roundHalfEven(double value, int decimals = 0);

// Error 11 where the divisor is 0, error 6 where the quotient has no room in a double.
[[nodiscard]] double divide(double dividend, double divisor);

// Text to date. Order day, month, year; where that is no calendar day, month, day, year; four leading digits
// mean year, month, day. "/", ".", "-" and "," part the numbers; a time "hh:mm" or "hh:mm:ss" may follow a
// blank; a two-digit year below 30 is 20xx, else 19xx. Error 13 where it is no date.
[[nodiscard]] DateTime readDate(std::string_view text);
// The same for the inside of a store literal #…#: order month, day, year first, blanks around ignored.
[[nodiscard]] DateTime readDateLiteral(std::string_view text);
[[nodiscard]] bool isDate(const Value& value);

} // namespace veldona
