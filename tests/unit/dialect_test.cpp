// Reading statements: which values are bound, what they become, and texts that are no statement.
#include <gtest/gtest.h>

#include "dialect_engine.h"
#include "tests/support/raised.h"

namespace veldona::store {
namespace {

using enum ColumnType;

// The key with its marks as "?", and the values behind it.
std::string shown(const Reading& reading) {
    std::string text = reading.key;
    for (std::size_t at = 0; (at = text.find('\x01', at)) != std::string::npos; ++at)
        text.replace(at, 2, "?");
    for (const Literal& literal : reading.literals) {
        text += literal.kind == Literal::Kind::Number ? " n:"
                : literal.kind == Literal::Kind::Text ? " t:"
                                                      : " d:";
        text += literal.text;
    }
    return text;
}

TEST(DialectReading, ValuesThatMeetAColumnLeaveTheText) {
    const std::pair<const char*, const char*> cases[] = {
        {"select *\r\n from T where A = '7'", "select *\r\n from T where A = ? t:7"},
        {"A='7' ; ", "A=? t:7"},
        {"A='it''s' OR B=\"say \"\"x\"\"\"", "A=? OR B=? t:it's t:say \"x\""},
        {"A=-5 AND B>=1.5 AND C<>-.5", "A=? AND B>=? AND C<>? n:-5 n:1.5 n:-.5"},
        {"D <=   # 11,22,2026 #", "D <=   ? d: 11,22,2026 "},
        {"A NOT IN ('G3','G4', -1)", "A NOT IN (?,?, ?) t:G3 t:G4 n:-1"},
        {"A BETWEEN 1 AND 5 AND 3 = B", "A BETWEEN ? AND ? AND 3 = B n:1 n:5"},
        {"A like 'x%'", "A like ? t:x%"},
        {"VALUES (1,'a',Mid(B,4,2),-1,2*3)", "VALUES (?,?,Mid(B,4,2),?,2*3) n:1 t:a n:-1"},
        {"SET A=1,B='x'", "SET A=?,B=? n:1 t:x"},
        {"IN (SELECT A, 5 FROM B)", "IN (SELECT A, 5 FROM B)"},
        {"SELECT TOP 1 'x', A/1000000 FROM B", "SELECT TOP 1 'x', A/1000000 FROM B"},
        {"A = 5 * B", "A = 5 * B"},
        {"A & \"it's\" = 'x'", "A & \"it's\" = ? t:x"},
        {"A = 'İstanbul' ", "A = ? t:İstanbul"},
        {"A = 'x\xff'", "A = ? t:x\xEF\xBF\xBD"},
    };
    for (const auto& [sql, expected] : cases)
        EXPECT_EQ(shown(readStatement(sql)), expected) << sql;
}

TEST(DialectReading, AKeyIsOfOneStatement) {
    const auto isOne = [](std::string_view a, std::string_view b) {
        return readStatement(a).key == readStatement(b).key;
    };
    EXPECT_TRUE(isOne("A = 1 AND B = 'x'", "A = -2.5 AND B = ''"));
    EXPECT_FALSE(isOne("A = 1 AND B = 'x'", "A = 1 AND B = 5")) << "a value of another kind";
    EXPECT_FALSE(isOne("SELECT TOP 1 A FROM T", "SELECT TOP 2 A FROM T")) << "a value that is not bound";
    EXPECT_FALSE(isOne("A = '1' AND B = 2", "A = '1' OR '1'='1' AND B = 2"));
}

TEST(DialectReading, WhatCannotBeCutIsASyntaxError) {
    const std::string_view cases[] = {"SELECT 'x",
                                      "SELECT \"x",
                                      "A = #1,2,2026",
                                      "A = ##",
                                      "A = #  #",
                                      "[AD",
                                      "[]",
                                      "A = 12abc",
                                      "A = 1.2.3",
                                      "A = 1e",
                                      "A ? B",
                                      "A ! B",
                                      "@IDENTITY",
                                      "@@IDENTITYX",
                                      "(A",
                                      "A)",
                                      "A; DELETE FROM B",
                                      "A;;",
                                      "(A;)",
                                      "SELECT A -- B",
                                      "SELECT /* A */ B",
                                      "A { B",
                                      "A $ B",
                                      {"SELECT * FROM MUSTKAYIT\0", 24}};
    for (const std::string_view sql : cases) {
        const auto error = test::raised<StoreError>([&] { static_cast<void>(readStatement(sql)); });
        ASSERT_TRUE(error) << sql;
        EXPECT_EQ(error->kind(), StoreError::Kind::Syntax) << sql;
    }
}

std::string bound(const Value& value) {
    switch (value.kind()) {
    case Value::Kind::Null:
        return "NULL";
    case Value::Kind::Whole:
        return std::to_string(value.get<std::int64_t>());
    case Value::Kind::Double:
        return "d" + std::to_string(value.get<double>());
    default:
        return "'" + value.get<std::string>() + "'";
    }
}

std::string boundOrError(const Literal& literal, std::optional<ColumnType> target) {
    std::string text;
    const auto error = test::raised<StoreError>([&] { text = bound(bindLiteral(literal, target)); });
    if (!error) return text;
    return error->kind() == StoreError::Kind::TypeMismatch ? "mismatch" : "other error";
}

TEST(DialectLiteral, IsReadByTheTypeOfItsColumn) {
    constexpr auto number = Literal::Kind::Number, text = Literal::Kind::Text, date = Literal::Kind::Date;
    struct Case {
        Literal literal;
        std::optional<ColumnType> target;
        const char* expected;
    };
    const Case cases[] = {
        {{number, "5"}, std::nullopt, "5"},
        {{number, "1.5"}, std::nullopt, "d1.500000"},
        {{number, "1234500000.00"}, Number, "d1234500000.000000"},
        {{number, "2.5"}, Whole, "2"},
        {{number, "3.5"}, Whole, "4"},
        {{number, "2147483647"}, Whole, "2147483647"},
        {{number, "2147483648"}, Whole, "mismatch"},
        {{number, "-2147483649"}, Whole, "mismatch"},
        {{number, "32767"}, Small, "32767"},
        {{number, "32768"}, Small, "mismatch"},
        {{number, "1e999"}, Number, "mismatch"},
        {{number, "5"}, Boolean, "-1"},
        {{number, "7"}, Text, "'7'"},
        {{number, "1.50"}, Text, "'1,5'"},
        {{number, "45678"}, Date, "'2025-01-21 00:00:00'"},
        {{text, "1.234,56"}, Number, "d1234.560000"},
        {{text, "1.5"}, Number, "d15.000000"},
        {{text, ""}, Number, "mismatch"},
        {{text, "NULL"}, Number, "mismatch"},
        {{text, "NULL"}, Date, "mismatch"},
        {{text, "NULL"}, Text, "'NULL'"},
        {{text, ""}, Date, "mismatch"},
        {{text, "5/4/2026"}, Date, "'2026-04-05 00:00:00'"},
        {{text, "4/25/2026 13:05:06"}, Date, "'2026-04-25 13:05:06'"},
        {{date, "04,05,2026"}, Date, "'2026-04-05 00:00:00'"},
        {{date, " 25,04,2026 23:59:59 "}, Date, "'2026-04-25 23:59:59'"},
        {{date, "04,05,2026"}, std::nullopt, "'2026-04-05 00:00:00'"},
        {{date, "04,05,2026"}, Text, "'05/04/2026'"},
        {{date, "yarın"}, Date, "mismatch"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(boundOrError(each.literal, each.target), each.expected)
            << each.literal.text << " into " << (each.target ? int(*each.target) : -1);
}

TEST(DialectLiteral, AValueOfTheProgramIsStoredByTheTypeOfItsColumn) {
    EXPECT_EQ(bound(bindValue(Null{}, Whole)), "NULL");
    EXPECT_EQ(bound(bindValue(DateTime::of(2026, 1, 2, 3, 4, 5), Date)), "'2026-01-02 03:04:05'");
    EXPECT_EQ(bound(bindValue(DateTime::of(2026, 1, 2), Text)), "'02/01/2026'");
    EXPECT_EQ(bound(bindValue(Currency::ofTenThousandths(125000), Number)), "d12.500000");
    EXPECT_EQ(bound(bindValue(Currency::ofTenThousandths(125000), Text)), "'12,5'");
    EXPECT_EQ(bound(bindValue(true, Small)), "-1");
    EXPECT_EQ(bound(bindValue("\xff", Text)), "'\xEF\xBF\xBD'");
    EXPECT_THROW(static_cast<void>(bindValue("", Whole)), StoreError);
    EXPECT_THROW(static_cast<void>(bindValue("NULL", Date)), StoreError);
}

TEST(DialectLiteral, AStoredDateComesBack) {
    for (const DateTime date : {DateTime::of(100, 1, 1), DateTime::of(2024, 2, 29, 23, 59, 59), DateTime()})
        EXPECT_EQ(dateOfStored(storedDate(date)), date);
    for (const char* text :
         {"", "2026-02-30 00:00:00", "2026-02-20", "2026-02-20 24:00:00", "2026/02/20 00:00:00"})
        EXPECT_EQ(dateOfStored(text), std::nullopt) << text;
}

struct Refusal {
    const char* sql;
    StoreError::Kind kind;
    const char* names; // what the description must hold
};

class DialectRefusal : public testing::Test {
protected:
    void expect(const Refusal& refusal) {
        SCOPED_TRACE(refusal.sql);
        const auto error = test::raised<StoreError>([&] { engine.run(refusal.sql); });
        ASSERT_TRUE(error);
        EXPECT_EQ(error->kind(), refusal.kind) << error->what();
        EXPECT_NE(error->description().find(refusal.names), std::string::npos) << error->what();
    }
    DialectEngine engine;
};

TEST_F(DialectRefusal, WhatIsNoStatement) {
    using enum StoreError::Kind;
    const Refusal cases[] = {
        {"", Syntax, "yarım"},
        {"SELECT", Syntax, ""},
        {"SELECT * FORM MUSTKAYIT", Syntax, "FORM"},
        {"SELECT * FROM MUSTKAYIT WHERE HSTNO = ", Syntax, "yarım"},
        {"SELECT * FROM MUSTKAYIT WHERE HSTNO = '7' 'x'", Syntax, "x"},
        {"SELECT * FROM MUSTKAYIT WHERE HSTNO '7'", Syntax, "7"},
        {"UPDATE ISLEMNOTABLO SET TOPBORC= 12,5 Where ISLEMNO = 1", Syntax, "5"},
        {"INSERT INTO MUSTKAYIT (AD,SOYAD) VALUES ('a')", Syntax, ""},
        {"INSERT INTO MUSTKAYIT (AD) VALUES ()", Syntax, ""},
        {"SELECT ID FROM MUSTKAYIT UNION SELECT ID, AD FROM MUSTKAYIT", Syntax, ""},
        {"SELECT ID FROM MUSTKAYIT WHERE SUM(ID) > 1", Syntax, ""},
        {"SELECT SUM(MAX(ID)) FROM MUSTKAYIT", Syntax, ""},
        {"SELECT Mid(AD) FROM MUSTKAYIT", Syntax, "MID"},
        {"SELECT * FROM MUSTKAYIT WHERE ID IN (SELECT ID, AD FROM MUSTKAYIT)", Syntax, ""},
        {"SELECT * FROM MUSTKAYIT ORDER BY 99", Syntax, "99"},
        {"SELECT * FROM MUSTKAYIT ORDER BY - -1", Syntax, "ORDER BY"},
        {"SELECT COUNT(*) FROM MUSTKAYIT GROUP BY 1", Syntax, "GROUP BY"},
        {"SELECT * FROM URUNAL RIGHT JOIN URUNSAT ON 1=1", Syntax, "RIGHT"},
        {"SELECT AD FROM MUSTKAYIT UNION ALL SELECT AD FROM MUSTKAYIT", Syntax, "ALL"},
        {"SELECT AD FROM MUSTKAYIT GROUP BY AD HAVING AD > 'a'", Syntax, "HAVING"},
        {"DROP TABLE MUSTKAYIT", Syntax, "DROP"},
        {"PRAGMA cipher_version", Syntax, "PRAGMA"},
        {"SELECT * FROM URUNSAT WHERE ODTRH >= ##", Syntax, "##"},
        {"SELECT * FROM YOK", UnknownName, "YOK"},
        {"SELECT YOK FROM MUSTKAYIT", UnknownName, "YOK"},
        {"SELECT * FROM MUSTKAYIT WHERE URUNSAT.ID = 1", UnknownName, "URUNSAT"},
        {"SELECT ISLEMNO FROM URUNAL, URUNSAT", UnknownName, "ISLEMNO"},
        {"SELECT 1 FROM URUNAL, URUNAL", UnknownName, "URUNAL"},
        {"SELECT yok(AD) FROM MUSTKAYIT", UnknownName, "YOK"},
        {"INSERT INTO MUSTKAYIT (YOK) VALUES (1)", UnknownName, "YOK"},
        {"INSERT INTO S_TAKSITODENEN (UNVAN) VALUES ('a')", UnknownName, "S_TAKSITODENEN"},
        {"DELETE FROM sqlite_master", UnknownName, "SQLITE_MASTER"},
        {"select  object_name(constid) as constraint_name From sysforeignkeys where object_name(constid) = "
         "'FK'"
         " order by constraint_name, table_name, referenced_table_name,  keyno",
         UnknownName, "SYSFOREIGNKEYS"},
        {"SELECT * FROM URUNSAT WHERE ISLEMNO = 'abc'", TypeMismatch, "abc"},
        {"SELECT * FROM URUNSAT WHERE ISLEMNO = MUSTNO", TypeMismatch, ""},
        {"UPDATE URUNSAT SET ODTRH = 'NULL'", TypeMismatch, "NULL"},
        {"INSERT INTO URUNSAT (ISLEMNO) VALUES ('')", TypeMismatch, ""},
        {"SELECT SUM(AD) FROM MUSTKAYIT", TypeMismatch, "SUM"},
        {"SELECT * FROM MUSTKAYIT WHERE AD", TypeMismatch, ""},
    };
    for (const Refusal& each : cases)
        expect(each);
}

// What is put into a field ends in a refusal or an answer, and never runs a second statement.
TEST_F(DialectRefusal, HostileTextEndsInAnAnswerOrARefusal) {
    const auto repeated = [](int count, const std::string& open, const std::string& inside,
                             const std::string& close) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += open;
        text += inside;
        for (int i = 0; i < count; ++i)
            text += close;
        return text;
    };
    const std::string from = "SELECT * FROM URUNSAT WHERE ";
    std::vector<std::string> texts;
    for (const int depth : {5, 30, 70, 150, 199, 200, 201, 5000}) {
        texts.push_back(from + repeated(depth, "(", "ID=1", ")"));
        texts.push_back(from + repeated(depth, "NOT ", "ID=1", ""));
        texts.push_back(from + repeated(depth, "", "ID=1", " OR ID=1"));
        texts.push_back(from + "ID = " + repeated(depth, "- ", "ID", ""));
        texts.push_back(from + "MUSTNO = " + repeated(depth, "UCase(", "MUSTNO", ")"));
        texts.push_back(from + repeated(depth, "ID=1 OR ID=2 AND NOT ID = ID+ID*(", "ID", ")"));
        texts.push_back(from + repeated(depth, "ID IN (SELECT ID FROM URUNSAT WHERE ID=1 OR ", "ID=1", ")"));
        texts.push_back(repeated(depth, "SELECT * FROM (", "SELECT ID FROM URUNSAT", ")"));
        texts.push_back("SELECT " + repeated(depth, "IIf(ISLEMNO=1,", "ID", ",2)") + " FROM URUNSAT");
    }
    texts.push_back(from + "MUSTNO = '" + std::string(65536, 'x') + "'");
    texts.push_back(from + "ID IN (" + repeated(20000, "1,", "2", "") + ")");
    texts.push_back(std::string(65536, '('));
    texts.push_back("SELECT " + std::string(65536, 'A') + " FROM URUNSAT");
    texts.push_back("\xff\xfe\x80 \xc3");
    for (const std::string& text : texts) {
        const auto error = test::raised<StoreError>([&] { engine.run(text); });
        EXPECT_LT(error ? error->description().size() : 0, 400u);
    }
}

TEST_F(DialectRefusal, AnApostropheInAValueStaysInTheValue) {
    engine.run("INSERT INTO MUSTKAYIT (HSTNO,AD) VALUES ('1','O''Neil; DELETE FROM MUSTKAYIT --')");
    EXPECT_EQ(engine.run("SELECT AD FROM MUSTKAYIT"), Rows{"O'Neil; DELETE FROM MUSTKAYIT --"});
    expect({"SELECT * FROM MUSTKAYIT WHERE AD = 'O'Neil'", StoreError::Kind::Syntax, ""});
    EXPECT_EQ(engine.run("SELECT COUNT(*) FROM MUSTKAYIT"), Rows{"1"});
}

} // namespace
} // namespace veldona::store
