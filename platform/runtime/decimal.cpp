#include "platform/runtime/decimal.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "platform/runtime/error.h"

namespace veldona {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view withoutBlanksAround(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

// Powers of ten that a double holds exactly.
constexpr std::array<double, 23> exactPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

} // namespace

void Decimal::append(char digit, bool behindSign) {
    if (count_ == 0 && digit == '0') {
        if (behindSign) --point_;
        return;
    }
    if (count_ < kept)
        digits_[static_cast<std::size_t>(count_++)] = static_cast<std::uint8_t>(digit - '0');
    else if (digit != '0')
        more_ = true;
    if (!behindSign) ++point_;
}

void Decimal::tidy() {
    while (count_ > 0 && digits_[static_cast<std::size_t>(count_ - 1)] == 0)
        --count_;
    if (count_ > 0) return;
    point_ = 0;
    negative_ = false;
}

Decimal Decimal::ofScientific(const char* first, const char* last) {
    Decimal made;
    const char* c = first;
    if (*c == '-') {
        made.negative_ = true;
        ++c;
    }
    bool behindSign = false;
    for (; c != last && *c != 'e'; ++c) {
        if (*c == '.')
            behindSign = true;
        else
            made.append(*c, behindSign);
    }
    int exponent = 0;
    if (c != last) std::from_chars(c[1] == '+' ? c + 2 : c + 1, last, exponent);
    made.point_ += exponent;
    made.tidy();
    return made;
}

Decimal Decimal::ofDouble(double value) {
    if (!std::isfinite(value)) raise(ErrorNumber::Overflow);
    constexpr int significant = 15;
    std::array<char, 40> text;
    char* const end = text.data() + text.size();
    // The shortest digits that read back as this double are quicker to find, and where they are no more than
    // 15 they are the same.
    const Decimal shortest =
        ofScientific(text.data(), std::to_chars(text.data(), end, value, std::chars_format::scientific).ptr);
    if (shortest.count_ <= significant) return shortest;
    return ofScientific(
        text.data(),
        std::to_chars(text.data(), end, value, std::chars_format::scientific, significant - 1).ptr);
}

Decimal Decimal::ofScaled(std::int64_t count, int decimals) {
    std::array<char, 24> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), count);
    Decimal made = ofScientific(text.data(), end.ptr);
    if (made.count_ > 0) made.point_ -= decimals;
    return made;
}

// "+" or "-" and one to three digits, to the end of the text.
bool Decimal::readExponent(std::string_view text) {
    if (text.size() < 2 || text.size() > 4 || (text.front() != '+' && text.front() != '-')) return false;
    int exponent = 0;
    for (const char c : text.substr(1)) {
        if (!isDigit(c)) return false;
        exponent = exponent * 10 + (c - '0');
    }
    point_ += text.front() == '-' ? -exponent : exponent;
    return true;
}

std::optional<Decimal> Decimal::read(std::string_view text) {
    text = withoutBlanksAround(text);
    Decimal made;
    bool hasDigit = false, hasComma = false, hasMinus = false, ended = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '.') continue;
        if (ended) return std::nullopt;
        if (isDigit(c)) {
            made.append(c, hasComma);
            hasDigit = true;
        } else if (c == ',' && !hasComma) {
            hasComma = true;
        } else if (c == '-' && !hasMinus) {
            hasMinus = true;
            ended = hasDigit || hasComma; // a trailing one closes the number
        } else if (c == 'E' && hasDigit) {
            if (!made.readExponent(text.substr(i + 1))) return std::nullopt;
            break;
        } else {
            return std::nullopt;
        }
    }
    if (!hasDigit) return std::nullopt;
    made.negative_ = hasMinus;
    made.tidy();
    return made;
}

Decimal Decimal::readLeading(std::string_view text) {
    Decimal made;
    bool begun = false, hasPoint = false;
    for (const char c : text) {
        if (c == ' ') continue;
        if (isDigit(c))
            made.append(c, hasPoint);
        else if (c == '.' && !hasPoint)
            hasPoint = true;
        else if ((c == '-' || c == '+') && !begun)
            made.negative_ = c == '-';
        else
            break;
        begun = true;
    }
    made.tidy();
    return made;
}

bool Decimal::roundsUp(int keep, Ties ties) const {
    const char next = digit(keep);
    if (next != '5' || ties == Ties::AwayFromZero) return next >= '5';
    // No zeros stand at the end, so any digit behind the 5 puts the value above the half.
    if (keep + 1 < count_ || more_) return true;
    return (digit(keep - 1) - '0') % 2 == 1;
}

void Decimal::increment() {
    int last = count_ - 1;
    while (last >= 0 && digits_[static_cast<std::size_t>(last)] == 9)
        --last;
    count_ = last + 1; // the nines become zeros, which are not kept
    if (last >= 0) {
        ++digits_[static_cast<std::size_t>(last)];
        return;
    }
    digits_[0] = 1;
    count_ = 1;
    ++point_;
}

void Decimal::round(int decimals, Ties ties) {
    const int keep = point_ + decimals;
    if (keep >= count_) return;
    const bool up = keep >= 0 && roundsUp(keep, ties);
    count_ = keep > 0 ? keep : 0;
    more_ = false;
    if (up) increment();
    tidy();
}

std::optional<double> Decimal::toDouble() const {
    const int exponent = point_ - count_;
    double value = 0;
    if (count_ <= 15 && exponent >= -22 && exponent <= 22) {
        // Both operands are exact, so the one operation rounds correctly.
        std::int64_t whole = 0;
        for (int i = 0; i < count_; ++i)
            whole = whole * 10 + digits_[static_cast<std::size_t>(i)];
        const auto power = exactPowers[static_cast<std::size_t>(std::abs(exponent))];
        value = exponent < 0 ? static_cast<double>(whole) / power : static_cast<double>(whole) * power;
        return negative_ ? -value : value;
    }
    std::array<char, kept + 16> text;
    char* out = text.data();
    for (int i = 0; i < count_; ++i)
        *out++ = digit(i);
    if (more_) *out++ = '1';
    *out++ = 'e';
    out = std::to_chars(out, text.data() + text.size(), exponent - (more_ ? 1 : 0)).ptr;
    if (std::from_chars(text.data(), out, value).ec == std::errc::result_out_of_range) {
        if (point_ > 0) return std::nullopt;
        return 0.0;
    }
    return negative_ ? -value : value;
}

std::optional<std::int64_t> Decimal::toScaled(int decimals) const {
    Decimal rounded = *this;
    rounded.round(decimals, Ties::ToEven);
    const int places = rounded.point_ + decimals;
    if (rounded.count_ == 0) return 0;
    if (places > 19) return std::nullopt; // nineteen nines still fit the unsigned sum
    std::uint64_t sum = 0;
    for (int i = 0; i < places; ++i)
        sum = sum * 10 + static_cast<std::uint64_t>(rounded.digit(i) - '0');
    if (sum > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) return std::nullopt;
    const auto value = static_cast<std::int64_t>(sum);
    return rounded.negative_ ? -value : value;
}

} // namespace veldona
