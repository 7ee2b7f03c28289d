// The words of this engine where another one has its own.
#pragma once

#include "platform/store/dialect/enginewords.h"

namespace veldona::store {

// The saved queries stand in the files in these words, and a file whose queries read otherwise is refused.
inline constexpr EngineWords kSqlcipherWords{" COLLATE TURKISH", "?", "SELECT last_insert_rowid()", "ifnull"};

} // namespace veldona::store
