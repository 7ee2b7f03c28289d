// For whoever shows rows of the books and shall notice that an act on them was taken back.
#pragma once

#include <functional>

#include "journal/acts.h"

namespace veldona::journal {

// The acts behind entry `seen` that took another one back, newest first; `seen` becomes the last entry. With
// kNothingSeen there are none.
inline constexpr std::int64_t kNothingSeen = -1;
[[nodiscard]] std::vector<Act> takenBackSince(adodb::Connection& books, std::int64_t& seen);

// For a screen on which a row is changed and saved: an act on it that was taken back since it was read, at
// another till, must not be written over unseen.
class TakenBackSince {
public:
    // Before the row is read.
    void begin(adodb::Connection& books);
    // The newest one; told of once.
    [[nodiscard]] std::optional<Act> newestOn(adodb::Connection& books,
                                              const std::function<bool(const Entry&)>& isOurs);

private:
    std::int64_t seen_ = kNothingSeen;
};
// What it was, when and by whom: in sentences.
[[nodiscard]] std::string takenBackWords(const Act& act);

} // namespace veldona::journal
