#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "apps/tool/optionreader.h"
#include "apps/yedek/options.h"
#include "backup/copy.h"
#include "backup/keeping.h"
#include "backup/lastbackup.h"
#include "backup/proof.h"
#include "backup/refusal.h"
#include "backup/rekey.h"
#include "backup/restore.h"
#include "backup/taking.h"
#include "core/bookpasswords.h"
#include "journal/chain.h"
#include "platform/runtime/password.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/passwordfit.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "tests/support/answer.h"
#include "tests/support/raised.h"
#include "tests/support/sampleshop.h"

namespace veldona::yedek {
namespace {

namespace fs = std::filesystem;
using namespace backup;
using namespace std::chrono_literals;

const DateTime kNow = DateTime::of(2026, 11, 22, 14, 30, 5);

class Yedek : public ::testing::Test {
protected:
    [[nodiscard]] std::string books() const { return shop.books(); }
    [[nodiscard]] std::string backup() const { return shop / "yedek.mdb"; }

    // As a killed program leaves the books: its last two payments stand in the journal alone.
    void payTwiceAndBeKilled() const {
        const std::string file = test::bytesOf(books());
        std::string journal;
        {
            const auto program = test::openBooks(books());
            pay(*program);
            journal = test::bytesOf(books() + "-wal");
        }
        test::writeBytes(books(), file);
        test::writeBytes(books() + "-wal", journal);
    }
    void payTwice() const { pay(*test::openBooks(books())); }
    static void pay(store::Engine& program) {
        for (int i = 0; i < 2; ++i)
            program.execute("INSERT INTO TAKSITODENEN (MUSTNO, ISLEMNO, ODTRH, ODMIKTAR) "
                            "VALUES ('1', 1, '2026-11-22 10:00:00', 125500000)");
    }

    test::SampleShop shop{30, 60};
};

TEST_F(Yedek, ABackupTakenWhileTheProgramWritesHoldsWhatWasSaved) {
    const auto program = test::openBooks(books());
    program->execute("UPDATE MUSTKAYIT SET AD = 'Şükrü' WHERE HSTNO = '1'"); // stands in the log alone
    program->begin();
    program->execute("DELETE FROM TAKSITODENEN");
    const Fingerprint fingerprint = copyBooks(books(), backup());
    program->commit();
    EXPECT_GT(fingerprint.rows.at("TAKSITODENEN"), 60);
    EXPECT_EQ(inspect(backup()), fingerprint);
    EXPECT_NE(inspect(books()), fingerprint);
    EXPECT_EQ(test::answerOf(*test::openBooks(backup()), "SELECT AD FROM MUSTKAYIT WHERE HSTNO = '1'"),
              "Şükrü");
    EXPECT_THROW(static_cast<void>(store::openSqlcipher(backup(), "baska", 1s)), store::StoreError);
    EXPECT_EQ(fs::status(backup()).permissions(), fs::perms(0600));
}

TEST_F(Yedek, NoBackupIsLeftOfBrokenBooks) {
    std::fstream file(books(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(20 * 4096 + 100);
    file.write("bozuk", 5);
    file.close();
    EXPECT_ANY_THROW(copyBooks(books(), backup()));
    EXPECT_EQ(shop.filesInside(), 1) << "something was left beside the books";
}

TEST_F(Yedek, ARestoreTellsWhatIsLostAndKeepsWhatItReplaced) {
    const Fingerprint before = copyBooks(books(), backup());
    payTwice();
    const Fingerprint after = inspect(books());
    const std::string loss = lossOfRestoring(backup(), books()).text;
    EXPECT_NE(loss.find("2 ödeme, toplam 251,00"), std::string::npos) << loss;
    EXPECT_NE(loss.find("Defterdeki son ödeme: 22/11/2026 10:00:00"), std::string::npos) << loss;
    EXPECT_EQ(inspect(books()), after) << "looking changed the books";

    const std::vector<std::string> kept = restore(backup(), books(), kNow);
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(inspect(books()), before);
    EXPECT_EQ(inspect(kept[0]), after);
    EXPECT_EQ(inspect(backup()), before);
    EXPECT_TRUE(
        test::openBooks(books())->prepare("SELECT 1 FROM GUNLUK WHERE ADIM = 'Yedekten Geri Dön'")->step());
    EXPECT_EQ(shop.filesInside(), 3) << "something was left beside the books";
    const std::vector<std::string> next = restore(backup(), books(), kNow); // within the same second
    const auto all = listRestorable({fs::path(books()).parent_path().string()}, books());
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(std::vector({all[0].file, all[1].file}), std::vector({kept[0], next.at(0)}));
    EXPECT_TRUE(all[0].isReplaced);
    restore(kept[0], books(), kNow.plusSeconds(1)); // the second of the one behind
    EXPECT_EQ(inspect(books()), after) << "the way back";

    // One of the release before the journal.
    {
        const auto older = test::openBooks(backup());
        std::vector<std::string> statements = {"DROP TABLE GUNLUK", "DROP TABLE MSysGUNLUK",
                                               "PRAGMA user_version = 5"};
        const auto triggers = older->prepare("SELECT name FROM sqlite_master WHERE type = 'trigger'");
        while (triggers->step())
            statements.insert(statements.begin(), "DROP TRIGGER \"" + std::string(triggers->text(0)) + '"');
        for (const std::string& statement : statements)
            older->execute(statement);
    }
    const journal::Seen first{1, std::string(32, '0'), "2026-11-22 10:00:00"},
        later{500, first.seal, first.moment};
    restore(backup(), books(), kNow.plusSeconds(2));
    EXPECT_EQ(inspect(books()), before);
    EXPECT_FALSE(journal::examine(*test::openBooks(books()), {first, later}).broken);
    EXPECT_EQ(shop.filesInside(), 6) << "something was left beside the books";
}

// Composed and not: the same letters on two keyboards.
const Secret kOwn = passwordOf("dükkânın parolası");

TEST_F(Yedek, BooksGetAPasswordOfTheirOwnAndOldBackupsKeepTheirs) {
    const Fingerprint all = copyBooks(books(), backup());
    {
        const auto program = test::openBooks(books());
        EXPECT_THROW(rekey(books(), kOwn, kNow), std::exception) << "a till has them open";
    }
    rekey(books(), kOwn, kNow);
    EXPECT_EQ(inspect(books()), all);
    EXPECT_FALSE(opensBy(books(), deliveredPassword()));
    EXPECT_EQ(shop.filesInside(), 3) << "beside the note something stayed that opens by the former password";
    EXPECT_EQ(otherPasswordOf(backup(), kOwn), "programla gelen parolayla");
    passwords::forget();
    EXPECT_EQ(passwordOfBooks(books()), std::nullopt);
    EXPECT_THROW(static_cast<void>(inspect(books())), store::StoreError);
    passwords::learn(passwordOf("du\u0308kka\u0302nın parolası"));
    EXPECT_EQ(copyBooks(books(), backup() + "2"), all);
    EXPECT_TRUE(opensBy(backup() + "2", kOwn)) << "a backup has the password of its books";

    const std::string loss = lossOfRestoring(backup(), books()).text;
    EXPECT_NE(loss.find("bugünkü parola olur"), std::string::npos) << loss;
    const std::string kept = restore(backup(), books(), kNow)[0];
    EXPECT_TRUE(opensBy(books(), kOwn)) << "a restored backup would open to everybody";
    passwords::forget(); // the password is lost
    restore(backup(), books(), kNow.plusSeconds(1));
    EXPECT_TRUE(opensBy(books(), deliveredPassword()));
    EXPECT_FALSE(isNotedAsOwn(books()));
    EXPECT_EQ(otherPasswordOf(kept, deliveredPassword()), "başka bir parolayla");
}

TEST_F(Yedek, ADamagedFirstPageIsNoWrongPassword) {
    rekey(books(), kOwn, kNow);
    const std::string sound = test::bytesOf(books());
    for (const std::size_t at : {std::size_t{100}, std::size_t{4000}}) {
        std::string damaged = sound;
        damaged[at] = static_cast<char>(~damaged[at]);
        test::writeBytes(books(), damaged);
        EXPECT_EQ(store::fitOf(books(), kOwn.text()), store::Fit::FitsDamaged) << at;
        EXPECT_EQ(store::fitOf(books(), "başka parola"), store::Fit::Unknown) << at;
    }
    passwords::forget();
}

TEST(Passwords, WeakOnesAreRefused) {
    for (const char* weak :
         {"", "yedi ha", "çşğüöıİ", "aaaaaaaaaaaa", " başındaki", "sonundaki ", "sekme\tiçinde",
          "bozuk \xff harf", "x'2dd29ca851e7b56e4697b0e1f08507293d761a05ce4d1b628663f411a8086d99'"})
        EXPECT_NE(weaknessOf(passwordOf(weak)), "") << weak;
    for (const char* good : {"çşğüöıİÂ", "пароль-лавки", "四月は君の嘘です", "dört kelime yan yana"})
        EXPECT_EQ(weaknessOf(passwordOf(good)), "") << good;
    EXPECT_NE(weaknessOf(passwordOf(std::string(101, 'a') + "b")), "");
}

TEST_F(Yedek, OpenBooksAreNotReplacedABrokenBackupIsNotPutBack) {
    const Fingerprint before = copyBooks(books(), backup());
    payTwice();
    {
        const auto program = test::openBooks(books());
        EXPECT_THROW(restore(backup(), books(), kNow), Refusal);
    }
    EXPECT_NE(inspect(books()), before);
    fs::resize_file(backup(), fs::file_size(backup()) / 2);
    EXPECT_ANY_THROW(static_cast<void>(lossOfRestoring(backup(), books())));
    EXPECT_ANY_THROW(restore(backup(), books(), kNow));
    EXPECT_NE(inspect(books()), before);
}

TEST_F(Yedek, ABackupTakesThePlaceOfUnreadableBooks) {
    const Fingerprint before = copyBooks(books(), backup());
    std::ofstream(books(), std::ios::binary) << std::string(8192, 'x');
    EXPECT_NE(lossOfRestoring(backup(), books()).text.find("okunamıyor"), std::string::npos);
    EXPECT_EQ(restore(backup(), books(), kNow).size(), 1U);
    EXPECT_EQ(inspect(books()), before);
    fs::remove(books());
    EXPECT_TRUE(restore(backup(), books(), kNow).empty());
    EXPECT_EQ(inspect(books()), before);
}

TEST_F(Yedek, AKilledProgramsJournalGoesIntoTheKeptBooks) {
    const Fingerprint before = copyBooks(books(), backup());
    payTwiceAndBeKilled();
    const std::vector<std::string> kept = restore(backup(), books(), kNow);
    ASSERT_EQ(kept.size(), 1U) << describe(kept);
    EXPECT_EQ(prove(books()), before);
    EXPECT_EQ(prove(kept[0]).rows.at("TAKSITODENEN"), before.rows.at("TAKSITODENEN") + 2);
}

// After a power cut over damaged books: neither is lost, and the way back is open.
TEST_F(Yedek, TheJournalOfBrokenBooksIsKeptBesideThem) {
    const Fingerprint before = copyBooks(books(), backup());
    payTwiceAndBeKilled();
    const std::string journal = test::bytesOf(books() + "-wal");
    const std::string damaged(8192, 'x');
    std::ofstream(books(), std::ios::binary) << damaged;
    EXPECT_TRUE(areDamaged(books()));
    const std::vector<std::string> kept = restore(backup(), books(), kNow);
    ASSERT_EQ(kept.size(), 2U) << describe(kept);
    EXPECT_EQ(prove(books()), before);
    EXPECT_EQ(test::bytesOf(kept[0]), damaged);
    EXPECT_EQ(kept[1], kept[0] + "-wal");
    EXPECT_EQ(test::bytesOf(kept[1]), journal);
}

TEST_F(Yedek, ABackupCopiedByHandIsNotSpoiltByAnothersJournal) {
    const Fingerprint before = copyBooks(books(), backup());
    payTwiceAndBeKilled();
    const std::string journal = test::bytesOf(books() + "-wal");
    fs::copy_file(backup(), books(), fs::copy_options::overwrite_existing);
    const auto failure =
        test::raised<store::StoreError>([&] { static_cast<void>(test::openBooks(books())); });
    ASSERT_TRUE(failure) << "opened with a journal of other books";
    EXPECT_NE(failure->description().find("-wal günlüğü bu dosyayla uyuşmuyor"), std::string::npos)
        << failure->description();
    EXPECT_EQ(test::bytesOf(books()), test::bytesOf(backup()));
    EXPECT_EQ(test::bytesOf(books() + "-wal"), journal);
    EXPECT_TRUE(areDamaged(books())) << "the start would not offer the backups";

    const std::vector<std::string> kept = restore(backup(), books(), kNow);
    ASSERT_EQ(kept.size(), 2U) << describe(kept);
    EXPECT_EQ(prove(kept[0]), before);
    EXPECT_EQ(test::bytesOf(kept[1]), journal);
    EXPECT_EQ(prove(books()), before);
}

TEST_F(Yedek, AClockThatFellBackDeletesNoBackup) {
    const std::string folder = fs::path(books()).parent_path().string() + "/Yedek";
    fs::create_directory(folder);
    for (int day = 0; day < 50; ++day)
        std::ofstream(folder + '/' + backupName(kNow.plusDays(-day))) << "x";
    const Taken old = takeBackup(books(), folder, kNow.plusDays(-400));
    EXPECT_EQ(prove(old.file), old.fingerprint);
    EXPECT_NE(warningOf(old).find(backupName(kNow)), std::string::npos) << warningOf(old);
    EXPECT_EQ(listBackups(folder).size(), 51U);

    const Taken newest = takeBackup(books(), folder, kNow.plusDays(1));
    EXPECT_EQ(warningOf(newest), "");
    EXPECT_EQ(fs::path(newest.file).filename(), listBackups(folder).back());
    EXPECT_LT(listBackups(folder).size(), 40U) << "nothing was let go of";

    // The disk that it went to is pulled out: the line beside the books knows of it.
    takeBackup(books(), shop / "disk", kNow.plusDays(2));
    fs::remove_all(shop / "disk");
    const auto last = findLastBackup(books(), folder);
    EXPECT_EQ(ageText(last, kNow.plusDays(2)), "Son yedek bugün 14:30");
    EXPECT_EQ(ageText(last, kNow.plusDays(2).plusSeconds(-3600)), "Son yedek bugün 14:30");
    std::ofstream(fs::path(books()).parent_path() / "son-yedek.txt") << "vorel-2026-13-40_143005.mdb";
    EXPECT_EQ(ageText(findLastBackup(books(), folder), kNow.plusDays(14)), "Son yedek 13 gün önce");
    EXPECT_EQ(ageText(findLastBackup(books(), shop / "disk"), kNow), "Henüz yedek alınmadı");
}

TEST_F(Yedek, NothingIsLeftOfABackupGivenUp) {
    const std::string folder = shop / "Yedek";
    std::map<Step, int> looks;
    const auto count = [&](Step step, std::int64_t, std::int64_t) { return ++looks[step] > 0; };
    takeBackup(books(), folder, kNow, count);
    for (const auto& [step, times] : looks) {
        for (int last = 0; last < times; ++last) {
            int left = last;
            const auto stop = [&, at = step](Step now, std::int64_t, std::int64_t) {
                return now != at || --left >= 0;
            };
            EXPECT_THROW(takeBackup(books(), folder, kNow.plusDays(1), stop), GivenUp);
            EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
        }
    }
    EXPECT_EQ(looks.size(), 2U);
    EXPECT_EQ(ageText(findLastBackup(books(), folder), kNow.plusDays(1)), "Son yedek dün");
}

TEST(BackupKeeping, ThirtyDaysAndTwelveMonthsStay) {
    std::vector<std::string> names; // two a day for two years, three on the last
    const DateTime first = DateTime::of(2024, 11, 23, 9, 0, 0);
    for (int day = 0; day < 730; ++day)
        for (const int hour : {0, 10})
            names.push_back(backupName(first.plusDays(day).plusSeconds(hour * 3600)));
    names.push_back(backupName(first.plusDays(729).plusSeconds(12 * 3600)));
    const std::vector<std::string> gone = expired(names);
    std::vector<std::string> kept;
    std::copy_if(names.begin(), names.end(), std::back_inserter(kept), [&](const std::string& name) {
        return std::find(gone.begin(), gone.end(), name) == gone.end();
    });
    // Thirty days, two more of the last one, and ten month ends before them: two are among the days.
    EXPECT_EQ(kept.size(), 30U + 2U + 10U);
    EXPECT_EQ(kept.front(), "vorel-2025-12-31_190000.mdb");
    EXPECT_EQ(kept.back(), "vorel-2026-11-22_210000.mdb");
    EXPECT_TRUE(expired({}).empty());
    EXPECT_TRUE(isBackupName("vorel-2026-11-22_143005.mdb"));
    for (const char* other :
         {"vorel.mdb", "degistirilen-vorel-2026-11-22_143005.mdb", "vorel-2026-11-22_143005.mdb.yarim",
          "vorel-2026-11-22_14300x.mdb", "vorel-2026-11-22_143005.txt"})
        EXPECT_FALSE(isBackupName(other)) << other;
}

TEST_F(Yedek, WhatWasLeftHalfDoneGoesNothingElseIsTouched) {
    const std::string folder = fs::path(books()).parent_path().string() + '/';
    const std::string whole = backupName(kNow);
    for (const std::string& name : {whole, whole + ".yarim", whole + ".yarim-wal", std::string("not.yarim")})
        std::ofstream(folder + name) << "x";
    clearUnfinished(folder);
    EXPECT_EQ(shop.filesInside(), 3);
    EXPECT_EQ(listBackups(folder), std::vector<std::string>{whole});
    EXPECT_TRUE(fs::exists(folder + "not.yarim"));
}

TEST(BackupOptions, AnUnreadableRowIsRefused) {
    const auto read = [](std::vector<const char*> arguments) { return readOptions(arguments); };
    EXPECT_TRUE(read({"--geri-yukle", "x.mdb", "--evet"}).confirmed);
    const std::vector<std::vector<const char*>> refused = {
        {"--evet"}, {"--geri-yukle"}, {"--klasor", ""}, {"--liste", "--geri-yukle", "x"}, {"x.mdb"}};
    for (const auto& arguments : refused)
        EXPECT_THROW(static_cast<void>(read(arguments)), UsageError) << arguments.back();
}

} // namespace
} // namespace veldona::yedek
