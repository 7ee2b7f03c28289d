// Money in hand: a 64-bit count of ten-thousandths with checked arithmetic.
//
// It is made by named makers only, so that a bare double never becomes money by accident. Every operation
// that leaves the range (±922.337.203.685.477,5807) raises error 6.
#pragma once

#include <compare>
#include <cstdint>

namespace veldona {

class Currency {
public:
    constexpr Currency() = default;

    // `count` ten-thousandths: 125000 is 12,50.
    [[nodiscard]] static constexpr Currency ofTenThousandths(std::int64_t count) {
        Currency made;
        made.count_ = count;
        return made;
    }
    // Whole units; error 6 outside the range.
    [[nodiscard]] static Currency ofWhole(std::int64_t units);
    // Rounded half to even at the fourth decimal; error 6 outside the range, also for NaN.
    [[nodiscard]] static Currency ofDouble(double value);

    [[nodiscard]] constexpr std::int64_t tenThousandths() const { return count_; }
    [[nodiscard]] double toDouble() const;
    [[nodiscard]] constexpr bool isZero() const { return count_ == 0; }

    Currency& operator+=(Currency other);
    Currency& operator-=(Currency other);
    [[nodiscard]] friend Currency operator+(Currency a, Currency b) { return a += b; }
    [[nodiscard]] friend Currency operator-(Currency a, Currency b) { return a -= b; }
    [[nodiscard]] Currency operator-() const;
    // The exact product, rounded half to even at the fourth decimal.
    [[nodiscard]] friend Currency operator*(Currency a, Currency b) { return multiply(a, b); }

    friend constexpr auto operator<=>(Currency, Currency) = default;

private:
    static Currency multiply(Currency a, Currency b);
    std::int64_t count_ = 0;
};

} // namespace veldona
