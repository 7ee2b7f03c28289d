#include <utility>

#include "platform/store/dialect/literal.h"
#include "platform/store/dialect/writer_parts.h"

namespace veldona::store::sql {
namespace {

using Kind = Expr::Kind;

} // namespace

void Writer::value(const Expr& expr, Tightness need) {
    if (isTruth(expr)) {
        // True counts as -1 wherever it is a value.
        return grouped(Tightness::Sign, need, [&] {
            const DepthGuard sign(*this, 2);
            put(words_.beforeTruth);
            condition(expr, Tightness::Or);
            put(words_.behindTruth);
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
    if (type == ColumnType::Counter && !countedTable_.empty()) {
        const std::string table = engineLiteral('"' + std::exchange(countedTable_, {}) + '"');
        return function(words_.counter, [&] {
            put(table + ", ");
            stored(expr, type);
        });
    }
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
        put(words_.beforeTruth);
        number(expr, Tightness::Add);
        put(" <> 0");
        return put(words_.behindTruth);
    default:
        return as(expr, type, Tightness::Or);
    }
}

// A value whose order or sameness matters: sorted, grouped, made distinct, the largest.
void Writer::collated(const Expr& expr) {
    const bool declares = familyOf(expr.type) != Family::Text || declaresAlphabet(expr);
    value(expr, declares ? Tightness::Or : Tightness::Collate);
    if (!declares) put(words_.byAlphabet);
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
    parameter(static_cast<std::size_t>(expr.parameter));
}

void Writer::parameter(std::size_t number) {
    put(words_.parameter);
    put(std::to_string(number));
}

void Writer::literal(const Value& value, Tightness need) {
    std::string written = engineLiteral(value);
    if (value.kind() == Value::Kind::Whole) written += words_.whole;
    if (value.kind() == Value::Kind::Double) written += words_.number;
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
            const DepthGuard sign(*this, 1);
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
    default: // what compares, and is written as a condition
        return;
    }
}

void Writer::binary(const Expr& left, std::string_view op, const Expr& right, Tightness have,
                    Tightness need) {
    grouped(have, need, [&] {
        number(left, have);
        put(op);
        const DepthGuard waiting(*this, 2);
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
            const DepthGuard waiting(*this, 2);
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
        const DepthGuard waiting(*this, 2);
        joinPart(*expr.parts[1]);
    });
}

// Null joins as nothing. What is a join already, or a literal, is never Null.
void Writer::joinPart(const Expr& expr) {
    const bool isJoin = expr.kind == Kind::Calculation && expr.op == Operator::Join;
    if (expr.kind == Kind::Value || isJoin) return text(expr, Tightness::Concat);
    function(words_.firstOfTwo, [&] {
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

void Writer::call(const Expr& expr, Tightness need) {
    switch (expr.function->kind) {
    case Function::Kind::Convert:
        return as(*expr.parts[0], expr.function->type, need);
    case Function::Kind::Iif:
        return choice(expr);
    case Function::Kind::Extreme:
        return extreme(expr);
    case Function::Kind::Nz:
        return function(words_.firstOfTwo, [&] {
            as(*expr.parts[0], expr.type, Tightness::Or);
            put(", ");
            if (expr.parts.size() == 2) return as(*expr.parts[1], expr.type, Tightness::Or);
            if (familyOf(expr.type) != Family::Numeric) return put("''");
            literal(std::int64_t{0}, Tightness::Or);
        });
    case Function::Kind::Count:
        return function("COUNT", [&] { value(*expr.parts[0], Tightness::Or); });
    default:
        return engineCall(expr);
    }
}

void Writer::engineCall(const Expr& expr) {
    const Function& called = *expr.function;
    function(called.engineName, [&] {
        for (std::size_t i = 0; i < expr.parts.size(); ++i) {
            if (i > 0) put(", ");
            const bool isText = called.kinds[i] == 't';
            isText ? text(*expr.parts[i], Tightness::Or) : number(*expr.parts[i], Tightness::Or);
        }
    });
}

void Writer::choice(const Expr& expr) {
    const DepthGuard opened(*this, 6);
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
