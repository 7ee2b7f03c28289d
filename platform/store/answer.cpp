#include "platform/store/answer.h"

namespace veldona::store {

bool Answer::renew() {
    // Taken before the reading: what others write in between, or wrote unseen before a first reading, is then
    // seen as new the next time.
    const std::uint64_t stamp = isAsked_ ? database_->stampWithWritesOfOthers(plan().baseTables)
                                         : database_->stamp(plan().baseTables);
    if (isAsked_ && query_.prepared->isRepeatable && stamp == stamp_) return false;
    database_->read(query_, rows_);
    stamp_ = stamp;
    isAsked_ = true;
    return true;
}

} // namespace veldona::store
