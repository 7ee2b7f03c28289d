// Which parts of what is kept have to be read anew: those that were never read, and those below which
// something was written.
#pragma once

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

namespace veldona {

class StaleParts {
public:
    void reset(std::size_t parts) {
        stale_.assign(parts, true);
        next_ = 0;
    }
    [[nodiscard]] std::size_t count() const { return stale_.size(); }
    void touch(std::size_t part) {
        stale_[part] = true;
        next_ = std::min(next_, part);
    }
    [[nodiscard]] std::optional<std::size_t> next() {
        while (next_ < stale_.size() && !stale_[next_])
            ++next_;
        return next_ < stale_.size() ? std::optional(next_) : std::nullopt;
    }
    void markRead(std::size_t part) { stale_[part] = false; }

private:
    std::vector<bool> stale_;
    std::size_t next_ = 0; // all before it are read
};

} // namespace veldona
