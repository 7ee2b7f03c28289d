#include <sqlcipher/sqlite3.h>

#include <new>
#include <string_view>

#include "platform/store/engine/alphabet.h"
#include "platform/store/engine/sqlcipher/functions_engine.h"

namespace veldona::store::sql {
namespace {

int compare(void*, int leftLength, const void* left, int rightLength, const void* right) {
    static const Alphabet& alphabet = Alphabet::turkish();
    return alphabet.compare({static_cast<const char*>(left), static_cast<std::size_t>(leftLength)},
                            {static_cast<const char*>(right), static_cast<std::size_t>(rightLength)});
}

} // namespace

void registerCollation(sqlite3* connection) {
    static_cast<void>(Alphabet::turkish()); // raises here and not inside the engine where it is missing
    if (sqlite3_create_collation_v2(connection, "TURKISH", SQLITE_UTF8, nullptr, compare, nullptr) !=
        SQLITE_OK)
        throw std::bad_alloc();
}

} // namespace veldona::store::sql
