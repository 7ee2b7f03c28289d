#include "platform/store/answer.h"

namespace veldona::store {

bool Answer::renew() {
    // Taken before the reading: what others write in between is then seen as new the next time.
    const std::uint64_t stamp = database_->stampWithWritesOfOthers(plan().baseTables);
    if (isAsked_ && query_.prepared->isRepeatable && stamp == stamp_) return false;
    database_->read(query_, rows_);
    stamp_ = stamp;
    isAsked_ = true;
    return true;
}

} // namespace veldona::store
