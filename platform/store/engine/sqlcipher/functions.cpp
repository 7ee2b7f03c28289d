#include "platform/store/engine/sqlcipher/functions.h"

#include <sqlcipher/sqlite3.h>

#include <chrono>
#include <cmath>
#include <ctime>

#include "platform/runtime/conversion.h"
#include "platform/store/dialect/literal.h"
#include "platform/store/engine/sqlcipher/functions_engine.h"

namespace veldona::store {
namespace sql {

bool Arguments::isNull(int index) const {
    return sqlite3_value_type(values_[index]) == SQLITE_NULL;
}

bool Arguments::isText(int index) const {
    return sqlite3_value_type(values_[index]) == SQLITE_TEXT;
}

std::string_view Arguments::text(int index) const {
    const auto* letters = reinterpret_cast<const char*>(sqlite3_value_text(values_[index]));
    if (!letters) return {};
    return {letters, static_cast<std::size_t>(sqlite3_value_bytes(values_[index]))};
}

double Arguments::number(int index) const {
    return sqlite3_value_double(values_[index]);
}

int Arguments::whole(int index) const {
    return toLong(value(index));
}

Value Arguments::value(int index) const {
    switch (sqlite3_value_type(values_[index])) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return static_cast<std::int64_t>(sqlite3_value_int64(values_[index]));
    case SQLITE_FLOAT:
        return sqlite3_value_double(values_[index]);
    default:
        return text(index);
    }
}

DateTime Arguments::date(int index) const {
    if (const auto stored = dateOfStored(text(index))) return *stored;
    return toDate(value(index));
}

bool Arguments::anyNull() const {
    for (int i = 0; i < count_; ++i) {
        if (isNull(i)) return true;
    }
    return false;
}

void Answer::null() {
    sqlite3_result_null(context_);
}

void Answer::text(std::string_view text) {
    sqlite3_result_text64(context_, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void Answer::number(double number) {
    if (!std::isfinite(number)) raise(ErrorNumber::Overflow);
    sqlite3_result_double(context_, number);
}

void Answer::whole(std::int64_t whole) {
    sqlite3_result_int64(context_, whole);
}

void Answer::fail(std::string_view sentence) {
    const std::string marked = "T:" + std::string(sentence);
    sqlite3_result_error(context_, marked.data(), static_cast<int>(marked.size()));
}

void registerAll(sqlite3* connection, const Registered* first, std::size_t count) {
    for (const Registered* each = first; each != first + count; ++each) {
        const int result = sqlite3_create_function_v2(connection, each->name, each->arguments,
                                                      SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                                      each->function, nullptr, nullptr, nullptr);
        if (result != SQLITE_OK) throw std::bad_alloc();
    }
}

namespace {

using Clock = std::function<DateTime()>;

DateTime machineClock() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
    localtime_r(&now, &local);
    const int second = local.tm_sec > 59 ? 59 : local.tm_sec; // a leap second is none to a shop
    return DateTime::of(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min,
                        second);
}

DateTime clockOf(const Answer& answer) {
    return (*static_cast<Clock*>(sqlite3_user_data(answer.context())))();
}

void now(const Arguments&, Answer& answer) {
    answer.text(storedDate(clockOf(answer)));
}

void today(const Arguments&, Answer& answer) {
    answer.text(storedDate(clockOf(answer).date()));
}

void registerClock(sqlite3* connection, const Clock& clock) {
    constexpr Registered kFunctions[] = {{"vd_now", 0, run<now>}, {"vd_today", 0, run<today>}};
    for (const Registered& each : kFunctions) {
        const auto forget = [](void* held) { delete static_cast<Clock*>(held); };
        const int result =
            sqlite3_create_function_v2(connection, each.name, each.arguments, SQLITE_UTF8, new Clock(clock),
                                       each.function, nullptr, nullptr, forget);
        if (result != SQLITE_OK) throw std::bad_alloc();
    }
}

} // namespace
} // namespace sql

void registerFunctions(sqlite3* connection, std::function<DateTime()> clock) {
    sql::registerTextFunctions(connection);
    sql::registerNumberFunctions(connection);
    sql::registerDateFunctions(connection);
    sql::registerLike(connection);
    sql::registerCollation(connection);
    if (!clock) clock = sql::machineClock;
    sql::registerClock(connection, clock);
    sql::registerJournal(connection, clock);
}

} // namespace veldona::store
