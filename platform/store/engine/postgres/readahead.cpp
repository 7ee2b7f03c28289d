#include "platform/store/engine/postgres/readahead.h"

#include <algorithm>
#include <utility>

#include "platform/store/engine/postgres/session.h"

namespace veldona::store {
namespace {

// An act of a screen is about a dozen questions; one that asks in a loop is no reason to keep more.
constexpr std::size_t kMostLeads = 16, kMostFollowers = 24, kMostAnswers = 64;
constexpr int kMostRows = 500; // of an answer; a list of all customers is sent when it's asked for
constexpr int kMostMissed = 4; // acts without a question that was asked before more than once

bool isSure(const Follower& follower) {
    return follower.seen > 1 || std::ranges::all_of(follower.values, [](const Follower::Source& source) {
               return source.place >= 0 || source.value.isNull;
           });
}

Follower followerOf(const Question& lead, const Question& asked) {
    Follower made{asked.statement, {}};
    for (const Bound& value : asked.values) {
        const auto same = std::ranges::find_if(lead.values, [&](const Bound& one) {
            return !one.isNull && !value.isNull && one.text == value.text;
        });
        made.values.push_back(
            {same == lead.values.end() ? -1 : static_cast<int>(same - lead.values.begin()), value});
    }
    return made;
}

// With the values that the leading statement has now.
std::vector<Bound> valuesOf(const Follower& follower, const std::vector<Bound>& lead) {
    std::vector<Bound> values;
    for (const Follower::Source& source : follower.values) {
        values.push_back(source.value);
        if (source.place < 0) continue;
        const Bound& taken = lead[static_cast<std::size_t>(source.place)];
        values.back().isNull = taken.isNull;
        values.back().text = taken.text;
    }
    return values;
}

} // namespace

std::vector<Question> ReadAhead::behind(const Question& asked) const {
    std::vector<Question> expected;
    for (const Follower& follower : asked.statement->followers) {
        Question question{follower.statement.lock(), {}};
        if (!question.statement || question.statement->isGone || question.statement->isLarge) continue;
        if (!isSure(follower)) continue;
        question.values = valuesOf(follower, asked.values);
        if (!find(question)) expected.push_back(std::move(question));
    }
    return expected;
}

void ReadAhead::note(const Question& asked) {
    for (auto lead = leads_.begin(); lead != leads_.end();) {
        if (lead->question.statement != asked.statement) {
            learn(*lead++, asked);
            continue;
        }
        close(*lead); // it is asked in a loop: each time begins anew
        lead = leads_.erase(lead);
    }
    if (leads_.size() == kMostLeads) {
        close(leads_.front());
        leads_.erase(leads_.begin());
    }
    leads_.push_back({asked, std::vector<bool>(asked.statement->followers.size())});
}

void ReadAhead::learn(Lead& lead, const Question& asked) {
    std::vector<Follower>& followers = lead.question.statement->followers;
    for (std::size_t i = 0; i < followers.size(); ++i) {
        Follower& known = followers[i];
        if (known.statement.lock() != asked.statement ||
            valuesOf(known, lead.question.values) != asked.values)
            continue;
        if (!lead.seen[i]) ++known.seen;
        lead.seen[i] = true;
        known.missed = 0;
        return;
    }
    if (followers.size() == kMostFollowers) return;
    followers.push_back(followerOf(lead.question, asked));
    lead.seen.push_back(true);
}

void ReadAhead::close(const Lead& lead) {
    std::vector<Follower>& followers = lead.question.statement->followers;
    for (std::size_t i = followers.size(); i-- > 0;) {
        Follower& follower = followers[i];
        if (lead.seen[i]) continue;
        if (++follower.missed >= (follower.seen > 1 ? kMostMissed : 1) || follower.statement.expired())
            followers.erase(followers.begin() + static_cast<std::ptrdiff_t>(i));
    }
}

void ReadAhead::keep(Question question, Answer answer) {
    question.statement->isLarge = answer->rowCount() > kMostRows;
    if (!question.statement->isLarge && answers_.size() < kMostAnswers)
        answers_.emplace_back(std::move(question), std::move(answer));
}

ReadAhead::Answer ReadAhead::find(const Question& question) const {
    const auto known = std::ranges::find_if(answers_, [&](const auto& one) {
        return one.first.statement == question.statement && one.first.values == question.values;
    });
    return known == answers_.end() ? nullptr : known->second;
}

void ReadAhead::forget() {
    for (const Lead& lead : std::exchange(leads_, {}))
        close(lead);
    answers_.clear();
}

} // namespace veldona::store
