#include "platform/store/faces/criteria.h"

#include <string>

#include "platform/store/dialect/lexer.h"
#include "platform/store/dialect/literal.h"
#include "platform/store/dialect/names.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/alphabet.h"

namespace veldona::store {
namespace {

using sql::Lexer;
using sql::Sign;
using sql::Token;
using sql::TokenKind;

[[noreturn]] void failCriteria(std::string_view text) {
    throw StoreError(StoreError::Kind::Syntax, "Arama koşulu okunamadı: " + std::string(text) + ".");
}

std::optional<Literal> literalOf(const Token& token, bool isNegative) {
    switch (token.kind) {
    case TokenKind::Number:
        return Literal{Literal::Kind::Number, (isNegative ? "-" : "") + std::string(token.text)};
    case TokenKind::Text:
        return Literal{Literal::Kind::Text, sql::textOf(token)};
    case TokenKind::Date:
        return Literal{Literal::Kind::Date, std::string(token.text)};
    default:
        return std::nullopt;
    }
}

std::optional<double> numberOf(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Whole:
        return static_cast<double>(value.get<std::int64_t>());
    case Value::Kind::Boolean:
        return value.get<bool>() ? 1 : 0;
    case Value::Kind::Double:
        return value.get<double>();
    case Value::Kind::Date:
        return static_cast<double>(value.get<DateTime>().seconds());
    default:
        return std::nullopt;
    }
}

} // namespace

Criteria::Criteria(std::string_view text, const std::vector<ResultColumn>& columns) {
    Lexer words(text);
    const Token column = words.next();
    if (column.kind != TokenKind::Word && column.kind != TokenKind::Bracketed) failCriteria(text);
    column_ = ColumnIndex().find(columns, column.text);
    if (column_ < 0)
        throw StoreError(StoreError::Kind::UnknownName,
                         "Böyle bir alan yok: " + std::string(column.text) + ".");
    const auto relation = relationOf(words.next());
    if (!relation) failCriteria(text);
    relation_ = *relation;
    Token value = words.next();
    const bool isNegative = value.sign == Sign::Minus;
    if (isNegative) value = words.next();
    const auto literal = literalOf(value, isNegative);
    if (!literal || words.next().kind != TokenKind::End) failCriteria(text);
    const auto type = columns[static_cast<std::size_t>(column_)].type;
    sought_ = shownValue(bindLiteral(*literal, type), type);
}

std::optional<Criteria::Relation> Criteria::relationOf(const Token& token) {
    if (token.kind == TokenKind::Word && sameName(token.text, "LIKE")) return Relation::Like;
    switch (token.sign) {
    case Sign::Equal:
        return Relation::Equal;
    case Sign::NotEqual:
        return Relation::Unequal;
    case Sign::Less:
        return Relation::Less;
    case Sign::LessEqual:
        return Relation::LessOrEqual;
    case Sign::Greater:
        return Relation::Greater;
    case Sign::GreaterEqual:
        return Relation::GreaterOrEqual;
    default:
        return std::nullopt;
    }
}

// `order`: of what is found beside what is sought, below, equal to or above zero.
bool Criteria::isAs(Relation relation, int order) {
    switch (relation) {
    case Relation::Equal:
        return order == 0;
    case Relation::Unequal:
        return order != 0;
    case Relation::Less:
        return order < 0;
    case Relation::LessOrEqual:
        return order <= 0;
    case Relation::Greater:
        return order > 0;
    case Relation::GreaterOrEqual:
        return order >= 0;
    case Relation::Like:
        break;
    }
    return false;
}

bool Criteria::fits(const Value& cell) const {
    const bool isDate = cell.kind() == Value::Kind::Date;
    const auto held = numberOf(cell), sought = numberOf(sought_);
    if (!held || !sought || isDate != (sought_.kind() == Value::Kind::Date)) return false;
    return isAs(relation_, *held < *sought ? -1 : *held > *sought ? 1 : 0);
}

// The look-up by key that every grid does, over all of its rows.
int Criteria::findKey(const RowSet& rows, int from) const {
    const std::int64_t sought = sought_.get<std::int64_t>();
    if (const auto first = rows.findWhole(column_, sought); first && *first >= from) return *first;
    int row = from;
    for (; row < rows.rowCount(); ++row) {
        const Value& cell = rows.at(row, column_);
        if (cell.kind() == Value::Kind::Whole ? cell.get<std::int64_t>() == sought : fits(cell)) break;
    }
    return row;
}

// By the alphabet, so that a search agrees with the statements.
int Criteria::findText(const RowSet& rows, int from) const {
    const std::string& sought = sought_.get<std::string>();
    const LikePattern pattern(relation_ == Relation::Like ? std::string_view(sought) : std::string_view());
    const auto holds = [&](std::string_view text) {
        if (relation_ == Relation::Like) return pattern.fits(text);
        return isAs(relation_, Alphabet::turkish().compare(text, sought));
    };
    int row = from;
    for (; row < rows.rowCount(); ++row) {
        const Value& cell = rows.at(row, column_);
        if (cell.kind() == Value::Kind::Text && holds(cell.get<std::string>())) break;
    }
    return row;
}

int Criteria::findRow(const RowSet& rows, int from) const {
    if (sought_.kind() == Value::Kind::Text) return findText(rows, from);
    if (relation_ == Relation::Equal && sought_.kind() == Value::Kind::Whole) return findKey(rows, from);
    int row = from;
    while (row < rows.rowCount() && !fits(rows.at(row, column_)))
        ++row;
    return row;
}

} // namespace veldona::store
