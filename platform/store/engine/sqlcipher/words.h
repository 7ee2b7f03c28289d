// The words of this engine where another one has its own.
#pragma once

#include "platform/store/dialect/enginewords.h"

namespace veldona::store {

// The saved queries stand in the files in these words, and a file whose queries read otherwise is refused.
//
// OR FAIL: a row that a key refuses is refused before anything is written. Were the statement alone to be
// undone, the engine would keep, and encrypt, each page that the row and its entry of the journal touch.
inline constexpr EngineWords kSqlcipherWords{.byAlphabet = " COLLATE TURKISH",
                                             .parameter = "?",
                                             .lastCounter = "SELECT last_insert_rowid()",
                                             .firstOfTwo = "ifnull",
                                             .insertRow = "INSERT OR FAIL INTO "};

} // namespace veldona::store
