#include "platform/store/criteria.h"

#include <array>
#include <cmath>
#include <utility>

#include "platform/store/functions.h"
#include "platform/store/lexer.h"
#include "platform/store/names.h"
#include "platform/store/storeerror.h"

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

double numberOf(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Whole:
        return static_cast<double>(value.get<std::int64_t>());
    case Value::Kind::Boolean:
        return value.get<bool>() ? 1 : 0;
    case Value::Kind::Double:
        return value.get<double>();
    default:
        return std::nan("");
    }
}

// Nothing where the two are of kinds that are not compared.
std::optional<int> order(const Value& cell, const Value& sought) {
    if (cell.kind() == Value::Kind::Text && sought.kind() == Value::Kind::Text)
        return compareTurkish(cell.get<std::string>(), sought.get<std::string>());
    if (cell.kind() == Value::Kind::Date && sought.kind() == Value::Kind::Date) {
        const auto compared = cell.get<DateTime>() <=> sought.get<DateTime>();
        return compared < 0 ? -1 : compared > 0 ? 1 : 0;
    }
    const double a = numberOf(cell), b = numberOf(sought);
    if (std::isnan(a) || std::isnan(b)) return std::nullopt;
    return a < b ? -1 : a > b ? 1 : 0;
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

bool Criteria::holds(int order) const {
    switch (relation_) {
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
    if (relation_ == Relation::Like) {
        const bool areTexts = cell.kind() == Value::Kind::Text && sought_.kind() == Value::Kind::Text;
        return areTexts && likeTurkish(cell.get<std::string>(), sought_.get<std::string>());
    }
    const auto compared = order(cell, sought_);
    return compared && holds(*compared);
}

int Criteria::findRow(const RowSet& rows, int from) const {
    int row = from;
    if (relation_ == Relation::Equal && sought_.kind() == Value::Kind::Whole) {
        // The look-up by key that every grid does, over all of its rows.
        const std::int64_t sought = sought_.get<std::int64_t>();
        const auto isKey = [&](const Value& cell) {
            return cell.kind() == Value::Kind::Whole ? cell.get<std::int64_t>() == sought : fits(cell);
        };
        while (row < rows.rowCount() && !isKey(rows.at(row, column_)))
            ++row;
        return row;
    }
    while (row < rows.rowCount() && !fits(rows.at(row, column_)))
        ++row;
    return row;
}

} // namespace veldona::store
