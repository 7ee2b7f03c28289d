#include <sqlcipher/sqlite3.h>

#include <memory>

#include "platform/store/engine/alphabet.h"
#include "platform/store/engine/sqlcipher/functions_engine.h"

namespace veldona::store::sql {
namespace {

// The pattern is kept with the statement: it is the same for each row.
void like(const Arguments& arguments, Answer& answer) {
    if (const auto* kept = static_cast<const LikePattern*>(sqlite3_get_auxdata(answer.context(), 0))) {
        return answer.whole(kept->fits(arguments.text(1)));
    }
    auto pattern = std::make_unique<LikePattern>(arguments.text(0));
    answer.whole(pattern->fits(arguments.text(1)));
    sqlite3_set_auxdata(answer.context(), 0, pattern.release(),
                        [](void* held) { delete static_cast<LikePattern*>(held); });
}

} // namespace

void registerLike(sqlite3* connection) {
    constexpr Registered kLike{"vd_like", 2, run<like>};
    registerAll(connection, &kLike, 1);
}

} // namespace veldona::store::sql
