// An amount as the books hold it: millionths of a lira in a column of doubles, fractions of one included.
//
// It is neither what is worked with (Currency) nor a shown text, and becomes one of them, or comes from one,
// by name alone, so that a mix-up does not compile. No arithmetic but its own knows the scale.
#pragma once

#include <compare>

#include "platform/runtime/value.h"

namespace veldona {

class StoredAmount {
public:
    constexpr StoredAmount() = default;

    // What stands in a column, or a sum of it. A value: error 94 for Null, 13 for what does not read.
    [[nodiscard]] static constexpr StoredAmount ofColumn(double column) { return StoredAmount(column); }
    [[nodiscard]] static StoredAmount ofColumn(const Value& column);
    // Lira with their fractions, as a screen counts.
    [[nodiscard]] static constexpr StoredAmount ofLira(double lira) { return StoredAmount(lira * kScale); }

    [[nodiscard]] constexpr double column() const { return column_; }
    [[nodiscard]] constexpr double lira() const { return column_ / kScale; }
    // Rounded half to even at the fourth decimal of a lira; error 6 outside the range.
    [[nodiscard]] Currency working() const { return Currency::ofDouble(lira()); }
    // To a whole number of millionths, half to even: what fractions of shares left in a sum goes.
    [[nodiscard]] StoredAmount rounded() const;
    // To whole kuruş, halves away from zero.
    [[nodiscard]] StoredAmount roundedToKurus() const;

    constexpr StoredAmount& operator+=(StoredAmount other) {
        column_ += other.column_;
        return *this;
    }
    constexpr StoredAmount& operator-=(StoredAmount other) {
        column_ -= other.column_;
        return *this;
    }
    [[nodiscard]] friend constexpr StoredAmount operator+(StoredAmount a, StoredAmount b) { return a += b; }
    [[nodiscard]] friend constexpr StoredAmount operator-(StoredAmount a, StoredAmount b) { return a -= b; }
    [[nodiscard]] friend constexpr StoredAmount operator*(double count, StoredAmount each) {
        return StoredAmount(count * each.column_);
    }
    [[nodiscard]] constexpr StoredAmount operator-() const { return StoredAmount(-column_); }
    friend constexpr auto operator<=>(StoredAmount, StoredAmount) = default;

private:
    static constexpr double kScale = 1'000'000;
    explicit constexpr StoredAmount(double column) : column_(column) {}

    double column_ = 0;
};

} // namespace veldona
