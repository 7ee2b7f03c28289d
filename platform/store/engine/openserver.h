// The books of a server, opened, made and removed: who stands above names no engine.
//
// The books of an older or a newer release raise StoreError, as do those that lack a table. Only vorel-sunucu
// brings older ones up to date: the tills may not.
#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include "platform/store/dialect/definition.h"
#include "platform/store/engine/engine.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/engine/place.h"

namespace veldona::store {

// Whether they are of an older release; raises StoreError for those of a newer one, and where a table is
// missing.
[[nodiscard]] bool areOlder(Engine& books, const ServerPlace& place, const Delivered& delivered);

// With the scratch tables of this connection.
[[nodiscard]] std::unique_ptr<Engine> openServerToWork(const ServerPlace& place, const Opening& opening,
                                                       const Delivered& delivered);
// For whoever is no screen: a tool, a backup.
[[nodiscard]] std::unique_ptr<Engine> openServer(const ServerPlace& place, std::chrono::milliseconds wait,
                                                 const Delivered& delivered);
// The server takes no write from it.
[[nodiscard]] std::unique_ptr<Engine>
openServerToRead(const ServerPlace& place, std::chrono::milliseconds wait, const Delivered& delivered);

// Makes the place's schema with these tables and queries, all of it or nothing. Raises StoreError where one
// of its name stands there already.
void createOnServer(const ServerPlace& place, const std::vector<TableDef>& tables,
                    const std::vector<SavedQueryDef>& queries);
// The schema with all that it holds.
void removeFromServer(const ServerPlace& place);

} // namespace veldona::store
