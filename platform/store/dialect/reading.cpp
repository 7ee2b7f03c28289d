#include "platform/store/dialect/reading.h"

#include <array>
#include <utility>

#include "platform/store/dialect/names.h"
#include "platform/store/dialect/storeerror.h"

namespace veldona::store {
namespace {

using sql::Lexer;
using sql::Sign;
using sql::Token;
using sql::TokenKind;

constexpr std::size_t kMostNested = 200;
// The engine numbers its parameters, and not endlessly; what comes behind stays in the text.
constexpr std::size_t kMostLiterals = 900;
constexpr char kMark = '\x01';

enum class Keyword : std::uint8_t { Other, As, List, Like, Between, And, Select };

// Those that say whether a literal behind them is compared or stored.
Keyword keywordOf(std::string_view word) {
    switch (word.size()) {
    case 2:
        if (sameName(word, "AS")) return Keyword::As;
        return sameName(word, "IN") ? Keyword::List : Keyword::Other;
    case 3:
        return sameName(word, "AND") ? Keyword::And : Keyword::Other;
    case 4:
        return sameName(word, "LIKE") ? Keyword::Like : Keyword::Other;
    case 6:
        if (sameName(word, "SELECT")) return Keyword::Select;
        return sameName(word, "VALUES") ? Keyword::List : Keyword::Other;
    case 7:
        return sameName(word, "BETWEEN") ? Keyword::Between : Keyword::Other;
    default:
        return Keyword::Other;
    }
}

Literal::Kind kindOf(const Token& token) {
    switch (token.kind) {
    case TokenKind::Text:
        return Literal::Kind::Text;
    case TokenKind::Date:
        return Literal::Kind::Date;
    default:
        return Literal::Kind::Number;
    }
}

class Reader {
public:
    Reader(std::string_view sql, Literals literals, Reading& into)
        : sql_(sql), lexer_(sql), bindsLiterals_(literals == Literals::Bound), into_(into) {
        into_.key.clear();
        into_.literals.clear();
        into_.tokens.clear();
        into_.key.reserve(sql.size() + 16);
        into_.tokens.reserve(sql.size() / 4 + 4);
        levels_[0] = {};
    }

    void run() {
        for (Token token = lexer_.next(); token.kind != TokenKind::End; token = lexer_.next())
            take(token);
        if (nested_ != 0) sql::failSyntax({});
        into_.tokens.emplace_back();
        copyUpTo(end_);
    }

private:
    struct Level {
        bool list;    // of IN or VALUES: each literal in it is compared or stored
        bool between; // the next AND belongs to a BETWEEN
    };

    void take(const Token& token) {
        const bool meetsValue = std::exchange(meetsValue_, false);
        switch (token.kind) {
        case TokenKind::Word:
            takeWord(token.text);
            break;
        case TokenKind::Bracketed:
            namesAlias_ = false;
            break;
        case TokenKind::Sign:
            if (token.sign == Sign::Semicolon) return endStatement();
            if (token.sign == Sign::Minus && meetsValue && lexer_.numberFollows()) return takeNegative(token);
            takeSign(token);
            break;
        case TokenKind::Number:
        case TokenKind::Text:
        case TokenKind::Date:
            return takeLiteral(token, meetsValue);
        default:
            break;
        }
        put(token);
    }

    void takeWord(std::string_view word) {
        if (std::exchange(namesAlias_, false)) return;
        switch (keywordOf(word)) {
        case Keyword::As:
            namesAlias_ = true;
            break;
        case Keyword::List:
            opensList_ = true;
            break;
        case Keyword::Like:
            meetsValue_ = true;
            break;
        case Keyword::Between:
            meetsValue_ = levels_[nested_].between = true;
            break;
        case Keyword::And:
            meetsValue_ = std::exchange(levels_[nested_].between, false);
            break;
        case Keyword::Select:
            levels_[nested_].list = false;
            break;
        case Keyword::Other:
            break;
        }
    }

    void takeSign(const Token& token) {
        switch (token.sign) {
        case Sign::Open:
            if (++nested_ > kMostNested) throw StoreError(StoreError::Kind::Syntax, kTooNested);
            levels_[nested_] = {std::exchange(opensList_, false), false};
            meetsValue_ = levels_[nested_].list;
            break;
        case Sign::Close:
            if (nested_ == 0) sql::failSyntax(token.text);
            --nested_;
            break;
        case Sign::Comma:
            meetsValue_ = levels_[nested_].list;
            break;
        case Sign::Equal:
        case Sign::NotEqual:
        case Sign::Less:
        case Sign::LessEqual:
        case Sign::Greater:
        case Sign::GreaterEqual:
            meetsValue_ = true;
            break;
        default:
            break;
        }
    }

    // The sign of a negative number is a part of it where the number is bound.
    void takeNegative(const Token& minus) {
        const Token number = lexer_.next();
        const std::size_t end = lexer_.at();
        if (!isBound(true)) {
            put(minus, placeOf(minus) + 1);
            return put(number, end);
        }
        bind(number, placeOf(minus), end);
        into_.literals.push_back({Literal::Kind::Number, "-"});
        into_.literals.back().text += number.text;
    }

    void takeLiteral(const Token& token, bool meetsValue) {
        const std::size_t end = lexer_.at();
        if (!isBound(meetsValue)) return put(token, end);
        const bool isEnclosed = token.kind != TokenKind::Number;
        bind(token, placeOf(token) - (isEnclosed ? 1 : 0), end);
        if (token.kind == TokenKind::Text)
            into_.literals.push_back({Literal::Kind::Text, sql::textOf(token)});
        else
            into_.literals.push_back({kindOf(token), std::string(token.text)});
    }

    // What a sign calculates with is a part of an expression, and stays in the text.
    bool isBound(bool meetsValue) {
        return bindsLiterals_ && meetsValue && into_.literals.size() < kMostLiterals &&
               !lexer_.operatorFollows();
    }

    void bind(const Token& token, std::size_t from, std::size_t end) {
        copyUpTo(from);
        into_.key += kMark;
        into_.key += static_cast<char>('0' + static_cast<int>(kindOf(token)));
        copied_ = end_ = end;
        into_.tokens.push_back({TokenKind::Parameter, Sign::None, 0, token.text});
    }

    // One statement a call: behind the sign that ends it nothing may follow.
    void endStatement() {
        const Token behind = lexer_.next();
        if (behind.kind != TokenKind::End || nested_ != 0) sql::failSyntax(behind.text);
    }

    void put(const Token& token) { put(token, lexer_.at()); }
    void put(const Token& token, std::size_t end) {
        into_.tokens.push_back(token);
        end_ = end;
    }

    void copyUpTo(std::size_t place) {
        into_.key.append(sql_.substr(copied_, place - copied_));
        copied_ = place;
    }

    [[nodiscard]] std::size_t placeOf(const Token& token) const {
        return static_cast<std::size_t>(token.text.data() - sql_.data());
    }

    std::string_view sql_;
    Lexer lexer_;
    bool bindsLiterals_;
    Reading& into_;
    std::array<Level, kMostNested + 1> levels_;
    std::size_t nested_ = 0;
    std::size_t copied_ = 0;  // of the text into the key
    std::size_t end_ = 0;     // of the word read last
    bool meetsValue_ = false; // a literal here is compared or stored
    bool opensList_ = false;
    bool namesAlias_ = false;
};

} // namespace

void readStatement(std::string_view sql, Reading& into, Literals literals) {
    Reader(sql, literals, into).run();
}

Reading readStatement(std::string_view sql, Literals literals) {
    Reading reading;
    readStatement(sql, reading, literals);
    return reading;
}

} // namespace veldona::store
