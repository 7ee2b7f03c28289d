// The words of this engine where another one has its own.
#pragma once

#include "platform/store/dialect/enginewords.h"

namespace veldona::store {

inline constexpr EngineWords kSqlcipherWords{" COLLATE TURKISH", "?", "SELECT last_insert_rowid()",
                                             " GROUP BY NULL"};

} // namespace veldona::store
