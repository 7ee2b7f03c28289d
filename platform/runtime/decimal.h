// A number as its decimal digits: what is between a text, a double or an amount, and the rounding of any of
// them.
//
// All rounding of the house happens here, on the digits that a person would read, so that 2,675 has a half to
// round although no double has. No allocation; forty digits are kept, which is more than any amount or double
// has.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace veldona {

enum class Ties { ToEven, AwayFromZero };

class Decimal {
public:
    // The 15 significant digits of this double, which are all that it holds for certain: 101,10 / 12 is
    // 8,425, whatever its last bits say. Error 6 for what is no finite number.
    [[nodiscard]] static Decimal ofDouble(double value);
    // count / 10^decimals.
    [[nodiscard]] static Decimal ofScaled(std::int64_t count, int decimals);
    // Text by the rule of toCurrency; nothing where it does not read. The exponent that toText writes
    // ("1E+15") is read too, so that every number of ours comes back, but not the shorthand "1e5".
    [[nodiscard]] static std::optional<Decimal> read(std::string_view text);
    // The leading number of a text by the rule of val.
    [[nodiscard]] static Decimal readLeading(std::string_view text);

    [[nodiscard]] bool isNegative() const { return negative_; }
    // Significant digits, without zeros at either end; none for 0.
    [[nodiscard]] int count() const { return count_; }
    // Where the decimal sign stands, counted from the first significant digit: 3 for 125,5 and -1 for 0,012.
    [[nodiscard]] int point() const { return point_; }
    // The significant digit of that index from 0, as a character; '0' outside them.
    [[nodiscard]] char digit(int index) const {
        return index >= 0 && index < count_
                   ? static_cast<char>('0' + digits_[static_cast<std::size_t>(index)])
                   : '0';
    }

    void round(int decimals, Ties ties);
    // Nothing outside the range of a double.
    [[nodiscard]] std::optional<double> toDouble() const;
    // The value times 10^decimals, rounded half to even; nothing where it is beyond ±(2^63 - 1).
    [[nodiscard]] std::optional<std::int64_t> toScaled(int decimals) const;

private:
    static constexpr int kept = 40;
    static Decimal ofScientific(const char* first, const char* last);

    void append(char digit, bool behindSign);
    [[nodiscard]] bool readExponent(std::string_view text);
    [[nodiscard]] bool roundsUp(int keep, Ties ties) const;
    void increment();
    void tidy();

    std::array<std::uint8_t, kept> digits_;
    int count_ = 0;
    int point_ = 0;
    bool negative_ = false;
    bool more_ = false; // digits other than 0 follow the kept ones
};

} // namespace veldona
