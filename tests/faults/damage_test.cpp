// Files that are no books of ours, or damaged ones: the start says what may be wrong and what to do, and
// leaves the file as it is. And what is nobody's business stands in no file and no message.
#include <sys/stat.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "platform/store/sqlcipherengine.h"
#include "tests/faults/day.h"

namespace veldona::faults {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPage = 4096;

std::string bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void writeBytes(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

std::string plainFile() {
    std::string bytes = std::string("SQLite format 3") + '\0';
    return bytes + std::string(2 * kPage - bytes.size(), '\0');
}

std::string flipped(std::string bytes, std::size_t from) {
    for (std::size_t at = from; at < bytes.size(); at += kPage)
        bytes[at] = static_cast<char>(bytes[at] ^ 1);
    return bytes;
}

// What happened, what may be wrong, and what to do.
bool isHelpful(const std::string& text) {
    const auto has = [&](const char* words) { return text.find(words) != text.npos; };
    return (has("Veritabanı")) && (has("bozuk") || has("bu programın veritabanı değil")) &&
           (has("denetleyin") || has("yedeği geri yükleyin"));
}

bool hasHelpful(const std::vector<std::string>& said) {
    return std::any_of(said.begin(), said.end(), isHelpful);
}

std::string ourBytes() {
    const Drive drive;
    copyShop(drive);
    return bytesOf(drive.books());
}

// Five thousand customers, so that pages are left that no start reads.
void addCustomers(const Drive& drive) {
    const auto engine =
        store::openSqlcipher(drive.books().string(), kDeliveredPassword, std::chrono::seconds(1));
    engine->begin();
    engine->execute("WITH RECURSIVE N(I) AS (SELECT 100 UNION ALL SELECT I + 1 FROM N WHERE I < 5100) "
                    "INSERT INTO MUSTKAYIT (HSTNO, AD, SOYAD) SELECT CAST(I AS TEXT), 'Ayşe Fatma Gül', "
                    "'Yılmazoğulları' FROM N");
    engine->commit();
}

TEST(Damage, AStartOnWhatIsNotOursFailsInWords) {
    const std::string ours = ourBytes();
    struct Case {
        const char* what;
        std::string bytes;
    };
    const Case cases[] = {
        {"empty", ""},
        {"plain", plainFile()},
        {"noise", std::string(3 * kPage, 'x')},
        {"cut inside the first page", ours.substr(0, 1000)},
        {"the first byte flipped", flipped(ours.substr(0, kPage), 0) + ours.substr(kPage)},
        {"the first page flipped", flipped(ours.substr(0, kPage), 2000) + ours.substr(kPage)}};
    for (const Case& wrong : cases) {
        SCOPED_TRACE(wrong.what);
        const Drive drive;
        writeBytes(drive.books(), wrong.bytes);
        Till till(drive);
        till.play("start\n");
        const auto said = till.said();
        EXPECT_TRUE(till.hasEnded());
        ASSERT_EQ(said.size(), 1U);
        EXPECT_TRUE(isHelpful(said[0])) << said[0];
        EXPECT_EQ(bytesOf(drive.books()), wrong.bytes) << "the file was touched";
        EXPECT_FALSE(fs::exists(drive.books().string() + "-wal"));
    }
}

TEST(Damage, AFolderOrAnotherPasswordFailsInWords) {
    const Drive folder;
    fs::create_directory(folder.books());
    Till atFolder(folder);
    atFolder.play("start\n");
    EXPECT_TRUE(atFolder.hasEnded());
    EXPECT_TRUE(hasHelpful(atFolder.said()));

    const Drive drive;
    store::createDatabase(drive.books().string(), "başka parola", {}, {});
    const std::string before = bytesOf(drive.books());
    Till till(drive);
    till.play("start\n");
    EXPECT_TRUE(till.hasEnded());
    const auto said = till.said();
    ASSERT_EQ(said.size(), 1U);
    EXPECT_NE(said[0].find("parola yanlış"), std::string::npos) << said[0];
    EXPECT_EQ(bytesOf(drive.books()), before);
}

// At the start or where the work comes to the damaged place: in words, and never as if the books were empty.
TEST(Damage, ALaterPageIsToldWhereItIsRead) {
    const Drive whole;
    copyShop(whole);
    addCustomers(whole);
    const std::string ours = bytesOf(whole.books());
    ASSERT_GT(ours.size(), 100 * kPage);
    const std::size_t half = ours.size() / kPage / 2 * kPage;
    for (const std::string& bytes : {ours.substr(0, half), ours.substr(0, kPage),
                                     ours.substr(0, half) + flipped(ours.substr(half), 1000)}) {
        SCOPED_TRACE(std::to_string(bytes.size()) + " bytes");
        const Drive drive;
        writeBytes(drive.books(), bytes);
        Till till(drive);
        till.play("start\n");
        auto said = till.said();
        if (!till.hasEnded()) {
            till.play("sql \"SELECT COUNT(UYARI) FROM MUSTKAYIT\"\n");
            const auto more = till.said();
            said.insert(said.end(), more.begin(), more.end());
        }
        EXPECT_TRUE(hasHelpful(said)) << ::testing::PrintToString(said);
        EXPECT_EQ(bytesOf(drive.books()), bytes) << "the file was touched";
    }
}

TEST(Damage, APageThatGoesBadInTheMiddleOfWork) {
    const Drive drive;
    copyShop(drive);
    addCustomers(drive);
    const std::string ours = bytesOf(drive.books());
    const std::size_t half = ours.size() / kPage / 2 * kPage;
    Till till(drive);
    till.play("start\n");
    {
        std::fstream file(drive.books(), std::ios::binary | std::ios::in | std::ios::out);
        file.seekp(static_cast<std::streamoff>(half));
        file << flipped(ours.substr(half), 1000);
    }
    till.pragma("shrink_memory"); // what was read before is not asked for again otherwise
    till.play("put Text1 \"4900\"\n");
    const auto said = till.said();
    EXPECT_TRUE(hasHelpful(said)) << ::testing::PrintToString(said);
    EXPECT_EQ(till.screenInFront(), "frmMainVeldona");
}

TEST(Secrets, ThePasswordAndTheNamesStandNowhere) {
    const Drive drive;
    copyShop(drive);
    std::vector<std::string> said;
    {
        Till till(drive);
        till.play(openingLines() + post(10).lines + saveSale().lines + "sql \"SELECT * FROM YOK\"\n");
        said = till.said();
        int files = 0;
        for (const auto& entry : fs::recursive_directory_iterator(drive.path())) {
            if (!entry.is_regular_file()) continue;
            ++files;
            const std::string bytes = bytesOf(entry.path());
            EXPECT_EQ(bytes.find(kDeliveredPassword), std::string::npos) << entry.path();
            EXPECT_EQ(bytes.find("Yılmaz"), std::string::npos) << entry.path();
            struct stat status {};
            ASSERT_EQ(stat(entry.path().c_str(), &status), 0);
            if (entry.path().filename().string().starts_with("vorel.mdb")) {
                EXPECT_EQ(status.st_mode & 0777U, 0600U) << entry.path();
            }
        }
        EXPECT_GE(files, 3) << "books, journal and index";
    }
    writeBytes(drive.books(), std::string(kPage, 'x'));
    Till failing(drive);
    failing.play("start\n");
    const auto more = failing.said();
    said.insert(said.end(), more.begin(), more.end());
    EXPECT_GT(said.size(), 2U);
    for (const std::string& text : said)
        EXPECT_EQ(text.find(kDeliveredPassword), std::string::npos) << text;
}

} // namespace
} // namespace veldona::faults
