#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <set>

#include "apps/anonim/nameless.h"
#include "apps/anonim/options.h"
#include "apps/hazirla/delivered.h"
#include "apps/hazirla/writeshop.h"
#include "backup/copy.h"
#include "backup/refusal.h"
#include "core/session.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "schema/tables.h"

namespace veldona::anonim {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using store::ColumnType;

class Anonim : public ::testing::Test {
protected:
    Anonim() : folder_((fs::temp_directory_path() / "anonim-test-XXXXXX").string()) {
        if (mkdtemp(folder_.data()) == nullptr) throw std::runtime_error("no temporary folder");
        const hazirla::ShopPlan plan{60, 120, 2, 1, DateTime::of(2026, 11, 22)};
        hazirla::deliver(books(), hazirla::Existing::Keep, [&](const std::string& target) {
            hazirla::writeShop(target, hazirla::makeShop(plan));
        });
    }
    ~Anonim() override { fs::remove_all(folder_); }

    [[nodiscard]] std::string books() const { return folder_ + "/vorel.mdb"; }
    [[nodiscard]] std::string copy() const { return folder_ + "/adsiz.mdb"; }
    [[nodiscard]] std::ptrdiff_t filesInside() const {
        return std::distance(fs::directory_iterator(folder_), fs::directory_iterator());
    }
    static std::unique_ptr<store::Engine> open(const std::string& file) {
        return store::openSqlcipher(file, kDeliveredPassword, 1s);
    }
    static std::vector<std::string> cells(store::Engine& engine, const std::string& column,
                                          const std::string& table) {
        std::vector<std::string> read;
        const auto rows = engine.prepare("SELECT " + column + " FROM " + table + " ORDER BY ID");
        while (rows->step())
            read.emplace_back(rows->text(0));
        return read;
    }

private:
    std::string folder_;
};

const std::set<std::string> kKeptTexts = {"HSTNO",   "MUSTNO",          "FIRMANO",    "URKOD",
                                          "KASA_NO", "GRUP_KOD",        "ODEME_TIPI", "ISLEM_TUR",
                                          "DEGER",   "CARI_HESAP_ISLE", "YAS"};

TEST_F(Anonim, HerMetinDegisirHerSayiKalir) {
    open(books())->execute("UPDATE MUSTKAYIT SET UYARI = 'Kefili Şükrü''nün borcu var, 0532 111 22 33'");
    EXPECT_GT(copyWithoutNames(books(), copy(), Disguise(1)).replaced, 500);
    const auto original = open(books());
    const auto nameless = open(copy());
    for (const store::TableDef& table : schema::tables()) {
        for (const store::ColumnDef& column : table.columns) {
            const auto before = cells(*original, column.name, table.name);
            const auto after = cells(*nameless, column.name, table.name);
            const bool isText = column.type == ColumnType::Text || column.type == ColumnType::Memo;
            if (!isText || kKeptTexts.contains(column.name)) {
                if (column.name != "DOGTRH") {
                    EXPECT_EQ(after, before) << table.name << '.' << column.name;
                }
                continue;
            }
            ASSERT_EQ(after.size(), before.size());
            for (std::size_t i = 0; i < before.size(); ++i) {
                EXPECT_EQ(after[i].size(), before[i].size());
                // Short ones may come out as they were by chance.
                if (before[i].size() > 5) {
                    EXPECT_NE(after[i], before[i]) << table.name << '.' << column.name;
                }
            }
        }
    }
    const auto births = nameless->prepare(
        "SELECT count(*) FROM MUSTKAYIT WHERE DOGTRH IS NOT NULL AND DOGTRH NOT LIKE '%-01-01 00:00:00'");
    ASSERT_TRUE(births->step());
    EXPECT_EQ(births->whole(0), 0);
}

// The engine's own pages, decrypted: a free page or the rest of an overwritten cell would still hold the
// name.
TEST_F(Anonim, BosalanSayfalarKopyayaGecmez) {
    {
        const auto program = open(books());
        program->execute("INSERT INTO T_TEMP_GENEL (ACIKLAMA_1) SELECT AD || SOYAD || hex(zeroblob(1500)) "
                         "FROM MUSTKAYIT");
        program->execute("DELETE FROM T_TEMP_GENEL");
    }
    copyWithoutNames(books(), copy(), Disguise(1));
    const auto freePages = [](const std::string& file) {
        const auto engine = open(file);
        const auto answer = engine->prepare("PRAGMA freelist_count");
        return answer->step() ? answer->whole(0) : -1;
    };
    EXPECT_GT(freePages(books()), 0);
    EXPECT_EQ(freePages(copy()), 0);
}

TEST_F(Anonim, KlasorsuzAdBulunulanKlasoreYazilir) {
    const fs::path before = fs::current_path();
    fs::current_path(fs::path(copy()).parent_path());
    EXPECT_NO_THROW(copyWithoutNames(books(), "adsiz.mdb", Disguise()));
    fs::current_path(before);
    EXPECT_TRUE(fs::exists(copy()));
}

TEST_F(Anonim, DefterVeVarOlanDosyaKalir) {
    const backup::Picture before = backup::inspect(books());
    copyWithoutNames(books(), copy(), Disguise());
    EXPECT_EQ(filesInside(), 2) << "a file with names was left";
    EXPECT_THROW(copyWithoutNames(books(), copy(), Disguise()), backup::Refusal);
    const fs::path startedIn = fs::current_path();
    fs::current_path(fs::path(copy()).parent_path());
    fs::remove(copy());
    EXPECT_NO_THROW(copyWithoutNames(books(), "adsiz.mdb", Disguise())) << "a name without a folder";
    fs::current_path(startedIn);
    EXPECT_TRUE(fs::exists(copy()));
    EXPECT_THROW(copyWithoutNames(books(), books(), Disguise()), backup::Refusal);
    EXPECT_EQ(backup::inspect(books()), before);
    fs::remove(copy());
    fs::resize_file(books(), fs::file_size(books()) / 2);
    EXPECT_ANY_THROW(copyWithoutNames(books(), copy(), Disguise()));
    EXPECT_EQ(filesInside(), 1) << "a half copy was left";
}

TEST(AnonimMetin, BicimKalirHarflerDegisir) {
    Disguise disguise(3);
    EXPECT_EQ(disguise(""), "");
    EXPECT_EQ(disguise(" .,'-/"), " .,'-/");
    const std::string made = disguise("Şükrü Işık 0532-11");
    EXPECT_EQ(made.size(), std::string("Şükrü Işık 0532-11").size());
    EXPECT_EQ(made.substr(made.size() - 3, 1), "-");
    EXPECT_NE(disguise("Mehmet Yılmaz"), disguise("Mehmet Yılmaz")) << "a frequent name could be counted";
    EXPECT_EQ(disguise("名前").find("名"), std::string::npos);
    EXPECT_EQ(disguise("\xff\xc5").size(), 4U) << "broken bytes become letters";
}

TEST(AnonimSecenekler, OkunmayanSatirReddedilir) {
    const auto read = [](std::vector<const char*> arguments) { return readOptions(arguments); };
    EXPECT_EQ(read({"--kok", "x", "kopya.mdb"}).target, "kopya.mdb");
    const std::vector<std::vector<const char*>> refused = {{}, {"--kok"}, {"--bilinmez"}, {"a", "b"}, {""}};
    for (const auto& arguments : refused)
        EXPECT_THROW(static_cast<void>(read(arguments)), backup::Refusal);
}

} // namespace
} // namespace veldona::anonim
