#include "tests/faults/servershop.h"

#include <map>

#include "backup/serverbooks.h"
#include "tests/faults/day.h"

namespace veldona::faults {
namespace {

// The database of which each shop is a copy.
const std::string& originalShop(TestServer& server) {
    static std::map<const TestServer*, std::string> made;
    std::string& name = made[&server];
    if (name.empty()) {
        const Drive drive;
        copyShop(drive);
        name = server.makeDatabase();
        const store::ServerAddress owner(
            "host=" + server.folder() + " dbname=" + name + " user=" + backup::kOwnerRole, "");
        static_cast<void>(backup::putOnServer(drive.books(), store::ServerPlace(owner), DateTime()));
    }
    return name;
}

} // namespace

ServerShop::ServerShop(TestServer& server, const std::string& tablespace)
    : wire(server.folder()), server_(server),
      database_(server.makeDatabase(originalShop(server), tablespace)) {
    putAddress(*this, addressOf("kasa1"));
}

std::string ServerShop::addressOf(const std::string& user) const {
    return "host=" + wire.folder() + " dbname=" + database_ + " user=" + user;
}

std::string ServerShop::sql(const std::string& text) const {
    return server_.sql("SET search_path = vorel; " + text, database_);
}

} // namespace veldona::faults
