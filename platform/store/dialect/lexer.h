// The words of the dialect: names, numbers, texts in '…' or "…", dates in #…#, signs.
//
// A token points into the text it was cut from, which must outlive it. Comments are no part of the dialect.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace veldona::store::sql {

enum class TokenKind : std::uint8_t {
    End,
    Word,      // a name or a keyword
    Bracketed, // a name in […], never a keyword
    Number,
    Text,      // without its quotes; a quote inside stands there twice
    Date,      // without its signs, never blank
    Identity,  // @@IDENTITY
    Parameter, // in the place of a value that is bound (reading.h)
    Sign,
};

enum class Sign : std::uint8_t {
    None,
    Open,
    Close,
    Comma,
    Dot,
    Semicolon,
    Plus,
    Minus,
    Star,
    Slash,
    Ampersand,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
};

struct Token {
    TokenKind kind = TokenKind::End;
    Sign sign = Sign::None;
    char quote = 0; // of a text
    std::string_view text;
};

class Lexer {
public:
    // Raises StoreError{Syntax} for a NUL character.
    explicit Lexer(std::string_view sql);

    // Raises StoreError{Syntax} where no word begins.
    [[nodiscard]] Token next();
    // Where it stands: behind the word taken last, until it is asked what follows.
    [[nodiscard]] std::size_t at() const { return at_; }
    // True where the next word is a sign that calculates or joins: what stands before it is no whole
    // value.
    [[nodiscard]] bool operatorFollows();
    // True where the next word begins like a number.
    [[nodiscard]] bool numberFollows();

private:
    void skipBlanks();
    Token word();
    Token number();
    Token text(char quote);
    Token enclosed(char close, TokenKind kind);
    Token identity();
    Token signs();
    [[noreturn]] void fail(std::size_t at) const;

    std::string_view sql_;
    std::size_t at_ = 0;
};

// The content of a text token: doubled quotes are one, broken UTF-8 is mended.
[[nodiscard]] std::string textOf(const Token& token);

// Raises StoreError{Syntax} that names the place by what stands there.
[[noreturn]] void failSyntax(std::string_view near);

} // namespace veldona::store::sql
