#include "platform/store/dialect/writer_parts.h"

namespace veldona::store::sql {
namespace {

using Kind = Expr::Kind;

std::string_view comparing(Operator op) {
    switch (op) {
    case Operator::NotEqual:
        return " <> ";
    case Operator::Less:
        return " < ";
    case Operator::LessEqual:
        return " <= ";
    case Operator::Greater:
        return " > ";
    case Operator::GreaterEqual:
        return " >= ";
    default:
        return " = ";
    }
}

} // namespace

bool isTruth(const Expr& expr) {
    switch (expr.kind) {
    case Kind::Comparison:
    case Kind::Logic:
    case Kind::Like:
    case Kind::Between:
    case Kind::In:
    case Kind::IsNull:
        return true;
    default:
        return false;
    }
}

// A column of a table declares the alphabet's order; whatever else is text must say that it is compared by
// it.
bool declaresAlphabet(const Expr& expr) {
    return expr.kind == Kind::Column && expr.source->isTable && familyOf(expr.type) == Family::Text;
}

// A date has an order of its own, and beside it no column's order is understood by itself.
bool mustSayAlphabet(const Expr& leading, const Expr& other) {
    return !declaresAlphabet(leading) || familyOf(other.type) == Family::Date;
}

void Writer::condition(const Expr& expr, Tightness need) {
    switch (expr.kind) {
    case Kind::Comparison:
        return grouped(Tightness::Compare, need, [&] { comparison(expr); });
    case Kind::Logic:
        return logic(expr, need);
    case Kind::Like:
        return like(expr, need);
    case Kind::Between:
        return grouped(Tightness::Compare, need, [&] { between(expr); });
    case Kind::In:
        return grouped(Tightness::Compare, need, [&] { membership(expr); });
    case Kind::IsNull:
        return grouped(Tightness::Compare, need, [&] {
            value(*expr.parts[0], Tightness::Add);
            put(expr.negated ? " IS NOT NULL" : " IS NULL");
        });
    default:
        break;
    }
    if (familyOf(expr.type) == Family::Text || familyOf(expr.type) == Family::Date) {
        throw StoreError(StoreError::Kind::TypeMismatch,
                         "Veri türü uyuşmuyor: koşul bir karşılaştırma olmalı.");
    }
    if (words_.isTrue.empty()) return value(expr, need);
    grouped(Tightness::Compare, need, [&] {
        value(expr, Tightness::Add);
        put(words_.isTrue);
    });
}

void Writer::comparison(const Expr& expr) {
    compareSides(*expr.parts[0], comparing(expr.op), *expr.parts[1]);
}

void Writer::compareSides(const Expr& left, std::string_view op, const Expr& right) {
    const auto type = comparedType(left, right);
    const bool columnFirst = left.kind == Kind::Column;
    const bool collates = familyOf(type) == Family::Text &&
                          mustSayAlphabet(columnFirst ? left : right, columnFirst ? right : left);
    as(left, type, collates ? Tightness::Collate : Tightness::Add);
    if (collates) put(words_.byAlphabet);
    put(op);
    const DepthGuard waiting(*this, 2);
    as(right, type, Tightness::Add);
}

void Writer::logic(const Expr& expr, Tightness need) {
    if (expr.op == Operator::Not) {
        return grouped(Tightness::Not, need, [&] {
            const DepthGuard sign(*this, 1);
            put("NOT ");
            condition(*expr.parts[0], Tightness::Not);
        });
    }
    const Tightness have = expr.op == Operator::And ? Tightness::And : Tightness::Or;
    grouped(have, need, [&] {
        condition(*expr.parts[0], have);
        put(expr.op == Operator::And ? " AND " : " OR ");
        const DepthGuard waiting(*this, 2);
        condition(*expr.parts[1], below(have));
    });
}

void Writer::like(const Expr& expr, Tightness need) {
    grouped(expr.negated ? Tightness::Not : Tightness::Whole, need, [&] {
        if (expr.negated) put("NOT ");
        function("vd_like", [&] {
            text(*expr.parts[1], Tightness::Or);
            put(", ");
            text(*expr.parts[0], Tightness::Or);
        });
    });
}

void Writer::between(const Expr& expr) {
    const Expr& tested = *expr.parts[0];
    // Both ends in one manner: where one of them makes the test one of text, so it is for the other.
    const auto low = comparedType(tested, *expr.parts[1]), high = comparedType(tested, *expr.parts[2]);
    if (familyOf(low) != familyOf(high)) {
        throw StoreError(StoreError::Kind::TypeMismatch, "BETWEEN koşulunun sınırları aynı türden olmalı.");
    }
    const bool collates = familyOf(low) == Family::Text && (mustSayAlphabet(tested, *expr.parts[1]) ||
                                                            mustSayAlphabet(tested, *expr.parts[2]));
    as(tested, low, collates ? Tightness::Collate : Tightness::Add);
    if (collates) put(words_.byAlphabet);
    put(expr.negated ? " NOT BETWEEN " : " BETWEEN ");
    const DepthGuard waiting(*this, 4);
    as(*expr.parts[1], low, Tightness::Add);
    put(" AND ");
    as(*expr.parts[2], low, Tightness::Add);
}

void Writer::membership(const Expr& expr) {
    const Expr& tested = *expr.parts[0];
    const Expr& first = expr.query ? *expr.query->arms.front().items.front().expr : *expr.parts[1];
    const auto type = comparedType(tested, first);
    const bool collates = familyOf(type) == Family::Text && mustSayAlphabet(tested, first);
    as(tested, type, collates ? Tightness::Collate : Tightness::Add);
    if (collates) put(words_.byAlphabet);
    put(expr.negated ? " NOT IN (" : " IN (");
    const DepthGuard list(*this, 6);
    if (expr.query) {
        if (familyOf(first.type) != familyOf(type)) {
            throw StoreError(StoreError::Kind::TypeMismatch,
                             "IN içindeki sorgunun alanı aynı türden olmalı.");
        }
        select(*expr.query, Use::Members);
    }
    for (std::size_t i = 1; i < expr.parts.size(); ++i) {
        if (i > 1) put(", ");
        static_cast<void>(comparedType(tested, *expr.parts[i])); // text and number do not meet
        as(*expr.parts[i], type, Tightness::Or);
    }
    put(")");
}

} // namespace veldona::store::sql
