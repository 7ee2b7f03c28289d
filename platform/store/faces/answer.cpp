#include "platform/store/faces/answer.h"

#include "platform/store/faces/rowqueries.h"

namespace veldona::store {

bool Answer::renew() {
    // Taken before the reading: what others write in between, or wrote unseen before a first reading, is then
    // seen as new the next time.
    const std::uint64_t stamp = isAsked_ ? database_->stampWithWritesOfOthers(plan().baseTables)
                                         : database_->stamp(plan().baseTables);
    if (isAsked_ && query_.prepared->isRepeatable() && stamp == stamp_) return false;
    const std::uint64_t changes = plan().listsKeys ? database_->keyChanges(plan().baseTables.front()) : 0;
    if (!isAsked_ || mayBeUndone_ || !plan().listsKeys || !appendNewKeys(changes == keyChanges_))
        database_->read(query_, rows_);
    stamp_ = stamp;
    keyChanges_ = changes;
    isAsked_ = true;
    mayBeUndone_ = database_->inTransaction();
    return true;
}

// Keys only grow, and none comes back (but by a rollback; no statement of the programs names one): where the
// table holds as many rows as the known ones and those behind the last of them make, the known ones still
// stand. To count them takes a server as long as the rest of a sale, and isn't needed where nobody removed
// one.
bool Answer::appendNewKeys(bool stillStand) {
    if (rows_.rowCount() == 0) return false;
    const std::string& table = plan().baseTables.front();
    RowSet newer;
    database_->read(keysAbove(*database_, table, rows_.at(rows_.rowCount() - 1, 0).get<std::int64_t>()),
                    newer);
    if (!stillStand) {
        RowSet count;
        database_->read(rowCount(*database_, table), count);
        if (count.at(0, 0) != Value(std::int64_t{rows_.rowCount()} + newer.rowCount())) return false;
    }
    rows_.append(newer);
    return true;
}

} // namespace veldona::store
