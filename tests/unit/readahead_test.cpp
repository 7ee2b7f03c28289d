// Which questions go along with which, and when their answers are gone.
#include "platform/store/engine/postgres/readahead.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "platform/store/engine/postgres/session.h"

namespace veldona::store {
namespace {

class Till {
public:
    Question question(const std::string& sql, const std::vector<Value>& values) {
        auto& known = statements_[sql];
        if (!known) known = std::make_shared<Prepared>(sql);
        Question asked{known, {}};
        for (const Value& value : values)
            asked.values.push_back(boundOf(value));
        return asked;
    }
    // One act: what each question took along when it was a trip; nothing of those that were known.
    std::string act(const std::vector<Question>& questions) {
        std::string trips;
        for (const Question& asked : questions) {
            if (asked.statement->kind != Prepared::Kind::Read) ahead.forget();
            ahead.note(asked);
            if (ahead.find(asked)) continue;
            trips += '[' + written(asked);
            for (const Question& expected : ahead.behind(asked)) {
                trips += ' ' + written(expected);
                ahead.keep(expected, std::make_shared<ServerRows>());
            }
            trips += ']';
        }
        ahead.forget();
        return trips;
    }
    ReadAhead ahead;

private:
    static std::string written(const Question& question) {
        std::string text = question.statement->sql;
        for (const Bound& value : question.values)
            text += ',' + (value.isNull ? "Null" : value.text);
        return text;
    }
    std::map<std::string, std::shared_ptr<Prepared>> statements_;
};

TEST(ReadAhead, TakesAlongWhatFollowedWithTheValuesOfToday) {
    Till till;
    const auto load = [&](const char* account, std::int64_t sale) {
        return till.act({till.question("card", {account}), till.question("sales", {account}),
                         till.question("paid", {account, sale}), till.question("today", {"22/11"})});
    };
    EXPECT_EQ(load("7", 5), "[card,7][sales,7][paid,7,5][today,22/11]");
    // A value of which nobody knows whether it is always the same waits for a second time.
    EXPECT_EQ(load("8", 6), "[card,8 sales,8][paid,8,6][today,22/11]");
    EXPECT_EQ(load("9", 7), "[card,9 sales,9 today,22/11][paid,9,7]");
}

TEST(ReadAhead, KnowsNothingBehindAWriteOrInTheNextAct) {
    Till till;
    const auto card = till.question("card", {"7"}), sales = till.question("sales", {"7"});
    const auto payment = till.question("INSERT INTO \"P\" (\"A\") VALUES ($1)", {"7"});
    const auto warning = till.question("warning", {"7"});
    static_cast<void>(till.act({card, sales, payment, sales, warning}));
    EXPECT_EQ(till.act({card, sales, payment, sales, warning}),
              "[card,7 sales,7][INSERT INTO \"P\" (\"A\") VALUES ($1),7 sales,7 warning,7]");
    EXPECT_EQ(till.act({sales}), "[sales,7 warning,7]");
}

TEST(ReadAhead, GivesUpWhatIsAskedForNoMore) {
    Till till;
    const auto card = till.question("card", {"7"}), sales = till.question("sales", {"7"});
    for (int i = 0; i < 3; ++i)
        static_cast<void>(till.act({card, sales}));
    sales.statement->isLarge = true; // a list of thousands
    EXPECT_EQ(till.act({card, sales}), "[card,7][sales,7]");
    sales.statement->isLarge = false;
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(till.act({card}), "[card,7 sales,7]");
    EXPECT_EQ(till.act({card}), "[card,7]");
    // In a loop each turn stands by itself.
    for (int i = 0; i < 2; ++i)
        static_cast<void>(till.act({card, card, card, sales}));
    EXPECT_EQ(till.act({card}), "[card,7 sales,7]");
}

} // namespace
} // namespace veldona::store
