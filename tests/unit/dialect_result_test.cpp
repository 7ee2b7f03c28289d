// What statements and functions answer and write, asked of the engine itself; and the alphabet.
#include <gtest/gtest.h>

#include "dialect_engine.h"
#include "platform/store/engine/alphabet.h"
#include "platform/store/engine/sqlcipher/definitionsql.h"

namespace veldona::store {
namespace {

class DialectResult : public testing::Test {
protected:
    DialectResult() {
        for (const char* row : {"'1','İsmail','Işık','0212','0555'", "'2','ismet','Ilgaz',NULL,'0556'",
                                "'G3','Sistem','Hesabı','',''", "'10','Çiğdem','Cemal','0216',NULL"})
            engine.run(std::string("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD,EVTEL,GSM) VALUES (") + row + ")");
        for (const char* row : {"'1',5,#11,05,2026#,2500000,1", "'1',5,#12,05,2026#,1000000,0",
                                "'2',6,#11,05,2026 10:30:00#,3000000,0", "'2',7,NULL,-500000,NULL"})
            engine.run(std::string("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR,PESINAT) VALUES (") +
                       row + ")");
    }

    void expect(const std::string& sql, const Rows& rows) { EXPECT_EQ(engine.run(sql), rows) << sql; }

    std::vector<std::string> names(std::string_view sql) {
        std::vector<std::string> names;
        for (const ResultColumn& column : engine.plan(sql).columns)
            names.push_back(column.name);
        return names;
    }

    DialectEngine engine;
};

TEST_F(DialectResult, TextIsComparedByTheTurkishAlphabetWithoutCase) {
    expect("SELECT ID FROM MUSTKAYIT WHERE AD = 'İSMAİL'", {"1"});
    expect("SELECT ID FROM MUSTKAYIT WHERE AD = 'ISMAIL'", {});
    expect("SELECT ID FROM MUSTKAYIT WHERE SOYAD = 'ışık'", {"1"});
    expect("SELECT ID FROM MUSTKAYIT WHERE AD & '' = 'ismaİl'", {"1"});
    expect("SELECT ID FROM MUSTKAYIT WHERE 'İSMET' = AD", {"2"});
    expect("SELECT ID FROM MUSTKAYIT WHERE Mid(AD,1) IN ('İSMET','çiğdem')", {"2", "4"});
    expect("SELECT ID FROM MUSTKAYIT WHERE AD BETWEEN 'ı' AND 'İSMB'", {"1"});
    expect("SELECT ID FROM MUSTKAYIT WHERE Mid(AD,1) < 'D'", {"4"});
    expect("SELECT AD FROM MUSTKAYIT ORDER BY AD", {"Çiğdem", "İsmail", "ismet", "Sistem"});
    expect("SELECT SOYAD FROM MUSTKAYIT ORDER BY Mid(SOYAD,1) DESC", {"Işık", "Ilgaz", "Hesabı", "Cemal"});
    expect("SELECT MAX(AD), MIN(AD & '') FROM MUSTKAYIT WHERE HSTNO <> 'g3'", {"ismet|Çiğdem"});
}

TEST_F(DialectResult, LikeKnowsTwoSignsAndNoCase) {
    const std::pair<const char*, const char*> cases[] = {
        {"'i%'", "1,2"},    {"'İS%'", "1,2"}, {"'I%'", ""},     {"'%EM'", "3,4"}, {"'_smet'", "2"},
        {"'%'", "1,2,3,4"}, {"''", ""},       {"'ism__'", "2"}, {"'ç_ğ%'", "4"},  {"'*i*'", ""},
        {"'%m%e%'", "2"},   {"'is?et'", ""},  {"'ismetx'", ""}, {"'isme'", ""},   {"'%%t'", "2"},
    };
    for (const auto& [pattern, expected] : cases) {
        std::string found;
        for (const std::string& id :
             engine.run(std::string("SELECT ID FROM MUSTKAYIT WHERE AD like ") + pattern))
            found += (found.empty() ? "" : ",") + id;
        EXPECT_EQ(found, expected) << pattern;
    }
    expect("SELECT ID FROM MUSTKAYIT WHERE AD NOT LIKE '%i%'", {});
    expect("SELECT ID FROM MUSTKAYIT WHERE SOYAD & AD LIKE SOYAD & '_%'", {"1", "2", "3", "4"});
    expect("SELECT ID FROM MUSTKAYIT WHERE EVTEL LIKE '02%' OR GSM IS NULL", {"1", "4"});
    expect("SELECT ID FROM URUNSAT WHERE ODTRH LIKE '05/11/%'", {"1", "3"});
    expect("SELECT ID FROM URUNSAT WHERE ISLEMNO LIKE '5%'", {"1", "2"});
}

TEST_F(DialectResult, DatesAreComparedAsTheyAreStored) {
    expect("SELECT ID FROM URUNSAT WHERE ODTRH = #11,05,2026#", {"1"});
    expect("SELECT ID FROM URUNSAT WHERE ODTRH = '5.11.2026'", {"1"});
    expect("SELECT ID FROM URUNSAT WHERE ODTRH >= #11,05,2026# AND ODTRH < #11,06,2026#", {"1", "3"});
    expect("SELECT ID FROM URUNSAT WHERE ODTRH <= #11,05,2026 10:29:59#", {"1"});
    expect("SELECT ID FROM URUNSAT WHERE #12,05,2026# <= ODTRH", {"2"});
    expect("SELECT ID FROM URUNSAT WHERE ODTRH < Now()", {"1", "3"});
    expect("SELECT ID FROM URUNSAT WHERE ODTRH BETWEEN #11,05,2026 00:00:01# AND Date()+30", {"2", "3"});
    expect("SELECT ID FROM URUNSAT WHERE ODTRH + 1 = #11,06,2026#", {"1"});
    expect("SELECT ODTRH - #11,04,2026# FROM URUNSAT WHERE ID = 1", {"1.0"});
    expect("SELECT ID FROM URUNSAT WHERE Mid(ODTRH,4,2) = '12'", {"2"});
    expect("SELECT ID FROM URUNSAT WHERE ODTRH = MUSTNO & ''", {});
    expect("SELECT ID FROM URUNSAT WHERE ODTRH = '05/11' & '/2026'", {"1"});
    expect("SELECT 'Vade ' & ODTRH & '.' FROM URUNSAT WHERE ISLEMNO > 5",
           {"Vade 05/11/2026 10:30:00.", "Vade ."});
    expect("SELECT MIN(ODTRH), MAX(ODTRH) FROM URUNSAT", {"2026-11-05 00:00:00|2026-12-05 00:00:00"});
}

TEST_F(DialectResult, TypesDirectWhatAnOperatorDoes) {
    expect("SELECT (EVTEL+'@'+GSM) FROM MUSTKAYIT", {"0212@0555", "NULL", "@", "NULL"});
    expect("SELECT EVTEL & '@' & GSM FROM MUSTKAYIT WHERE ID IN (2,4)", {"@0556", "0216@"});
    expect("SELECT ISLEMNO + 1, ISLEMNO & 1, ISLEMNO + '1' FROM URUNSAT WHERE ID=1", {"6|51|6.0"});
    expect("SELECT ISLEMNO/2, -ISLEMNO, 2+3*4-6/2, (2+3)*4, 2-(3-4) FROM URUNSAT WHERE ID=1",
           {"2.5|-5|11.0|20|3"});
    expect("SELECT ODMIKTAR/1000000 & ' YTL' FROM URUNSAT", {"2,5 YTL", "1 YTL", "3 YTL", "-0,5 YTL"});
    expect("SELECT AD FROM MUSTKAYIT WHERE HSTNO = 10", {"Çiğdem"});
    expect("SELECT ID FROM URUNSAT WHERE ISLEMNO = '5' AND ODMIKTAR > '1.000.000'", {"1"});
    expect("SELECT ID FROM URUNSAT WHERE ISLEMNO = 5.5", {});
    expect("SELECT ID FROM URUNSAT WHERE NOT (PESINAT = 1 OR ISLEMNO = 6)", {"2"});
    expect("SELECT ID FROM URUNSAT WHERE PESINAT<>1", {"2", "3"});
    expect("SELECT ISLEMNO = 5, PESINAT IS NULL, TRUE FROM URUNSAT WHERE ID>2", {"0|0|-1", "0|-1|-1"});
    EXPECT_THROW(engine.run("SELECT 1 / PESINAT FROM URUNSAT"), StoreError);
    EXPECT_THROW(engine.run("SELECT max(Cdbl(HSTNO)) FROM MUSTKAYIT"), StoreError);
    expect("SELECT max(Cdbl(val(HSTNO))) FROM MUSTKAYIT", {"10.0"});
    expect("SELECT max(Cdbl(HSTNO)) FROM MUSTKAYIT WHERE ID > 100", {"NULL"});
}

TEST_F(DialectResult, EqualRowsComeByIdAndGroupsByTheirKeys) {
    engine.run("UPDATE URUNSAT SET ODTRH = #11,05,2026# WHERE ID < 4");
    expect("SELECT ID FROM URUNSAT ORDER BY ODTRH DESC", {"1", "2", "3", "4"});
    expect("SELECT ID FROM URUNSAT ORDER BY ODTRH", {"4", "1", "2", "3"});
    expect("SELECT URUNSAT.ID FROM MUSTKAYIT, URUNSAT WHERE MUSTNO = HSTNO ORDER BY MUSTKAYIT.GSM DESC",
           {"3", "4", "1", "2"});
    expect("SELECT ISLEMNO FROM URUNSAT WHERE MUSTNO IN ('2','1')", {"5", "5", "6", "7"});
    expect("SELECT DISTINCT MUSTNO FROM URUNSAT ORDER BY MUSTNO DESC", {"2", "1"});
    expect("SELECT DISTINCT ISLEMNO, MUSTNO FROM URUNSAT WHERE ODMIKTAR <> 7", {"5|1", "6|2", "7|2"});
    expect("SELECT MUSTNO, SUM(ODMIKTAR) FROM URUNSAT GROUP BY MUSTNO", {"1|3500000.0", "2|2500000.0"});
    expect("SELECT COUNT(ODTRH) FROM URUNSAT", {"3"});
    expect("SELECT SUM(ODMIKTAR) FROM URUNSAT WHERE ID > 100", {"NULL"});
    expect("SELECT TOP 2 ID FROM URUNSAT ORDER BY ODMIKTAR DESC", {"3", "1"});
    expect("SELECT ISLEMNO AS N FROM URUNSAT ORDER BY N DESC, 1", {"7", "6", "5", "5"});
    expect(
        "SELECT TOP 1 ID FROM URUNSAT UNION SELECT TOP 2 ID FROM MUSTKAYIT UNION SELECT TOP 1 COUNT(*) FROM "
        "GRUPLAR",
        {"0", "1", "2"});
    engine.run("UPDATE MUSTKAYIT SET AD = 'ALİ' WHERE ID = 1");
    engine.run("UPDATE MUSTKAYIT SET AD = 'Ali' WHERE ID = 2");
    expect("SELECT COUNT(*) FROM MUSTKAYIT GROUP BY AD ORDER BY COUNT(*) DESC", {"2", "1", "1"});
    EXPECT_EQ(engine.run("SELECT DISTINCT AD & '' FROM MUSTKAYIT").size(), 3u);
    EXPECT_EQ(engine.run("SELECT AD & '' FROM MUSTKAYIT UNION SELECT 'aLİ' FROM MUSTKAYIT").size(), 3u);
}

TEST_F(DialectResult, JoinsMayStandInParentheses) {
    expect("SELECT AD, ISLEMNO FROM MUSTKAYIT LEFT JOIN URUNSAT ON HSTNO = MUSTNO WHERE MUSTKAYIT.ID > 2 "
           "ORDER BY AD",
           {"Çiğdem|NULL", "Sistem|NULL"});
    expect("SELECT AD, U.ODMIKTAR FROM (URUNSAT AS U INNER JOIN MUSTKAYIT M ON M.HSTNO = U.MUSTNO) LEFT JOIN "
           "URUNAL ON "
           "URUNAL.ISLEMNO = U.ISLEMNO ORDER BY U.ID",
           {"İsmail|2500000.0", "İsmail|1000000.0", "ismet|3000000.0", "ismet|-500000.0"});
    expect("SELECT AD, U.ODMIKTAR FROM URUNAL INNER JOIN (URUNSAT AS U LEFT JOIN MUSTKAYIT M ON M.HSTNO = "
           "U.MUSTNO) ON "
           "URUNAL.ISLEMNO = U.ISLEMNO",
           {});
    expect("SELECT AD, T FROM (SELECT MUSTNO, SUM(ODMIKTAR) AS T FROM URUNSAT GROUP BY MUSTNO) AS S INNER "
           "JOIN MUSTKAYIT "
           "ON S.MUSTNO = MUSTKAYIT.HSTNO ORDER BY T",
           {"ismet|2500000.0", "İsmail|3500000.0"});
    expect(
        "SELECT AD FROM MUSTKAYIT WHERE HSTNO IN (SELECT DISTINCT MUSTNO FROM URUNSAT WHERE URUNSAT.MUSTNO = "
        "MUSTKAYIT.HSTNO AND ODMIKTAR < 0)",
        {"ismet"});
    expect("SELECT AD FROM MUSTKAYIT WHERE HSTNO NOT IN ('G3','G4','TI') AND HSTNO in (SELECT DISTINCT HSTNO "
           " FROM "
           "MUSTKAYIT WHERE SOYAD like 'ı%') ORDER BY AD,SOYAD",
           {"İsmail", "ismet"});
}

TEST_F(DialectResult, ColumnsAreNamedAndTyped) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(names("SELECT (islemno), SUM(ODMIKTAR), 1, ODTRH AS G_Tarih, ID x FROM URUNSAT"),
              (Names{"ISLEMNO", "Expr1000", "Expr1001", "G_Tarih", "X"}));
    EXPECT_EQ(names("SELECT T_KASA_TANITIM.* FROM T_KASA_TANITIM, URUNSAT"),
              (Names{"ID", "KASA_NO", "KASA_ADI"}));
    EXPECT_EQ(names("SELECT * FROM GRUPLAR, T_KASA_TANITIM K"),
              (Names{"GRUPLAR.ID", "GRUP_ADI", "GRUP_KOD", "K.ID", "KASA_NO", "KASA_ADI"}));
    EXPECT_EQ(names("SELECT @@identity FROM URUNSAT"), (Names{"Expr1000"}));

    using enum ColumnType;
    const Plan plan =
        engine.plan("SELECT ID, MUSTNO, ODTRH, ODMIKTAR/2, ISLEMNO*2, SUM(ISLEMNO), COUNT(*), MAX(ODTRH), "
                    "Round(ODMIKTAR,2), Mid(ODTRH,4,2), NULL, IIf(ID=1,MUSTNO,'x'), MAX(Cdbl(ISLEMNO)), "
                    "ODTRH+1, ID=1 FROM URUNSAT GROUP BY ID");
    const std::optional<ColumnType> expected[] = {Counter,      Text,  Date,   Number, Whole,
                                                  Number,       Whole, Date,   Number, Text,
                                                  std::nullopt, Text,  Number, Date,   Boolean};
    ASSERT_EQ(plan.columns.size(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(plan.columns[i].type, expected[i]) << i;
    EXPECT_EQ(engine.plan("SELECT UNVAN FROM S_TAKSITODENEN WHERE KASA_ID IN (SELECT ID FROM T_KASA_TANITIM)")
                  .baseTables,
              (Names{"MUSTKAYIT", "TAKSITODENEN", "T_KASA_TANITIM"}));
}

TEST_F(DialectResult, WritesConvertWhatTheyStore) {
    engine.run("INSERT INTO ISLEMNOTABLO (MUSTNO, ISLEMNO, TOPBORC, TRH, TESLIMAT_TRH, TESLIM_EDILDI, "
               "ACIKLAMA) VALUES "
               "(12, '1.005', 2+3, '5/11/2026 08:09:10', Date(), 1, 'x' & 5)");
    expect("SELECT MUSTNO,ISLEMNO,TOPBORC,TRH,TESLIMAT_TRH,TESLIM_EDILDI,ACIKLAMA FROM ISLEMNOTABLO",
           {"12|1005|5.0|2026-11-05 08:09:10|2026-11-22 00:00:00|1|x5"});
    engine.run("UPDATE islemnotablo SET islemno = 7/2, TRH = TRH + 1, MUSTNO = TRH, KONTROL_NE_ZAMAN = "
               "Now(), ACIKLAMA=NULL");
    expect("SELECT ISLEMNO,TRH,MUSTNO,KONTROL_NE_ZAMAN,ACIKLAMA FROM ISLEMNOTABLO",
           {"4|2026-11-06 08:09:10|05/11/2026 08:09:10|2026-11-22 10:30:00|NULL"});
    EXPECT_THROW(engine.run("UPDATE ISLEMNOTABLO SET TESLIM_EDILDI = ISLEMNO * 100000"), StoreError);
    EXPECT_THROW(engine.run("UPDATE ISLEMNOTABLO SET TRH = ACIKLAMA & 'yarın'"), StoreError);
    engine.run("INSERT INTO BEKLENENODM (MUSTNO, ODTRH, KALAN) SELECT MUSTNO, MAX(ODTRH), "
               "SUM(ODMIKTAR)/1000000 FROM URUNSAT "
               "GROUP BY MUSTNO");
    expect("SELECT * FROM BEKLENENODM",
           {"1|1|NULL|2026-12-05 00:00:00|3.5", "2|2|NULL|2026-11-05 10:30:00|2.5"});
    engine.run("Delete * from BEKLENENODM where KALAN > 3");
    engine.run("Delete from BEKLENENODM WHERE NOT (ODTRH >= #01,01,2026# And ODTRH <= #12,31,2026#)");
    expect("SELECT MUSTNO FROM BEKLENENODM", {"2"});
    const Plan plan = engine.plan("update urunsat set ODMIKTAR = -5 where id = 3");
    EXPECT_EQ(plan.kind, Plan::Kind::Update);
    EXPECT_EQ(plan.table, "URUNSAT");
    EXPECT_EQ(plan.targets, (std::vector<std::optional<ColumnType>>{ColumnType::Number, ColumnType::Number}));
}

TEST_F(DialectResult, SavedQueriesAreReadLikeTables) {
    engine.run("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('1',5,'5/11/2026',2500000)");
    engine.run(
        "INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('99',6,'6/11/2026 10:00:00',1)");
    expect("SELECT * FROM S_TAKSITODENEN ORDER BY ODTRH DESC",
           {" |2026-11-06 10:00:00|1.0|NULL|NULL", "İsmail Işık|2026-11-05 00:00:00|2500000.0|NULL|NULL"});
    expect("SELECT Mid(ODTRH,4,2) AS GURUP, round(ODMIKTAR/1000000,2) FROM S_TAKSITODENEN WHERE UNVAN = "
           "'İSMAİL IŞIK'",
           {"11|2.5"});
    EXPECT_EQ(engine.plan("SELECT ODTRH FROM S_TAKSITODENEN").columns.front().type, ColumnType::Date);
}

TEST_F(DialectResult, NarrowingLimitsASelectWithoutChangingItsOrder) {
    const std::vector<std::string> columns = {"MUSTNO", "ISLEMNO"};
    const char* all = "Select * From URUNSAT Order By ODTRH ASC";
    EXPECT_EQ(engine.plan(all, columns).narrowTypes,
              (std::vector<ColumnType>{ColumnType::Text, ColumnType::Number}));
    EXPECT_EQ(engine.run("SELECT ID FROM URUNSAT ORDER BY ODTRH DESC", columns, {"1", "5"}),
              (Rows{"2", "1"}));
    EXPECT_EQ(engine.run("SELECT ID FROM URUNSAT", columns, {"1", "5,5"}), Rows{});
    EXPECT_EQ(engine.run("SELECT ID FROM URUNSAT WHERE ID=1 OR ID=3", {"mustno"}, {"2"}), Rows{"3"});
    EXPECT_THROW(static_cast<void>(engine.plan("SELECT COUNT(*) FROM URUNSAT", columns)), StoreError);
    EXPECT_THROW(static_cast<void>(engine.plan("DELETE FROM URUNSAT", columns)), StoreError);
    EXPECT_THROW(static_cast<void>(engine.plan(all, {"YOK"})), StoreError);
}

class DialectFunction : public testing::Test {
protected:
    // The value of an expression, or "mismatch: " and what was said.
    std::string of(const std::string& expression) {
        try {
            return engine.run("SELECT " + expression).at(0);
        } catch (const StoreError& error) {
            return (error.kind() == StoreError::Kind::TypeMismatch ? "mismatch: " : "other: ") +
                   error.description();
        }
    }
    DialectEngine engine;
};

TEST_F(DialectFunction, AnswersAsThePlatformDoes) {
    const std::pair<const char*, const char*> cases[] = {
        {"Mid('çığır',2,3)", "ığı"},
        {"Mid('çığır',4)", "ır"},
        {"Mid('ab',9,1)", ""},
        {"Len('ığdır')", "5"},
        {"Len(12.5)", "4"},
        {"UCase('iıçö')", "İIÇÖ"},
        {"Val('1.234,56')", "1.234"},
        {"Val(NULL)", "0.0"},
        {"Cdbl('1.234,56')", "1234.56"},
        {"Cdbl(NULL)", "NULL"},
        {"IIf(1=2,'a','b')", "b"},
        {"IIf(NULL,1,2)", "2"},
        {"Nz(NULL,5)", "5"},
        {"Nz(Date(),'yok')", "22/11/2026"},
        {"Round(2.5)", "2.0"},
        {"Round(0.125,2)", "0.12"},
        {"Now()", "2026-11-22 10:30:00"},
        {"Date()", "2026-11-22 00:00:00"},
        {"#11,22,2026# + 1", "2026-11-23 00:00:00"},
        {"#11,22,2026# - 1", "2026-11-21 00:00:00"},
        {"'a' & NULL & 'b'", "ab"},
        {"'a' + NULL", "NULL"},
        {"Mid(NULL,1)", "NULL"},
        {"1000 / 3 & ''", "333,333333333333"},
    };
    for (const auto& [expression, expected] : cases)
        EXPECT_EQ(of(expression), expected) << expression;
}

TEST_F(DialectFunction, FailsWithAMarkedTurkishSentence) {
    for (const char* expression : {"Cdbl(Mid('G3',1))", "Cdbl(Mid('',1))", "5 / (3 - 3)", "5 / 0",
                                   "Mid('a',0)", "Mid('a',1,-1)", "Now() + 99999999", "'x' + 1"})
        EXPECT_TRUE(of(expression).starts_with("mismatch: ")) << expression << ": " << of(expression);
    for (const char* expression : {"Cdbl(Mid('G3',1))", "Cdbl('G3')"})
        EXPECT_EQ(of(expression), "mismatch: Veri türü uyuşmuyor: \"G3\" sayı olarak okunamadı.");
}

// Neighbours that the engine's own comparison would set wrong.
TEST_F(DialectFunction, TheAlphabetIsTheTurkishOne) {
    const char* rising[] = {"",  "1", "10", "9", "a", "B", "c", "Ç", "d", "g", "Ğ", "h", "ı",
                            "i", "J", "o",  "Ö", "p", "S", "ş", "t", "u", "Ü", "v", "z"};
    for (std::size_t i = 0; i + 1 < std::size(rising); ++i)
        EXPECT_EQ(of(std::string("IIf('") + rising[i] + "' < '" + rising[i + 1] + "',1,0)"), "1")
            << rising[i] << " before " << rising[i + 1];
    for (const auto& [a, b] : {std::pair{"ILGIN", "ılgın"}, {"İNCİ", "inci"}, {"ŞÖÇĞÜ", "şöçğü"}, {"7", "7"}})
        EXPECT_EQ(of(std::string("IIf('") + a + "' = '" + b + "',1,0)"), "1") << a;
    for (const auto& [a, b] : {std::pair{"I", "i"}, {"07", "7"}, {"a", "a "}, {"kamil", "kâmil"}})
        EXPECT_EQ(of(std::string("IIf('") + a + "' = '" + b + "',1,0)"), "0") << a;
    EXPECT_NE(Alphabet::turkish().version(), "");
}

// Books in shops hold these very words; written otherwise, they would be refused as a stranger's.
TEST(DialectDefinition, SavedQueriesAreWrittenAsBooksHoldThem) {
    const std::vector<std::string> all = definitionStatements(schema::tables(), schema::savedQueries());
    EXPECT_EQ(all[all.size() - 2],
              R"(CREATE VIEW "S_TAKSITODENEN" AS SELECT (ifnull("MUSTKAYIT"."AD", '') || ' ' || )"
              R"(ifnull("MUSTKAYIT"."SOYAD", '')) COLLATE TURKISH AS "UNVAN", "TAKSITODENEN"."ODTRH" AS )"
              R"("ODTRH", "TAKSITODENEN"."ODMIKTAR" AS "ODMIKTAR", "TAKSITODENEN"."KONTROL_KIM" AS )"
              R"("KONTROL_KIM", "TAKSITODENEN"."KASA_ID" AS "KASA_ID" FROM "TAKSITODENEN" LEFT JOIN )"
              R"("MUSTKAYIT" ON "TAKSITODENEN"."MUSTNO" = "MUSTKAYIT"."HSTNO")");
    EXPECT_EQ(all.back(),
              R"(CREATE VIEW "S_T_KASA_HAREKETLERI" AS SELECT (ifnull("MUSTKAYIT"."AD", '') || ' ' || )"
              R"(ifnull("MUSTKAYIT"."SOYAD", '')) COLLATE TURKISH AS "UNVAN", )"
              R"("T_KASA_HAREKETLERI"."TARIH" AS "TARIH", "T_KASA_HAREKETLERI"."ALACAK_TUTAR" AS )"
              R"("ALACAK_TUTAR", "T_KASA_HAREKETLERI"."ISLEM_TUR" AS "ISLEM_TUR", )"
              R"("T_KASA_HAREKETLERI"."ACIKLAMA" AS "ACIKLAMA", "T_KASA_HAREKETLERI"."KONTROL_KIM" AS )"
              R"("KONTROL_KIM", "T_KASA_HAREKETLERI"."KASA_ID" AS "KASA_ID", )"
              R"("T_KASA_HAREKETLERI"."ISLEM_ID" AS "ISLEM_ID" FROM "T_KASA_HAREKETLERI" LEFT JOIN )"
              R"("MUSTKAYIT" ON "T_KASA_HAREKETLERI"."CARI_ID" = "MUSTKAYIT"."ID")");
}

TEST(DialectDefinition, ColumnsReadBackAsTheyWereDeclared) {
    using enum ColumnType;
    const TableDef table{"T",
                         {{"ID", Counter},
                          {"A", Whole},
                          {"B", Small},
                          {"C", Number},
                          {"D", Text},
                          {"E", Memo},
                          {"F", Date},
                          {"G", Boolean}},
                         {{"A", "D"}}};
    DialectEngine engine;
    const auto statements = definitionStatements(
        {table}, {{"S", "SELECT D & 'x?' AS DX, F, COUNT(*) AS N FROM T WHERE A=5 GROUP BY D, F"}});
    for (const std::string& sql : statements)
        engine.engine(sql);
    EXPECT_EQ(engine.engine("SELECT name FROM sqlite_master WHERE tbl_name='T' AND type='index'"),
              Rows{"T_A_D"});
    // What is written keeps its kind, whatever it looks like.
    engine.engine("INSERT INTO T (A,B,C,D,E,F,G) VALUES (5,2,3,'007','1e5','2026-01-01 00:00:00',-1)");
    EXPECT_EQ(engine.engine("SELECT typeof(A),typeof(C),D,E,typeof(F),G FROM T"),
              Rows{"integer|real|007|1e5|text|-1"});
    EXPECT_EQ(engine.engine("SELECT * FROM S"), Rows{"007x?|2026-01-01 00:00:00|1"});
    const std::pair<const char*, std::optional<ColumnType>> cases[] = {
        {"INTEGER", Whole},   {"SMALLINT", Small}, {"DOUBLE", Number},
        {"TEXT", Text},       {"MEMOTEXT", Memo},  {"DATETIMETEXT", Date},
        {"BOOLEAN", Boolean}, {"", std::nullopt},  {"BLOB", std::nullopt}};
    for (const auto& [text, type] : cases)
        EXPECT_EQ(columnTypeOfDeclaration(text), type) << text;
}

} // namespace
} // namespace veldona::store
