#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <iterator>

#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/engine/sqlcipher/functions_engine.h"

namespace veldona::store::sql {
namespace {

constexpr std::size_t kPlainDigits = 15; // a double holds them all

// Numbers kept as text are mostly plain digits, and a next-number query reads each of them.
bool isPlain(std::string_view text) {
    return !text.empty() && text.size() <= kPlainDigits &&
           std::all_of(text.begin(), text.end(), [](char letter) { return letter >= '0' && letter <= '9'; });
}

double plain(std::string_view digits) {
    std::int64_t whole = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), whole);
    return static_cast<double>(whole);
}

void number(const Arguments& arguments, Answer& answer) {
    if (!arguments.isText(0)) return answer.number(arguments.number(0));
    const std::string_view text = arguments.text(0);
    if (isPlain(text)) return answer.number(plain(text));
    try {
        answer.number(toDouble(text));
    } catch (const RuntimeError& error) {
        if (error.number() == static_cast<std::int32_t>(ErrorNumber::Overflow)) throw;
        answer.fail("Veri türü uyuşmuyor: \"" + left(validUtf8(text), 60) + "\" sayı olarak okunamadı.");
    }
}

void leadingNumber(const Arguments& arguments, Answer& answer) {
    if (arguments.isText(0) && isPlain(arguments.text(0))) return answer.number(plain(arguments.text(0)));
    answer.number(val(arguments.value(0)));
}

void integer(const Arguments& arguments, Answer& answer) {
    answer.whole(toInteger(arguments.value(0)));
}

void longInteger(const Arguments& arguments, Answer& answer) {
    answer.whole(toLong(arguments.value(0)));
}

void rounded(const Arguments& arguments, Answer& answer) {
    const int decimals = arguments.count() == 2 ? arguments.whole(1) : 0;
    if (decimals < 0) raise(ErrorNumber::InvalidCall);
    answer.number(roundHalfEven(arguments.number(0), std::min(decimals, 15)));
}

void divided(const Arguments& arguments, Answer& answer) {
    if (arguments.number(1) == 0) raise(ErrorNumber::DivisionByZero);
    answer.number(arguments.number(0) / arguments.number(1));
}

// "+" where only the values tell: two texts join, a text beside a number is read as one.
void added(const Arguments& arguments, Answer& answer) {
    if (arguments.isText(0) && arguments.isText(1)) {
        return answer.text(std::string(arguments.text(0)) + std::string(arguments.text(1)));
    }
    answer.number(toDouble(arguments.value(0)) + toDouble(arguments.value(1)));
}

} // namespace

void registerNumberFunctions(sqlite3* connection) {
    constexpr Registered kFunctions[] = {
        {"vd_number", 1, run<number>},   {"vd_val", 1, run<leadingNumber, false>},
        {"vd_integer", 1, run<integer>}, {"vd_long", 1, run<longInteger>},
        {"vd_round", 1, run<rounded>},   {"vd_round", 2, run<rounded>},
        {"vd_divide", 2, run<divided>},  {"vd_add", 2, run<added>},
    };
    registerAll(connection, kFunctions, std::size(kFunctions));
}

} // namespace veldona::store::sql
