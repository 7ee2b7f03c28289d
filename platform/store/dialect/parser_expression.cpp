#include <algorithm>
#include <optional>

#include "platform/store/dialect/names.h"
#include "platform/store/dialect/parser_words.h"
#include "platform/store/dialect/storeerror.h"

namespace veldona::store::sql {
namespace {

ExprPtr node(Expr::Kind kind) {
    return std::make_unique<Expr>(kind);
}

void adopt(Expr& parent, ExprPtr part) {
    parent.depth = requireDepth(std::max(parent.depth, part->depth + 1));
    parent.parts.push_back(std::move(part));
}

ExprPtr node(Expr::Kind kind, Operator op, ExprPtr left, ExprPtr right = nullptr) {
    ExprPtr made = node(kind);
    made->op = op;
    adopt(*made, std::move(left));
    if (right) adopt(*made, std::move(right));
    return made;
}

std::optional<Operator> comparing(Sign sign) {
    switch (sign) {
    case Sign::Equal:
        return Operator::Equal;
    case Sign::NotEqual:
        return Operator::NotEqual;
    case Sign::Less:
        return Operator::Less;
    case Sign::LessEqual:
        return Operator::LessEqual;
    case Sign::Greater:
        return Operator::Greater;
    case Sign::GreaterEqual:
        return Operator::GreaterEqual;
    default:
        return std::nullopt;
    }
}

// From the loosest to the tightest: &, then + and -, then * and /.
constexpr int kTightest = 2;

std::optional<Operator> calculating(const Words& words, int level) {
    switch (level) {
    case 0:
        return words.is(Sign::Ampersand) ? std::optional(Operator::Join) : std::nullopt;
    case 1:
        if (words.is(Sign::Plus)) return Operator::Add;
        return words.is(Sign::Minus) ? std::optional(Operator::Subtract) : std::nullopt;
    default:
        if (words.is(Sign::Star)) return Operator::Multiply;
        return words.is(Sign::Slash) ? std::optional(Operator::Divide) : std::nullopt;
    }
}

ExprPtr value(Literal::Kind kind, std::string text) {
    ExprPtr made = node(Expr::Kind::Value);
    made->literal = {kind, std::move(text)};
    return made;
}

} // namespace

Nesting::Nesting(int& depth) : depth_(depth) {
    requireDepth(depth + 1); // before it counts, since a constructor that raises has no destructor
    ++depth_;
}

int requireDepth(int depth) {
    if (depth > kDeepest) throw StoreError(StoreError::Kind::Syntax, kTooNested);
    return depth;
}

ExprPtr ExpressionParser::disjunction() {
    ExprPtr left = conjunction();
    while (words_.takeIf("OR"))
        left = node(Expr::Kind::Logic, Operator::Or, std::move(left), conjunction());
    return left;
}

ExprPtr ExpressionParser::conjunction() {
    ExprPtr left = negation();
    while (words_.takeIf("AND"))
        left = node(Expr::Kind::Logic, Operator::And, std::move(left), negation());
    return left;
}

ExprPtr ExpressionParser::negation() {
    if (!words_.takeIf("NOT")) return comparison();
    const Nesting nesting(nesting_);
    return node(Expr::Kind::Logic, Operator::Not, negation());
}

ExprPtr ExpressionParser::comparison() {
    ExprPtr left = operation(0);
    while (true) {
        if (const auto op = comparing(words_.peek().sign)) {
            words_.take();
            left = node(Expr::Kind::Comparison, *op, std::move(left), operation(0));
        } else if (words_.is("NOT") || words_.is("LIKE") || words_.is("BETWEEN") || words_.is("IN") ||
                   words_.is("IS")) {
            const bool negated = words_.takeIf("NOT");
            left = test(std::move(left), negated);
        } else {
            return left;
        }
    }
}

ExprPtr ExpressionParser::test(ExprPtr left, bool negated) {
    ExprPtr made;
    if (words_.takeIf("LIKE")) {
        made = node(Expr::Kind::Like, Operator::Equal, std::move(left), operation(0));
    } else if (words_.takeIf("BETWEEN")) {
        made = node(Expr::Kind::Between, Operator::Equal, std::move(left), operation(0));
        words_.expect("AND");
        adopt(*made, operation(0));
    } else if (words_.takeIf("IN")) {
        return membership(std::move(left), negated);
    } else if (!negated && words_.takeIf("IS")) {
        negated = words_.takeIf("NOT");
        words_.expect("NULL");
        made = node(Expr::Kind::IsNull, Operator::Equal, std::move(left));
    } else {
        words_.fail();
    }
    made->negated = negated;
    return made;
}

ExprPtr ExpressionParser::membership(ExprPtr left, bool negated) {
    const Nesting nesting(nesting_);
    ExprPtr made = node(Expr::Kind::In, Operator::Equal, std::move(left));
    made->negated = negated;
    words_.expect(Sign::Open);
    if (words_.is("SELECT")) {
        made->query = selects_.readSelect();
        made->depth = requireDepth(std::max(made->depth, made->query->depth + 1));
    } else {
        do {
            adopt(*made, operation(0));
        } while (words_.takeIf(Sign::Comma));
    }
    words_.expect(Sign::Close);
    return made;
}

ExprPtr ExpressionParser::operation(int level) {
    if (level > kTightest) return negated();
    ExprPtr left = operation(level + 1);
    while (const auto op = calculating(words_, level)) {
        words_.take();
        left = node(Expr::Kind::Calculation, *op, std::move(left), operation(level + 1));
    }
    return left;
}

ExprPtr ExpressionParser::negated() {
    if (!words_.is(Sign::Minus) && !words_.is(Sign::Plus)) return primary();
    const Nesting nesting(nesting_);
    const bool minus = words_.take().sign == Sign::Minus;
    ExprPtr operand = negated();
    return minus ? node(Expr::Kind::Calculation, Operator::Negate, std::move(operand)) : std::move(operand);
}

ExprPtr ExpressionParser::primary() {
    const Token& token = words_.peek();
    switch (token.kind) {
    case TokenKind::Number:
        return value(Literal::Kind::Number, std::string(words_.take().text));
    case TokenKind::Text:
        return value(Literal::Kind::Text, textOf(words_.take()));
    case TokenKind::Date:
        return value(Literal::Kind::Date, std::string(words_.take().text));
    case TokenKind::Parameter: {
        ExprPtr made = node(Expr::Kind::Parameter);
        made->parameter = words_.takeParameter();
        return made;
    }
    case TokenKind::Word:
    case TokenKind::Bracketed:
        return word();
    default:
        break;
    }
    const Nesting nesting(nesting_);
    words_.expect(Sign::Open);
    ExprPtr inside = expression();
    words_.expect(Sign::Close);
    return inside;
}

ExprPtr ExpressionParser::word() {
    if (words_.peek().kind == TokenKind::Word && words_.is(Sign::Open, 1)) return call();
    if (words_.takeIf("NULL")) return node(Expr::Kind::Null);
    if (words_.is("TRUE") || words_.is("FALSE")) {
        ExprPtr made = node(Expr::Kind::Truth);
        made->negated = words_.is("FALSE");
        words_.take();
        return made;
    }
    return column();
}

ExprPtr ExpressionParser::column() {
    ExprPtr made = node(Expr::Kind::Column);
    made->name = words_.takeName();
    if (words_.takeIf(Sign::Dot)) {
        made->qualifier = std::move(made->name);
        made->name = words_.takeName();
    }
    return made;
}

ExprPtr ExpressionParser::call() {
    const Nesting nesting(nesting_);
    if (!words_.isName()) words_.fail();
    ExprPtr made = node(Expr::Kind::Call);
    made->name = foldName(words_.take().text);
    words_.expect(Sign::Open);
    if (words_.takeIf(Sign::Star)) {
        adopt(*made, node(Expr::Kind::AllRows));
    } else if (!words_.is(Sign::Close)) {
        do {
            adopt(*made, expression());
        } while (words_.takeIf(Sign::Comma));
    }
    words_.expect(Sign::Close);
    return made;
}

} // namespace veldona::store::sql
