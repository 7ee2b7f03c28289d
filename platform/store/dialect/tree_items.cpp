#include "platform/store/dialect/tree_items.h"

#include <algorithm>

#include "platform/store/dialect/names.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/dialect/tree_check.h"

namespace veldona::store::sql {
namespace {

SelectItem columnItem(const Source& source, const SourceColumn& column) {
    SelectItem item;
    item.expr = std::make_unique<Expr>(Expr::Kind::Column);
    item.expr->qualifier = source.shownName();
    item.expr->name = column.name;
    return item;
}

} // namespace

void expandStars(Arm& arm) {
    std::vector<SelectItem> items;
    for (SelectItem& item : arm.items) {
        if (item.expr) {
            items.push_back(std::move(item));
            continue;
        }
        bool found = false;
        for (const Source* source : arm.sources) {
            if (!item.starOf.empty() && !sameName(item.starOf, source->shownName())) continue;
            found = true;
            for (const SourceColumn& column : source->columns)
                items.push_back(columnItem(*source, column));
        }
        if (!found && !item.starOf.empty()) failUnknown("tablo", item.starOf);
        if (!found) {
            throw StoreError(StoreError::Kind::Syntax,
                             "Sorgu ifadesinde sözdizimi hatası: \"*\" için tablo verilmemiş.");
        }
    }
    arm.items = std::move(items);
}

void nameItems(Arm& arm) {
    int unnamed = 1000;
    for (SelectItem& item : arm.items) {
        if (!item.alias.empty()) {
            item.name = item.alias;
        } else if (item.expr->kind == Expr::Kind::Column) {
            item.name = item.expr->name;
        } else {
            item.name = "Expr" + std::to_string(unnamed++);
        }
    }
    const auto isPlain = [](const SelectItem& item) {
        return item.alias.empty() && item.expr->kind == Expr::Kind::Column;
    };
    std::vector<std::string> names;
    for (const SelectItem& item : arm.items)
        names.push_back(foldName(item.name));
    std::sort(names.begin(), names.end());
    for (SelectItem& item : arm.items) {
        const auto [first, last] = std::equal_range(names.begin(), names.end(), foldName(item.name));
        if (isPlain(item) && last - first > 1) item.name = item.expr->source->shownName() + "." + item.name;
    }
}

} // namespace veldona::store::sql
