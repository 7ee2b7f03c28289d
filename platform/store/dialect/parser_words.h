// The words of one statement, with the look ahead that the grammar needs, and the part of the grammar below
// statements.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/store/dialect/reading.h"
#include "platform/store/dialect/tree.h"

namespace veldona::store::sql {

class Words {
public:
    explicit Words(const Reading& statement) : statement_(statement), tokens_(statement.tokens) {}

    [[nodiscard]] const Token& peek(std::size_t ahead = 0) const;
    Token take();
    [[nodiscard]] bool is(Sign sign, std::size_t ahead = 0) const { return peek(ahead).sign == sign; }
    // A keyword, in capitals: a word without brackets.
    [[nodiscard]] bool is(std::string_view keyword, std::size_t ahead = 0) const;
    bool takeIf(Sign sign);
    bool takeIf(std::string_view keyword);
    void expect(Sign sign);
    void expect(std::string_view keyword);

    // A name that is no reserved word, or anything in brackets.
    [[nodiscard]] bool isName(std::size_t ahead = 0) const;
    // In capitals where it stands without brackets.
    [[nodiscard]] std::string takeName();
    // What stands here, behind AS (then as it was written) or alone; "" where no alias does.
    [[nodiscard]] std::string takeAlias();
    [[nodiscard]] int takeParameter();
    [[noreturn]] void fail() const;

private:
    const Reading& statement_;
    const std::vector<Token>& tokens_;
    std::size_t at_ = 0;
    int parameters_ = 0;
};

// Holds one level of nesting while it lives; raises StoreError{Syntax} beyond kDeepest.
class Nesting {
public:
    explicit Nesting(int& depth);
    ~Nesting() { --depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    int& depth_;
};

// Raises StoreError{Syntax} for a branch deeper than kDeepest.
int requireDepth(int depth);

// Reads SELECT … of an IN; the statements' grammar stands above the expressions' one.
class SelectReader {
public:
    virtual ~SelectReader() = default;
    virtual std::unique_ptr<Select> readSelect() = 0;
};

class ExpressionParser {
public:
    ExpressionParser(Words& words, int& nesting, SelectReader& selects)
        : words_(words), nesting_(nesting), selects_(selects) {}

    [[nodiscard]] ExprPtr expression() { return disjunction(); }
    [[nodiscard]] ExprPtr column();

private:
    ExprPtr disjunction();
    ExprPtr conjunction();
    ExprPtr negation();
    ExprPtr comparison();
    ExprPtr test(ExprPtr left, bool negated);
    ExprPtr membership(ExprPtr left, bool negated);
    ExprPtr operation(int level);
    ExprPtr negated();
    ExprPtr primary();
    ExprPtr word();
    ExprPtr call();

    Words& words_;
    int& nesting_;
    SelectReader& selects_;
};

} // namespace veldona::store::sql
