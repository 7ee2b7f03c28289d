// The program reads ahead while the main screen rests, and not while the operator's hand is at the keys.
#include <QElapsedTimer>
#include <QTest>

#include "apps/veldona/atrest.h"
#include "core/delivered.h"
#include "core/showscreen.h"
#include "platform/store/faces/database.h"
#include "tests/ui/programwindows.h"

namespace veldona::test {

namespace {

class Reading : public ProgramWindows {
protected:
    std::uint64_t rowsRead() { return session.workspace.open(kDatabasePath, kDeliveredPassword)->rowsRead(); }
    [[nodiscard]] QWidget& front() { return *host.frontWindow(); }
};

} // namespace

TEST_F(Reading, WaitsForTheHandAndGoesOnInShortSteps) {
    constexpr int kCards = 300;
    for (int card = 1; card <= kCards; ++card)
        shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD) VALUES ('" + std::to_string(card) + "','Ad')");
    start();
    const auto kept = std::make_shared<ShopReckoning>();
    const AtRest atRest(host, session, kept, std::chrono::milliseconds(150));
    const std::uint64_t before = rowsRead();
    QElapsedTimer typing;
    typing.start();
    while (typing.elapsed() < 600) {
        QTest::keyClick(&front(), Qt::Key_Shift);
        QTest::qWait(20);
    }
    EXPECT_EQ(rowsRead(), before) << "a hand at the keys";
    ASSERT_TRUE(QTest::qWaitFor([&] { return rowsRead() >= before + kCards; }, 5000)) << "at rest";
    QTest::qWait(500);
    EXPECT_FALSE(kept->readAhead(*session.gBaglanti, [] { return false; })) << "nothing is left";

    // In front of another screen, nobody rests at the main one.
    session.gBaglanti->execute("UPDATE MUSTKAYIT SET AD='Yeni'");
    showScreen(session, "frmArama", Kip::Modeless);
    const std::uint64_t open = rowsRead();
    QTest::qWait(500);
    EXPECT_EQ(rowsRead(), open);
    forms.unload(*forms.loaded("frmArama"));
    QTest::keyClick(&front(), Qt::Key_Shift);
    EXPECT_TRUE(QTest::qWaitFor([&] { return rowsRead() >= open + kCards; }, 5000));
}

} // namespace veldona::test
