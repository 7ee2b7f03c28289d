// A file that an earlier release made, brought up to the tables of today when it is opened to write.
#pragma once

#include <vector>

#include "platform/store/dialect/definition.h"
#include "platform/store/engine/engine.h"

namespace veldona::store {

// Gives the columns of `tables` that have a default and whose declaration in the file does not name it that
// default, also in the rows that hold Null there: all of it in one transaction, or nothing. A file is touched
// once, since its declarations tell that it was; one that somebody else writes to just now, or whose disk is
// full, waits for the next opening. True where it was touched: the connection must be opened anew.
[[nodiscard]] bool addMissingDefaults(Engine& engine, const std::vector<TableDef>& tables);

} // namespace veldona::store
