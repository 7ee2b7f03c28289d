// The engine for several tills: a schema of a PostgreSQL server. The books' own lock lets one till write at a
// time, as a file does, so that nobody's stock or number is lost between a reading and the writing.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "platform/runtime/datetime.h"
#include "platform/store/engine/engine.h"
#include "platform/store/engine/place.h"

namespace veldona::store {

enum class Access { Write, Read };

// Who has books open shares the advisory lock of this number and their schema's; who takes them away has it
// alone.
inline constexpr int kOpenBooksLock = 7646;

// Books of any release. Raises StoreError. `clock`: what Now and Date of a statement answer; the server's
// clock where it is empty.
[[nodiscard]] std::unique_ptr<Engine> openPostgres(const ServerPlace& place, Access access,
                                                   std::chrono::milliseconds wait,
                                                   std::function<DateTime()> clock = {},
                                                   const std::vector<TableDef>& scratch = {});

} // namespace veldona::store
