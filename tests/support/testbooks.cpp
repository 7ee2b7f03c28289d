#include "tests/support/testbooks.h"

#include <unistd.h>

#include <cstdlib>

#include "platform/store/engine/createdatabase.h"
#include "platform/store/engine/openserver.h"

namespace veldona::test {
namespace {

store::Place freePlace(const std::string& path) {
    if (!areBooksOnServer()) return store::FilePlace{path};
    static int made = 0;
    const std::string schema = "vorel_test_" + std::to_string(getpid()) + '_' + std::to_string(++made);
    return store::ServerPlace(
        {std::string(std::getenv("VELDONA_SUNUCU")) + " options='-c search_path=" + schema + "'",
         "VELDONA_SUNUCU"});
}

} // namespace

bool areBooksOnServer() {
    return std::getenv("VELDONA_SUNUCU") != nullptr;
}

TestBooks::TestBooks(const std::string& path, std::string_view password,
                     const std::vector<store::TableDef>& tables,
                     const std::vector<store::SavedQueryDef>& queries)
    : place_(freePlace(path)) {
    if (const auto* server = std::get_if<store::ServerPlace>(&place_))
        store::createOnServer(*server, tables, queries);
    else
        store::createDatabase(path, password, tables, queries);
}

TestBooks::~TestBooks() {
    if (const auto* server = std::get_if<store::ServerPlace>(&place_)) store::removeFromServer(*server);
}

} // namespace veldona::test
