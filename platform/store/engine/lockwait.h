// How the statements of one process wait for another workstation's lock.
//
// An act of the operator is many statements. Behind the first wait that failed each further one would wait as
// long again, so they fail at once until the act has ended.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <utility>

namespace veldona::store {

// Asked every few milliseconds with the time waited so far; false gives the wait up. It runs in the middle of
// a statement and must not come back to the books.
using GoOnWaiting = std::function<bool(std::chrono::milliseconds waited)>;

class LockWait {
public:
    explicit LockWait(GoOnWaiting goOn = {}) : goOn_(std::move(goOn)) {}

    [[nodiscard]] bool goesOn(std::chrono::milliseconds waited, std::chrono::milliseconds longest) {
        if (!isOver_) isOver_ = waited >= longest || (goOn_ && !goOn_(waited));
        return !isOver_;
    }
    [[nodiscard]] bool isOver() const { return isOver_; }
    void endAct() {
        isOver_ = false;
        ++act_;
    }
    // The number of the operator's act.
    [[nodiscard]] std::int64_t act() const { return act_; }

private:
    GoOnWaiting goOn_;
    bool isOver_ = false;
    std::int64_t act_ = 0;
};

} // namespace veldona::store
