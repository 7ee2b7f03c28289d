#include "platform/store/dialect/tree_types.h"

#include <algorithm>
#include <array>

#include "platform/store/dialect/storeerror.h"

namespace veldona::store::sql {
namespace {

using enum ColumnType;
using Kind = Function::Kind;

constexpr std::optional<ColumnType> kNone = std::nullopt;

// Sorted by name.
constexpr std::array kFunctions = {
    Function{"CDBL", Kind::Convert, "n", 1, Number, {}},
    Function{"COUNT", Kind::Count, "a", 1, Whole, "COUNT"},
    Function{"DATE", Kind::Engine, "", 0, Date, "vd_today"},
    Function{"IIF", Kind::Iif, "caa", 3, kNone, {}},
    Function{"LEN", Kind::Engine, "t", 1, Whole, "vd_len"},
    Function{"MAX", Kind::Extreme, "a", 1, kNone, "MAX"},
    Function{"MID", Kind::Engine, "tnn", 2, Text, "vd_mid"},
    Function{"MIN", Kind::Extreme, "a", 1, kNone, "MIN"},
    Function{"NOW", Kind::Engine, "", 0, Date, "vd_now"},
    Function{"NZ", Kind::Nz, "aa", 1, kNone, "coalesce"},
    Function{"ROUND", Kind::Engine, "nn", 1, Number, "vd_round"},
    Function{"SUM", Kind::Sum, "n", 1, Number, "SUM"},
    Function{"UCASE", Kind::Engine, "t", 1, Text, "vd_ucase"},
    Function{"VAL", Kind::Engine, "t", 1, Number, "vd_val"},
};
constexpr bool byName(const Function& a, const Function& b) {
    return a.name < b.name;
}
static_assert(std::is_sorted(kFunctions.begin(), kFunctions.end(), byName));

bool isLiteral(const Expr& expr) {
    return expr.kind == Expr::Kind::Value || expr.kind == Expr::Kind::Parameter ||
           expr.kind == Expr::Kind::Null;
}

std::optional<ColumnType> sumType(Family left, Family right, std::optional<ColumnType> numeric) {
    if (left == Family::Unknown || right == Family::Unknown) return std::nullopt;
    if (left == Family::Text || right == Family::Text) {
        const bool textAndNumber = left == Family::Numeric || right == Family::Numeric;
        return textAndNumber ? kNone : std::optional(Text);
    }
    if ((left == Family::Date) != (right == Family::Date)) return Date;
    return left == Family::Date ? std::optional(Number) : numeric;
}

} // namespace

Family familyOf(std::optional<ColumnType> type) {
    if (!type) return Family::Unknown;
    switch (*type) {
    case Text:
    case Memo:
        return Family::Text;
    case Date:
        return Family::Date;
    default:
        return Family::Numeric;
    }
}

bool isWhole(std::optional<ColumnType> type) {
    return familyOf(type) == Family::Numeric && type != Number;
}

std::optional<ColumnType> comparedType(const Expr& left, const Expr& right) {
    if (left.type == Boolean && right.type == Boolean) return Boolean;
    const bool leftLeads = isLiteral(right) || !right.type;
    if (leftLeads || isLiteral(left) || !left.type) {
        const auto leading = left.type && (leftLeads || !right.type) ? left.type : right.type;
        return familyOf(leading) == Family::Numeric ? std::optional(Number) : leading;
    }
    const Family a = familyOf(left.type), b = familyOf(right.type);
    if (a == b) return a == Family::Numeric ? Number : a == Family::Text ? Text : Date;
    if (a == Family::Date || b == Family::Date) {
        return a == Family::Numeric || b == Family::Numeric ? Number : Text;
    }
    throw StoreError(StoreError::Kind::TypeMismatch,
                     "Koşuldaki veri türleri uyuşmuyor: metin, sayıyla karşılaştırılamaz.");
}

std::optional<ColumnType> calculatedType(Operator op, const Expr& left, const Expr& right) {
    const std::optional<ColumnType> numeric = isWhole(left.type) && isWhole(right.type) ? Whole : Number;
    switch (op) {
    case Operator::Join:
        return Text;
    case Operator::Add:
        return sumType(familyOf(left.type), familyOf(right.type), numeric);
    case Operator::Subtract:
        if (familyOf(left.type) == Family::Date && familyOf(right.type) == Family::Numeric) return Date;
        return numeric;
    case Operator::Multiply:
        return numeric;
    default:
        return Number;
    }
}

std::optional<ColumnType> eitherType(const Expr& one, const Expr& other) {
    if (!one.type || one.kind == Expr::Kind::Null) return other.type;
    if (!other.type || one.type == other.type) return one.type;
    const Family a = familyOf(one.type), b = familyOf(other.type);
    if ((a == Family::Numeric) != (b == Family::Numeric)) return std::nullopt;
    if (a != b) return Text; // a date beside a text
    if (a == Family::Numeric) return isWhole(one.type) && isWhole(other.type) ? Whole : Number;
    return Text;
}

const Function* findFunction(std::string_view name) {
    const auto found = std::lower_bound(kFunctions.begin(), kFunctions.end(), name,
                                        [](const Function& a, std::string_view b) { return a.name < b; });
    return found != kFunctions.end() && found->name == name ? &*found : nullptr;
}

} // namespace veldona::store::sql
