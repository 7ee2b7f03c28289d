#include <sys/wait.h>
#include <unistd.h>

#include <chrono>

#include "platform/store/faces/adodb.h"
#include "storefile.h"

namespace veldona::store {
namespace {

// Two workstations: each has a workspace, and with it an engine connection, of its own.
class TwoWorkstations : public OpenStore {
protected:
    TwoWorkstations() { other.open("dukkan", "", kPassword); }

    std::unique_ptr<Workspace> otherStore = workspace();
    adodb::Connection other{*otherStore};
};

TEST_F(TwoWorkstations, ALockIsWaitedForUpToTheTimeoutThenTold) {
    other.beginTrans();
    other.execute("INSERT INTO MUSTERI (HSTNO) VALUES ('1')");
    connection.commandTimeout = 1;
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(numberRaised([&] { connection.execute("INSERT INTO MUSTERI (HSTNO) VALUES ('2')"); }),
              adodb::kStatementError);
    const auto waited = std::chrono::steady_clock::now() - before;
    EXPECT_GE(waited, std::chrono::milliseconds(900));
    EXPECT_LT(waited, std::chrono::seconds(5));
    connection.commandTimeout = 60;
    const auto rest = std::chrono::steady_clock::now();
    EXPECT_EQ(numberRaised([&] { connection.beginTrans(); }), adodb::kStatementError);
    EXPECT_FALSE(connection.inTransaction());
    auto payments = dao().openRecordset("ODEME");
    payments.addNew();
    EXPECT_EQ(numberRaised([&] { payments.update(); }), 3260);
    EXPECT_LT(std::chrono::steady_clock::now() - rest, std::chrono::seconds(5))
        << "the rest of the act waits no more";
    store->endAct();
    givesUpAfter = std::chrono::milliseconds(100);
    EXPECT_EQ(numberRaised([&] { connection.beginTrans(); }), adodb::kStatementError);
    EXPECT_LT(std::chrono::steady_clock::now() - rest, std::chrono::seconds(10))
        << "given up by the operator";
    EXPECT_GE(longestWait, givesUpAfter) << "a new act waits again";
    EXPECT_EQ(rows("SELECT COUNT(*) FROM MUSTERI"), "0") << "reading needs no lock";
    other.commitTrans();
    payments.update();
    connection.execute("INSERT INTO MUSTERI (HSTNO) VALUES ('2')");
    EXPECT_EQ(rows("SELECT HSTNO FROM MUSTERI ORDER BY ID"), "1\n2");
}

TEST_F(TwoWorkstations, WritesOfTheOtherAreSeenAtRequeryAndMoveFirst) {
    adodb::Recordset answer;
    answer.open("SELECT COUNT(*) AS SAYI FROM MUSTERI", connection);
    auto table = dao().openRecordset("MUSTERI");
    auto select = dao().openRecordset("SELECT HSTNO FROM MUSTERI");
    EXPECT_TRUE(table.eof() && select.eof());
    other.execute("INSERT INTO MUSTERI (HSTNO) VALUES ('1')");
    awaitNews();
    answer.requery();
    EXPECT_EQ(answer.value("SAYI"), Value(1));
    table.moveFirst();
    select.moveFirst();
    EXPECT_EQ(table.value("HSTNO"), Value("1"));
    other.execute("INSERT INTO MUSTERI (HSTNO) VALUES ('2')");
    awaitNews();
    table.moveNext();
    EXPECT_EQ(table.value("HSTNO"), Value("2")) << "appended while the walk stood on the last row";
    table.edit();
    table.set("AD", "x");
    other.execute("DELETE FROM MUSTERI WHERE HSTNO = '2'");
    EXPECT_EQ(numberRaised([&] { table.update(); }), 3167);
}

// On a server what usually follows a question goes along with it, and waits for whoever asks it.
TEST_F(TwoWorkstations, NothingFetchedAheadOutlivesAWriteOfATill) {
    const auto thirdStore = workspace();
    adodb::Connection third{*thirdStore};
    third.open("dukkan", "", kPassword);
    other.execute("INSERT INTO MUSTERI (HSTNO, AD) VALUES ('1', 'eski')");
    other.execute("INSERT INTO ODEME (MUSTNO, TUTAR) VALUES ('1', 5)");
    awaitNews();
    const auto act = [&](const std::function<void()>& firstWrite, const std::function<void()>& secondWrite) {
        std::string seen = rows("SELECT COUNT(*) FROM MUSTERI");
        firstWrite();
        seen += ' ' + rows("SELECT AD FROM MUSTERI WHERE HSTNO = '1'");
        secondWrite();
        seen += ' ' + rows("SELECT SUM(TUTAR) FROM ODEME WHERE MUSTNO = '1'");
        store->endAct();
        return seen;
    };
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(act([] {}, [] {}), "1 eski 5");
    EXPECT_EQ(act([&] { other.execute("UPDATE MUSTERI SET AD = 'yeni'"), awaitNews(); },
                  [&] { third.execute("UPDATE ODEME SET TUTAR = 7"), awaitNews(); }),
              "1 yeni 7");
}

} // namespace
} // namespace veldona::store
