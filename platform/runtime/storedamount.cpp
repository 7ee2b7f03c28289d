#include "platform/runtime/storedamount.h"

#include <cmath>
#include <string>
#include <type_traits>

#include "platform/runtime/conversion.h"

namespace veldona {

namespace {

template <class Other>
constexpr bool kStaysApart =
    !std::is_convertible_v<StoredAmount, Other> && !std::is_convertible_v<Other, StoredAmount>;
static_assert(kStaysApart<Currency> && kStaysApart<double> && kStaysApart<std::string> && kStaysApart<Value>);

} // namespace

StoredAmount StoredAmount::ofColumn(const Value& column) {
    return StoredAmount(toDouble(column));
}

StoredAmount StoredAmount::rounded() const {
    return StoredAmount(roundHalfEven(column_));
}

StoredAmount StoredAmount::roundedToKurus() const {
    constexpr double kKurus = kScale / 100;
    return StoredAmount(std::round(column_ / kKurus) * kKurus);
}

} // namespace veldona
