#include "platform/runtime/conversion.h"
#include "platform/store/faces/adodb.h"
#include "storefile.h"

namespace veldona::store {
namespace {

using Shared = OpenStore;

TEST_F(Shared, FieldsCarryTheTypesOfTheirColumns) {
    connection.execute("INSERT INTO ODEME (MUSTNO, ISLEMNO, TUTAR, TARIH, PESIN, ISLENDI) "
                       "VALUES ('1', 7, 12500000, #11,05,2026#, 1, True)");
    adodb::Recordset answer;
    answer.open("SELECT * FROM ODEME", connection);
    std::vector<int> types;
    for (int i = 0; i < answer.fieldCount(); ++i)
        types.push_back(answer.fieldType(i));
    EXPECT_EQ(types, (std::vector<int>{3, 202, 3, 5, 135, 2, 11}));
    EXPECT_EQ(answer.value("islemno"), Value(7));
    EXPECT_EQ(answer.value("TUTAR"), Value(12500000.0));
    EXPECT_EQ(answer.value("TARIH"), Value(DateTime::of(2026, 11, 5)));
    EXPECT_EQ(answer.value("ISLENDI"), Value(true));
    EXPECT_EQ(numberRaised([&] { static_cast<void>(answer.value("YOK")); }), 3265);
    answer.close();
    answer.open("SELECT NOTU FROM MUSTERI", connection);
    EXPECT_EQ(answer.fieldType(0), 203);
    answer.close();
    answer.open("SELECT COUNT(*) AS ADEDI, MAX(TARIH) AS SON FROM ODEME", connection);
    EXPECT_EQ(answer.fieldType(0), 3);
    EXPECT_EQ(answer.value("SON"), Value(DateTime::of(2026, 11, 5)));
}

TEST_F(Shared, MovingKeepsToTheRowsAndOneStepBeyond) {
    adodb::Recordset answer;
    answer.open("SELECT HSTNO FROM MUSTERI ORDER BY ID", connection);
    EXPECT_TRUE(answer.eof() && answer.bof());
    answer.moveFirst();
    EXPECT_EQ(numberRaised([&] { static_cast<void>(answer.value("HSTNO")); }), 3021);
    EXPECT_EQ(numberRaised([&] { answer.moveNext(); }), 3021);
    EXPECT_EQ(numberRaised([&] { static_cast<void>(answer.bookmark()); }), 3021);
    for (const char* number : {"1", "2", "3"})
        connection.execute("INSERT INTO MUSTERI (HSTNO) VALUES ('" + std::string(number) + "')");
    answer.requery();
    EXPECT_EQ(answer.recordCount(), 3);
    EXPECT_EQ(answer.absolutePosition(), 1);
    answer.movePrevious();
    EXPECT_TRUE(answer.bof());
    EXPECT_EQ(answer.absolutePosition(), 0);
    EXPECT_EQ(numberRaised([&] { answer.movePrevious(); }), 3021);
    answer.moveNext();
    EXPECT_EQ(answer.value(0), Value("1"));
    answer.moveLast();
    const auto last = answer.bookmark();
    answer.moveNext();
    EXPECT_TRUE(answer.eof());
    EXPECT_EQ(numberRaised([&] { answer.moveNext(); }), 3021);
    answer.setBookmark(last);
    EXPECT_EQ(answer.value(0), Value("3"));
    connection.execute("DELETE FROM MUSTERI WHERE HSTNO = '1'");
    answer.requery();
    EXPECT_EQ(numberRaised([&] { answer.setBookmark(last); }), 3021) << "a place in an older answer";
}

TEST_F(Shared, FindLooksFromTheCurrentRowOn) {
    for (const char* row : {"'a', 5, #11,05,2026#", "'B', 7, NULL", "'ç', -5, #01,01,2026#", "'ığ', 7, NULL"})
        connection.execute("INSERT INTO ODEME (MUSTNO, ISLEMNO, TARIH) VALUES (" + std::string(row) + ")");
    adodb::Recordset answer;
    answer.open("SELECT * FROM ODEME ORDER BY ID", connection);
    const auto found = [&](std::string_view criteria) {
        answer.moveFirst();
        answer.find(criteria);
        return answer.absolutePosition(); // 0 at EOF
    };
    EXPECT_EQ(found("ID = 3"), 3);
    EXPECT_EQ(found("id=99"), 0);
    EXPECT_EQ(found("ISLEMNO = -5"), 3);
    EXPECT_EQ(found("ISLEMNO <> 5"), 2);
    EXPECT_EQ(found("ISLEMNO > 5"), 2);
    EXPECT_EQ(found("MUSTNO = 'b'"), 2);
    EXPECT_EQ(found("MUSTNO = 'IĞ'"), 4);
    EXPECT_EQ(found("MUSTNO >= 'c'"), 3);
    EXPECT_EQ(found("MUSTNO like 'I%'"), 4);
    EXPECT_EQ(found("TARIH < #11,05,2026#"), 3);
    answer.setBookmark((answer.moveFirst(), answer.find("ISLEMNO = 7"), answer.bookmark()));
    answer.moveNext();
    answer.find("ISLEMNO = 7");
    EXPECT_EQ(answer.absolutePosition(), 4);
    EXPECT_EQ(numberRaised([&] { answer.find("YOK = 1"); }), adodb::kStatementError);
    EXPECT_EQ(numberRaised([&] { answer.find("ID = 1 OR ID = 2"); }), adodb::kStatementError);
}

TEST_F(Shared, RequeryReadsOnlyWhenATableBelowWasWritten) {
    connection.execute("INSERT INTO MUSTERI (HSTNO, AD) VALUES ('1', 'Ayşe')");
    connection.execute("INSERT INTO ODEME (MUSTNO, TUTAR) VALUES ('1', 5)");
    adodb::Recordset table, query;
    table.open("SELECT * FROM MUSTERI", connection);
    query.open("SELECT UNVAN, TUTAR FROM S_ODEME", connection);
    const auto readBy = [&](auto&& step) {
        const auto before = database()->rowsRead();
        step();
        return database()->rowsRead() - before;
    };
    const auto requery = [&] { table.requery(), query.requery(); };
    EXPECT_EQ(readBy(requery), 0U);
    connection.execute("INSERT INTO ODEME (MUSTNO, TUTAR) VALUES ('1', 7)");
    EXPECT_EQ(readBy(requery), 2U) << "the query's table was written, the other one not";
    connection.execute("UPDATE MUSTERI SET AD = 'Fatma'");
    requery();
    EXPECT_EQ(table.value("AD"), Value("Fatma"));
    EXPECT_EQ(query.value("UNVAN"), Value("Fatma"));

    connection.beginTrans();
    connection.execute("UPDATE MUSTERI SET AD = 'Geri alınacak'");
    table.requery();
    EXPECT_EQ(table.value("AD"), Value("Geri alınacak"));
    connection.rollbackTrans();
    table.requery();
    EXPECT_EQ(table.value("AD"), Value("Fatma"));
}

TEST_F(Shared, AListOfKeysTakesInTheNewOnesAlone) {
    for (int i = 1; i <= 20; ++i)
        connection.execute("INSERT INTO ODEME (MUSTNO, TUTAR) VALUES ('1', " + std::to_string(i) + ")");
    adodb::Recordset keys;
    keys.open("SELECT ID FROM ODEME", connection);
    const auto readAnew = [&] {
        const auto before = database()->rowsRead();
        keys.requery();
        const auto read = database()->rowsRead() - before;
        EXPECT_EQ(std::to_string(keys.recordCount()), rows("SELECT COUNT(*) FROM ODEME"));
        return read;
    };
    connection.execute("INSERT INTO ODEME (MUSTNO) VALUES ('1')");
    EXPECT_LT(readAnew(), 5U);
    keys.moveLast();
    EXPECT_EQ(keys.value(0), Value(21));
    connection.execute("DELETE FROM ODEME WHERE ID = 3");
    connection.execute("INSERT INTO ODEME (MUSTNO) VALUES ('1')");
    EXPECT_GT(readAnew(), 20U) << "a row went: nothing known is trusted";
    keys.find("ID = 3");
    EXPECT_TRUE(keys.eof());
    connection.execute("INSERT INTO ODEME (ID, MUSTNO) VALUES (3, '1')");
    EXPECT_GT(readAnew(), 20U) << "a key that was named lies among the known ones";
    const auto other = workspace();
    const auto readBehind = [&](std::string_view written) {
        other->open(path, kPassword)->execute(written);
        awaitNews();
        return readAnew();
    };
    EXPECT_LT(readBehind("INSERT INTO ODEME (MUSTNO) VALUES ('1')"), 5U);
    EXPECT_EQ(readBehind("INSERT INTO MUSTERI (HSTNO) VALUES ('2')"), test::areBooksOnServer() ? 0U : 1U)
        << "a server tells which table was written; of a file they are counted";
    EXPECT_GT(readBehind("UPDATE ODEME SET ID = 2000 WHERE ID = 23"), 20U);
    static_cast<void>(readBehind("DELETE FROM ODEME WHERE ID = 5"));
    EXPECT_GT(readBehind("INSERT INTO ODEME (ID, MUSTNO) VALUES (5, '1')"), 20U);
    static_cast<void>(readBehind("DELETE FROM ODEME WHERE ID > 10"));
    static_cast<void>(readBehind("DELETE FROM ODEME"));
    EXPECT_TRUE(keys.eof());
}

TEST_F(Shared, AListOfKeysReadInATransactionIsNotTrustedBehindIt) {
    for (int i = 1; i <= 4; ++i)
        connection.execute("INSERT INTO ODEME (MUSTNO) VALUES ('1')");
    adodb::Recordset keys;
    keys.open("SELECT ID FROM ODEME", connection);
    const auto shown = [&] {
        keys.requery();
        std::string all;
        for (; !keys.eof(); keys.moveNext())
            all += toText(keys.value(0)) + " ";
        return all;
    };
    connection.beginTrans();
    connection.execute("DELETE FROM ODEME WHERE ID = 2");
    EXPECT_EQ(shown(), "1 3 4 ");
    connection.rollbackTrans();
    connection.execute("DELETE FROM ODEME WHERE ID = 3");
    EXPECT_EQ(shown(), "1 2 4 ") << "as many rows as before, and others";
    connection.beginTrans();
    for (int i = 0; i < 2; ++i)
        connection.execute("INSERT INTO ODEME (MUSTNO) VALUES ('1')");
    connection.execute("DELETE FROM ODEME WHERE ID = 5");
    EXPECT_EQ(shown(), "1 2 4 6 ");
    connection.rollbackTrans();
    connection.execute("INSERT INTO ODEME (MUSTNO) VALUES ('1')");
    EXPECT_EQ(shown(), "1 2 4 5 ");
}

TEST_F(Shared, TheClockIsAskedAtEachRequery) {
    DateTime now = DateTime::of(2026, 11, 22, 10, 30);
    clock = [&] { return now; };
    connection.execute("INSERT INTO MUSTERI (HSTNO) VALUES ('1')");
    const auto other = workspace();
    adodb::Connection second(*other);
    second.open("dukkan", "", kPassword);
    adodb::Recordset answer;
    answer.open("SELECT Now() AS SIMDI FROM MUSTERI", second);
    EXPECT_EQ(toText(answer.value(0)), "22/11/2026 10:30:00");
    now = DateTime::of(2026, 11, 22, 10, 31);
    answer.requery();
    EXPECT_EQ(toText(answer.value(0)), "22/11/2026 10:31:00");
}

TEST_F(Shared, TheLastCounterIsThatOfTheConnectionWhicheverFaceWrote) {
    EXPECT_EQ(rows("SELECT @@IDENTITY FROM MUSTERI"), "0");
    connection.execute("INSERT INTO MUSTERI (HSTNO) VALUES ('1')");
    connection.execute("INSERT INTO MUSTERI (HSTNO) VALUES ('2')");
    EXPECT_EQ(rows("SELECT @@IDENTITY FROM MUSTERI"), "2");
    auto payments = dao().openRecordset("ODEME");
    payments.addNew();
    payments.set("MUSTNO", "1");
    payments.update();
    EXPECT_EQ(rows("SELECT @@IDENTITY FROM ODEME"), "1");
    connection.execute("DELETE FROM MUSTERI WHERE HSTNO = '2'");
    connection.execute("INSERT INTO MUSTERI (HSTNO) VALUES ('3')");
    EXPECT_EQ(rows("SELECT @@IDENTITY FROM MUSTERI"), "3") << "a counter is never used twice";
}

TEST_F(Shared, BothFacesWriteInOneTransaction) {
    connection.beginTrans();
    EXPECT_TRUE(connection.inTransaction());
    EXPECT_EQ(numberRaised([&] { connection.beginTrans(); }), adodb::kStatementError);
    connection.execute("INSERT INTO MUSTERI (HSTNO) VALUES ('1')");
    auto payments = dao().openRecordset("ODEME");
    payments.addNew();
    payments.update();
    EXPECT_EQ(rows("SELECT COUNT(*) FROM ODEME"), "1");
    connection.rollbackTrans();
    EXPECT_EQ(rows("SELECT COUNT(*) FROM ODEME"), "0");
    EXPECT_EQ(rows("SELECT COUNT(*) FROM MUSTERI"), "0");
    EXPECT_EQ(numberRaised([&] { connection.commitTrans(); }), adodb::kStatementError);
}

TEST_F(Shared, AStatementThatAnswersNothingLeavesTheRecordsetClosed) {
    adodb::Recordset answer;
    answer.open("INSERT INTO MUSTERI (HSTNO) VALUES ('1')", connection);
    EXPECT_FALSE(answer.isOpen());
    EXPECT_EQ(numberRaised([&] { static_cast<void>(answer.eof()); }), adodb::kObjectClosed);
    EXPECT_EQ(rows("SELECT HSTNO FROM MUSTERI"), "1");
    EXPECT_EQ(connection.execute("UPDATE MUSTERI SET AD = 'x'"), 1);
    EXPECT_EQ(connection.execute("SELECT * FROM MUSTERI"), 0);
}

TEST_F(Shared, ATransactionThatTheDiskBrokeIsNotContinued) {
    database()->engine().execute("PRAGMA max_page_count = 30");
    connection.beginTrans();
    connection.execute("INSERT INTO MUSTERI (HSTNO) VALUES ('1')");
    const std::string longText(4000, 'x');
    const auto fillDisk = [&] {
        for (int i = 0; i < 100; ++i)
            connection.execute("INSERT INTO MUSTERI (NOTU) VALUES ('" + longText + "')");
    };
    EXPECT_EQ(numberRaised(fillDisk), adodb::kStatementError);
    ASSERT_FALSE(database()->engine().inTransaction()) << "the engine has undone it by itself";
    EXPECT_TRUE(connection.inTransaction());
    EXPECT_EQ(numberRaised([&] { connection.execute("INSERT INTO ODEME (MUSTNO) VALUES ('1')"); }),
              adodb::kStatementError);
    EXPECT_EQ(numberRaised([&] { connection.commitTrans(); }), adodb::kStatementError);
    connection.rollbackTrans();
    EXPECT_EQ(rows("SELECT COUNT(*) FROM ODEME"), "0");
    EXPECT_EQ(rows("SELECT COUNT(*) FROM MUSTERI"), "0");
}

TEST_F(Shared, MoreShapesThanAreKeptStillRun) {
    for (int i = 0; i < 600; ++i)
        EXPECT_EQ(rows("SELECT COUNT(*) AS A" + std::to_string(i) + " FROM MUSTERI"), "0");
    adodb::Recordset early;
    early.open("SELECT COUNT(*) AS ILK FROM MUSTERI", connection);
    for (int i = 0; i < 300; ++i)
        EXPECT_EQ(rows("SELECT COUNT(*) AS B" + std::to_string(i) + " FROM MUSTERI"), "0");
    connection.execute("INSERT INTO MUSTERI (HSTNO) VALUES ('1')");
    early.requery();
    EXPECT_EQ(early.value("ILK"), Value(1)) << "its plan has left the cache meanwhile";
}

} // namespace
} // namespace veldona::store
