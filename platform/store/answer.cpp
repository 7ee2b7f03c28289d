#include "platform/store/answer.h"

namespace veldona::store {

bool Answer::renew() {
    // Taken before the reading: what others write in between is then seen as new the next time.
    const std::uint64_t stamp = database_->stampWithWritesOfOthers(plan().baseTables);
    if (isRepeatable_ && stamp == stamp_) return false;
    const std::uint64_t clockReadings = database_->engine().clockReadings();
    database_->read(query_, rows_);
    stamp_ = stamp;
    isRepeatable_ = !plan().baseTables.empty() && clockReadings == database_->engine().clockReadings();
    return true;
}

} // namespace veldona::store
