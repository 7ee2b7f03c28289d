// A statement on the server, run when its rows are first asked for.
#pragma once

#include <memory>
#include <string_view>

#include "platform/store/engine/postgres/session.h"

namespace veldona::store {

[[nodiscard]] std::unique_ptr<Statement> makeStatement(std::shared_ptr<Session> session,
                                                       std::string_view sql);
// Of one that changes rows.
[[nodiscard]] std::shared_ptr<Prepared> preparedOf(const Statement& statement);

} // namespace veldona::store
