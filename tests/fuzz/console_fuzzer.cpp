// Lines of the operator console on the real screens of a small shop: whatever they say, the books stay sound,
// their tables as they were, and nothing is written outside the folder that stands for drive C:.
#include <filesystem>
#include <iostream>
#include <sstream>

#include "apps/operator/runner.h"
#include "apps/screens.h"
#include "core/delivered.h"
#include "core/reporting.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "schema/tables.h"
#include "tests/fuzz/fuzzing.h"
#include "tests/support/answer.h"
#include "tests/support/files.h"

namespace veldona::fuzz {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLongest = 6000;
constexpr const char* kShop = R"op(database
insert "MUSTKAYIT (HSTNO,AD,SOYAD,EVTEL)" "'7','Ayşe','Yılmaz','0212 5550000'"
insert "MUSTKAYIT (HSTNO,AD,SOYAD,UYARI)" "'8','Çağrı','Işık','Ödemez'"
insert "ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC,TRH)" "'7',5,900000000,'22/10/2026'"
insert "URUNAL (MUSTNO,ISLEMNO,URKOD,ADET,FIYAT)" "'7',5,'1',1,900000000"
insert "URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'7',5,'20/10/2026',450000000" "'7',5,'20/12/2026',450000000"
insert "TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'7',5,'10/11/2026 09:00:00',100000000"
)op";

// What the console prints is looked at, not shown.
class Silence {
public:
    Silence() : out_(std::cout.rdbuf(said_.rdbuf())), err_(std::cerr.rdbuf(said_.rdbuf())) {}
    ~Silence() {
        std::cout.rdbuf(out_);
        std::cerr.rdbuf(err_);
    }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    [[nodiscard]] std::string said() const { return said_.str(); }

private:
    std::ostringstream said_;
    std::streambuf* out_;
    std::streambuf* err_;
};

std::string play(const fs::path& drive, const std::string& lines) {
    const Silence silence;
    std::istringstream text(lines);
    console::Script script("lines", text);
    console::Tally tally;
    const auto toNowhere = [](const report::Document&, const std::string&) {};
    console::Runner(script, {drive.string(), registerScreens, nullptr, toNowhere}, tally).run();
    return silence.said();
}

// A folder for the run: in it the shop as it is copied each time, the drive, and where the process stands.
class Place {
public:
    Place() {
        for (const char* folder : {"shop", "standing"})
            fs::create_directory(root_ / folder);
        fs::create_directories(booksBelow(root_ / "shop").parent_path());
        came_ = fs::current_path();
        fs::current_path(root_ / "standing");
        play(root_ / "shop", kShop);
        schema = ask(root_ / "shop", "SELECT type, name, sql FROM sqlite_master");
    }
    ~Place() { fs::current_path(came_); }
    static fs::path booksBelow(const fs::path& drive) { return drive / "VELDONA/Veldona_Taksit/vorel.mdb"; }
    static std::string ask(const fs::path& drive, const std::string& engineSql) {
        return test::answerOf(*store::openSqlcipherToRead(booksBelow(drive).string(), kDeliveredPassword,
                                                          std::chrono::seconds(1)),
                              engineSql);
    }

    [[nodiscard]] fs::path freshDrive() const {
        fs::remove_all(drive());
        fs::copy(root_ / "shop", drive(), fs::copy_options::recursive);
        return drive();
    }
    void requireNothingOutside() const {
        require(fs::is_empty(root_ / "standing"), "a file where the process stands");
        for (const auto& entry : fs::directory_iterator(root_)) {
            const std::string name = entry.path().filename();
            require(name == "shop" || name == "standing" || name == "drive",
                    "a file beside the drive: " + name);
        }
    }

    std::string schema;

private:
    [[nodiscard]] fs::path drive() const { return root_ / "drive"; }
    test::TemporaryFolder folder_;
    fs::path root_ = folder_.path(), came_;
};

} // namespace
} // namespace veldona::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldona::fuzz;
    if (size > kLongest) return 0;
    static Place place;
    const auto drive = place.freshDrive();
    const std::string lines(reinterpret_cast<const char*>(data), size);
    const std::string said = play(drive, "clock \"22/11/2026 10:30:00\"\nstart\n" + lines);
    // A statement that we write and the engine refuses is a fault of the writing.
    require(said.find("Deyim çalıştırılamadı") == std::string::npos,
            "the engine refused a statement: " + said);
    requireEqual(Place::ask(drive, "PRAGMA integrity_check"), "ok", "the books are sound");
    requireEqual(Place::ask(drive, "SELECT type, name, sql FROM sqlite_master"), place.schema,
                 "the tables as they were");
    place.requireNothingOutside();
    return 0;
}
