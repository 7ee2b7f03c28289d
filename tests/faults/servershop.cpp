#include "tests/faults/servershop.h"

#include "backup/serverbooks.h"
#include "tests/faults/day.h"

namespace veldona::faults {
namespace {

// The database of which each shop is a copy.
const std::string& originalShop() {
    static const std::string name = [] {
        const Drive drive;
        copyShop(drive);
        TestServer& server = TestServer::get();
        std::string made = server.makeDatabase();
        const store::ServerAddress owner(
            "host=" + server.folder() + " dbname=" + made + " user=" + backup::kOwnerRole, "");
        static_cast<void>(backup::putOnServer(drive.books(), store::ServerPlace(owner), DateTime()));
        return made;
    }();
    return name;
}

} // namespace

ServerShop::ServerShop() : database_(TestServer::get().makeDatabase(originalShop())) {
    putAddress(*this, addressOf("kasa1"));
}

std::string ServerShop::addressOf(const std::string& user) const {
    return "host=" + wire.folder() + " dbname=" + database_ + " user=" + user;
}

std::string ServerShop::sql(const std::string& text) const {
    return TestServer::get().sql("SET search_path = vorel; " + text, database_);
}

} // namespace veldona::faults
