// What the dialect's functions do inside the engine: the writer emits calls to these, each connection
// registers them.
//
// A function that cannot convert or calculate fails the statement with a Turkish sentence behind the mark
// "T:".
#pragma once

#include <functional>

#include "platform/runtime/datetime.h"

struct sqlite3;

namespace veldona::store {

// Scalar functions of the dialect (Val, Cdbl, Mid of a date, division that refuses zero, LIKE by the Turkish
// alphabet …) and the collation TURKISH. `clock` is what Now and Date ask; the machine's where it is
// empty.
void registerFunctions(sqlite3* connection, std::function<DateTime()> clock = {});

} // namespace veldona::store
