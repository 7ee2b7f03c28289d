#include <cmath>
#include <iterator>

#include "platform/runtime/conversion.h"
#include "platform/runtime/datetime.h"
#include "platform/runtime/text.h"
#include "platform/store/dialect/literal.h"
#include "platform/store/engine/sqlcipher/functions_engine.h"

namespace veldona::store::sql {
namespace {

DateTime moved(DateTime date, double seconds) {
    if (!(std::abs(seconds) < 1e12)) raise(ErrorNumber::Overflow);
    const DateTime result = DateTime::ofSeconds(date.seconds() + std::llround(seconds));
    if (result < DateTime::of(100, 1, 1) || result > DateTime::of(9999, 12, 31, 23, 59, 59)) {
        raise(ErrorNumber::Overflow);
    }
    return result;
}

void answerDate(DateTime date, Answer& answer) {
    answer.text(storedDate(date));
}

void dateOf(const Arguments& arguments, Answer& answer) {
    try {
        answerDate(arguments.date(0), answer);
    } catch (const RuntimeError&) {
        const std::string shown = left(validUtf8(arguments.text(0)), 60);
        answer.fail("Veri türü uyuşmuyor: \"" + shown + "\" tarih olarak okunamadı.");
    }
}

// "dd/MM/yyyy", and the time where it is not midnight; cut out of the stored text without reading it as a
// date.
void textOfDate(const Arguments& arguments, Answer& answer) {
    const std::string_view stored = arguments.text(0);
    if (!dateOfStored(stored)) return answer.text(stored);
    std::string shown;
    shown.append(stored.substr(8, 2))
        .append("/")
        .append(stored.substr(5, 2))
        .append("/")
        .append(stored.substr(0, 4));
    if (stored.substr(11) != "00:00:00") shown.append(stored.substr(10));
    answer.text(shown);
}

void days(const Arguments& arguments, Answer& answer) {
    answer.number(static_cast<double>(arguments.date(0).seconds()) / static_cast<double>(kSecondsADay));
}

void addDays(const Arguments& arguments, Answer& answer) {
    answerDate(moved(arguments.date(0), arguments.number(1) * static_cast<double>(kSecondsADay)), answer);
}

} // namespace

void registerDateFunctions(sqlite3* connection) {
    constexpr Registered kFunctions[] = {
        {"vd_date", 1, run<dateOf>},
        {"vd_date_text", 1, run<textOfDate>},
        {"vd_days", 1, run<days>},
        {"vd_adddays", 2, run<addDays>},
    };
    registerAll(connection, kFunctions, std::size(kFunctions));
}

} // namespace veldona::store::sql
