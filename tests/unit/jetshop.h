// The small Jet shop of the tests, to be damaged and moved in.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>

#include "apps/aktar/examine.h"
#include "apps/aktar/jetheader.h"
#include "apps/aktar/movein.h"
#include "core/delivered.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "tests/support/answer.h"
#include "tests/support/files.h"

namespace veldona::aktar {

namespace fs = std::filesystem;

inline constexpr std::size_t kPage = 4096;
inline const Progress kQuiet = [](const std::string&, std::uint64_t, std::uint64_t) {};

// A folder with a copy of the small Jet shop, to be damaged and moved in.
class MovingIn : public testing::Test {
protected:
    [[nodiscard]] std::string target() const { return folder_ / "yeni/vorel.mdb"; }
    std::string source() {
        test::writeBytes(folder_ / "eski.mdb", bytes);
        return folder_ / "eski.mdb";
    }
    Examination look(const std::string& password = {}) {
        const std::string path = source();
        checkJetHeader(path, password);
        return examine(JetFile(path), kQuiet);
    }
    void move() {
        const JetFile file(source());
        moveIn(file, examine(file, kQuiet), target(), kQuiet);
    }
    // Where a table's definition keeps its number of rows.
    [[nodiscard]] std::size_t tableCount(const std::string& name) {
        const std::string path = source();
        const JetFile file(path);
        const auto table = std::find_if(file.tables().begin(), file.tables().end(),
                                        [&](const JetTable& known) { return known.name == name; });
        const auto count = static_cast<char>(table->rows);
        for (std::size_t page = kPage; page < bytes.size(); page += kPage)
            if (bytes[page] == 2 && bytes[page + 16] == count) return page + 16;
        throw std::logic_error("no such table in the fixture");
    }
    // Every occurrence; the fixture must have one.
    void replaceBytes(const std::string& from, const std::string& to) {
        std::size_t at = bytes.find(from);
        ASSERT_NE(at, std::string::npos);
        for (; at != std::string::npos; at = bytes.find(from, at + to.size()))
            bytes.replace(at, from.size(), to);
    }
    std::string answer(const std::string& sql) {
        return test::answerOf(*store::openSqlcipher(target(), kDeliveredPassword, std::chrono::seconds(1)),
                              sql);
    }

    std::string bytes = test::bytesOf(VELDONA_VERI "/dukkan-jet4.mdb");

private:
    test::TemporaryFolder folder_;
};

} // namespace veldona::aktar
