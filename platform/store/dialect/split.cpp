#include "platform/store/dialect/split.h"

#include <algorithm>
#include <array>
#include <utility>

#include "platform/store/dialect/lexer.h"
#include "platform/store/dialect/names.h"
#include "platform/store/dialect/storeerror.h"

namespace veldona::store {
namespace {

using sql::Lexer;
using sql::Sign;
using sql::Token;
using sql::TokenKind;

constexpr std::size_t kMostNested = 200;
// The engine numbers its parameters, and not endlessly; what comes behind stays in the shape.
constexpr std::size_t kMostLiterals = 900;

class Splitter {
public:
    Splitter(std::string_view sql, Literals literals)
        : lexer_(sql), begin_(sql.data()), bindsLiterals_(literals == Literals::Bound) {
        split_.shape.reserve(sql.size() + sql.size() / 4 + 16);
        split_.literals.reserve(8);
    }

    SplitStatement run() {
        for (Token token = lexer_.next(); token.kind != TokenKind::End; token = lexer_.next())
            take(token);
        if (nested_ != 0) sql::failSyntax({});
        return std::move(split_);
    }

private:
    struct Level {
        bool list = false;    // of IN or VALUES: each literal in it is compared or stored
        bool between = false; // the next AND belongs to a BETWEEN
    };

    void take(const Token& token) {
        const bool meetsValue = std::exchange(meetsValue_, false);
        switch (token.kind) {
        case TokenKind::Word:
            return takeWord(token);
        case TokenKind::Bracketed:
            return takeBracketed(token);
        case TokenKind::Sign:
            return takeSign(token, meetsValue);
        case TokenKind::Number:
        case TokenKind::Text:
        case TokenKind::Date:
            return takeLiteral(token, meetsValue, false);
        default:
            return put(token.text);
        }
    }

    void takeWord(const Token& token) {
        if (std::exchange(namesAlias_, false)) return put(token.text); // shown as it was written
        put(token.text);
        const std::size_t from = split_.shape.size() - token.text.size();
        std::transform(split_.shape.begin() + static_cast<std::ptrdiff_t>(from), split_.shape.end(),
                       split_.shape.begin() + static_cast<std::ptrdiff_t>(from), foldLetter);
        const std::string_view word = std::string_view(split_.shape).substr(from);
        if (word.size() > 7 || word.size() < 2) return;
        Level& level = levels_[nested_];
        if (word == "AS") {
            namesAlias_ = true;
        } else if (word == "IN" || word == "VALUES") {
            opensList_ = true;
        } else if (word == "LIKE") {
            meetsValue_ = true;
        } else if (word == "BETWEEN") {
            meetsValue_ = level.between = true;
        } else if (word == "AND") {
            meetsValue_ = std::exchange(level.between, false);
        } else if (word == "SELECT") {
            level.list = false;
        }
    }

    void takeBracketed(const Token& token) {
        namesAlias_ = false;
        put("[");
        split_.shape += token.text;
        split_.shape += ']';
    }

    void takeSign(const Token& token, bool meetsValue) {
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
        case Sign::Minus:
            if (meetsValue && lexer_.numberFollows()) return takeLiteral(lexer_.next(), true, true);
            break;
        case Sign::Dot:
            split_.shape += '.';
            return;
        case Sign::Semicolon:
            return endStatement();
        default:
            break;
        }
        put(token.text);
    }

    void takeLiteral(const Token& token, bool meetsValue, bool negative) {
        if (bindsLiterals_ && meetsValue && split_.literals.size() < kMostLiterals &&
            !lexer_.operatorFollows()) {
            put("?");
            return bind(token, negative);
        }
        if (negative) put("-");
        switch (token.kind) {
        case TokenKind::Text:
            putText(sql::textOf(token));
            break;
        case TokenKind::Date:
            put("#");
            split_.shape += token.text;
            split_.shape += '#';
            break;
        default:
            put(token.text);
            if (token.text.back() == '.') split_.shape += '0'; // else the next word would run on
        }
    }

    void bind(const Token& token, bool negative) {
        split_.places.push_back(static_cast<std::size_t>(token.text.data() - begin_));
        switch (token.kind) {
        case TokenKind::Text:
            split_.literals.push_back({Literal::Kind::Text, sql::textOf(token)});
            break;
        case TokenKind::Date:
            split_.literals.push_back({Literal::Kind::Date, std::string(token.text)});
            break;
        default:
            split_.literals.push_back({Literal::Kind::Number, negative ? "-" : ""});
            split_.literals.back().text += token.text;
        }
    }

    // One statement a call: behind the sign that ends it nothing may follow.
    void endStatement() {
        const Token behind = lexer_.next();
        if (behind.kind != TokenKind::End || nested_ != 0) sql::failSyntax(behind.text);
    }

    // Words stand one blank apart, but for the parts of a name.
    void put(std::string_view word) {
        std::string& shape = split_.shape;
        if (!shape.empty() && shape.back() != '.') shape += ' ';
        shape += word;
    }

    void putText(std::string_view content) {
        put("'");
        for (const char letter : content) {
            split_.shape += letter;
            if (letter == '\'') split_.shape += '\'';
        }
        split_.shape += '\'';
    }

    Lexer lexer_;
    const char* begin_;
    bool bindsLiterals_;
    SplitStatement split_;
    std::array<Level, kMostNested + 1> levels_{};
    std::size_t nested_ = 0;
    bool meetsValue_ = false; // a literal here is compared or stored
    bool opensList_ = false;
    bool namesAlias_ = false;
};

} // namespace

SplitStatement split(std::string_view sql, Literals literals) {
    return Splitter(sql, literals).run();
}

SplitStatement splitStatement(std::string_view sql) {
    return split(sql, Literals::Bound);
}

} // namespace veldona::store
