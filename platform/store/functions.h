// What the dialect's functions do inside the engine: the writer emits calls to these, each connection registers them.
#pragma once

struct sqlite3;

namespace veldona::store {

// Scalar functions of the dialect (Val, Cdbl, Mid of a date, division that refuses zero, LIKE by the Turkish
// alphabet …) and the collation TURKISH.
void registerFunctions(sqlite3* connection);

// The version of the alphabet's order; indexes written under another one must be built anew.
[[nodiscard]] const char* collationVersion();

} // namespace veldona::store
