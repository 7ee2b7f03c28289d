#include "platform/runtime/conversion.h"
#include "storefile.h"

namespace veldona::store {
namespace {

class Live : public OpenStore {
protected:
    void pay(std::string_view customer, int sale, int amount) {
        connection.execute("INSERT INTO ODEME (MUSTNO, ISLEMNO, TUTAR) VALUES ('" + std::string(customer) +
                           "', " + std::to_string(sale) + ", " + std::to_string(amount) + ")");
    }
    // The column of all rows from the present one on, joined by blanks.
    static std::string walk(dao::Recordset& rows, std::string_view field) {
        std::string text;
        for (; !rows.eof(); rows.moveNext())
            text.append(text.empty() ? "" : " ").append(cellText(rows.value(field)));
        return text;
    }
};

TEST_F(Live, AWalkSeesTheRowsAsTheyStand) {
    auto rows = dao().openRecordset("ODEME");
    EXPECT_TRUE(rows.eof() && rows.bof());
    EXPECT_EQ(numberRaised([&] { rows.moveFirst(); }), 3021);
    for (int i = 1; i <= 200; ++i)
        pay("1", i, i);
    rows.moveFirst();
    EXPECT_EQ(rows.value("islemno"), Value(1));
    rows.moveNext();
    connection.execute("DELETE FROM ODEME WHERE ISLEMNO = 3");
    connection.execute("UPDATE ODEME SET TUTAR = 99 WHERE ISLEMNO = 4");
    rows.moveNext();
    EXPECT_EQ(rows.value("ISLEMNO"), Value(4)) << "the third row went while the second was stood on";
    EXPECT_EQ(rows.value("TUTAR"), Value(99.0));
    connection.execute("UPDATE ODEME SET TUTAR = 100 WHERE ISLEMNO = 4");
    EXPECT_EQ(rows.value("TUTAR"), Value(100.0));
    connection.execute("DELETE FROM ODEME WHERE ISLEMNO = 4");
    EXPECT_EQ(numberRaised([&] { static_cast<void>(rows.value("TUTAR")); }), 3167);
    rows.moveNext();
    EXPECT_EQ(rows.value("ISLEMNO"), Value(5));
    rows.movePrevious();
    EXPECT_EQ(rows.value("ISLEMNO"), Value(2));
    int counted = 0;
    for (rows.moveFirst(); !rows.eof(); rows.moveNext())
        ++counted;
    EXPECT_EQ(counted, 198);
    EXPECT_EQ(numberRaised([&] { rows.moveNext(); }), 3021);
    rows.movePrevious();
    EXPECT_EQ(rows.value("ISLEMNO"), Value(200));
    pay("1", 201, 1);
    rows.moveNext();
    EXPECT_EQ(rows.value("ISLEMNO"), Value(201));
}

TEST_F(Live, OpeningReadsNothingAndALookReadsAPortion) {
    connection.beginTrans();
    for (int i = 1; i <= 5000; ++i)
        pay(std::to_string(i % 50), i, i);
    connection.commitTrans();
    const auto before = database()->rowsRead();
    auto rows = dao().openRecordset("ODEME");
    EXPECT_EQ(database()->rowsRead(), before);
    EXPECT_FALSE(rows.eof());
    EXPECT_LE(database()->rowsRead() - before, 64U);
    rows.addNew();
    rows.update();
    EXPECT_LE(database()->rowsRead() - before, 64U);
    auto narrowed = dao().openRecordset("ODEME", {{"MUSTNO", "7"}, {"ISLEMNO", "107"}});
    EXPECT_EQ(walk(narrowed, "ID"), "107");
    EXPECT_LE(database()->rowsRead() - before, 66U);
}

TEST_F(Live, NarrowingLeavesOutWhatTheWalkWouldPassOver) {
    pay("a", 1, 10), pay("b", 1, 20), pay("A", 2, 30), pay("a", 2, 40);
    const auto ids = [&](std::string_view source, std::vector<dao::Narrowing> narrowing) {
        auto rows = dao().openRecordset(source, std::move(narrowing));
        return walk(rows, "ID");
    };
    EXPECT_EQ(ids("ODEME", {{"MUSTNO", "a"}}), "1 3 4");
    EXPECT_EQ(ids("ODEME", {{"MUSTNO", "a"}, {"ISLEMNO", "2"}}), "3 4");
    EXPECT_EQ(ids("Select * From ODEME Order By TUTAR DESC", {{"MUSTNO", "a"}, {"ISLEMNO", 2}}), "4 3");
    connection.execute("UPDATE ODEME SET TARIH = '05/11/2026', ISLENDI = True WHERE ID = 2");
    connection.execute("UPDATE ODEME SET ISLENDI = False WHERE ID = 3");
    EXPECT_EQ(ids("ODEME", {{"TARIH", DateTime::of(2026, 11, 5)}}), "2");
    EXPECT_EQ(ids("ODEME", {{"TARIH", "05/11/2026"}, {"ISLENDI", true}}), "2");
    EXPECT_EQ(ids("SELECT * FROM ODEME", {{"ISLENDI", false}}), ids("ODEME", {{"ISLENDI", false}}));
    EXPECT_EQ(numberRaised([&] { static_cast<void>(ids("ODEME", {{"YOK", 1}})); }), 3265);
    EXPECT_EQ(ids("ODEME", {{"ISLEMNO", "iki"}}), "");
    EXPECT_EQ(ids("ODEME", {{"ISLEMNO", "1,5"}}), "") << "no whole number is this one";
    EXPECT_EQ(ids("ODEME", {{"ISLEMNO", ""}}), "");
    EXPECT_EQ(ids("ODEME", {{"ISLEMNO", Null()}}), "");
    EXPECT_EQ(ids("SELECT * FROM ODEME WHERE TUTAR > 10", {{"MUSTNO", "a"}}), "3 4");
}

TEST_F(Live, AnAddedRowIsWrittenWithWhatWasSet) {
    pay("1", 1, 10);
    auto rows = dao().openRecordset("ODEME");
    rows.moveFirst();
    EXPECT_EQ(numberRaised([&] { rows.set("MUSTNO", "2"); }), 3020);
    EXPECT_EQ(numberRaised([&] { rows.update(); }), 3020);
    rows.addNew();
    rows.set("mustno", 2);
    rows.set("TARIH", "05/11/2026 10:30:00");
    rows.set("ISLEMNO", 7.6);
    rows.set("TUTAR", Currency::ofWhole(12));
    EXPECT_EQ(rows.value("TARIH"), Value(DateTime::of(2026, 11, 5, 10, 30)));
    EXPECT_TRUE(rows.value("PESIN").isNull());
    rows.update();
    EXPECT_EQ(rows.value("MUSTNO"), Value("1")) << "the current row is what it was before";
    rows.moveLast();
    EXPECT_EQ(rows.value("MUSTNO"), Value("2"));
    EXPECT_EQ(rows.value("ISLEMNO"), Value(8));
    EXPECT_EQ(rows.value("TUTAR"), Value(12.0));
    EXPECT_EQ(rows.value("TARIH"), Value(DateTime::of(2026, 11, 5, 10, 30)));
}

TEST_F(Live, AValueThatDoesNotConvertLeavesTheColumnAsItWas) {
    auto rows = dao().openRecordset("ODEME");
    rows.addNew();
    rows.set("TUTAR", 5);
    for (const auto& [column, text] :
         {std::pair("TUTAR", ""), std::pair("TUTAR", "NULL"), std::pair("TUTAR", "abc"),
          std::pair("ISLEMNO", ""), std::pair("TARIH", ""), std::pair("TARIH", "NULL"),
          std::pair("TARIH", "31/02/2026")})
        EXPECT_EQ(numberRaised([&, name = column, value = text] { rows.set(name, value); }), 3421)
            << column << " " << text;
    EXPECT_EQ(numberRaised([&] { rows.set("ISLEMNO", 3e9); }), 3421);
    EXPECT_EQ(numberRaised([&] { rows.set("YOK", 1); }), 3265);
    EXPECT_EQ(numberRaised([&] { rows.set("ID", 1); }), 3164);
    rows.set("TARIH", Null());
    rows.set("MUSTNO", "NULL");
    rows.update();
    rows.moveFirst();
    EXPECT_EQ(rows.value("TUTAR"), Value(5.0));
    EXPECT_EQ(rows.value("MUSTNO"), Value("NULL"));
    EXPECT_TRUE(rows.value("TARIH").isNull());
    EXPECT_TRUE(rows.value("ISLEMNO").isNull());
}

TEST_F(Live, AnEditWritesOnlyWhatWasSet) {
    for (const char* source : {"ODEME", "SELECT ID, MUSTNO, TUTAR, ISLEMNO FROM ODEME ORDER BY TUTAR"}) {
        connection.execute("DELETE FROM ODEME");
        pay("1", 1, 10), pay("1", 2, 20);
        auto rows = dao().openRecordset(source);
        rows.moveNext();
        rows.edit();
        rows.set("TUTAR", "25,5");
        connection.execute("UPDATE ODEME SET MUSTNO = 'x' WHERE ISLEMNO = 2");
        rows.update();
        EXPECT_EQ(rows.value("TUTAR"), Value(25.5));
        EXPECT_EQ(this->rows("SELECT MUSTNO, ISLEMNO, TUTAR FROM ODEME ORDER BY ID"), "1|1|10\nx|2|25,5");
        rows.edit();
        rows.set("TUTAR", 1);
        rows.moveFirst();
        EXPECT_EQ(numberRaised([&] { rows.update(); }), 3020) << "a move drops what was set";
        EXPECT_EQ(this->rows("SELECT MAX(TUTAR) FROM ODEME"), "25,5");
    }
}

TEST_F(Live, ARowThatWentIsToldAtTheUpdate) {
    for (const char* source : {"ODEME", "SELECT * FROM ODEME"}) {
        pay("1", 1, 10), pay("1", 2, 20);
        auto rows = dao().openRecordset(source);
        rows.moveFirst();
        rows.edit();
        rows.set("TUTAR", 1);
        connection.execute("DELETE FROM ODEME WHERE ISLEMNO = 1");
        EXPECT_EQ(numberRaised([&] { rows.update(); }), 3167) << source;
        rows.moveNext();
        rows.remove();
        EXPECT_FALSE(rows.eof());
        EXPECT_EQ(numberRaised([&] { static_cast<void>(rows.value("TUTAR")); }), 3167) << source;
        EXPECT_EQ(numberRaised([&] { rows.edit(); }), 3167) << source;
        EXPECT_EQ(numberRaised([&] { rows.remove(); }), 3167) << source;
        rows.moveNext();
        EXPECT_TRUE(rows.eof());
        EXPECT_EQ(this->rows("SELECT * FROM ODEME"), "");
    }
}

// A walk that removes its rows goes on in the portion that it has read, and sees what others write meanwhile.
TEST_F(Live, AWalkRemovesItsRowsOneByOne) {
    for (int i = 1; i <= 150; ++i)
        pay("1", i, i);
    auto rows = dao().openRecordset("ODEME");
    rows.remove();
    rows.moveNext();
    EXPECT_EQ(rows.value("ISLEMNO"), Value(2));
    rows.moveNext();
    rows.remove();
    EXPECT_EQ(numberRaised([&] { static_cast<void>(rows.value("TUTAR")); }), 3167);
    rows.movePrevious();
    EXPECT_EQ(rows.value("ISLEMNO"), Value(2));
    rows.moveNext();
    EXPECT_EQ(rows.value("ISLEMNO"), Value(4));
    rows.movePrevious(), rows.movePrevious();
    EXPECT_TRUE(rows.bof());
    connection.execute("DELETE FROM ODEME WHERE ISLEMNO = 5");
    int removed = 0;
    for (rows.moveFirst(); !rows.eof(); rows.moveNext(), ++removed) {
        EXPECT_NE(rows.value("ISLEMNO"), Value(5));
        rows.remove();
        if (removed == 100) pay("1", 151, 1);
    }
    EXPECT_EQ(removed, 148);
    EXPECT_EQ(this->rows("SELECT * FROM ODEME"), "");
}

TEST_F(Live, ASelectRunsAtTheFirstLookAndAgainAtMoveFirst) {
    auto rows = dao().openRecordset("SELECT TUTAR FROM ODEME ORDER BY TUTAR DESC");
    pay("1", 1, 10);
    EXPECT_EQ(walk(rows, "TUTAR"), "10");
    pay("1", 2, 20);
    EXPECT_TRUE(rows.eof());
    rows.moveFirst();
    EXPECT_EQ(walk(rows, "TUTAR"), "20 10");
    rows.moveFirst();
    EXPECT_EQ(numberRaised([&] { rows.edit(); }), 3027) << "the rows do not bring their keys";
}

TEST_F(Live, FailuresCarryTheNumbersOfThisFace) {
    const auto open = [&](std::string_view source) {
        return numberRaised([&] { static_cast<void>(dao().openRecordset(source)); });
    };
    EXPECT_EQ(open("YOK"), 3078);
    EXPECT_EQ(open("SELECT * FROM"), 3075);
    EXPECT_EQ(open("SELECT * FROM ODEME; DELETE FROM ODEME"), 3075);
    EXPECT_EQ(open("SELECT YOK FROM ODEME"), 3061);
    EXPECT_EQ(numberRaised([&] { dao().execute("UPDATE ODEME SET TUTAR = 'abc'"); }), 3464);
    auto rows = dao().openRecordset("ODEME");
    EXPECT_EQ(numberRaised([&] { static_cast<void>(rows.value("YOK")); }), 3265);
    EXPECT_EQ(numberRaised([&] { static_cast<void>(rows.value("TUTAR")); }), 3021);
    rows.close();
    EXPECT_EQ(numberRaised([&] { static_cast<void>(rows.eof()); }), 3420);
}

TEST_F(Live, AWriteThatFailedLeavesTheRecordsetUsable) {
    pay("1", 1, 10);
    auto rows = dao().openRecordset("ODEME");
    rows.moveFirst();
    store->failWrite(1, "ODEME");
    rows.addNew();
    rows.set("ISLEMNO", 2);
    EXPECT_EQ(numberRaised([&] { rows.update(); }), 3000);
    rows.addNew();
    rows.set("ISLEMNO", 3);
    rows.update();
    rows.moveFirst();
    EXPECT_EQ(walk(rows, "ISLEMNO"), "1 3");
}

} // namespace
} // namespace veldona::store
