#include "platform/runtime/currency.h"

#include <cmath>
#include <limits>

#include "platform/runtime/decimal.h"
#include "platform/runtime/error.h"

namespace veldona {

namespace {

constexpr std::int64_t unit = 10'000;
constexpr std::int64_t highest = std::numeric_limits<std::int64_t>::max();

// The range is the same on both sides, so that no sign turns a good amount into a bad one.
Currency checked(__int128 count) {
    if (count > highest || count < -static_cast<__int128>(highest)) raise(ErrorNumber::Overflow);
    return Currency::ofTenThousandths(static_cast<std::int64_t>(count));
}

} // namespace

Currency Currency::ofWhole(std::int64_t units) {
    return checked(static_cast<__int128>(units) * unit);
}

Currency Currency::ofDouble(double value) {
    // Most amounts are whole: the store keeps them as millionths of a lira.
    if (value == std::trunc(value) && std::fabs(value) < 9e14)
        return ofWhole(static_cast<std::int64_t>(value));
    const auto count = Decimal::ofDouble(value).toScaled(4);
    if (!count) raise(ErrorNumber::Overflow);
    return ofTenThousandths(*count);
}

double Currency::toDouble() const {
    // Beyond 2^53 the count itself is rounded on its way into a double; whole and rest apart stay exact.
    if (count_ > -(std::int64_t{1} << 53) && count_ < (std::int64_t{1} << 53))
        return static_cast<double>(count_) / static_cast<double>(unit);
    const std::int64_t whole = count_ / unit;
    return static_cast<double>(whole) + static_cast<double>(count_ % unit) / static_cast<double>(unit);
}

Currency& Currency::operator+=(Currency other) {
    return *this = checked(static_cast<__int128>(count_) + other.count_);
}

Currency& Currency::operator-=(Currency other) {
    return *this = checked(static_cast<__int128>(count_) - other.count_);
}

Currency Currency::operator-() const {
    return checked(-static_cast<__int128>(count_));
}

Currency Currency::multiply(Currency a, Currency b) {
    const __int128 product = static_cast<__int128>(a.count_) * b.count_;
    __int128 quotient = product / unit;
    const auto rest = static_cast<std::int64_t>(product % unit);
    const std::int64_t size = rest < 0 ? -rest : rest;
    if (size > unit / 2 || (size == unit / 2 && quotient % 2 != 0)) quotient += rest < 0 ? -1 : 1;
    return checked(quotient);
}

} // namespace veldona
