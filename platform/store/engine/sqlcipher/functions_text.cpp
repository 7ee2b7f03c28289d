#include <iterator>

#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/engine/sqlcipher/functions_engine.h"

namespace veldona::store::sql {
namespace {

std::size_t countOf(const Arguments& arguments, int index) {
    const int count = arguments.whole(index);
    if (count < 0) raise(ErrorNumber::InvalidCall);
    return static_cast<std::size_t>(count);
}

void textOfNumber(const Arguments& arguments, Answer& answer) {
    answer.text(toText(arguments.value(0)));
}

void middle(const Arguments& arguments, Answer& answer) {
    const std::size_t start = countOf(arguments, 1);
    const std::size_t count = arguments.count() == 3 ? countOf(arguments, 2) : std::string::npos;
    answer.text(mid(arguments.text(0), start, count));
}

void lengthOf(const Arguments& arguments, Answer& answer) {
    answer.whole(static_cast<std::int64_t>(length(arguments.text(0))));
}

void upper(const Arguments& arguments, Answer& answer) {
    answer.text(upperTurkish(arguments.text(0)));
}

} // namespace

void registerTextFunctions(sqlite3* connection) {
    constexpr Registered kFunctions[] = {
        {"vd_text", 1, run<textOfNumber>}, {"vd_mid", 2, run<middle>},  {"vd_mid", 3, run<middle>},
        {"vd_len", 1, run<lengthOf>},      {"vd_ucase", 1, run<upper>},
    };
    registerAll(connection, kFunctions, std::size(kFunctions));
}

} // namespace veldona::store::sql
