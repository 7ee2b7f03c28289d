#include <set>

#include "platform/store/dialect/names.h"
#include "platform/store/faces/rowwalk.h"

namespace veldona::dao {
namespace {

using store::ColumnType;

class AnswerWalk final : public RowWalk {
public:
    AnswerWalk(const std::shared_ptr<store::Database>& database, store::Query query)
        : answer_(database, std::move(query)), table_(writtenTable(database->catalog(), answer_.plan())) {}

    const std::vector<store::ResultColumn>& columns() const override { return answer_.plan().columns; }
    const store::Catalog::Relation* table() const override { return table_; }

    bool first() override {
        if (answer_.renew()) removed_.clear();
        return standOn(0);
    }
    bool last() override {
        if (!isAsked_) static_cast<void>(first());
        return standOn(answer_.rows().rowCount() - 1);
    }
    bool next() override { return standOn(at_ + 1); }
    bool previous() override { return standOn(at_ - 1); }

    const Value* cell(int column) override {
        return removed_.contains(at_) ? nullptr : &answer_.rows().at(at_, column);
    }
    std::int64_t id() const override { return answer_.rows().at(at_, idColumn_).get<std::int64_t>(); }
    void noteChange(int column, const Value& shown) override { answer_.put(at_, column, shown); }
    void noteRemoval() override { removed_.insert(at_); }

private:
    // The rows can be written where all of them come from one table and bring their keys.
    const store::Catalog::Relation* writtenTable(const store::Catalog& catalog, const store::Plan& plan) {
        if (plan.baseTables.size() != 1) return nullptr;
        for (std::size_t i = 0; i < plan.columns.size(); ++i) {
            if (plan.columns[i].type != ColumnType::Counter || !store::sameName(plan.columns[i].name, "ID"))
                continue;
            idColumn_ = static_cast<int>(i);
            return catalog.find(plan.baseTables.front());
        }
        return nullptr;
    }

    bool standOn(int row) {
        isAsked_ = true;
        if (row < 0 || row >= answer_.rows().rowCount()) return false;
        at_ = row;
        return true;
    }

    store::Answer answer_;
    int idColumn_ = -1;
    const store::Catalog::Relation* table_; // of the database's catalog
    std::set<int> removed_;                 // rows deleted through the walk
    int at_ = 0;
    bool isAsked_ = false;
};

} // namespace

std::unique_ptr<RowWalk> walkAnswer(std::shared_ptr<store::Database> database, std::string_view sql,
                                    const Narrowings& narrowing) {
    std::vector<std::string> columns;
    for (const Narrowing& narrowed : narrowing)
        columns.push_back(narrowed.column);
    store::Query query = database->query(sql, columns);
    const std::size_t literals = query.plan().targets.size();
    for (std::size_t i = 0; i < narrowing.size(); ++i)
        query.values[literals + i] = comparable(narrowing[i].value, query.plan().narrowTypes[i]);
    return std::make_unique<AnswerWalk>(std::move(database), std::move(query));
}

} // namespace veldona::dao
