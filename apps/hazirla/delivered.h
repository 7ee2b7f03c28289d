// The database as delivered, put in its place whole or not at all.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "backup/refusal.h"
#include "platform/store/engine/place.h"

namespace veldona::hazirla {

using backup::Refusal;

enum class Existing { Keep, Replace };

// Makes `target` with the tables, the saved queries and the first rows, lets `fill` write on, and gives the
// file its name only when it is proven and on the disk; until then an existing one stays as it is. Raises
// Refusal, StoreError or RuntimeError.
void deliver(const std::string& target, Existing existing,
             const std::function<void(const std::string& file)>& fill);

// Whether books do.
[[nodiscard]] bool standAt(const store::Place& place);

// Runs statements of the store's dialect on `file`, a path of this machine.
void runStatements(const std::string& file, const std::vector<std::string>& statements);

} // namespace veldona::hazirla
