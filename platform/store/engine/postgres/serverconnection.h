// A connection to the server of the books, and in words why there is none.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/postgres/serveraddress.h"

struct pg_conn;

namespace veldona::store {

struct CloseConnection {
    void operator()(pg_conn* connection) const;
};
using ServerConnection = std::unique_ptr<pg_conn, CloseConnection>;

// Raises StoreError, which names the server and the reason. `goOn` is asked every few milliseconds while the
// server doesn't answer, and may give the wait up; empty: nobody does.
[[nodiscard]] ServerConnection connectTo(const ServerAddress& address, std::chrono::milliseconds wait,
                                         const std::function<bool()>& goOn = {});

} // namespace veldona::store
