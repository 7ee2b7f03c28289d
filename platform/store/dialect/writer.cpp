#include "platform/store/dialect/writer.h"

#include <algorithm>

#include "platform/runtime/text.h"
#include "platform/store/dialect/names.h"
#include "platform/store/dialect/tree_check.h"
#include "platform/store/dialect/writer_parts.h"

namespace veldona::store::sql {
namespace {

bool isUnion(const Select& select) {
    return select.arms.size() > 1;
}

// Rows of it stand for rows of its tables, so that a table's ID can order them.
bool isPlain(const Select& select) {
    const Arm& arm = select.arms.front();
    return !isUnion(select) && !arm.distinct && !arm.aggregates;
}

bool isSameColumn(const Expr& a, const Expr& b) {
    return a.kind == Expr::Kind::Column && b.kind == Expr::Kind::Column && a.source == b.source &&
           sameName(a.name, b.name);
}

// True where each row that passes `where` holds the same value in this text column.
bool holdsToOneText(const Expr* where, const Expr& column) {
    if (where == nullptr || !declaresAlphabet(column)) return false;
    if (where->kind == Expr::Kind::Logic && where->op == Operator::And)
        return holdsToOneText(where->parts[0].get(), column) || holdsToOneText(where->parts[1].get(), column);
    if (where->kind != Expr::Kind::Comparison || where->op != Operator::Equal) return false;
    const Expr& value = *where->parts[1];
    return isSameColumn(*where->parts[0], column) &&
           (value.kind == Expr::Kind::Parameter || value.kind == Expr::Kind::Value) &&
           familyOf(comparedType(column, value)) == Family::Text;
}

std::vector<const Expr*> allKeys(const Arm& arm) {
    std::vector<const Expr*> keys;
    for (const ExprPtr& key : arm.groupBy)
        keys.push_back(key.get());
    return keys;
}

// The keys that part the rows. The engine does not see that a text column held to one value parts nothing: it
// would sort the rows of a customer that its index brings in order. One key is kept, or there would be no
// groups.
std::vector<const Expr*> partingKeys(const Arm& arm) {
    std::vector<const Expr*> keys;
    for (std::size_t i = 0; i < arm.groupBy.size(); ++i) {
        const bool isLastHope = keys.empty() && i + 1 == arm.groupBy.size();
        if (isLastHope || !holdsToOneText(arm.where.get(), *arm.groupBy[i]))
            keys.push_back(arm.groupBy[i].get());
    }
    return keys;
}

} // namespace

void Writer::name(std::string_view name) {
    put("\"");
    for (const char letter : name) {
        sql_ += letter;
        if (letter == '"') sql_ += '"';
    }
    put("\"");
}

void Writer::select(const Select& select, Use use, const std::vector<std::string>& narrowing) {
    if (!narrowing.empty() && (!isPlain(select) || select.arms.front().top)) {
        throw StoreError(StoreError::Kind::Syntax, "Bu sorgu satır seçilerek daraltılamaz.");
    }
    for (std::size_t i = 0; i < select.arms.size(); ++i) {
        if (i > 0) put(" UNION ");
        arm(select.arms[i], use, !isUnion(select), narrowing);
    }
    order(select, use);
    if (!isUnion(select) && select.arms.front().top)
        put(" LIMIT " + std::to_string(*select.arms.front().top));
}

void Writer::arm(const Arm& arm, Use use, bool alone, const std::vector<std::string>& narrowing) {
    // The engine limits a whole union only, so that a limited part of one becomes a sub-select.
    const bool limitedPart = arm.top && !alone;
    const DepthGuard opened(*this, limitedPart ? 12 : 6);
    if (limitedPart) put("SELECT * FROM (");
    // Doubles do not matter to IN, and looking for them would sort the rows.
    put(arm.distinct && (use != Use::Members || arm.top) ? "SELECT DISTINCT " : "SELECT ");
    items(arm, use);
    if (!arm.from.empty()) from(arm);
    where(arm, narrowing);
    std::string_view before = " GROUP BY ";
    for (const Expr* key : words_.groupsBySelected ? allKeys(arm) : partingKeys(arm)) {
        put(before);
        collated(*key);
        before = ", ";
    }
    if (!limitedPart) return;
    if (!arm.aggregates || !arm.groupBy.empty()) defaultOrder(arm);
    put(" LIMIT " + std::to_string(*arm.top) + ") AS \"%top\"");
}

void Writer::items(const Arm& arm, Use use) {
    for (std::size_t i = 0; i < arm.items.size(); ++i) {
        if (i > 0) put(", ");
        const SelectItem& item = arm.items[i];
        if (use == Use::Stored) {
            stored(*item.expr, storedTypes_[i]);
        } else {
            collated(*item.expr);
        }
        if (use != Use::Source) continue;
        put(" AS ");
        name(item.name);
    }
}

void Writer::from(const Arm& arm) {
    put(" FROM ");
    for (std::size_t i = 0; i < arm.from.size(); ++i) {
        if (i > 0) put(", ");
        from(*arm.from[i], false);
    }
}

void Writer::from(const From& from, bool nested) {
    if (from.kind == From::Kind::Single) return source(from.source);
    const DepthGuard opened(*this, nested ? 5 : 3);
    if (nested) put("(");
    this->from(*from.left, false);
    put(from.kind == From::Kind::Inner ? " INNER JOIN " : " LEFT JOIN ");
    this->from(*from.right, from.right->kind != From::Kind::Single);
    put(" ON ");
    condition(*from.on, Tightness::Or);
    if (nested) put(")");
}

void Writer::source(const Source& source) {
    if (source.query) {
        const DepthGuard opened(*this, 3);
        put("(");
        select(*source.query, Use::Source);
        put(")");
    } else {
        name(source.name);
    }
    if (source.alias.empty()) return;
    put(" AS ");
    name(source.alias);
}

void Writer::where(const Arm& arm, const std::vector<std::string>& narrowing) {
    if (!arm.where && narrowing.empty()) return;
    put(" WHERE ");
    if (arm.where) condition(*arm.where, narrowing.empty() ? Tightness::Or : Tightness::And);
    for (std::size_t i = 0; i < narrowing.size(); ++i) {
        if (arm.where || i > 0) put(" AND ");
        narrow(arm, narrowing[i], targets_.size() + i + 1);
    }
}

void Writer::narrow(const Arm& arm, const std::string& column, std::size_t place) {
    for (const Source* source : arm.sources) {
        const SourceColumn* found = findColumn(*source, column);
        if (!found) continue;
        const ColumnType type = found->type.value_or(ColumnType::Text);
        // Rounding to a whole number would let rows through that are not equal.
        narrowTypes_.push_back(isWhole(type) ? ColumnType::Number : type);
        if (qualified_) {
            name(source->shownName());
            put(".");
        }
        name(found->name);
        if (familyOf(type) == Family::Text && !source->isTable) put(words_.byAlphabet);
        put(" = ");
        return parameter(place);
    }
    failUnknown("alan", column);
}

void Writer::orderByGroups(const Arm& arm) {
    std::string_view before = " ORDER BY ";
    for (const Expr* key : partingKeys(arm)) {
        put(before);
        collated(*key);
        put(words_.ascending);
        before = ", ";
    }
}

void Writer::orderByItems(std::size_t count) {
    for (std::size_t i = 1; i <= count; ++i) {
        put((i == 1 ? " ORDER BY " : ", ") + std::to_string(i));
        put(words_.ascending);
    }
}

void Writer::order(const Select& select, Use use) {
    const bool matters = use == Use::Answer || use == Use::Stored || select.arms.front().top;
    for (std::size_t i = 0; i < select.orderBy.size(); ++i) {
        put(i == 0 ? " ORDER BY " : ", ");
        orderTerm(select.orderBy[i]);
    }
    if (!matters) return;
    if (!select.orderBy.empty()) {
        if (isPlain(select)) sameOrderById(select.arms.front());
    } else if (isUnion(select)) {
        orderByItems(select.arms.front().items.size());
    } else {
        defaultOrder(select.arms.front());
    }
}

void Writer::orderTerm(const OrderTerm& term) {
    if (term.position > 0) {
        put(std::to_string(term.position));
    } else {
        collated(*term.expr);
    }
    put(term.descending ? words_.descending : words_.ascending);
}

// Groups and distinct rows come by their keys, rows of one table by its ID. For a join nothing is said: its
// order would cost a sort that no one asked for.
void Writer::defaultOrder(const Arm& arm) {
    if (!arm.groupBy.empty()) {
        orderByGroups(arm);
    } else if (arm.distinct) {
        orderByItems(arm.items.size());
    } else if (!arm.aggregates && arm.sources.size() == 1 && arm.sources.front()->isTable) {
        put(" ORDER BY ");
        if (qualified_) {
            name(arm.sources.front()->shownName());
            put(".");
        }
        name("ID");
        put(words_.ascending);
    }
}

void Writer::sameOrderById(const Arm& arm) {
    for (const Source* source : arm.sources) {
        const SourceColumn* id = findColumn(*source, "ID");
        if (!id) continue;
        put(", ");
        if (qualified_) {
            name(source->shownName());
            put(".");
        }
        name(id->name);
        put(words_.ascending);
    }
}

void Writer::insert(const Insert& insert, const Source& table) {
    put(insert.query ? "INSERT INTO " : words_.insertRow);
    name(table.name);
    for (std::size_t i = 0; i < insert.columns.size(); ++i) {
        const SourceColumn& column = *findColumn(table, insert.columns[i]);
        put(i == 0 ? " (" : ", ");
        name(column.name);
        storedTypes_.push_back(column.type.value_or(ColumnType::Text));
    }
    countedTable_ = words_.counter.empty() ? std::string() : table.name;
    if (insert.query) {
        put(") ");
        select(*insert.query, Use::Stored);
        return put(words_.behindInsert);
    }
    for (std::size_t i = 0; i < insert.values.size(); ++i) {
        put(i == 0 ? ") VALUES (" : ", ");
        const DepthGuard list(*this, 8);
        stored(*insert.values[i], storedTypes_[i]);
    }
    put(")");
    put(words_.behindInsert);
}

void Writer::update(const Update& update) {
    put("UPDATE ");
    name(update.table.name);
    for (std::size_t i = 0; i < update.assignments.size(); ++i) {
        const auto& [column, value] = update.assignments[i];
        put(i == 0 ? " SET " : ", ");
        name(column->name);
        put(" = ");
        const DepthGuard list(*this, 8);
        stored(*value, column->type.value_or(ColumnType::Text));
    }
    if (!update.where) return;
    put(" WHERE ");
    const DepthGuard clause(*this, 8);
    condition(*update.where, Tightness::Or);
}

void Writer::remove(const Delete& remove) {
    put("DELETE FROM ");
    name(remove.table.name);
    if (!remove.where) return;
    put(" WHERE ");
    const DepthGuard clause(*this, 6);
    condition(*remove.where, Tightness::Or);
}

} // namespace veldona::store::sql
