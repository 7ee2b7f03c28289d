#include "platform/store/dialect/parser_words.h"

#include <algorithm>
#include <array>

#include "platform/store/dialect/names.h"

namespace veldona::store::sql {
namespace {

// Sorted. Words that name nothing unless in brackets, among them some of wider dialects: a statement that
// uses those is refused at the word. TOP, ASC and DESC are told by where they stand.
constexpr std::array<std::string_view, 31> kReserved = {
    "AND",   "AS",     "BETWEEN", "BY",     "DELETE", "DISTINCT", "FALSE", "FROM",   "GROUP", "HAVING", "IN",
    "INNER", "INSERT", "INTO",    "IS",     "JOIN",   "LEFT",     "LIKE",  "MOD",    "NOT",   "NULL",   "ON",
    "OR",    "ORDER",  "RIGHT",   "SELECT", "SET",    "TRUE",     "UNION", "UPDATE", "WHERE"};
static_assert(std::is_sorted(kReserved.begin(), kReserved.end()));

bool isReserved(std::string_view word) {
    return std::binary_search(kReserved.begin(), kReserved.end(), foldName(word));
}

} // namespace

const Token& Words::peek(std::size_t ahead) const {
    return tokens_[std::min(at_ + ahead, tokens_.size() - 1)];
}

Token Words::take() {
    const Token taken = peek();
    at_ = std::min(at_ + 1, tokens_.size() - 1);
    return taken;
}

bool Words::is(std::string_view keyword, std::size_t ahead) const {
    return peek(ahead).kind == TokenKind::Word && sameName(peek(ahead).text, keyword);
}

bool Words::takeIf(Sign sign) {
    const bool found = is(sign);
    if (found) take();
    return found;
}

bool Words::takeIf(std::string_view keyword) {
    const bool found = is(keyword);
    if (found) take();
    return found;
}

void Words::expect(Sign sign) {
    if (!takeIf(sign)) fail();
}

void Words::expect(std::string_view keyword) {
    if (!takeIf(keyword)) fail();
}

bool Words::isName(std::size_t ahead) const {
    const Token& token = peek(ahead);
    return token.kind == TokenKind::Bracketed || (token.kind == TokenKind::Word && !isReserved(token.text));
}

std::string Words::takeName() {
    if (!isName()) fail();
    const Token name = take();
    return name.kind == TokenKind::Word ? foldName(name.text) : std::string(name.text);
}

std::string Words::takeAlias() {
    if (!takeIf("AS")) return isName() ? takeName() : std::string();
    if (!isName()) fail();
    return std::string(take().text);
}

int Words::takeParameter() {
    take();
    return ++parameters_;
}

void Words::fail() const {
    const Token& token = peek();
    if (token.kind == TokenKind::Word) failSyntax(foldName(token.text));
    if (token.kind != TokenKind::Parameter) failSyntax(token.text);
    // With its sign, and a doubled quote as one.
    failSyntax(statement_.literals.at(static_cast<std::size_t>(parameters_)).text);
}

} // namespace veldona::store::sql
