#include "platform/store/dialect/savedquery.h"

#include <stdexcept>

#include "platform/store/dialect/parser.h"
#include "platform/store/dialect/reading.h"
#include "platform/store/dialect/tree_check.h"
#include "platform/store/dialect/writer.h"

namespace veldona::store {

std::string savedQueryText(const SavedQueryDef& query, Catalog& catalog, const EngineWords& words) {
    sql::Statement tree = sql::parse(readStatement(query.sql, Literals::Kept));
    const sql::Checked checked = sql::check(tree, catalog);
    const auto* select = std::get_if<std::unique_ptr<sql::Select>>(&tree);
    if (!select) throw std::logic_error("a saved query that does not read: " + query.name);
    std::vector<std::optional<ColumnType>> targets;
    sql::Writer writer(words, targets, checked.sources > 1);
    writer.select(**select, sql::Writer::Use::Source);
    Catalog::Relation relation{query.name, {}, true, checked.baseTables};
    for (const sql::SelectItem& item : (*select)->arms.front().items)
        relation.columns.push_back({item.name, item.expr->type.value_or(ColumnType::Text)});
    catalog.add(std::move(relation));
    return writer.take();
}

} // namespace veldona::store
