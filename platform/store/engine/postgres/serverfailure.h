// What the server's codes mean to the operator: what happened, what may be wrong, what to do. The server's
// own sentences stay inside, but for those of our functions.
#pragma once

#include <string>

#include "platform/store/dialect/storeerror.h"

namespace veldona::store {

// A statement that the server refused. Caught in this folder.
struct ServerRefusal {
    std::size_t command; // which of those that were sent together
    std::string code;    // SQLSTATE
    std::string message;
};

[[nodiscard]] StoreError storeErrorOf(const ServerRefusal& refusal);

// The connection went away: nobody knows what became of what was sent last. Caught in this folder.
struct LostConnection {};

[[nodiscard]] StoreError connectionLost();

} // namespace veldona::store
