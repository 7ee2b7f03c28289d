// Books that an earlier release made, and the tables of today.
#pragma once

#include <chrono>
#include <functional>
#include <string>

#include "platform/store/dialect/definition.h"
#include "platform/store/engine/engine.h"

namespace veldona::store {

// Gives the books at `path` what they lack of `delivered`: tables, columns, defaults (also in the rows that
// hold Null there), indexes, unique keys, queries; all of it in one transaction, or nothing. A key that
// stands twice stays as it is. Before tables or columns are added, `keepCopy` runs, which hands on a failure.
//
// Without a table or a column of today the program can't work: where another till writes for longer than
// `longest`, or the disk is full, that is raised, and the books are as they were. What else is missing waits
// for the next opening. True where the connection must be opened anew, since it knows the columns as they
// were.
[[nodiscard]] bool bringUpToDate(Engine& engine, const Delivered& delivered, const std::string& path,
                                 std::chrono::milliseconds longest, const std::function<void()>& keepCopy);

// The same to who only looks: what the file lacks stands in its place, empty, for this connection alone.
void coverMissing(Engine& engine, const Delivered& delivered);

} // namespace veldona::store
