// What the types of two values that meet say about how they meet, and which functions the dialect has.
#pragma once

#include <optional>
#include <string_view>

#include "platform/store/dialect/definition.h"
#include "platform/store/dialect/tree.h"

namespace veldona::store::sql {

// Types that are compared and calculated with in one way.
enum class Family : std::uint8_t { Unknown, Numeric, Text, Date };

[[nodiscard]] Family familyOf(std::optional<ColumnType> type);
[[nodiscard]] bool isWhole(std::optional<ColumnType> type);

// The type that two compared values are brought to. A literal takes the type of what it meets; a date that
// meets a text is compared as text, one that meets a number as days. Raises StoreError{TypeMismatch} for text
// and number.
[[nodiscard]] std::optional<ColumnType> comparedType(const Expr& left, const Expr& right);
// The type of left and right under a calculating operator; nothing where the values must tell.
[[nodiscard]] std::optional<ColumnType> calculatedType(Operator op, const Expr& left, const Expr& right);
// The type of a value that is either of the two, as in IIf.
[[nodiscard]] std::optional<ColumnType> eitherType(const Expr& one, const Expr& other);

struct Function {
    enum class Kind : std::uint8_t {
        Engine,  // called by the name below with its arguments as the kinds say
        Convert, // only brings its argument to `kinds`
        Iif,
        Nz,
        Sum,
        Extreme,
        Count, // aggregates
    };
    std::string_view name;
    Kind kind;
    std::string_view kinds; // one letter an argument: t text, n number, a any, c condition
    std::size_t least;      // of the arguments
    std::optional<ColumnType> type;
    std::string_view engineName;

    // NOW and DATE: all others answer by their arguments.
    [[nodiscard]] bool readsClock() const { return kinds.empty(); }
    [[nodiscard]] bool isAggregate() const { return kind >= Kind::Sum; }
};

// nullptr where the dialect has none of that name (in capitals).
[[nodiscard]] const Function* findFunction(std::string_view name);

} // namespace veldona::store::sql
