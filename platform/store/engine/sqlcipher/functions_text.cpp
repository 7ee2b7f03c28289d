#include <algorithm>

#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/engine/alphabet.h"
#include "platform/store/engine/sqlcipher/functions_engine.h"

namespace veldona::store::sql {
namespace {

std::size_t countOf(const Arguments& arguments, int index) {
    const int count = arguments.whole(index);
    if (count < 0) raise(ErrorNumber::InvalidCall);
    return static_cast<std::size_t>(count);
}

std::string_view withoutLeft(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

std::string_view withoutRight(std::string_view text) {
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

void textOfNumber(const Arguments& arguments, Answer& answer) {
    answer.text(toText(arguments.value(0)));
}

void middle(const Arguments& arguments, Answer& answer) {
    const std::size_t start = countOf(arguments, 1);
    const std::size_t count = arguments.count() == 3 ? countOf(arguments, 2) : std::string::npos;
    answer.text(mid(arguments.text(0), start, count));
}

void leftPart(const Arguments& arguments, Answer& answer) {
    answer.text(left(arguments.text(0), countOf(arguments, 1)));
}

void rightPart(const Arguments& arguments, Answer& answer) {
    const std::string_view text = arguments.text(0);
    const std::size_t all = length(text), count = countOf(arguments, 1);
    answer.text(count >= all ? std::string(text) : mid(text, all - count + 1));
}

void lengthOf(const Arguments& arguments, Answer& answer) {
    answer.whole(static_cast<std::int64_t>(length(arguments.text(0))));
}

void trimBoth(const Arguments& arguments, Answer& answer) {
    answer.text(withoutLeft(withoutRight(arguments.text(0))));
}

void trimLeft(const Arguments& arguments, Answer& answer) {
    answer.text(withoutLeft(arguments.text(0)));
}

void trimRight(const Arguments& arguments, Answer& answer) {
    answer.text(withoutRight(arguments.text(0)));
}

void upper(const Arguments& arguments, Answer& answer) {
    answer.text(upperTurkish(arguments.text(0)));
}

void lower(const Arguments& arguments, Answer& answer) {
    answer.text(lowerTurkish(arguments.text(0)));
}

void replaced(const Arguments& arguments, Answer& answer) {
    if (arguments.text(1).empty()) return answer.text(arguments.text(0));
    answer.text(replaceAll(arguments.text(0), arguments.text(1), arguments.text(2)));
}

// The place of the second text in the first, from the start on, both from 1; 0 where it is not there.
void place(const Arguments& arguments, Answer& answer) {
    const std::size_t start = countOf(arguments, 0);
    if (start == 0) raise(ErrorNumber::InvalidCall);
    const auto text = Alphabet::folded(arguments.text(1)), wanted = Alphabet::folded(arguments.text(2));
    if (start > text.size()) return answer.whole(0);
    const auto from = text.begin() + static_cast<std::ptrdiff_t>(start - 1);
    const auto found = std::search(from, text.end(), wanted.begin(), wanted.end());
    answer.whole(found == text.end() && !wanted.empty() ? 0 : found - text.begin() + 1);
}

void formatted(const Arguments& arguments, Answer& answer) {
    answer.text(format(arguments.value(0), arguments.text(1)));
}

void formattedDate(const Arguments& arguments, Answer& answer) {
    answer.text(format(arguments.date(0), arguments.text(1)));
}

} // namespace

void registerTextFunctions(sqlite3* connection) {
    constexpr Registered kFunctions[] = {
        {"vd_text", 1, run<textOfNumber>},
        {"vd_mid", 2, run<middle>},
        {"vd_mid", 3, run<middle>},
        {"vd_left", 2, run<leftPart>},
        {"vd_right", 2, run<rightPart>},
        {"vd_len", 1, run<lengthOf>},
        {"vd_trim", 1, run<trimBoth>},
        {"vd_ltrim", 1, run<trimLeft>},
        {"vd_rtrim", 1, run<trimRight>},
        {"vd_ucase", 1, run<upper>},
        {"vd_lcase", 1, run<lower>},
        {"vd_replace", 3, run<replaced>},
        {"vd_instr", 3, run<place>},
        {"vd_format", 2, run<formatted>},
        {"vd_format_date", 2, run<formattedDate>},
    };
    registerAll(connection, kFunctions, std::size(kFunctions));
}

} // namespace veldona::store::sql
