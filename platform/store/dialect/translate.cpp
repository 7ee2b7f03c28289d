#include "platform/store/dialect/translate.h"

#include <algorithm>
#include <utility>

#include "platform/store/dialect/names.h"
#include "platform/store/dialect/parser.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/dialect/tree_check.h"
#include "platform/store/dialect/writer.h"

namespace veldona::store {
namespace {

// The type of a union's column is told by the first of its parts that knows it.
std::optional<ColumnType> columnType(const sql::Select& select, std::size_t column) {
    for (const sql::Arm& arm : select.arms) {
        if (const auto type = arm.items[column].expr->type) return type;
    }
    return std::nullopt;
}

// SELECT TOP 1 * FROM a table, as long as the star stands there.
bool asksForTypes(const sql::Statement& tree) {
    const auto* select = std::get_if<std::unique_ptr<sql::Select>>(&tree);
    if (select == nullptr || (*select)->arms.size() != 1 || !(*select)->orderBy.empty()) return false;
    const sql::Arm& arm = (*select)->arms.front();
    return arm.top == 1 && !arm.distinct && arm.items.size() == 1 && !arm.items.front().expr &&
           arm.from.size() == 1 && arm.from.front()->kind == sql::From::Kind::Single &&
           !arm.from.front()->source.query && !arm.where && arm.groupBy.empty();
}

bool isKey(const std::string& column) {
    return sameName(column, "ID");
}

// Fills the plan from the tree, statement kind by statement kind.
struct Planner {
    Plan& plan;
    const Catalog& catalog;
    const EngineWords& words;
    const sql::Checked& checked;
    const std::vector<std::string>& narrowing;

    sql::Writer writer() const { return {words, plan.targets, checked.sources > 1}; }

    void operator()(const std::unique_ptr<sql::Select>& select) const {
        sql::Writer written = writer();
        written.select(*select, sql::Writer::Use::Answer, narrowing);
        plan.sql = written.take();
        plan.narrowTypes = written.narrowTypes();
        plan.baseTables = checked.baseTables;
        const auto& items = select->arms.front().items;
        for (std::size_t i = 0; i < items.size(); ++i)
            plan.columns.push_back({items[i].name, columnType(*select, i)});
        plan.listsKeys = listsKeys();
        plan.readsClock = checked.readsClock;
    }

    bool listsKeys() const {
        return plan.baseTables.size() == 1 && plan.columns.size() == 1 &&
               plan.columns.front().type == ColumnType::Counter &&
               plan.sql == "SELECT \"ID\" FROM \"" + plan.baseTables.front() + "\" ORDER BY \"ID\"" +
                               std::string(words.ascending);
    }

    void operator()(const sql::Insert& insert) const {
        plan.kind = Plan::Kind::Insert;
        plan.table = catalog.find(insert.table)->name;
        plan.changesKeys = insert.columns.empty() || std::ranges::any_of(insert.columns, isKey);
        sql::Source table;
        table.name = plan.table;
        for (const ColumnDef& column : catalog.find(insert.table)->columns) {
            table.columns.push_back({column.name, column.type});
        }
        sql::Writer written = writer();
        written.insert(insert, table);
        plan.sql = written.take();
    }

    void operator()(const sql::Update& update) const {
        plan.kind = Plan::Kind::Update;
        plan.table = update.table.name;
        plan.changesKeys = std::ranges::any_of(
            update.assignments, [](const auto& assignment) { return isKey(assignment.first->name); });
        sql::Writer written = writer();
        written.update(update);
        plan.sql = written.take();
    }

    void operator()(const sql::Delete& remove) const {
        plan.kind = Plan::Kind::Delete;
        plan.table = remove.table.name;
        plan.changesKeys = true;
        sql::Writer written = writer();
        written.remove(remove);
        plan.sql = written.take();
    }

    void operator()(const sql::Identity& identity) const {
        plan.kind = Plan::Kind::Identity;
        plan.sql = words.lastCounter;
        plan.columns.push_back({identity.alias.empty() ? "Expr1000" : identity.alias, ColumnType::Whole});
    }
};

} // namespace

Plan translate(const Reading& statement, const Catalog& catalog, const EngineWords& words,
               const std::vector<std::string>& narrowing) {
    return translate(sql::parse(statement), statement.literals.size(), catalog, words, narrowing);
}

Plan translate(sql::Statement tree, std::size_t parameters, const Catalog& catalog, const EngineWords& words,
               const std::vector<std::string>& narrowing) {
    Plan plan;
    plan.asksForTypes = asksForTypes(tree);
    const sql::Checked checked = sql::check(tree, catalog);
    if (!narrowing.empty() && !std::holds_alternative<std::unique_ptr<sql::Select>>(tree)) {
        throw StoreError(StoreError::Kind::Syntax, "Yalnız okuyan bir sorgu daraltılabilir.");
    }
    plan.targets.resize(parameters);
    std::visit(Planner{plan, catalog, words, checked, narrowing}, std::as_const(tree));
    return plan;
}

} // namespace veldona::store
