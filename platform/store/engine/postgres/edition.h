// Which release made the books of a server, so that older and newer ones are told from today's.
//
// The schema's comment keeps it: only the owner writes there, it goes along when the schema is renamed or
// dumped, and each role reads it.
#pragma once

#include <string>

#include "platform/store/dialect/definition.h"
#include "platform/store/engine/engine.h"
#include "platform/store/engine/place.h"

namespace veldona::store {

// A statement that notes in the place's schema that this release made it of `delivered`.
[[nodiscard]] std::string editionStatement(const ServerPlace& place, const std::vector<TableDef>& tables,
                                           const std::vector<SavedQueryDef>& queries);

enum class Edition { Older, Todays, Newer };
[[nodiscard]] Edition editionOf(Engine& engine, const Delivered& delivered);

// Raises Other for the books of an older or a newer release, and Damaged where a table or a column is missing
// that they are made of. Only reads.
void requireTodays(Engine& engine, const ServerPlace& place, const Delivered& delivered);

} // namespace veldona::store
