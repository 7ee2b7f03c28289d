#include "platform/store/dialect/tree_check.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "platform/runtime/text.h"
#include "platform/store/dialect/names.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/dialect/tree_items.h"
#include "platform/store/dialect/tree_types.h"

namespace veldona::store::sql {
namespace {

using Kind = Expr::Kind;

[[noreturn]] void failRule(const char* sentence) {
    throw StoreError(StoreError::Kind::Syntax, sentence);
}

// A name as an error may show it, whatever was typed for one.
std::string shortened(std::string_view name) {
    constexpr std::size_t kShown = 60;
    return left(validUtf8(name.substr(0, kShown * 4)), kShown);
}

// A sum of literals: nothing to sort or group by, and to the engine a position.
bool isConstant(const Expr& expr) {
    if (expr.kind == Kind::Column || expr.kind == Kind::Call || expr.query) return false;
    return std::all_of(expr.parts.begin(), expr.parts.end(),
                       [](const ExprPtr& part) { return isConstant(*part); });
}

struct Scope {
    std::vector<Source*> sources;
    const Scope* outer = nullptr;
};

// Where an aggregate may stand: nowhere in WHERE, not inside another one.
enum class Aggregates { Allowed, Refused };

class Checker {
public:
    explicit Checker(const Catalog& catalog) : catalog_(catalog) {}

    Checked take() { return std::move(checked_); }

    void operator()(std::unique_ptr<Select>& select) { check(*select, nullptr); }

    void operator()(Insert& insert) {
        Source target = writtenTable(insert.table);
        if (insert.columns.empty()) {
            for (const SourceColumn& column : target.columns)
                insert.columns.push_back(column.name);
        }
        for (const std::string& column : insert.columns) {
            if (!findColumn(target, column)) failUnknown("alan", column);
        }
        if (insert.query) check(*insert.query, nullptr);
        const Scope nothing;
        for (ExprPtr& value : insert.values)
            check(*value, nothing, Aggregates::Refused);
        const std::size_t given =
            insert.query ? insert.query->arms.front().items.size() : insert.values.size();
        if (given != insert.columns.size())
            failRule("Sorgu ifadesinde sözdizimi hatası: alan ve değer sayısı farklı.");
    }

    void operator()(Update& update) {
        const std::string name = update.table.name;
        update.table = writtenTable(name);
        const Scope scope{{&update.table}};
        for (auto& [column, value] : update.assignments) {
            check(*column, scope, Aggregates::Refused);
            check(*value, scope, Aggregates::Refused);
        }
        if (update.where) check(*update.where, scope, Aggregates::Refused);
    }

    void operator()(Delete& remove) {
        const std::string name = remove.table.name;
        remove.table = writtenTable(name);
        if (remove.where) check(*remove.where, Scope{{&remove.table}}, Aggregates::Refused);
    }

    void operator()(Identity& identity) {
        if (!identity.table.empty()) identity.table = relation(identity.table).name;
    }

private:
    const Catalog::Relation& relation(std::string_view name) const {
        const Catalog::Relation* found = catalog_.find(name);
        if (!found) failUnknown("tablo ya da sorgu", name);
        return *found;
    }

    Source writtenTable(std::string_view name) {
        const Catalog::Relation& found = relation(name);
        if (found.isQuery) failUnknown("tablo", name);
        Source source;
        fill(source, found);
        return source;
    }

    void fill(Source& source, const Catalog::Relation& found) {
        source.name = found.name;
        source.isTable = !found.isQuery;
        for (const ColumnDef& column : found.columns)
            source.columns.push_back({column.name, column.type});
        ++checked_.sources;
        if (found.baseTables.empty()) return noteBase(found.name);
        for (const std::string& base : found.baseTables)
            noteBase(base);
    }

    void noteBase(const std::string& name) {
        auto& bases = checked_.baseTables;
        if (std::find(bases.begin(), bases.end(), name) == bases.end()) bases.push_back(name);
    }

    void check(Select& select, const Scope* outer) {
        for (Arm& arm : select.arms)
            check(arm, outer);
        const std::size_t width = select.arms.front().items.size();
        for (const Arm& arm : select.arms) {
            if (arm.items.size() != width) failRule("Birleştirilen sorguların alan sayıları farklı.");
        }
        for (OrderTerm& term : select.orderBy)
            check(term, select, outer);
    }

    void check(Arm& arm, const Scope* outer) {
        const bool outerSawAggregate = std::exchange(sawAggregate_, false);
        for (auto& from : arm.from)
            gather(*from, arm);
        const Scope scope{arm.sources, outer};
        for (auto& from : arm.from)
            checkJoins(*from, scope);
        if (arm.where) check(*arm.where, scope, Aggregates::Refused);
        for (ExprPtr& key : arm.groupBy) {
            if (isConstant(*key)) failRule("Sorgu ifadesinde sözdizimi hatası: GROUP BY bir alan ister.");
            check(*key, scope, Aggregates::Refused);
        }
        expandStars(arm);
        for (SelectItem& item : arm.items)
            check(*item.expr, scope, Aggregates::Allowed);
        arm.aggregates = sawAggregate_ || !arm.groupBy.empty();
        sawAggregate_ = outerSawAggregate;
        nameItems(arm);
    }

    void gather(From& from, Arm& arm) {
        if (from.kind != From::Kind::Single) {
            gather(*from.left, arm);
            return gather(*from.right, arm);
        }
        Source& source = from.source;
        if (source.query) {
            check(*source.query, nullptr);
            const Arm& first = source.query->arms.front();
            for (const SelectItem& item : first.items)
                source.columns.push_back({item.name, item.expr->type});
            if (source.alias.empty()) source.alias = "%" + std::to_string(checked_.sources);
            ++checked_.sources;
        } else {
            fill(source, relation(source.name));
        }
        for (const Source* other : arm.sources) {
            if (sameName(other->shownName(), source.shownName())) {
                throw StoreError(
                    StoreError::Kind::UnknownName,
                    "Aynı tablo iki kez geçiyor, takma ad verin: " + shortened(source.shownName()) + ".");
            }
        }
        arm.sources.push_back(&source);
    }

    void checkJoins(From& from, const Scope& scope) {
        if (from.kind == From::Kind::Single) return;
        checkJoins(*from.left, scope);
        checkJoins(*from.right, scope);
        check(*from.on, scope, Aggregates::Refused);
    }

    // A position, the name of a column of the result, or (in a plain SELECT) an expression of its own.
    void check(OrderTerm& term, Select& select, const Scope* outer) {
        const Arm& arm = select.arms.front();
        const int width = static_cast<int>(arm.items.size());
        const Expr& expr = *term.expr;
        if (expr.kind == Kind::Value && expr.literal.kind == Literal::Kind::Number) {
            const std::string& digits = expr.literal.text;
            const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), term.position);
            const bool isPosition = read.ec == std::errc{} && read.ptr == digits.data() + digits.size();
            if (!isPosition || term.position < 1 || term.position > width) failSyntaxAt(digits);
            return;
        }
        if (expr.kind == Kind::Column && expr.qualifier.empty()) {
            for (int i = 0; i < width && term.position == 0; ++i) {
                if (sameName(arm.items[static_cast<std::size_t>(i)].name, expr.name)) term.position = i + 1;
            }
            if (term.position != 0) return;
        }
        if (isConstant(expr)) failRule("Sorgu ifadesinde sözdizimi hatası: ORDER BY bir alan ister.");
        if (select.arms.size() > 1) {
            if (expr.kind == Kind::Column) failUnknown("alan", expr.name);
            failRule("Birleştirilmiş sorgu yalnız sonucun alanlarına göre sıralanabilir.");
        }
        const Scope scope{arm.sources, outer};
        check(*term.expr, scope, arm.aggregates ? Aggregates::Allowed : Aggregates::Refused);
    }

    [[noreturn]] static void failSyntaxAt(const std::string& text) {
        throw StoreError(StoreError::Kind::Syntax,
                         "Sorgu ifadesinde sözdizimi hatası: sıralamada \"" + shortened(text) + "\".");
    }

    void check(Expr& expr, const Scope& scope, Aggregates aggregates) {
        if (expr.kind == Kind::Call) return checkCall(expr, scope, aggregates);
        for (ExprPtr& part : expr.parts)
            check(*part, scope, aggregates);
        switch (expr.kind) {
        case Kind::Column:
            return resolve(expr, scope);
        case Kind::Value:
            expr.type = literalType(expr.literal);
            return;
        case Kind::Null:
        case Kind::Parameter:
            return;
        case Kind::Calculation:
            expr.type = expr.parts.size() == 1
                            ? (isWhole(expr.parts[0]->type) ? ColumnType::Whole : ColumnType::Number)
                            : calculatedType(expr.op, *expr.parts[0], *expr.parts[1]);
            return;
        case Kind::AllRows:
            failRule("Sorgu ifadesinde sözdizimi hatası: \"*\" yalnız COUNT içinde olur.");
        case Kind::In:
            if (expr.query) check(*expr.query, &scope);
            if (expr.query && expr.query->arms.front().items.size() != 1) {
                failRule("IN içindeki sorgu tek alan vermelidir.");
            }
            break;
        default:
            break;
        }
        expr.type = ColumnType::Boolean;
    }

    static ColumnType literalType(const Literal& literal) {
        if (literal.kind == Literal::Kind::Text) return ColumnType::Text;
        if (literal.kind == Literal::Kind::Date) return ColumnType::Date;
        constexpr std::size_t kDigitsThatFit = 9;
        const bool whole = literal.text.size() <= kDigitsThatFit &&
                           literal.text.find_first_not_of("0123456789") == std::string::npos;
        return whole ? ColumnType::Whole : ColumnType::Number;
    }

    void resolve(Expr& expr, const Scope& scope) const {
        bool qualifierKnown = expr.qualifier.empty();
        for (const Scope* level = &scope; level; level = level->outer) {
            for (const Source* source : level->sources) {
                if (!expr.qualifier.empty() && !sameName(expr.qualifier, source->shownName())) continue;
                qualifierKnown = true;
                const SourceColumn* column = findColumn(*source, expr.name);
                if (!column) continue;
                if (expr.source) {
                    throw StoreError(
                        StoreError::Kind::UnknownName,
                        "Alan birden çok tabloda var, tablosuyla yazın: " + shortened(expr.name) + ".");
                }
                expr.source = source;
                expr.type = column->type;
            }
            if (expr.source) {
                expr.name = findColumn(*expr.source, expr.name)->name;
                return;
            }
        }
        if (!qualifierKnown) failUnknown("tablo", expr.qualifier);
        failUnknown("alan", expr.name);
    }

    void checkCall(Expr& call, const Scope& scope, Aggregates aggregates) {
        call.function = findFunction(call.name);
        if (!call.function) failUnknown("işlev", call.name);
        const Function& function = *call.function;
        checked_.readsClock = checked_.readsClock || function.readsClock();
        const std::size_t given = call.parts.size();
        if (given < function.least || given > function.kinds.size()) {
            throw StoreError(StoreError::Kind::Syntax, "Sorgu ifadesinde sözdizimi hatası: " + call.name +
                                                           " işlevinin bağımsız değişken sayısı.");
        }
        if (function.isAggregate()) {
            if (aggregates == Aggregates::Refused) failRule("Toplama işlevi burada kullanılamaz.");
            sawAggregate_ = true;
            aggregates = Aggregates::Refused;
        }
        const bool countsRows =
            function.kind == Function::Kind::Count && call.parts[0]->kind == Kind::AllRows;
        if (!countsRows) {
            for (ExprPtr& part : call.parts)
                check(*part, scope, aggregates);
        }
        call.type = callType(call);
    }

    static std::optional<ColumnType> callType(const Expr& call) {
        const auto& parts = call.parts;
        switch (call.function->kind) {
        case Function::Kind::Iif:
            return eitherType(*parts[1], *parts[2]);
        case Function::Kind::Nz:
            return parts.size() == 1 ? parts[0]->type : eitherType(*parts[0], *parts[1]);
        case Function::Kind::Extreme:
            return parts[0]->type == ColumnType::Counter ? ColumnType::Whole : parts[0]->type;
        case Function::Kind::Sum:
            if (familyOf(parts[0]->type) == Family::Text || familyOf(parts[0]->type) == Family::Date) {
                throw StoreError(StoreError::Kind::TypeMismatch,
                                 "Yalnız sayılar toplanabilir: " + call.name + ".");
            }
            return call.function->type;
        default:
            return call.function->type;
        }
    }

    const Catalog& catalog_;
    Checked checked_;
    bool sawAggregate_ = false;
};

} // namespace

Checked check(Statement& statement, const Catalog& catalog) {
    Checker checker(catalog);
    std::visit(checker, statement);
    return checker.take();
}

const SourceColumn* findColumn(const Source& source, std::string_view name) {
    for (const SourceColumn& column : source.columns) {
        if (sameName(column.name, name)) return &column;
    }
    return nullptr;
}

void failUnknown(std::string_view what, std::string_view name) {
    throw StoreError(StoreError::Kind::UnknownName,
                     "Bilinmeyen " + std::string(what) + ": " + shortened(name) + ".");
}

} // namespace veldona::store::sql
