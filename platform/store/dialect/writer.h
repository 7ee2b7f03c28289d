// From a checked tree to the engine's SQL.
//
// Everything is written anew: names in quotes, texts in apostrophes, numbers as read, so that nothing of the
// statement's own text reaches the engine. Types direct the words: what a "+" or a "=" becomes, and which
// function of functions.h stands around a value.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/store/dialect/definition.h"
#include "platform/store/dialect/enginewords.h"
#include "platform/store/dialect/tree.h"
#include "platform/store/dialect/tree_types.h"

namespace veldona::store::sql {

// How tight the engine binds what is written, from the loosest.
enum class Tightness : std::uint8_t { Or, And, Not, Compare, Add, Multiply, Concat, Collate, Sign, Whole };

class Writer {
public:
    // `targets`: one a literal of the statement, filled with the types that they are to be converted to.
    // `qualified`: columns are written with their table's name.
    Writer(const EngineWords& words, std::vector<std::optional<ColumnType>>& targets, bool qualified)
        : words_(words), targets_(targets), qualified_(qualified) {}

    // What becomes of the rows of a SELECT.
    enum class Use : std::uint8_t {
        Answer,  // they are seen in order
        Source,  // a sub-select or a saved query: columns need names, order does not matter
        Members, // IN (…)
        Stored,  // INSERT … SELECT
    };
    void select(const Select& select, Use use, const std::vector<std::string>& narrowing = {});
    void insert(const Insert& insert, const Source& table);
    void update(const Update& update);
    void remove(const Delete& remove);

    [[nodiscard]] std::string take() { return std::move(sql_); }
    [[nodiscard]] const std::vector<ColumnType>& narrowTypes() const { return narrowTypes_; }

private:
    // Names what the engine's parser must keep in mind while something is written; it has room for so much
    // only.
    class DepthGuard;

    // Expressions: as they are, as a condition, or brought to a type.
    void value(const Expr& expr, Tightness need);
    void condition(const Expr& expr, Tightness need);
    void as(const Expr& expr, std::optional<ColumnType> type, Tightness need);
    void number(const Expr& expr, Tightness need);
    void text(const Expr& expr, Tightness need);
    void date(const Expr& expr, Tightness need);
    void stored(const Expr& expr, ColumnType type);
    void collated(const Expr& expr);

    void column(const Expr& expr);
    void parameter(const Expr& expr, std::optional<ColumnType> target);
    void parameter(std::size_t number);
    void literal(const Value& value, Tightness need);
    void calculation(const Expr& expr, Tightness need);
    void sum(const Expr& expr, Tightness need);
    void join(const Expr& expr, Tightness need);
    void joinPart(const Expr& expr);
    void quotient(const Expr& expr, Tightness need);
    void comparison(const Expr& expr);
    void compareSides(const Expr& left, std::string_view op, const Expr& right);
    void logic(const Expr& expr, Tightness need);
    void like(const Expr& expr, Tightness need);
    void between(const Expr& expr);
    void membership(const Expr& expr);
    void call(const Expr& expr, Tightness need);
    void engineCall(const Expr& expr);
    void choice(const Expr& expr);
    void extreme(const Expr& expr);

    // `write` between parentheses where `have` binds looser than `need`.
    template <class Write> void grouped(Tightness have, Tightness need, Write&& write);
    template <class Write> void function(std::string_view name, Write&& write);
    void binary(const Expr& left, std::string_view op, const Expr& right, Tightness have, Tightness need);

    // Statements.
    void arm(const Arm& arm, Use use, bool alone, const std::vector<std::string>& narrowing);
    void items(const Arm& arm, Use use);
    void from(const Arm& arm);
    void from(const From& from, bool nested);
    void source(const Source& source);
    void where(const Arm& arm, const std::vector<std::string>& narrowing);
    void narrow(const Arm& arm, const std::string& column, std::size_t place);
    void orderByGroups(const Arm& arm);
    void orderByItems(std::size_t count);
    void order(const Select& select, Use use);
    void orderTerm(const OrderTerm& term);
    void defaultOrder(const Arm& arm);
    void sameOrderById(const Arm& arm);

    void put(std::string_view words) { sql_ += words; }
    void name(std::string_view name);

    const EngineWords& words_;
    std::vector<std::optional<ColumnType>>& targets_;
    bool qualified_;
    std::vector<ColumnType> narrowTypes_;
    std::vector<ColumnType> storedTypes_; // of the columns that a Stored SELECT fills
    std::string countedTable_;            // of an insert, where the engine's counters are a function's
    std::string sql_;
    int depth_ = 0;
};

} // namespace veldona::store::sql
