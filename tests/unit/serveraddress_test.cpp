// What a shop may write into vorel.sunucu, and what is said of it.
#include "platform/store/engine/postgres/serveraddress.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/postgres/serverconnection.h"
#include "tests/support/files.h"
#include "tests/support/raised.h"

namespace veldona::store {
namespace {

std::string saidOf(const std::string& text) {
    try {
        return ServerAddress(text, "vorel.sunucu").shown();
    } catch (const StoreError& refusal) {
        return refusal.description();
    }
}

TEST(ServerAddress, KeepsWhatWasWrittenHoweverItIsSpaced) {
    EXPECT_EQ(saidOf("\xEF\xBB\xBF# dükkânın sunucusu\r\n\r\n  host = 10.0.0.5\r\n\tdbname=veldona\n"
                     "   # user=eski\nuser='kasa 1'  "),
              "sunucu 10.0.0.5, veritabanı veldona, kullanıcı kasa 1");
    EXPECT_EQ(saidOf("postgresql://kasa1@10.0.0.5:5433/veldona"),
              "sunucu 10.0.0.5, kapı 5433, veritabanı veldona, kullanıcı kasa1");
    EXPECT_EQ(saidOf("service=dukkan"), "hizmet dukkan");
    const ServerAddress odd("host='a b' dbname='v\\'e\\\\l'", "vorel.sunucu");
    EXPECT_EQ(ServerAddress(odd.text(), "").keywords(), odd.keywords());
}

// A plain connection over a network is what somebody has to ask for.
TEST(ServerAddress, AsksForAnEncryptedConnectionOverANetwork) {
    const auto mode = [](const std::string& text) {
        const ServerAddress address(text, "vorel.sunucu");
        const auto found = address.keywords().find("sslmode");
        return found == address.keywords().end() ? std::string("-") : found->second;
    };
    EXPECT_EQ(mode("host=10.0.0.5 dbname=v"), "require");
    EXPECT_EQ(mode("host=10.0.0.5 dbname=v sslmode=verify-full"), "verify-full");
    EXPECT_EQ(mode("host=/run/postgresql dbname=v"), "-");
    EXPECT_EQ(mode("dbname=v"), "-");
    EXPECT_EQ(mode("service=dukkan"), "-");
}

TEST(ServerAddress, RefusesWhatItCannotUseAndNeverRepeatsIt) {
    const std::string secret = "gizli-93";
    for (const std::string& text :
         {"host=h dbname=v password=" + secret, "postgresql://kasa:" + secret + "@h/v",
          "host=h dbname=v sslpassword=" + secret, "host=h " + secret, "host='h " + secret, "gizli=" + secret,
          secret + std::string("\0x", 2), secret + "\xff\xfe", std::string(20000, 'x'), std::string(),
          std::string("  \n# " + secret), "host=h user=" + secret, "dbname=v replication=" + secret,
          "postgresql://[" + secret}) {
        const std::string said = saidOf(text);
        EXPECT_TRUE(said.starts_with("Defterin sunucusu anlaşılamadı (vorel.sunucu): ")) << text << said;
        EXPECT_EQ(said.find(secret), std::string::npos) << said;
    }
}

// Books beside the file may be those of before the move: they are not opened because it can't be read.
TEST(ServerAddress, StandsBesideTheBooksAndIsNeverPassedOver) {
    const test::TemporaryFolder folder;
    const std::string books = folder / "vorel.mdb", file = folder / "vorel.sunucu";
    EXPECT_FALSE(ServerAddress::beside(books));
    EXPECT_FALSE(ServerAddress::beside(folder / "yok/vorel.mdb"));
    std::filesystem::create_symlink(folder / "yok", file);
    EXPECT_THROW(static_cast<void>(ServerAddress::beside(books)), StoreError);
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    EXPECT_THROW(static_cast<void>(ServerAddress::beside(books)), StoreError);
    std::filesystem::remove(file);
    test::writeBytes(file, "host=h dbname=v\n");
    EXPECT_EQ(ServerAddress::beside(books)->shown(), "sunucu h, veritabanı v");
    EXPECT_FALSE(ServerAddress::beside(folder / "vorel-2026-11-22_143005.mdb"));
}

TEST(ServerConnection, SaysWhichServerIsNotThereAndWhy) {
    const auto said = [](const std::string& text) {
        const ServerAddress address(text, "vorel.sunucu");
        const auto failure =
            test::raised<StoreError>([&] { static_cast<void>(connectTo(address, std::chrono::seconds(5))); });
        return failure ? failure->description() : std::string("bağlandı");
    };
    const std::string refused = said("host=127.0.0.1 port=1 dbname=v user=kasa");
    EXPECT_NE(refused.find("sunucu 127.0.0.1, kapı 1, veritabanı v, kullanıcı kasa"), refused.npos)
        << refused;
    EXPECT_NE(refused.find("çalışan bir PostgreSQL yok"), refused.npos) << refused;
    EXPECT_NE(said("host=/yok/boyle dbname=v").find("Bu bilgisayarda çalışan bir PostgreSQL bulunamadı"),
              std::string::npos);
    EXPECT_NE(said("service=boyle-bir-hizmet-yok").find("Bu adda bir hizmet yok"), std::string::npos)
        << said("service=boyle-bir-hizmet-yok");
    EXPECT_NE(said("host=h.invalid dbname=v").find("ağda bulunamadı"), std::string::npos);
    EXPECT_NE(said("host=/x dbname=v sslmode=belki").find("bildiklerinden değil"), std::string::npos);
}

} // namespace
} // namespace veldona::store
