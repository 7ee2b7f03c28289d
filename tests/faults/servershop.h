// The shop of the other faults on the tests' server, behind a wire of its own.
#pragma once

#include <string>

#include "tests/faults/testserver.h"
#include "tests/support/wire.h"

namespace veldona::faults {

class ServerShop : public Drive {
public:
    // Open to the till kasa1.
    explicit ServerShop(TestServer& server = TestServer::get(), const std::string& tablespace = "pg_default");
    // The address of the same books for another role.
    [[nodiscard]] std::string addressOf(const std::string& user) const;
    std::string sql(const std::string& text) const; // as the superuser, among the tables of the books
    test::Wire wire;

private:
    TestServer& server_;
    std::string database_;
};

} // namespace veldona::faults
