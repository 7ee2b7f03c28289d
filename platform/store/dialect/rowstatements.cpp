#include "platform/store/dialect/rowstatements.h"

#include <algorithm>
#include <utility>

namespace veldona::store::sql {
namespace {

using Kind = Expr::Kind;

constexpr const char* kKey = "ID";

ExprPtr column(const std::string& name) {
    auto made = std::make_unique<Expr>(Kind::Column);
    made->name = name;
    return made;
}

ExprPtr parameter(std::size_t number) {
    auto made = std::make_unique<Expr>(Kind::Parameter);
    made->parameter = static_cast<int>(number);
    return made;
}

ExprPtr pair(Kind kind, Operator op, ExprPtr left, ExprPtr right) {
    auto made = std::make_unique<Expr>(kind);
    made->op = op;
    made->depth = std::max(left->depth, right->depth) + 1;
    made->parts.push_back(std::move(left));
    made->parts.push_back(std::move(right));
    return made;
}

ExprPtr comparison(const std::string& name, Operator op, std::size_t number) {
    return pair(Kind::Comparison, op, column(name), parameter(number));
}

void restrict(ExprPtr& where, ExprPtr condition) {
    where = where ? pair(Kind::Logic, Operator::And, std::move(where), std::move(condition))
                  : std::move(condition);
}

std::unique_ptr<Select> selectFrom(const std::string& table, ExprPtr item) {
    auto made = std::make_unique<Select>();
    Arm& arm = made->arms.emplace_back();
    arm.items.emplace_back().expr = std::move(item);
    arm.from.push_back(std::make_unique<From>());
    arm.from.back()->source.name = table;
    return made;
}

std::unique_ptr<Select> select(const RowRange& range, ExprPtr item) {
    auto made = selectFrom(range.table, std::move(item));
    Arm& arm = made->arms.front();
    arm.top = range.top;
    std::size_t parameters = 0;
    for (const std::string& name : range.equal)
        restrict(arm.where, comparison(name, Operator::Equal, ++parameters));
    if (range.key) restrict(arm.where, comparison(kKey, *range.key, ++parameters));
    OrderTerm& order = made->orderBy.emplace_back();
    order.expr = column(kKey);
    order.descending = range.descending;
    return made;
}

} // namespace

Statement insertRow(const std::string& table, const std::vector<std::string>& columns) {
    Insert made;
    made.table = table;
    made.columns = columns;
    for (std::size_t i = 1; i <= columns.size(); ++i)
        made.values.push_back(parameter(i));
    if (columns.empty()) {
        made.columns = {kKey};
        made.values.push_back(std::make_unique<Expr>(Kind::Null));
    }
    return made;
}

Statement updateRow(const std::string& table, const std::vector<std::string>& columns) {
    Update made;
    made.table.name = table;
    for (std::size_t i = 0; i < columns.size(); ++i)
        made.assignments.emplace_back(column(columns[i]), parameter(i + 1));
    made.where = comparison(kKey, Operator::Equal, columns.size() + 1);
    return made;
}

Statement deleteRow(const std::string& table) {
    Delete made;
    made.table.name = table;
    made.where = comparison(kKey, Operator::Equal, 1);
    return made;
}

Statement selectRows(const RowRange& range) {
    return select(range, nullptr);
}

Statement selectKeys(const RowRange& range) {
    return select(range, column(kKey));
}

Statement countRows(const std::string& table) {
    auto count = std::make_unique<Expr>(Kind::Call);
    count->name = "COUNT";
    count->depth = 2;
    count->parts.push_back(std::make_unique<Expr>(Kind::AllRows));
    return selectFrom(table, std::move(count));
}

} // namespace veldona::store::sql
