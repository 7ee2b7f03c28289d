// A statement of the dialect as a tree. The parser makes it, the check fills in what names and types mean,
// the writer reads it.
//
// Parentheses leave no trace but the order of the nodes. No branch is deeper than kDeepest, so that walking
// and destroying it by recursion is safe for a statement of any length.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/store/dialect/literal.h"

namespace veldona::store::sql {

inline constexpr int kDeepest = 200;

enum class Operator : std::uint8_t {
    Add,
    Subtract,
    Multiply,
    Divide,
    Join,
    Negate,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    And,
    Or,
    Not,
};

struct Function;
struct Select;
struct Source;
struct Expr;
using ExprPtr = std::unique_ptr<Expr>;

struct Expr {
    enum class Kind : std::uint8_t {
        Null,
        Truth,
        Value,
        Parameter,
        Column,
        Calculation, // Add … Negate
        Comparison,  // Equal … GreaterEqual
        Logic,       // And, Or, Not
        Like,
        Between,
        In,
        IsNull,
        Call,
        AllRows, // the * of COUNT(*)
    };

    explicit Expr(Kind of) : kind(of) {}

    Kind kind;
    Operator op = Operator::Add;
    bool negated = false; // NOT LIKE, NOT BETWEEN, NOT IN, IS NOT NULL; FALSE
    int depth = 1;
    int parameter = 0;             // from 1
    Literal literal{};             // of a Value
    std::string qualifier, name;   // of a Column; the name of a Call
    std::vector<ExprPtr> parts;    // operands, arguments; of In: what is looked for, then the list
    std::unique_ptr<Select> query; // of In

    // Filled in by the check.
    std::optional<ColumnType> type;
    const Source* source = nullptr;     // of a Column
    const Function* function = nullptr; // of a Call
};

struct SourceColumn {
    std::string name;
    std::optional<ColumnType> type;
};

// A table, a saved query or a sub-select that rows come from.
struct Source {
    std::string name, alias;
    std::unique_ptr<Select> query;

    // Filled in by the check.
    std::vector<SourceColumn> columns;
    bool isTable = false; // its columns carry the alphabet's order by themselves

    [[nodiscard]] const std::string& shownName() const { return alias.empty() ? name : alias; }
};

struct From {
    enum class Kind : std::uint8_t { Single, Inner, Left };
    Kind kind = Kind::Single;
    Source source;
    std::unique_ptr<From> left, right;
    ExprPtr on;
    int depth = 1;
};

struct SelectItem {
    ExprPtr expr; // none for * and T.*, which the check replaces by the columns
    std::string alias;
    std::string starOf;

    // Filled in by the check.
    std::string name;
};

struct OrderTerm {
    ExprPtr expr;
    bool descending = false;
    int position = 0; // filled in by the check: of the column of the result, from 1
};

// SELECT … without UNION and ORDER BY.
struct Arm {
    bool distinct = false;
    std::optional<std::int64_t> top;
    std::vector<SelectItem> items;
    std::vector<std::unique_ptr<From>> from;
    ExprPtr where;
    std::vector<ExprPtr> groupBy;

    // Filled in by the check.
    std::vector<Source*> sources;
    bool aggregates = false;
};

struct Select {
    std::vector<Arm> arms;
    std::vector<OrderTerm> orderBy;
    int depth = 1;
};

struct Insert {
    std::string table;
    std::vector<std::string> columns; // none: all of the table
    std::vector<ExprPtr> values;
    std::unique_ptr<Select> query; // instead of values
};

struct Update {
    Source table;
    std::vector<std::pair<ExprPtr, ExprPtr>> assignments; // column, value
    ExprPtr where;
};

struct Delete {
    Source table;
    ExprPtr where;
};

struct Identity {
    std::string table, alias;
};

using Statement = std::variant<std::unique_ptr<Select>, Insert, Update, Delete, Identity>;

} // namespace veldona::store::sql
