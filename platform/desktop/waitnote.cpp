#include "platform/desktop/waitnote.h"

#include <utility>

namespace veldona {

namespace {

// The machine's own time: the clock of a test stands still.
using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kPatience{500};
constexpr std::chrono::milliseconds kBetweenLooks{50};

} // namespace

LongWork::LongWork(WaitNote* note, std::string words)
    : note_(note), words_(std::move(words)), next_(Clock::now() + kPatience) {}

LongWork::~LongWork() {
    if (isShown_) note_->hide();
}

bool LongWork::goOn(const std::string& howFar) {
    if (note_ == nullptr || isGivenUp_ || Clock::now() < next_) return !isGivenUp_;
    note_->show(howFar.empty() ? words_ : words_ + " " + howFar);
    isShown_ = true;
    isGivenUp_ = note_->isGivenUp();
    next_ = Clock::now() + kBetweenLooks;
    return !isGivenUp_;
}

} // namespace veldona
