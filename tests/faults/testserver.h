// A server of the tests' own, and drives whose books lie on it.
#pragma once

#include <string>

#include "tests/faults/till.h"

namespace veldona::faults {

class TestServer {
public:
    static TestServer& get(); // one for all tests of the process

    TestServer();
    ~TestServer();
    TestServer(const TestServer&) = delete;
    TestServer& operator=(const TestServer&) = delete;

    [[nodiscard]] std::string folder() const; // of its socket
    // Ends it as a kill would, and starts it on what it then has.
    void restart() const;
    // As its superuser; the first cell of the answer. Raises std::runtime_error.
    std::string sql(const std::string& text, const std::string& database = "veldona") const;
    // An empty one, or a copy of another one; its owner is veldona_sahip. Answers its name.
    std::string makeDatabase(const std::string& like = "template0",
                             const std::string& tablespace = "pg_default");
    // A place for databases in `folder`, a new one. Answers its name.
    std::string makeTablespace(const std::filesystem::path& folder);

private:
    void script(const std::string& command) const;

    test::TemporaryFolder place_;
    int made_ = 0;
};

// Says in the drive where its books are.
void putAddress(const Drive& drive, const std::string& address);

} // namespace veldona::faults
