// The functions of the dialect and its alphabet.
#include <gtest/gtest.h>

#include "dialect_engine.h"
#include "platform/store/engine/alphabet.h"
#include "platform/store/engine/sqlcipher/definitionsql.h"

namespace veldona::store {
namespace {

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
