// The network or the server goes away between any two messages of an act. What was told as done is there once
// and whole, what was not is not there at all, and the till has said so; then the act goes through.
#include <algorithm>
#include <iostream>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/delivered.h"
#include "platform/store/engine/journalseal.h"
#include "platform/store/faces/database.h"
#include "schema/tables.h"
#include "tests/faults/day.h"
#include "tests/faults/servershop.h"

namespace veldona::faults {
namespace {

// Each from wherever the main screen is; what is there behind the sale lies in the first row of L3.
std::vector<Act> serverDay() {
    const std::string toSale = "type Text1 \"7\"\ndblclick L3 0\n";
    std::vector<Act> acts = {post(1000), correctPayment(1001), saveSale(), deleteSale()};
    for (const std::size_t begins : {0U, 1U, 2U})
        acts[begins].lines = toSale + acts[begins].lines;
    return acts;
}

// Every row without its counter: those of a server that was killed leave gaps. The journal tells of them and
// of the run.
std::string contentOf(const ServerShop& shop) {
    std::string text;
    for (const store::TableDef& table : schema::tables()) {
        if (table.name == store::kJournalTable) continue;
        text += shop.sql("SELECT coalesce(string_agg(r, E'\\n' ORDER BY r COLLATE \"C\"), '') FROM (SELECT "
                         "(to_jsonb(t) - 'ID')::text AS r FROM \"" +
                         table.name + "\" t) AS rows") +
                '\n';
    }
    return text;
}

struct Told {
    bool asDone = false;
    std::string text;
};

// As far as the screens let an operator go.
Told play(Till& till, const Act& act) {
    try {
        till.play(act.lines);
    } catch (const console::Shortfall&) {
    }
    Told told;
    for (const std::string& each : till.said()) {
        told.asDone = told.asDone || each == act.doneMessage;
        told.text += each + '|';
    }
    // A posting says that it is done whatever came of it, and what went wrong behind that.
    const auto holds = [&told](const char* words) { return told.text.find(words) != told.text.npos; };
    told.asDone = (told.asDone || act.doneMessage.empty()) && !holds("hiçbir bölümü kaydedilmedi") &&
                  !holds("daha bilinmiyor");
    return told;
}

void start(Till& till) {
    till.play("clock \"22/11/2026 10:30:00\"\nstart\n");
}

class ServerLost : public testing::Test {
protected:
    ServerLost() : acts_(serverDay()) {
        ServerShop shop;
        Till till(shop);
        start(till);
        contents_.push_back(contentOf(shop));
        for (const Act& act : acts_) {
            shop.wire.cutAt(0);
            const Told told = play(till, act);
            if (!told.asDone) throw std::runtime_error("not told as done: " + told.text);
            messages_.push_back(shop.wire.messages());
            contents_.push_back(contentOf(shop));
        }
    }

    // The day, in which the nth message of one act does not arrive; what is wrong, or "".
    std::string wrongWith(std::size_t hurt, int message, const std::function<void()>& meanwhile) {
        ServerShop shop;
        auto till = std::make_unique<Till>(shop);
        start(*till);
        for (std::size_t i = 0; i < acts_.size(); ++i) {
            if (i == hurt) shop.wire.cutAt(message, meanwhile);
            Told told = play(*till, acts_[i]);
            const bool wasCut = i == hurt && shop.wire.hasCut();
            shop.wire.cutAt(0);
            const std::string content = contentOf(shop);
            if (content != contents_[told.asDone ? i + 1 : i])
                return std::string(told.asDone ? "told as done" : "not told as done") + ", the books hold " +
                       (content == contents_[i]       ? "nothing of it"
                        : content == contents_[i + 1] ? "all of it"
                                                      : "another thing") +
                       ": " + told.text;
            if (told.asDone && (!wasCut || told.text.find("koptu") != told.text.npos)) continue;
            if (told.asDone) {
                ++silent_;
                continue;
            }
            if (told.text.find("bağlantı koptu") == told.text.npos) return "not told why: " + told.text;
            till = std::make_unique<Till>(shop);
            start(*till);
            told = play(*till, acts_[i]);
            if (!told.asDone || contentOf(shop) != contents_[i + 1])
                return "not done at the second time: " + told.text;
        }
        return {};
    }

    // At each message, or at some of all acts.
    void hurtEach(const std::function<void()>& meanwhile, int all) {
        std::mt19937 random(20261123);
        int points = 0;
        for (const int messages : messages_)
            points += messages;
        for (int tries = 0; tries < std::min(all, points); ++tries) {
            int point = all < points ? static_cast<int>(random() % static_cast<unsigned>(points)) : tries;
            std::size_t act = 0;
            while (point >= messages_[act])
                point -= messages_[act++];
            ASSERT_EQ(wrongWith(act, point + 1, meanwhile), "") << "act " << act << ", message " << point + 1;
        }
        std::cout << points << " messages, " << silent_ << " cuts that nobody had to hear of\n";
    }

    [[nodiscard]] const std::vector<Act>& acts() const { return acts_; }
    [[nodiscard]] const std::vector<std::string>& contents() const { return contents_; }

private:
    std::vector<Act> acts_;
    std::vector<std::string> contents_; // [0] before the first act
    std::vector<int> messages_;
    int silent_ = 0;
};

TEST_F(ServerLost, TheNetworkBreaks) {
    hurtEach({}, 16 * effort());
}

TEST_F(ServerLost, TheServerIsKilled) {
    hurtEach([] { TestServer::get().restart(); }, 6 * effort());
}

// A write or the answer to it is lost, and the server is out of reach when it could be asked.
TEST_F(ServerLost, WhatNobodyCouldSayIsSaidLater) {
    using enum test::Wire::Loses;
    for (const auto loses : {Message, Answer}) {
        ServerShop shop;
        Till till(shop);
        start(till);
        store::Engine& engine = till.session().workspace.open(kDatabasePath, "")->engine();
        const auto patience = [](std::chrono::milliseconds waited) {
            return waited < std::chrono::seconds(1);
        };
        engine.setLockWait(std::make_shared<store::LockWait>(patience));
        shop.wire.cutWhere("vdmark", loses, [&shop] { shop.wire.setDown(true); });
        const Told told = play(till, acts().front());
        EXPECT_FALSE(told.asDone) << told.text;
        EXPECT_NE(told.text.find("daha bilinmiyor"), std::string::npos) << told.text;
        shop.wire.setDown(false);
        engine.setLockWait(nullptr);
        const std::string later = play(till, {"type Text1 \"8\"\n", ""}).text;
        EXPECT_NE(later.find(loses == Answer ? "son kayıt yapılmış; yeniden yapmayın"
                                             : "son kayıt yapılmamış; yeniden yapın"),
                  std::string::npos)
            << later;
        EXPECT_EQ(contentOf(shop), contents()[loses == Answer ? 1 : 0]);
    }
}

} // namespace
} // namespace veldona::faults
