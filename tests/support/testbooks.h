// Books of a test: a file, or, where VELDONA_SUNUCU gives the address of the tests' server, a schema there.
// So one test is asked of both engines.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/store/dialect/definition.h"
#include "platform/store/engine/place.h"

namespace veldona::test {

[[nodiscard]] bool areBooksOnServer();

class TestBooks {
public:
    // `path`: of the file, where it is one.
    TestBooks(const std::string& path, std::string_view password, const std::vector<store::TableDef>& tables,
              const std::vector<store::SavedQueryDef>& queries);
    ~TestBooks();
    TestBooks(const TestBooks&) = delete;
    TestBooks& operator=(const TestBooks&) = delete;

    [[nodiscard]] const store::Place& place() const { return place_; }

private:
    store::Place place_;
};

} // namespace veldona::test
