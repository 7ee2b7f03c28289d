#include "platform/store/dialect/lexer.h"

#include <array>

#include "platform/runtime/text.h"
#include "platform/store/dialect/names.h"
#include "platform/store/dialect/storeerror.h"

namespace veldona::store::sql {
namespace {

enum Class : std::uint8_t { kOther = 0, kBlank = 1, kLetter = 2, kDigit = 4 };

// Every byte of a letter outside the Latin alphabet counts as a letter.
constexpr std::array<std::uint8_t, 256> kClasses = [] {
    std::array<std::uint8_t, 256> classes{};
    for (const char blank : {' ', '\t', '\n', '\r', '\v', '\f'})
        classes[static_cast<std::uint8_t>(blank)] = kBlank;
    for (unsigned byte = 0; byte < classes.size(); ++byte) {
        const bool latin = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte == '_';
        if (latin || byte >= 0x80) classes[byte] = kLetter;
        if (byte >= '0' && byte <= '9') classes[byte] = kDigit;
    }
    return classes;
}();

bool is(char letter, unsigned classes) {
    return (kClasses[static_cast<std::uint8_t>(letter)] & classes) != 0;
}

bool isBlank(std::string_view text) {
    for (const char letter : text)
        if (!is(letter, kBlank)) return false;
    return true;
}

constexpr std::string_view kCalculating = "+-*/&";

} // namespace

Lexer::Lexer(std::string_view sql) : sql_(sql) {
    if (const auto nul = sql.find('\0'); nul != std::string_view::npos) fail(nul);
}

Token Lexer::next() {
    skipBlanks();
    if (at_ == sql_.size()) return {};
    const char first = sql_[at_];
    if (is(first, kLetter)) return word();
    if (is(first, kDigit) || numberFollows()) return number();
    switch (first) {
    case '\'':
    case '"':
        return text(first);
    case '#':
        return enclosed('#', TokenKind::Date);
    case '[':
        return enclosed(']', TokenKind::Bracketed);
    case '@':
        return identity();
    default:
        return signs();
    }
}

bool Lexer::operatorFollows() {
    skipBlanks();
    return at_ < sql_.size() && kCalculating.find(sql_[at_]) != std::string_view::npos;
}

bool Lexer::numberFollows() {
    skipBlanks();
    if (at_ == sql_.size()) return false;
    if (sql_[at_] != '.') return is(sql_[at_], kDigit);
    return at_ + 1 < sql_.size() && is(sql_[at_ + 1], kDigit);
}

void Lexer::skipBlanks() {
    while (at_ < sql_.size() && is(sql_[at_], kBlank))
        ++at_;
}

Token Lexer::word() {
    const std::size_t from = at_;
    while (at_ < sql_.size() && is(sql_[at_], kLetter | kDigit))
        ++at_;
    return {TokenKind::Word, Sign::None, 0, sql_.substr(from, at_ - from)};
}

Token Lexer::number() {
    const std::size_t from = at_;
    const auto digits = [this] {
        while (at_ < sql_.size() && is(sql_[at_], kDigit))
            ++at_;
    };
    digits();
    if (at_ < sql_.size() && sql_[at_] == '.') {
        ++at_;
        digits();
    }
    if (at_ < sql_.size() && (sql_[at_] == 'e' || sql_[at_] == 'E')) {
        ++at_;
        if (at_ < sql_.size() && (sql_[at_] == '+' || sql_[at_] == '-')) ++at_;
        if (at_ == sql_.size() || !is(sql_[at_], kDigit)) fail(from);
        digits();
    }
    // What runs on without a blank is no number: a half-typed key must not be cut into a number and a name.
    if (at_ < sql_.size() && (is(sql_[at_], kLetter) || sql_[at_] == '.')) fail(from);
    return {TokenKind::Number, Sign::None, 0, sql_.substr(from, at_ - from)};
}

Token Lexer::text(char quote) {
    const std::size_t from = ++at_;
    while (true) {
        const std::size_t end = sql_.find(quote, at_);
        if (end == std::string_view::npos) fail(from - 1);
        at_ = end + 1;
        if (at_ == sql_.size() || sql_[at_] != quote) {
            return {TokenKind::Text, Sign::None, quote, sql_.substr(from, end - from)};
        }
        ++at_;
    }
}

Token Lexer::enclosed(char close, TokenKind kind) {
    const std::size_t from = at_ + 1;
    const std::size_t end = sql_.find(close, from);
    if (end == std::string_view::npos || isBlank(sql_.substr(from, end - from))) fail(at_);
    at_ = end + 1;
    return {kind, Sign::None, 0, sql_.substr(from, end - from)};
}

Token Lexer::identity() {
    constexpr std::string_view kIdentity = "@@IDENTITY";
    const std::string_view found = sql_.substr(at_, kIdentity.size());
    if (!sameName(found, kIdentity)) fail(at_);
    at_ += kIdentity.size();
    if (at_ < sql_.size() && is(sql_[at_], kLetter | kDigit)) fail(at_ - kIdentity.size());
    return {TokenKind::Identity, Sign::None, 0, found};
}

Token Lexer::signs() {
    const char first = sql_[at_];
    const char second = at_ + 1 < sql_.size() ? sql_[at_ + 1] : '\0';
    const auto token = [this](Sign sign, std::size_t length) {
        at_ += length;
        return Token{TokenKind::Sign, sign, 0, sql_.substr(at_ - length, length)};
    };
    switch (first) {
    case '(':
        return token(Sign::Open, 1);
    case ')':
        return token(Sign::Close, 1);
    case ',':
        return token(Sign::Comma, 1);
    case '.':
        return token(Sign::Dot, 1);
    case ';':
        return token(Sign::Semicolon, 1);
    case '+':
        return token(Sign::Plus, 1);
    case '*':
        return token(Sign::Star, 1);
    case '&':
        return token(Sign::Ampersand, 1);
    case '=':
        return token(Sign::Equal, 1);
    case '-':
        if (second == '-') fail(at_); // a comment elsewhere; here it has no meaning
        return token(Sign::Minus, 1);
    case '/':
        if (second == '*') fail(at_);
        return token(Sign::Slash, 1);
    case '<':
        if (second == '>') return token(Sign::NotEqual, 2);
        return second == '=' ? token(Sign::LessEqual, 2) : token(Sign::Less, 1);
    case '>':
        return second == '=' ? token(Sign::GreaterEqual, 2) : token(Sign::Greater, 1);
    default:
        fail(at_);
    }
}

void Lexer::fail(std::size_t at) const {
    failSyntax(sql_.substr(at));
}

std::string textOf(const Token& token) {
    std::string content;
    content.reserve(token.text.size());
    bool latin = true;
    for (std::size_t i = 0; i < token.text.size(); ++i) {
        content += token.text[i];
        if (token.text[i] == token.quote) ++i;
        latin = latin && static_cast<signed char>(token.text[i]) > 0;
    }
    return latin ? content : validUtf8(content);
}

void failSyntax(std::string_view near) {
    constexpr std::size_t kShown = 30;
    const std::string place = left(validUtf8(near.substr(0, kShown * 4)), kShown);
    throw StoreError(StoreError::Kind::Syntax,
                     place.empty() ? "Sorgu ifadesinde sözdizimi hatası: ifade yarım kalmış."
                                   : "Sorgu ifadesinde sözdizimi hatası: \"" + place + "\" yakınında.");
}

} // namespace veldona::store::sql
