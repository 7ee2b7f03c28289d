#include "platform/store/dialect/skeleton.h"

#include <algorithm>
#include <cstdint>

#include "platform/runtime/text.h"

namespace veldona::store {
namespace {

constexpr std::size_t kLongest = 2000; // letters: longer ones are no look-up of an operator's step

enum class Byte : std::uint8_t { Word, Digit, Quote, Hash, Bracket, Dot, Strange, Plain };

constexpr std::array<Byte, 256> kBytes = [] {
    std::array<Byte, 256> bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const bool letter = (i >= 'a' && i <= 'z') || (i >= 'A' && i <= 'Z') || i == '_' || i >= 0x80;
        bytes[i] = letter ? Byte::Word : i < ' ' ? Byte::Strange : Byte::Plain;
    }
    for (std::size_t digit = '0'; digit <= '9'; ++digit)
        bytes[digit] = Byte::Digit;
    bytes['\''] = bytes['"'] = Byte::Quote;
    bytes['#'] = Byte::Hash;
    bytes['['] = Byte::Bracket;
    bytes['.'] = Byte::Dot;
    bytes['@'] = bytes['?'] = bytes[0x7f] = Byte::Strange;
    return bytes;
}();

Byte byteAt(std::string_view sql, std::size_t at) {
    return at < sql.size() ? kBytes[static_cast<std::uint8_t>(sql[at])] : Byte::Plain;
}

constexpr char kMark = '\x01'; // no control character passes, so that it stands for literals alone

} // namespace

Skeleton::Skeleton(std::string_view sql)
    : isSound_(sql.size() <= kLongest && sql.find('\0') == std::string_view::npos && read(sql)) {}

bool Skeleton::read(std::string_view sql) {
    text_.reserve(sql.size() + 8);
    for (std::size_t at = 0; at < sql.size();) {
        std::size_t end = at + 1;
        switch (byteAt(sql, at)) {
        case Byte::Word:
            while (byteAt(sql, end) == Byte::Word || byteAt(sql, end) == Byte::Digit)
                ++end;
            break;
        case Byte::Digit:
            if (!readNumber(sql, at)) return false;
            continue;
        case Byte::Quote:
            if (!readEnclosed(sql, at, Literal::Kind::Text)) return false;
            continue;
        case Byte::Hash:
            if (!readEnclosed(sql, at, Literal::Kind::Date)) return false;
            continue;
        case Byte::Bracket:
            end = sql.find(']', at);
            if (end == std::string_view::npos) return false;
            ++end;
            break;
        case Byte::Dot:
            if (byteAt(sql, end) == Byte::Digit) return false; // ".5" is a number
            break;
        case Byte::Strange:
            return false;
        case Byte::Plain:
            break;
        }
        text_.append(sql.substr(at, end - at));
        at = end;
    }
    return true;
}

bool Skeleton::readNumber(std::string_view sql, std::size_t& at) {
    const std::size_t from = at;
    while (byteAt(sql, at) == Byte::Digit)
        ++at;
    if (byteAt(sql, at) == Byte::Dot) do
            ++at;
        while (byteAt(sql, at) == Byte::Digit);
    if (byteAt(sql, at) == Byte::Dot || byteAt(sql, at) == Byte::Word) return false;
    return addSpan(Literal::Kind::Number, sql.substr(from, at - from), from);
}

bool Skeleton::readEnclosed(std::string_view sql, std::size_t& at, Literal::Kind kind) {
    const char sign = sql[at];
    const std::size_t from = at + 1;
    const std::size_t end = sql.find(sign, from);
    if (end == std::string_view::npos) return false;
    const std::string_view inside = sql.substr(from, end - from);
    at = end + 1;
    const bool isDate = kind == Literal::Kind::Date;
    const bool isOdd = isDate ? inside.find_first_not_of(" \t\n\r\v\f") == std::string_view::npos
                              : at < sql.size() && sql[at] == sign;
    return !isOdd && addSpan(kind, inside, from);
}

bool Skeleton::addSpan(Literal::Kind kind, std::string_view text, std::size_t at) {
    if (count_ == kMostSpans) return false;
    spans_[count_++] = {kind, text, at};
    text_ += kMark;
    text_ += static_cast<char>('0' + static_cast<int>(kind));
    return true;
}

std::string Skeleton::contentOf(const Span& span, bool isNegative) {
    if (isNegative) return "-" + std::string(span.text);
    const auto isAscii = [](char letter) { return static_cast<signed char>(letter) > 0; };
    if (span.kind != Literal::Kind::Text || std::all_of(span.text.begin(), span.text.end(), isAscii))
        return std::string(span.text);
    return validUtf8(span.text);
}

std::optional<KnownSplit> KnownSplit::of(const Skeleton& skeleton, const SplitStatement& split) {
    KnownSplit known;
    std::size_t bound = 0;
    for (std::size_t i = 0; i < skeleton.count_; ++i) {
        const Skeleton::Span& span = skeleton.spans_[i];
        const bool isBound = bound < split.places.size() && split.places[bound] == span.at;
        if (!isBound) {
            known.places_.push_back({false, false, std::string(span.text)});
            continue;
        }
        const Literal& literal = split.literals[bound++];
        const bool isNegative = span.kind == Literal::Kind::Number && literal.text.starts_with('-');
        if (literal.kind != span.kind || literal.text != Skeleton::contentOf(span, isNegative))
            return std::nullopt;
        known.places_.push_back({true, isNegative, {}});
    }
    if (bound != split.literals.size()) return std::nullopt;
    return known;
}

std::optional<std::vector<Literal>> KnownSplit::literals(const Skeleton& skeleton) const {
    std::vector<Literal> literals;
    literals.reserve(places_.size());
    for (std::size_t i = 0; i < places_.size(); ++i) {
        const Skeleton::Span& span = skeleton.spans_[i];
        if (!places_[i].isBound) {
            if (span.text != places_[i].text) return std::nullopt;
            continue;
        }
        literals.push_back({span.kind, Skeleton::contentOf(span, places_[i].isNegative)});
    }
    return literals;
}

} // namespace veldona::store
