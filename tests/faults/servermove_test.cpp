// Books on their way to a server and back: wherever the mover is killed or the network breaks, one of the two
// places has them whole and is the one that opens, and the next run brings them to where they were to go.
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <random>

#include <gtest/gtest.h>

#include "backup/fingerprint.h"
#include "backup/place.h"
#include "core/books.h"
#include "platform/store/dialect/storeerror.h"
#include "tests/faults/day.h"
#include "tests/faults/program.h"
#include "tests/faults/testserver.h"
#include "tests/support/sampleshop.h"
#include "tests/support/wire.h"

namespace veldona::faults {
namespace {

using std::chrono::steady_clock;

class Moving {
public:
    explicit Moving(const test::SampleShop& shop)
        : fingerprint_(backup::fingerprintOf(*openBooksToRead(shop.books(), std::chrono::seconds(1)))),
          database_(TestServer::get().makeDatabase()) {
        std::filesystem::copy_file(shop.books(), drive_.books());
    }

    [[nodiscard]] Program::Words there() const {
        return {"--kok", drive_.path(), "--kur", "--adres",
                "host=" + wire_.folder() + " dbname=" + database_ + " user=kasa1"};
    }
    [[nodiscard]] Program::Words back() const { return {"--kok", drive_.path(), "--geri"}; }
    [[nodiscard]] Program::Words renewed() const { return {"--kok", drive_.path(), "--yenile"}; }
    // As an earlier release made them: without a table, an index, a default and a column.
    void makeOlder() {
        fingerprint_.rows["ARAMA_NOTU"] = 0;
        TestServer::get().sql("SET search_path = vorel; COMMENT ON SCHEMA vorel IS 'veldona 0.9.0 1'; "
                              "DROP TABLE \"ARAMA_NOTU\"; DROP INDEX \"MUSTKAYIT_SOYAD\"; ALTER TABLE "
                              "\"URUNSAT\" ALTER \"PESINAT\" DROP DEFAULT; ALTER TABLE \"MUSTKAYIT\" DROP "
                              "\"RESIM_AD\"",
                              database_);
    }
    [[nodiscard]] bool isThere() const { return areOnServer() && !backup::stands(drive_.books()); }
    [[nodiscard]] bool isBack() const { return !areOnServer() && backup::stands(drive_.books()); }

    [[nodiscard]] std::unique_ptr<store::Engine> open() const { // as a program would
        return openBooksToRead(store::placeOf(drive_.books()), std::chrono::seconds(5));
    }
    // What is wrong with the books that a program would open now.
    [[nodiscard]] std::string wrong() const {
        try {
            return backup::fingerprintOf(*open()) == fingerprint_ ? "" : "the books are others";
        } catch (const store::StoreError& failure) {
            return failure.description();
        }
    }
    [[nodiscard]] test::Wire& wire() { return wire_; }

private:
    [[nodiscard]] bool areOnServer() const { return backup::areOnServer(drive_.books()); }

    backup::Fingerprint fingerprint_;
    Drive drive_;
    test::Wire wire_{TestServer::get().folder()};
    std::string database_;
};

struct Measured {
    std::chrono::microseconds time;
    int messages;
};

Measured undisturbed(Moving& moving, const Program::Words& words) {
    moving.wire().cutAt(0);
    const auto begin = steady_clock::now();
    const Outcome outcome = runProgram("vorel-sunucu", words);
    EXPECT_EQ(outcome.code, 0) << outcome.said;
    return {std::chrono::duration_cast<std::chrono::microseconds>(steady_clock::now() - begin),
            moving.wire().messages()};
}

void disturb(Moving& moving, const Program::Words& words, const Measured& whole, std::mt19937& random) {
    if (random() % 2 == 0) {
        moving.wire().cutAt(1 + static_cast<int>(random() % static_cast<unsigned>(whole.messages)));
        static_cast<void>(runProgram("vorel-sunucu", words));
        moving.wire().cutAt(0);
        return;
    }
    const Program program("vorel-sunucu", words);
    usleep(static_cast<useconds_t>(random() % static_cast<unsigned>(whole.time.count())));
    kill(program.id(), SIGKILL);
}

TEST(ServerMove, WhereverItEndsTheBooksAreWholeAndTheNextRunFinishes) {
    const test::SampleShop shop(30, 60);
    Moving measured(shop);
    const Measured there = undisturbed(measured, measured.there());
    ASSERT_TRUE(measured.isThere());
    ASSERT_EQ(measured.wrong(), "");
    {
        const auto till = measured.open();
        EXPECT_NE(runProgram("vorel-sunucu", measured.back()).said.find("şu anda açık"), std::string::npos);
    }
    const Measured back = undisturbed(measured, measured.back());
    ASSERT_TRUE(measured.isBack());
    ASSERT_EQ(measured.wrong(), "");
    std::mt19937 random(20261122);
    for (int round = 0; round < 10 * effort(); ++round) {
        SCOPED_TRACE(round);
        Moving moving(shop);
        disturb(moving, moving.there(), there, random);
        ASSERT_EQ(moving.wrong(), "") << "on the way there";
        if (!moving.isThere()) static_cast<void>(undisturbed(moving, moving.there()));
        ASSERT_TRUE(moving.isThere());
        ASSERT_EQ(moving.wrong(), "");
        disturb(moving, moving.back(), back, random);
        ASSERT_EQ(moving.wrong(), "") << "on the way back";
        if (!moving.isBack()) static_cast<void>(undisturbed(moving, moving.back()));
        ASSERT_TRUE(moving.isBack());
        ASSERT_EQ(moving.wrong(), "");
    }
}

TEST(ServerMove, OlderBooksAreRenewedWholeOrNotAtAll) {
    const test::SampleShop shop(30, 60);
    Moving measured(shop);
    static_cast<void>(undisturbed(measured, measured.there()));
    measured.makeOlder();
    const Measured whole = undisturbed(measured, measured.renewed());
    ASSERT_EQ(measured.wrong(), "");
    EXPECT_NE(runProgram("vorel-sunucu", measured.renewed()).said.find("zaten bu sürümün"),
              std::string::npos);
    std::mt19937 random(20261123);
    for (int round = 0; round < 3 * effort(); ++round) {
        SCOPED_TRACE(round);
        Moving moving(shop);
        static_cast<void>(undisturbed(moving, moving.there()));
        moving.makeOlder();
        disturb(moving, moving.renewed(), whole, random);
        if (moving.wrong().empty()) continue; // it was already done
        ASSERT_NE(moving.wrong().find("vorel-sunucu --yenile"), std::string::npos) << moving.wrong();
        static_cast<void>(undisturbed(moving, moving.renewed()));
        ASSERT_EQ(moving.wrong(), "");
    }
}

} // namespace
} // namespace veldona::faults
