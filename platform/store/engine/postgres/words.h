// The words of this engine where another one has its own.
#pragma once

#include "platform/store/dialect/enginewords.h"

namespace veldona::store {

// The server is not asked: each insert has told the counter that it filled.
inline constexpr std::string_view kLastCounter = "SELECT lastval()";

inline constexpr EngineWords kPostgresWords{.byAlphabet = " COLLATE turkish",
                                            .parameter = "$",
                                            .lastCounter = kLastCounter,
                                            .firstOfTwo = "coalesce",
                                            .beforeTruth = "-((",
                                            .behindTruth = ")::int)::int8",
                                            .isTrue = " <> 0",
                                            .whole = "::int8",
                                            .number = "::float8",
                                            .ascending = " NULLS FIRST",
                                            .descending = " DESC NULLS LAST",
                                            .groupsBySelected = true,
                                            .counter = "vd_counter",
                                            .behindInsert = " RETURNING \"ID\""};

} // namespace veldona::store
