#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <functional>

#include "platform/store/engine/bulkload.h"
#include "platform/store/engine/networkdisk.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "platform/store/faces/adodb.h"
#include "storefile.h"
#include "tests/support/answer.h"

namespace {
std::uint32_t pretended = 0; // the type of file system; 0: what stands there
}

// Stands before the C library's: no test can mount a share.
extern "C" int statfs(const char* path, struct statfs* answer) noexcept {
    if (syscall(SYS_statfs, path, answer) != 0) return -1;
    if (pretended != 0) answer->f_type = pretended;
    return 0;
}

namespace veldona::store {
namespace {

namespace fs = std::filesystem;
using Kind = StoreError::Kind;
using Opening = StoreFile;

void flipByte(const std::string& path, std::size_t at) {
    std::string content = test::bytesOf(path);
    ASSERT_LT(at, content.size());
    content[at] = static_cast<char>(content[at] ^ 1);
    std::ofstream(path, std::ios::binary) << content;
}

mode_t rightsOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? status.st_mode & 0777 : 0;
}

// Rows of an old file may bring a key twice: the books stand, the key is no unique one.
TEST_F(Opening, AKeyThatComesTwiceIsLoadedWithoutBeingUnique) {
    TableDef sales{"SATIS", {{"ID", ColumnType::Counter}, {"NO", ColumnType::Whole}}, {}, {"NO"}};
    createDatabase(path, kPassword, {sales}, {});
    {
        BulkLoad load(path, kPassword);
        {
            auto rows = load.into(sales, {"NO"});
            for (const int number : {1, 1, 2})
                rows.add({Value(number)});
        }
        load.finish();
    }
    const auto database = workspace()->open(path, kPassword);
    database->execute("INSERT INTO SATIS (NO) VALUES (2)");
    EXPECT_NE(test::answerOf(database->engine(), "SELECT sql FROM sqlite_master WHERE name = 'SATIS_NO'"),
              "");
}

TEST_F(Opening, ANetworkFolderIsRefusedUntouchedAndALocalDiskIsNot) {
    create();
    const std::string before = test::bytesOf(path);
    const auto opened = [&](std::uint32_t type) {
        pretended = type;
        const auto refused = kindRaised([&] { static_cast<void>(workspace()->open(path, kPassword)); });
        const auto notMade = kindRaised([&] { createDatabase(path + "2", kPassword, tables(), {}); });
        pretended = 0;
        fs::remove(path + "2");
        EXPECT_EQ(refused, notMade);
        return refused;
    };
    for (const std::uint32_t share : {0x6969U, 0x517bU, 0xff534d42U, 0xfe534d42U})
        EXPECT_EQ(opened(share), Kind::NetworkDisk) << std::hex << share;
    EXPECT_EQ(test::bytesOf(path), before);
    // Ext4, overlay, tmpfs, NTFS; and a FUSE or 9p mount that is no share by its mount's own words.
    for (const std::uint32_t local :
         {0xef53U, 0x794c7630U, 0x01021994U, 0x5346544eU, 0x65735546U, 0x01021997U})
        EXPECT_EQ(opened(local), std::nullopt) << std::hex << local;
    EXPECT_TRUE(isNetworkMount("fuse.sshfs", "rw"));
    EXPECT_TRUE(isNetworkMount("9p", "rw,trans=tcp,port=564"));
    for (const char* type : {"fuseblk", "fuse.ntfs-3g", "virtiofs", "fuse.fuse-overlayfs", "fuse"})
        EXPECT_FALSE(isNetworkMount(type, "rw")) << type;
    EXPECT_FALSE(isNetworkMount("9p", "rw,trans=virtio")) << "a folder of the machine around this one";
}

TEST_F(Opening, WhatIsNoDatabaseOfOursIsToldApart) {
    const auto open = [&](std::string_view password = kPassword) {
        return kindRaised([&] { static_cast<void>(workspace()->open(path, password)); });
    };
    EXPECT_EQ(open(), Kind::FileMissing);
    EXPECT_FALSE(fs::exists(path)) << "an opening that failed left a file behind";

    fs::create_directory(path);
    EXPECT_EQ(open(), Kind::Damaged) << "a folder";
    fs::remove(path);

    std::ofstream(path).close();
    EXPECT_EQ(open(), Kind::Damaged) << "an empty file";

    std::ofstream(path, std::ios::binary) << std::string("SQLite format 3") + '\0' + std::string(8176, ' ');
    EXPECT_EQ(open(), Kind::Damaged) << "a plain file";

    for (const std::string& content :
         {std::string(8192, 'x'), std::string(8192, '\0'), std::string(5, 'x')}) {
        std::ofstream(path, std::ios::binary) << content;
        EXPECT_EQ(open(), Kind::WrongPassword) << content.size() << " bytes of noise";
    }
    fs::remove(path);

    create();
    EXPECT_EQ(open(), std::nullopt);
    EXPECT_EQ(open("başka"), Kind::WrongPassword);
    EXPECT_EQ(open(""), Kind::WrongPassword);

    flipByte(path, 100);
    EXPECT_EQ(open(), Kind::WrongPassword) << "a damaged first page";
}

TEST_F(Opening, BothFacesGiveTheirOwnNumbers) {
    const auto store = workspace();
    adodb::Connection connection(*store);
    dao::DBEngine engine(*store);
    const auto open = [&](std::string_view source, std::string_view password) {
        return numberRaised([&] { connection.open(source, "", password); });
    };
    const auto openFile = [&](std::string_view connect) {
        return numberRaised([&] { static_cast<void>(engine.openDatabase(path, connect)); });
    };
    EXPECT_EQ(open("dukkan", kPassword), adodb::kOpenFailed);
    EXPECT_EQ(openFile("MS Access;PWD=x"), 3024);
    create();
    EXPECT_EQ(open("dukkan", "x"), adodb::kWrongPassword);
    EXPECT_EQ(open("bilinmeyen", kPassword), adodb::kOpenFailed);
    EXPECT_EQ(openFile("MS Access;PWD=x"), 3031);
    EXPECT_EQ(openFile(""), 3031) << "no session holds the file yet";
    EXPECT_EQ(openFile("MS Access;PWD=" + std::string(kPassword)), 0);
    EXPECT_EQ(open("DSN=dukkan", kPassword), 0);
    EXPECT_EQ(openFile(""), 0) << "the session's own file";
    EXPECT_EQ(openFile("MS Access;PWD=x"), 3031) << "another password than the open one";
    EXPECT_EQ(numberRaised([&] { connection.execute("DELETE FROM YOK"); }), adodb::kStatementError);
    connection.close();
    EXPECT_EQ(openFile(""), 3031);
    EXPECT_EQ(numberRaised([&] { connection.execute("DELETE FROM ODEME"); }), adodb::kOpenFailed);
}

TEST_F(Opening, OneFileIsOpenOnceWhateverPathLeadsToIt) {
    create();
    fs::create_symlink(path, folder + "/baska.mdb");
    const auto store = workspace();
    const auto first = store->open(path, kPassword);
    EXPECT_EQ(store->open(folder + "/baska.mdb", ""), first);
    EXPECT_EQ(store->openDataSource("dukkan", kPassword), first);
}

TEST_F(Opening, AFileThatOthersMightReadIsTakenBack) {
    create();
    chmod(path.c_str(), 0644);
    static_cast<void>(workspace()->open(path, kPassword));
    EXPECT_EQ(rightsOf(path), 0600U);
}

// What a killed program leaves: the file, and beside it the journal with the last payment.
TEST_F(Opening, AnOpeningThatFailsLeavesFileAndJournalAlone) {
    create();
    std::string journal;
    {
        const auto store = workspace();
        const auto database = store->open(path, kPassword);
        database->execute("INSERT INTO MUSTERI (HSTNO, AD) VALUES ('7', 'Ayşe')");
        journal = test::bytesOf(path + "-wal");
    }
    const std::string sound = test::bytesOf(path);
    const auto leave = [&](const std::string& content) {
        std::ofstream(path, std::ios::binary) << content;
        std::ofstream(path + "-wal", std::ios::binary) << journal;
        fs::remove(path + "-shm");
    };
    std::string damaged = sound;
    damaged[20] = static_cast<char>(damaged[20] ^ 1);
    for (const auto& [content, password] : {std::pair{damaged, kPassword}, {sound, "baska"}}) {
        leave(content);
        EXPECT_NE(
            kindRaised([&, password = password] { static_cast<void>(workspace()->open(path, password)); }),
            std::nullopt);
        EXPECT_NE(kindRaised([&, password = password] {
                      static_cast<void>(openSqlcipherToRead(path, password, std::chrono::seconds(1)));
                  }),
                  std::nullopt);
        EXPECT_EQ(test::bytesOf(path), content);
        EXPECT_EQ(test::bytesOf(path + "-wal"), journal);
    }
    static_cast<void>(openSqlcipherToRead(path, kPassword, std::chrono::seconds(1)));
    EXPECT_EQ(test::bytesOf(path + "-wal"), journal) << "who only looks leaves the journal to the program";
    static_cast<void>(workspace()->open(path, kPassword));
    EXPECT_FALSE(fs::exists(path + "-wal")) << "the program takes it in";
}

// A process that may read the file and not write to it, nor beside it unless the folder's rights say so. Its
// exit tells the rows that it counts, once it has opened the file and `written` has run here.
int rowsSeenByAReader(const std::string& folder, const std::string& path,
                      const std::function<void()>& written, mode_t rights = 0555) {
    for (const char* suffix : {"", "-wal", "-shm"})
        static_cast<void>(chmod((path + suffix).c_str(), 0644));
    chmod(folder.c_str(), rights);
    std::array<int, 2> opened{}, goOn{};
    if (pipe(opened.data()) != 0 || pipe(goOn.data()) != 0) return -1;
    char sign = 0;
    const pid_t child = fork();
    if (child == 0) {
        int rows = 99;
        try {
            constexpr uid_t kNobody = 65534;
            if (geteuid() != 0 || setuid(kNobody) == 0) {
                const auto engine = openSqlcipherToRead(path, kPassword, std::chrono::seconds(1));
                if (write(opened[1], &sign, 1) == 1 && read(goOn[0], &sign, 1) == 1) {
                    const auto count = engine->prepare("SELECT count(*) FROM MUSTERI");
                    if (count->step()) rows = static_cast<int>(count->whole(0));
                }
            }
        } catch (const StoreError&) {
        }
        _exit(rows);
    }
    close(opened[1]);
    int status = -1;
    if (read(opened[0], &sign, 1) == 1) written();
    if (write(goOn[1], &sign, 1) != 1) status = -1;
    waitpid(child, &status, 0);
    for (const int end : {opened[0], goOn[0], goOn[1]})
        close(end);
    chmod(folder.c_str(), 0755);
    return WEXITSTATUS(status);
}

TEST_F(Opening, WhoMayNotWriteBesideTheFileReadsItAndWhatATillWritesMeanwhile) {
    path = folder + "/defter %41 #1?.mdb";
    create();
    for (const mode_t rights : {0777U, 0555U})
        EXPECT_EQ(rowsSeenByAReader(
                      folder, path, [] {}, rights),
                  0);
    EXPECT_FALSE(fs::exists(path + "-shm")) << "its owner could not open the file";
    const auto till = workspace();
    const auto database = till->open(path, kPassword);
    ASSERT_EQ(fs::file_size(path + "-wal"), 0U);
    EXPECT_EQ(
        rowsSeenByAReader(folder, path,
                          [&] { database->execute("INSERT INTO MUSTERI (HSTNO, AD) VALUES ('7', 'Ayşe')"); }),
        1);
}

TEST_F(Opening, WhoMayNotWriteBesideTheFileReadsItBehindATillThatWasKilled) {
    create();
    const pid_t till = fork();
    if (till == 0) {
        const auto store = workspace();
        const auto database = store->open(path, kPassword);
        _exit(0);
    }
    waitpid(till, nullptr, 0);
    ASSERT_TRUE(fs::exists(path + "-shm"));
    EXPECT_EQ(rowsSeenByAReader(folder, path, [] {}), 0);
}

TEST_F(Opening, CreatingNeverTouchesWhatStandsThere) {
    create();
    const std::string before = test::bytesOf(path);
    EXPECT_EQ(kindRaised([&] { create(); }), Kind::Other);
    EXPECT_EQ(test::bytesOf(path), before);
    const std::vector<SavedQueryDef> unreadable = {{"S", "SELECT FROM"}};
    EXPECT_EQ(kindRaised([&] { createDatabase(folder + "/yeni.mdb", kPassword, tables(), unreadable); }),
              Kind::Syntax);
    EXPECT_EQ(kindRaised([&] { createDatabase(folder + "/yok/yeni.mdb", kPassword, tables(), {}); }),
              Kind::InputOutput);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1)
        << "a failed creation left something behind";
}

TEST_F(Opening, IndexesOfAnotherAlphabetAreSortedAnew) {
    create();
    openSqlcipher(path, kPassword, std::chrono::seconds(1))
        ->execute("UPDATE MSysSIRALAMA SET SURUM = 'eski'");
    const auto store = workspace();
    const auto database = store->open(path, kPassword);
    EXPECT_NE(test::answerOf(database->engine(), "SELECT SURUM FROM MSysSIRALAMA"), "eski");
    EXPECT_EQ(database->catalog().find("MSysSIRALAMA"), nullptr);
}

// A file of an earlier release, beside a till that has it open and knows nothing of what is new.
TEST_F(Opening, AnOlderFileIsBroughtUpToDateOnceWholeOrNotAtAll) {
    create();
    const auto other = workspace()->open(path, kPassword);
    other->execute("INSERT INTO ODEME (MUSTNO) VALUES ('7')");
    other->execute("INSERT INTO ODEME (MUSTNO,PESIN) VALUES ('7',1)");
    const auto openedBy = [&](const Delivered& release, int wait = 1) {
        return kindRaised([&] {
            static_cast<void>(workspace(release)->open(path, kPassword, std::chrono::seconds(wait)));
        });
    };
    const auto read = [&](std::string_view sql, const Delivered& release) {
        const auto reader = openFileToRead(path, kPassword, std::chrono::seconds(1), release);
        const auto rows = reader->prepare(sql);
        std::string all;
        while (rows->step())
            all += rows->storage(0) == Statement::Storage::Null ? "-" : std::to_string(rows->whole(0));
        return all;
    };
    const Delivered before{tables(), queries(), {}};
    const auto marks = [&] { return read("SELECT PESIN FROM ODEME ORDER BY ID", before); };
    Delivered today = before;
    today.tables.at(1).columns.at(5).defaultValue = 0;
    other->begin();
    EXPECT_EQ(openedBy(today, 0), std::nullopt) << "the books work without the default";
    EXPECT_EQ(marks(), "-1");
    today.tables.at(1).columns.insert(today.tables.at(1).columns.begin() + 2, {"SIRA", ColumnType::Small, 0});
    today.tables.push_back(
        {"YENI", {{"ID", ColumnType::Counter}, {"NO", ColumnType::Whole}}, {{"NO"}}, {"ID", "NO"}});
    today.queries.push_back({"S_YENI", "SELECT NO FROM YENI"});
    EXPECT_EQ(openedBy(today, 0), Kind::Locked) << "not without the column";
    EXPECT_EQ(read("SELECT SIRA FROM ODEME UNION ALL SELECT NO FROM YENI", today), "00")
        << "who only looks finds what the file lacks";
    EXPECT_EQ(marks(), "-1");
    other->rollback();
    EXPECT_EQ(openedBy(today), std::nullopt);
    const auto copies = [&] {
        return std::count_if(fs::directory_iterator(folder), {}, [](const fs::directory_entry& file) {
            return file.path().filename().string().starts_with("degistirilen-vorel-");
        });
    };
    EXPECT_EQ(copies(), 1);
    const auto till = workspace(today)->open(path, kPassword);
    till->execute("INSERT INTO ODEME (MUSTNO,SIRA) VALUES ('8',3)");
    till->execute("INSERT INTO YENI (NO) VALUES (5)");
    other->execute("INSERT INTO ODEME (MUSTNO) VALUES ('9')");
    EXPECT_EQ(read("SELECT PESIN FROM ODEME UNION ALL SELECT SIRA FROM ODEME UNION ALL SELECT NO FROM S_YENI",
                   today),
              "010000305");
    other->execute("UPDATE ODEME SET PESIN = NULL WHERE ID = 1");
    EXPECT_EQ(openedBy(today), std::nullopt);
    EXPECT_EQ(read("SELECT PESIN FROM ODEME ORDER BY ID", today), "-100") << "touched once";
    EXPECT_EQ(copies(), 1);
    EXPECT_EQ(openedBy(before), Kind::Other) << "the books of a newer program";
    EXPECT_EQ(test::answerOf(other->engine(), "PRAGMA integrity_check"), "ok");
}

} // namespace
} // namespace veldona::store
