// What is asked one behind the other goes to the server in one trip.
//
// The screens ask as their rules say: a question, its answer, the next question; on a server each is a trip.
// At most acts of an operator they are the same ones, with values of the first among them. So it is noted
// behind each statement what followed it. The next time the followers go along with it, and their answers
// wait here for whoever asks the very same question in the same act. None outlives a write, of this till or
// of another one, so that what is answered is what the server would answer. What was fetched a few times
// without being asked for is fetched no more.
#pragma once

#include <memory>
#include <vector>

#include "platform/store/engine/postgres/wire.h"

namespace veldona::store {

struct Prepared;
class ServerRows;

struct Question {
    std::shared_ptr<Prepared> statement;
    std::vector<Bound> values;
};

// A question that was asked behind a statement; it stands with that one (Prepared).
struct Follower {
    struct Source {
        int place = -1; // of the value among those of the leading statement; -1: always the same one
        Bound value;    // as it was
    };
    std::weak_ptr<Prepared> statement;
    std::vector<Source> values;
    int seen = 1;
    int missed = 0; // since it was seen last
};

class ReadAhead {
public:
    using Answer = std::shared_ptr<const ServerRows>;

    // What most likely follows, and is not known yet.
    [[nodiscard]] std::vector<Question> behind(const Question& asked) const;
    // `asked` is the next statement of this act; one that writes is followed by others, and follows none.
    void note(const Question& asked);

    void keep(Question question, Answer answer);
    [[nodiscard]] Answer find(const Question& question) const; // nullptr where it is not known
    // Somebody wrote, or the act has ended: no answer is known, and nothing follows what was asked so far.
    void forget();

private:
    struct Lead {
        Question question;
        std::vector<bool> seen; // of its followers
    };
    static void learn(Lead& lead, const Question& asked);
    static void close(const Lead& lead);

    std::vector<Lead> leads_; // of this act, the last one last
    std::vector<std::pair<Question, Answer>> answers_;
};

} // namespace veldona::store
