#include "platform/desktop/desktop.h"
#include "tests/support/files.h"
#include "tests/support/raised.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace veldona {
namespace {

namespace fs = std::filesystem;
using test::numberRaised;

class OnDisk : public testing::Test {
protected:
    void make(const std::string& path) const {
        fs::create_directories((root / path).parent_path());
        std::ofstream(root / path) << path;
    }
    [[nodiscard]] std::string read(const std::string& path) const { return test::bytesOf(root / path); }

    test::TemporaryFolder folder;
    fs::path root = folder.path();
};

TEST_F(OnDisk, APathOfDriveCFindsNamesInAnyLettersCase) {
    make("VELDONA/Veldona_Taksit/VOREL.MDB");
    make("VELDONA/Veldona_Taksit/Rapor/Şube.rpt");
    make("VELDONA/Veldona_Taksit/firma.txt");
    make("VELDONA/Veldona_Taksit/FIRMA.TXT");
    make("VELDONA/Veldona_Taksit/kır.txt");
    const Paths paths(root.string());
    struct Case {
        const char* path;
        const char* native;
    };
    for (const Case& each :
         {Case{"C:", ""}, Case{"C:\\", ""},
          Case{"c:\\veldona\\VELDONA_taksit\\vorel.mdb", "VELDONA/Veldona_Taksit/VOREL.MDB"},
          Case{"C:/Veldona\\Veldona_Taksit\\\\.\\rapor/şUBE.RPT", "VELDONA/Veldona_Taksit/Rapor/Şube.rpt"},
          Case{"C:\\VELDONA\\Veldona_Taksit\\firma.txt", "VELDONA/Veldona_Taksit/firma.txt"},
          Case{"C:\\VELDONA\\Veldona_Taksit\\Firma.Txt", "VELDONA/Veldona_Taksit/FIRMA.TXT"},
          Case{"C:\\VELDONA\\Veldona_Taksit\\kir.txt", "VELDONA/Veldona_Taksit/kir.txt"}, // another letter
          Case{"C:\\veldona\\Yeni\\a.PDF", "VELDONA/Yeni/a.PDF"}})
        EXPECT_EQ(paths.toNative(each.path), (each.native[0] ? root / each.native : root).string())
            << each.path;
    for (const char* path :
         {"", "C", "D:\\a", "C:a", "\\a", "C:\\..\\a", "C:\\VELDONA\\..\\..\\a", "C:/VELDONA/.."})
        EXPECT_EQ(numberRaised([&] { static_cast<void>(paths.toNative(path)); }), 76) << path;
}

TEST_F(OnDisk, ThePortableFolderStandsForTheDriveOnlyWithItsDatabase) {
    const std::string beside = root.string();
    EXPECT_EQ(chooseRoot(beside, "/veri"), "/veri");
    fs::create_directories(root / "C/Veldona/Veldona_Taksit");
    EXPECT_EQ(chooseRoot(beside, "/veri"), "/veri");
    make("C/Veldona/Veldona_Taksit/vorel.mdb");
    EXPECT_EQ(chooseRoot(beside, "/veri"), (root / "C").string());
}

TEST_F(OnDisk, MarkerFilesHoldOneLineAndSayWhatFailed) {
    make("firma.txt");
    const std::string path = (root / "firma.txt").string();
    writeTextFile(path, "x");
    EXPECT_EQ(read("firma.txt"), "x\r\n");
    deleteFile(path);
    EXPECT_EQ(numberRaised([&] { deleteFile(path); }), 53);
    EXPECT_EQ(numberRaised([&] { deleteFile(root.string()); }), 75);
    EXPECT_EQ(numberRaised([&] { writeTextFile((root / "yok/firma.txt").string(), "x"); }), 75);
    EXPECT_EQ(numberRaised([] { writeTextFile("/dev/full", "x"); }), 75);
}

TEST_F(OnDisk, ADataSourceIsRegisteredOnce) {
    const std::string driver = "Microsoft Access Driver (*.mdb)";
    const std::string path = "C:\\VELDONA\\Veldona_Taksit\\vorel.mdb";
    DataSources sources((root / "ODBC.INI").string());
    EXPECT_EQ(sources.find("vorel"), std::nullopt);
    std::ofstream(root / "ODBC.INI") << "[eski]\nDBQ=C:\\eski.mdb"; // no line end
    for (const char* attributes :
         {"", "DSN=vorel", "DBQ=x", "DSN=;DBQ=x", "DSN=a]b;DBQ=x", "DSN=a;DBQ=x\ny", "vorel"})
        EXPECT_FALSE(sources.configure(4, driver, attributes)) << attributes;
    EXPECT_FALSE(sources.configure(1, driver, "DSN=vorel;DBQ=" + path));
    EXPECT_TRUE(sources.configure(4, driver, "DSN=vorel;DBQ=" + path));
    EXPECT_FALSE(sources.configure(4, driver, "DSN=VOREL;DBQ=C:\\b.mdb"));
    EXPECT_EQ(sources.find("Vorel"), path);
    EXPECT_EQ(sources.find("eski"), "C:\\eski.mdb");
    EXPECT_EQ(read("ODBC.INI"),
              "[eski]\nDBQ=C:\\eski.mdb\r\n[vorel]\r\nDriver=" + driver + "\r\nDBQ=" + path + "\r\n");
    EXPECT_FALSE(DataSources((root / "yok/ODBC.INI").string()).configure(4, driver, "DSN=a;DBQ=b"));
    make("ODBC.INI"); // empty, as a power cut may leave it
    EXPECT_TRUE(sources.configure(4, driver, "DSN=vorel;DBQ=" + path));
    EXPECT_EQ(sources.find("vorel"), path);
}

TEST(Clocks, TheSystemsOneShowsTheWallClock) {
    setenv("TZ", "UTC-3", 1);
    tzset();
    const std::int64_t before = std::time(nullptr);
    const std::int64_t shown = SystemClock().now().seconds() - DateTime::of(1970, 1, 1).seconds();
    EXPECT_LE(shown - before - 3 * 3600, 2);
    EXPECT_GE(shown - before - 3 * 3600, 0);
    unsetenv("TZ");
    tzset();
}

} // namespace
} // namespace veldona
