#include <cstdlib>

#include "platform/store/literal.h"
#include "platform/store/tree_check.h"
#include "platform/store/writer_held.h"

namespace veldona::store::sql {
namespace {

using Kind = Expr::Kind;

// A column of a table declares the alphabet's order; whatever else is text must say that it is compared by
// it.
bool declaresAlphabet(const Expr& expr) {
    return expr.kind == Kind::Column && expr.source->isTable && familyOf(expr.type) == Family::Text;
}

bool isTruth(const Expr& expr) {
    switch (expr.kind) {
    case Kind::Comparison:
    case Kind::Logic:
    case Kind::Like:
    case Kind::Between:
    case Kind::In:
    case Kind::IsNull:
        return true;
    case Kind::Call:
        return expr.function->kind == Function::Kind::IsNull;
    default:
        return false;
    }
}

std::string_view engineOperator(Operator op) {
    switch (op) {
    case Operator::Subtract:
        return " - ";
    case Operator::Multiply:
        return " * ";
    case Operator::Equal:
        return " = ";
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
    case Operator::And:
        return " AND ";
    case Operator::Or:
        return " OR ";
    case Operator::WholeDivide:
        return "vd_wholedivide";
    case Operator::Modulo:
        return "vd_modulo";
    case Operator::Power:
        return "vd_power";
    default:
        return " + ";
    }
}

Tightness below(Tightness tightness) {
    return static_cast<Tightness>(static_cast<int>(tightness) + 1);
}

} // namespace

void Writer::value(const Expr& expr, Tightness need) {
    if (isTruth(expr)) {
        // True counts as -1 wherever it is a value.
        return grouped(Tightness::Sign, need, [&] {
            const Held sign(*this, 2);
            put("-(");
            condition(expr, Tightness::Or);
            put(")");
        });
    }
    switch (expr.kind) {
    case Kind::Null:
        return put("NULL");
    case Kind::Truth:
        return literal(expr.negated ? 0 : -1, need);
    case Kind::Value:
        return literal(bindLiteral(expr.literal, std::nullopt), need);
    case Kind::Parameter:
        return parameter(expr, std::nullopt);
    case Kind::Column:
        return column(expr);
    case Kind::Calculation:
        return calculation(expr, need);
    case Kind::Call:
        return call(expr, need);
    case Kind::AllRows:
        return put("*");
    default:
        return;
    }
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
    default:
        break;
    }
    const bool isNull = expr.kind == Kind::IsNull || isTruth(expr);
    if (isNull) {
        return grouped(Tightness::Compare, need, [&] {
            value(*expr.parts[0], Tightness::Add);
            put(expr.negated ? " IS NOT NULL" : " IS NULL");
        });
    }
    if (familyOf(expr.type) == Family::Text || familyOf(expr.type) == Family::Date) {
        throw StoreError(StoreError::Kind::TypeMismatch,
                         "Veri türü uyuşmuyor: koşul bir karşılaştırma olmalı.");
    }
    value(expr, need);
}

void Writer::as(const Expr& expr, std::optional<ColumnType> type, Tightness need) {
    if (expr.kind == Kind::Parameter) return parameter(expr, type);
    if (expr.kind == Kind::Value && type) return literal(bindLiteral(expr.literal, *type), need);
    if (type == ColumnType::Boolean) return value(expr, need);
    switch (familyOf(type)) {
    case Family::Numeric:
        return number(expr, need);
    case Family::Text:
        return text(expr, need);
    case Family::Date:
        return date(expr, need);
    case Family::Unknown:
        return value(expr, need);
    }
}

void Writer::number(const Expr& expr, Tightness need) {
    if (expr.kind == Kind::Parameter) return parameter(expr, ColumnType::Number);
    if (expr.kind == Kind::Null || familyOf(expr.type) == Family::Numeric) return value(expr, need);
    if (expr.kind == Kind::Value) return literal(bindLiteral(expr.literal, ColumnType::Number), need);
    function(familyOf(expr.type) == Family::Date ? "vd_days" : "vd_number",
             [&] { value(expr, Tightness::Or); });
}

void Writer::text(const Expr& expr, Tightness need) {
    if (expr.kind == Kind::Parameter) return parameter(expr, ColumnType::Text);
    if (expr.kind == Kind::Null || familyOf(expr.type) == Family::Text) return value(expr, need);
    if (expr.kind == Kind::Value) return literal(bindLiteral(expr.literal, ColumnType::Text), need);
    function(familyOf(expr.type) == Family::Date ? "vd_date_text" : "vd_text",
             [&] { value(expr, Tightness::Or); });
}

void Writer::date(const Expr& expr, Tightness need) {
    if (expr.kind == Kind::Parameter) return parameter(expr, ColumnType::Date);
    if (expr.kind == Kind::Value) return literal(bindLiteral(expr.literal, ColumnType::Date), need);
    if (expr.kind == Kind::Null || familyOf(expr.type) == Family::Date) return value(expr, need);
    function("vd_date", [&] { value(expr, Tightness::Or); });
}

// What goes into a column of `type`: unlike a compared value it is rounded to what the column holds.
void Writer::stored(const Expr& expr, ColumnType type) {
    const bool fits = expr.kind == Kind::Null || expr.kind == Kind::Value || expr.kind == Kind::Parameter ||
                      (expr.kind == Kind::Column && expr.type == type);
    if (fits) return as(expr, type, Tightness::Or);
    switch (type) {
    case ColumnType::Counter:
    case ColumnType::Whole:
        return function("vd_long", [&] { number(expr, Tightness::Or); });
    case ColumnType::Small:
        return function("vd_integer", [&] { number(expr, Tightness::Or); });
    case ColumnType::Boolean:
        put("-(");
        number(expr, Tightness::Add);
        return put(" <> 0)");
    default:
        return as(expr, type, Tightness::Or);
    }
}

// A value whose order or sameness matters: sorted, grouped, made distinct, the largest.
void Writer::collated(const Expr& expr) {
    const bool declares = familyOf(expr.type) != Family::Text || declaresAlphabet(expr);
    value(expr, declares ? Tightness::Or : Tightness::Collate);
    if (!declares) put(" COLLATE TURKISH");
}

void Writer::column(const Expr& expr) {
    if (qualified_) {
        name(expr.source->shownName());
        put(".");
    }
    name(expr.name);
}

void Writer::parameter(const Expr& expr, std::optional<ColumnType> target) {
    targets_.at(static_cast<std::size_t>(expr.parameter) - 1) = target;
    put("?");
    put(std::to_string(expr.parameter));
}

void Writer::literal(const Value& value, Tightness need) {
    const std::string written = engineLiteral(value);
    grouped(written.front() == '-' ? Tightness::Sign : Tightness::Whole, need, [&] { put(written); });
}

void Writer::calculation(const Expr& expr, Tightness need) {
    const auto& parts = expr.parts;
    switch (expr.op) {
    case Operator::Add:
        return sum(expr, need);
    case Operator::Join:
        return join(expr, need);
    case Operator::Divide:
        return quotient(expr, need);
    case Operator::Multiply:
        return binary(*parts[0], " * ", *parts[1], Tightness::Multiply, need);
    case Operator::Negate:
        return grouped(Tightness::Sign, need, [&] {
            const Held sign(*this, 1);
            put("-");
            number(*parts[0], Tightness::Whole);
        });
    case Operator::Subtract:
        if (expr.type != ColumnType::Date) return binary(*parts[0], " - ", *parts[1], Tightness::Add, need);
        return function("vd_adddays", [&] {
            value(*parts[0], Tightness::Or);
            put(", -");
            number(*parts[1], Tightness::Whole);
        });
    default:
        return function(engineOperator(expr.op), [&] {
            number(*parts[0], Tightness::Or);
            put(", ");
            number(*parts[1], Tightness::Or);
        });
    }
}

void Writer::binary(const Expr& left, std::string_view op, const Expr& right, Tightness have,
                    Tightness need) {
    grouped(have, need, [&] {
        number(left, have);
        put(op);
        const Held waiting(*this, 2);
        number(right, below(have));
    });
}

void Writer::sum(const Expr& expr, Tightness need) {
    const Expr& left = *expr.parts[0];
    const Expr& right = *expr.parts[1];
    switch (familyOf(expr.type)) {
    case Family::Numeric:
        return binary(left, " + ", right, Tightness::Add, need);
    case Family::Text:
        return grouped(Tightness::Concat, need, [&] {
            text(left, Tightness::Concat);
            put(" || ");
            const Held waiting(*this, 2);
            text(right, Tightness::Collate);
        });
    case Family::Date: {
        const bool dateFirst = familyOf(left.type) == Family::Date;
        return function("vd_adddays", [&] {
            value(dateFirst ? left : right, Tightness::Or);
            put(", ");
            number(dateFirst ? right : left, Tightness::Or);
        });
    }
    case Family::Unknown:
        break;
    }
    function("vd_add", [&] {
        value(left, Tightness::Or);
        put(", ");
        value(right, Tightness::Or);
    });
}

void Writer::join(const Expr& expr, Tightness need) {
    grouped(Tightness::Concat, need, [&] {
        joinPart(*expr.parts[0]);
        put(" || ");
        const Held waiting(*this, 2);
        joinPart(*expr.parts[1]);
    });
}

// Null joins as nothing. What is a join already, or a literal, is never Null.
void Writer::joinPart(const Expr& expr) {
    const bool isJoin = expr.kind == Kind::Calculation && expr.op == Operator::Join;
    if (expr.kind == Kind::Value || isJoin) return text(expr, Tightness::Concat);
    function("ifnull", [&] {
        text(expr, Tightness::Or);
        put(", ''");
    });
}

void Writer::quotient(const Expr& expr, Tightness need) {
    const Expr& divisor = *expr.parts[1];
    if (divisor.kind == Kind::Value && divisor.literal.kind == Literal::Kind::Number) {
        const Value by =
            bindLiteral(divisor.literal, ColumnType::Number); // a double, so that nothing is cut off
        if (by != Value(0.0)) {
            return grouped(Tightness::Multiply, need, [&] {
                number(*expr.parts[0], Tightness::Multiply);
                put(" / ");
                literal(by, Tightness::Whole);
            });
        }
    }
    function("vd_divide", [&] {
        number(*expr.parts[0], Tightness::Or);
        put(", ");
        number(divisor, Tightness::Or);
    });
}

void Writer::comparison(const Expr& expr) {
    compareSides(*expr.parts[0], engineOperator(expr.op), *expr.parts[1]);
}

void Writer::compareSides(const Expr& left, std::string_view op, const Expr& right) {
    const auto type = comparedType(left, right);
    const bool leads = left.kind == Kind::Column ? declaresAlphabet(left) : declaresAlphabet(right);
    const bool collates = familyOf(type) == Family::Text && !leads;
    as(left, type, collates ? Tightness::Collate : Tightness::Add);
    if (collates) put(" COLLATE TURKISH");
    put(op);
    const Held waiting(*this, 2);
    as(right, type, Tightness::Add);
}

void Writer::logic(const Expr& expr, Tightness need) {
    if (expr.op == Operator::Not) {
        return grouped(Tightness::Not, need, [&] {
            const Held sign(*this, 1);
            put("NOT ");
            condition(*expr.parts[0], Tightness::Not);
        });
    }
    const Tightness have = expr.op == Operator::And ? Tightness::And : Tightness::Or;
    grouped(have, need, [&] {
        condition(*expr.parts[0], have);
        put(engineOperator(expr.op));
        const Held waiting(*this, 2);
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
    const bool collates = familyOf(low) == Family::Text && !declaresAlphabet(tested);
    as(tested, low, collates ? Tightness::Collate : Tightness::Add);
    if (collates) put(" COLLATE TURKISH");
    put(expr.negated ? " NOT BETWEEN " : " BETWEEN ");
    const Held waiting(*this, 4);
    as(*expr.parts[1], low, Tightness::Add);
    put(" AND ");
    as(*expr.parts[2], low, Tightness::Add);
}

void Writer::membership(const Expr& expr) {
    const Expr& tested = *expr.parts[0];
    const Expr& first = expr.query ? *expr.query->arms.front().items.front().expr : *expr.parts[1];
    const auto type = comparedType(tested, first);
    const bool collates = familyOf(type) == Family::Text && !declaresAlphabet(tested);
    as(tested, type, collates ? Tightness::Collate : Tightness::Add);
    if (collates) put(" COLLATE TURKISH");
    put(expr.negated ? " NOT IN (" : " IN (");
    const Held list(*this, 6);
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

void Writer::call(const Expr& expr, Tightness need) {
    switch (expr.function->kind) {
    case Function::Kind::Convert:
        return as(*expr.parts[0], expr.function->type, need);
    case Function::Kind::Iif:
        return choice(expr);
    case Function::Kind::Extreme:
        return extreme(expr);
    case Function::Kind::Nz:
        return function("ifnull", [&] {
            as(*expr.parts[0], expr.type, Tightness::Or);
            put(", ");
            if (expr.parts.size() == 2) return as(*expr.parts[1], expr.type, Tightness::Or);
            put(familyOf(expr.type) == Family::Numeric ? "0" : "''");
        });
    case Function::Kind::Count:
        return function("COUNT", [&] { value(*expr.parts[0], Tightness::Or); });
    default:
        return engineCall(expr);
    }
}

void Writer::engineCall(const Expr& expr) {
    const Function& called = *expr.function;
    const bool ofDate =
        called.kind == Function::Kind::Format && familyOf(expr.parts[0]->type) == Family::Date;
    function(ofDate ? "vd_format_date" : called.engineName, [&] {
        const bool startMissing = called.kind == Function::Kind::InStr && expr.parts.size() == 2;
        if (startMissing) put("1, ");
        for (std::size_t i = 0; i < expr.parts.size(); ++i) {
            if (i > 0) put(", ");
            argument(*expr.parts[i], called.kinds[i + (startMissing ? 1 : 0)]);
        }
    });
}

void Writer::argument(const Expr& expr, char kind) {
    switch (kind) {
    case 't':
        return text(expr, Tightness::Or);
    case 'n':
        return number(expr, Tightness::Or);
    case 'd':
        return date(expr, Tightness::Or);
    default:
        return value(expr, Tightness::Or);
    }
}

void Writer::choice(const Expr& expr) {
    const Held opened(*this, 6);
    put("CASE WHEN ");
    condition(*expr.parts[0], Tightness::Or);
    put(" THEN ");
    as(*expr.parts[1], expr.type, Tightness::Or);
    put(" ELSE ");
    as(*expr.parts[2], expr.type, Tightness::Or);
    put(" END");
}

void Writer::extreme(const Expr& expr) {
    function(expr.function->engineName, [&] {
        // A number as it is: the engine then takes the end of an index instead of reading the table.
        collated(*expr.parts[0]);
    });
}

} // namespace veldona::store::sql
