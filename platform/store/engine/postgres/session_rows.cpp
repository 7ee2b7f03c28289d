#include <charconv>
#include <utility>

#include "platform/store/engine/postgres/definitions.h"
#include "platform/store/engine/postgres/session.h"

namespace veldona::store {

bool Session::canWait(const Prepared& statement) const {
    return !statement.columns.empty() && scratch_.contains(statement.table);
}

void Session::keepRow(const Prepared& statement, const std::vector<Bound>& values) {
    requireScratch(statement);
    ahead_.forget();
    if (waiting_.empty() || !waiting_.back().isOf(statement.table, statement.columns))
        waiting_.emplace_back(statement.table, statement.columns);
    waiting_.back().add(values);
    filled_.insert(statement.table);
    lastTable_ = statement.table;
    rowsChanged = 1;
    if (waiting_.back().isFull()) sendWaiting();
}

// A few rows, in the trip of what follows.
void Session::addWaiting(Batch& batch) {
    for (const RowHeap& heap : std::exchange(waiting_, {}))
        batch.push_back({Command::Kind::Run, heap.insertStatement(), {}, {}});
    if (!batch.empty() && !isOpen_) batch.push_back({Command::Kind::Sync, {}, {}, {}});
}

// Very many go by a stream of their own, in the order in which they came.
void Session::sendWaiting() {
    bool areFew = true;
    for (const RowHeap& heap : waiting_)
        areFew = areFew && heap.isSmall();
    if (areFew) return;
    guarded([&] {
        for (const RowHeap& heap : std::exchange(waiting_, {}))
            wire_->copyIn(heap.copyStatement(), heap.lines());
    });
}

// All of them, before something that is no statement of the dialect.
void Session::flushWaiting() {
    sendWaiting();
    if (waiting_.empty()) return;
    Batch batch;
    addWaiting(batch);
    static_cast<void>(send(batch, {}));
}

std::int64_t Session::lastId() {
    if (lastTable_.empty()) return lastId_;
    const std::string table = std::exchange(lastTable_, {});
    const ServerRows last = ask("SELECT pg_sequence_last_value(pg_get_serial_sequence($1, 'ID')::regclass)",
                                {boundOf(quotedName(table))});
    const std::string_view id = last.text(0, 0);
    std::from_chars(id.data(), id.data() + id.size(), lastId_);
    return lastId_;
}

} // namespace veldona::store
