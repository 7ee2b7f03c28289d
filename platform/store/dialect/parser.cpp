#include "platform/store/dialect/parser.h"

#include <algorithm>
#include <charconv>

#include "platform/store/dialect/parser_words.h"

namespace veldona::store::sql {
namespace {

class StatementParser : private SelectReader {
public:
    explicit StatementParser(const Reading& statement)
        : words_(statement), expressions_(words_, nesting_, *this) {}

    Statement run() {
        Statement made = statement();
        if (words_.peek().kind != TokenKind::End) words_.fail();
        return made;
    }

private:
    Statement statement() {
        if (words_.is("SELECT") && words_.peek(1).kind == TokenKind::Identity) return identity();
        if (words_.is("SELECT")) return readSelect();
        if (words_.takeIf("INSERT")) return insert();
        if (words_.takeIf("UPDATE")) return update();
        if (words_.takeIf("DELETE")) return remove();
        words_.fail();
    }

    Identity identity() {
        words_.take();
        words_.take();
        Identity made;
        made.alias = words_.takeAlias();
        if (words_.takeIf("FROM")) made.table = words_.takeName();
        return made;
    }

    Insert insert() {
        Insert made;
        words_.expect("INTO");
        made.table = words_.takeName();
        if (words_.takeIf(Sign::Open)) {
            do {
                made.columns.push_back(words_.takeName());
            } while (words_.takeIf(Sign::Comma));
            words_.expect(Sign::Close);
        }
        if (words_.is("SELECT")) {
            made.query = readSelect();
            return made;
        }
        words_.expect("VALUES");
        words_.expect(Sign::Open);
        do {
            made.values.push_back(expressions_.expression());
        } while (words_.takeIf(Sign::Comma));
        words_.expect(Sign::Close);
        return made;
    }

    Update update() {
        Update made;
        made.table.name = words_.takeName();
        words_.expect("SET");
        do {
            ExprPtr column = expressions_.column();
            words_.expect(Sign::Equal);
            made.assignments.emplace_back(std::move(column), expressions_.expression());
        } while (words_.takeIf(Sign::Comma));
        if (words_.takeIf("WHERE")) made.where = expressions_.expression();
        return made;
    }

    Delete remove() {
        Delete made;
        words_.takeIf(Sign::Star);
        words_.expect("FROM");
        made.table.name = words_.takeName();
        if (words_.takeIf("WHERE")) made.where = expressions_.expression();
        return made;
    }

    std::unique_ptr<Select> readSelect() override {
        const Nesting nesting(nesting_);
        auto made = std::make_unique<Select>();
        made->arms.push_back(arm(made->depth));
        while (words_.takeIf("UNION"))
            made->arms.push_back(arm(made->depth));
        if (words_.takeIf("ORDER")) {
            words_.expect("BY");
            do {
                OrderTerm term;
                term.expr = deepened(expressions_.expression(), made->depth);
                if (!words_.takeIf("ASC")) term.descending = words_.takeIf("DESC");
                made->orderBy.push_back(std::move(term));
            } while (words_.takeIf(Sign::Comma));
        }
        return made;
    }

    Arm arm(int& depth) {
        Arm made;
        words_.expect("SELECT");
        made.distinct = words_.takeIf("DISTINCT");
        made.top = top();
        do {
            made.items.push_back(item(depth));
        } while (words_.takeIf(Sign::Comma));
        if (words_.takeIf("FROM")) {
            do {
                made.from.push_back(joined());
                depth = requireDepth(std::max(depth, made.from.back()->depth + 1));
            } while (words_.takeIf(Sign::Comma));
        }
        if (words_.takeIf("WHERE")) made.where = deepened(expressions_.expression(), depth);
        if (words_.takeIf("GROUP")) {
            words_.expect("BY");
            do {
                made.groupBy.push_back(deepened(expressions_.expression(), depth));
            } while (words_.takeIf(Sign::Comma));
        }
        return made;
    }

    std::optional<std::int64_t> top() {
        if (!words_.is("TOP") || words_.peek(1).kind != TokenKind::Number) return std::nullopt;
        words_.take();
        const std::string_view digits = words_.peek().text;
        std::int64_t rows = 0;
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), rows);
        if (error != std::errc{} || end != digits.data() + digits.size()) words_.fail();
        words_.take();
        return rows;
    }

    SelectItem item(int& depth) {
        SelectItem made;
        if (words_.takeIf(Sign::Star)) return made;
        if (words_.isName() && words_.is(Sign::Dot, 1) && words_.is(Sign::Star, 2)) {
            made.starOf = words_.takeName();
            words_.take();
            words_.take();
            return made;
        }
        made.expr = deepened(expressions_.expression(), depth);
        made.alias = words_.takeAlias();
        return made;
    }

    std::unique_ptr<From> joined() {
        std::unique_ptr<From> left = single();
        while (const auto kind = joining()) {
            auto join = std::make_unique<From>();
            join->kind = *kind;
            join->left = std::move(left);
            join->right = single();
            words_.expect("ON");
            join->depth = std::max(join->left->depth, join->right->depth) + 1;
            join->on = deepened(expressions_.expression(), join->depth);
            requireDepth(join->depth);
            left = std::move(join);
        }
        return left;
    }

    std::optional<From::Kind> joining() {
        const bool isLeft = words_.takeIf("LEFT");
        if (!isLeft && !words_.takeIf("INNER")) return std::nullopt;
        words_.expect("JOIN");
        return isLeft ? From::Kind::Left : From::Kind::Inner;
    }

    std::unique_ptr<From> single() {
        auto made = std::make_unique<From>();
        if (!words_.is(Sign::Open)) {
            made->source.name = words_.takeName();
            made->source.alias = words_.takeAlias();
            return made;
        }
        const Nesting nesting(nesting_);
        words_.take();
        const bool query = words_.is("SELECT");
        if (query) {
            made->source.query = readSelect();
            made->depth = requireDepth(made->source.query->depth + 1);
        } else {
            made = joined();
        }
        words_.expect(Sign::Close);
        if (query) made->source.alias = words_.takeAlias();
        return made;
    }

    static ExprPtr deepened(ExprPtr expr, int& depth) {
        depth = requireDepth(std::max(depth, expr->depth + 1));
        return expr;
    }

    Words words_;
    int nesting_ = 0;
    ExpressionParser expressions_;
};

} // namespace

Statement parse(const Reading& statement) {
    return StatementParser(statement).run();
}

} // namespace veldona::store::sql
