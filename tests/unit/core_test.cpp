// The data access layer and the conventions of money and dates, on a real encrypted database.
#include <gtest/gtest.h>

#include "core/money.h"
#include "core/reporting.h"
#include "core/session.h"
#include "core/startup.h"
#include "platform/report/compose.h"
#include "platform/report/layoutreader.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/store/faces/adodb.h"
#include "tests/support/raised.h"
#include "tests/support/shop.h"

namespace veldona {

namespace {

using Rows = std::vector<std::string>;

class Core : public testing::Test {
protected:
    test::Shop shop;
    Session& session = shop.session;

    KayitYapisi customer(const std::string& hstno) {
        KayitYapisi rec;
        rec.Islem = KayitYapisi::Add;
        rec.Tablo = "MUSTKAYIT";
        rec.add("HSTNO", hstno);
        return rec;
    }
};

TEST(DegerYaz, ByFamily) {
    struct Case {
        std::int32_t tip;
        Value value;
        const char* written;
    };
    const Case cases[] = {
        {5, "1,5", "1.5"},
        {5, "1.5", "15"}, // the dot is a group sign
        {5, "1.234,50", "1234.50"},
        {5, "1.234.500.000,00", "1234500000.00"},
        {3, " 12 ", "12"},
        {3, "True", "1"},
        {3, "False", "0"},
        {3, "null", "NULL"},
        {3, "", ""},
        {5, 2.5, "2.5"},
        {5, Currency::ofTenThousandths(125000), "12.5"},
        {11, true, "-1"},
        {11, false, "0"},
        {202, "  Ali  ", "'Ali'"},
        {203, "  Ali  ", "'  Ali  '"},
        {202, "O'Neil \"x\"", "'O`Neil `x`'"},
        {202, "Null", "NULL"},
        {202, Null{}, "NULL"},
        {135, "", "NULL"},
        {135, "00:00:00", "NULL"},
        {135, "22/11/2026", "'22/11/2026'"},
        {135, DateTime::of(2026, 11, 2, 9, 5, 7), "'02/11/2026 09:05:07'"},
        {205, "x", "NULL"},
    };
    for (const Case& c : cases) {
        Value value = c.value;
        EXPECT_EQ(DegerYaz(c.tip, value), c.written) << "type " << c.tip;
    }
    Value text = "a'b";
    EXPECT_EQ(DegerYaz(202, text), "'a`b'");
    EXPECT_EQ(text, Value("a`b")) << "the value itself is changed";
    Value any = "x";
    const auto error = test::raised<RuntimeError>([&] { static_cast<void>(DegerYaz(9, any)); });
    ASSERT_TRUE(error) << "an unknown type must fail";
    EXPECT_EQ(error->number(), 18172);
    EXPECT_EQ(error->description(), "Value='9'");
}

TEST_F(Core, KayitYazTellsWhatFailedAndWritesNothing) {
    KayitYapisi empty = customer("1");
    empty.add("GURUP_ID", ""); // an empty value for a number leaves a hole in the statement
    EXPECT_FALSE(KayitYaz(session, empty));
    ASSERT_EQ(shop.dialogs.said.size(), 2u); // the statement runner's, and the record's
    const auto& [text, title, number, isPrompt] = shop.dialogs.said[1];
    EXPECT_EQ(title, "vorelHata");
    EXPECT_EQ(text.substr(text.find('\n')), "\nSQL: INSERT INTO MUSTKAYIT (HSTNO,GURUP_ID ) VALUES ('1',)");
    EXPECT_TRUE(shop.dialogs.said[0].text.ends_with(" " + text.substr(0, text.find('\n')))) << text;
    shop.dialogs.said.clear();

    KayitYapisi unknown = customer("1");
    unknown.add("YOK", "x");
    EXPECT_FALSE(KayitYaz(session, unknown));
    ASSERT_EQ(shop.dialogs.said.size(), 1u);
    EXPECT_EQ(shop.dialogs.said[0].text.substr(0, 4), "3265");
    EXPECT_TRUE(shop.rows("SELECT * FROM MUSTKAYIT").empty());
}

TEST_F(Core, SonKimlikWithoutAnyCounterIsMinusOne) {
    shop.session.gBaglanti.reset(); // the delivered rows were counted on the connection that goes with it
    Baglan(session);
    EXPECT_EQ(SonKimlik(session, "MUSTKAYIT"), -1);
}

TEST_F(Core, StokGuncelleMovesTotalsUnevenly) {
    struct Case {
        StockMovement hareket;
        StockDirection yon;
        const char* totals;
    };
    using enum StockMovement;
    using enum StockDirection;
    const Case cases[] = {{Alis, In, "103|50|53"},  {Alis, Out, "97|50|47"},     {Sale, In, "100|53|47"},
                          {Sale, Out, "100|53|47"}, {TakeBack, In, "100|47|53"}, {TakeBack, Out, "97|50|47"}};
    for (const Case& c : cases) {
        shop.run("UPDATE URUNTANITIM SET TOPLAM_ALINAN=100,TOPLAM_SATILAN=50,KALAN=50");
        EXPECT_TRUE(StokGuncelle(session, "1", 3, c.hareket, c.yon));
        EXPECT_EQ(shop.rows("SELECT TOPLAM_ALINAN,TOPLAM_SATILAN,KALAN FROM URUNTANITIM"), Rows{c.totals})
            << static_cast<int>(c.hareket) << " " << static_cast<int>(c.yon);
    }
    EXPECT_FALSE(StokGuncelle(session, "yok", 1, Sale, In));
    shop.run("UPDATE URUNTANITIM SET TOPLAM_SATILAN=2147483647");
    EXPECT_THROW(StokGuncelle(session, "1", 1, Sale, In), RuntimeError);
}

TEST_F(Core, LookUpsAndNumbers) {
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD) VALUES ('9','Ali')");
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD) VALUES ('10','Can')");
    EXPECT_EQ(YeniNo(session, "HSTNO", "MUSTKAYIT", "", FieldKind::Number), "11") << "by number, not by text";
    EXPECT_EQ(AlanDegeriOku(session, "AD", "MUSTKAYIT", "HSTNO", "10"), Value("Can"));
    EXPECT_EQ(KayitDegeri(session, "ID", "MUSTKAYIT", "HSTNO", "yok"), Value(true));

    EXPECT_EQ(TekilMi(session, "MUSTKAYIT", {{"HSTNO", "9", FieldKind::Text}}), false);
    EXPECT_EQ(TekilMi(session, "MUSTKAYIT", {{"HSTNO", "9", FieldKind::Text}}, "ID", "1"), true) << "its own";
    EXPECT_EQ(
        TekilMi(session, "MUSTKAYIT", {{"HSTNO", "9", FieldKind::Text}, {"AD", "Can", FieldKind::Text}}),
        true);
    EXPECT_TRUE(shop.said().empty());
    EXPECT_EQ(TekilMi(session, "MUSTKAYIT", {{"YOK", "9", FieldKind::Text}}), std::nullopt);
    ASSERT_EQ(shop.dialogs.said.size(), 1u);
    EXPECT_EQ(shop.dialogs.said[0].text.find("Tekil İndex Kontrolü Yapılırken "), 0u);

    shop.run("INSERT INTO MUSTKAYIT (HSTNO) VALUES ('G3')");
    EXPECT_EQ(YeniNo(session, "HSTNO", "MUSTKAYIT", "", FieldKind::Text), "11");
}

TEST_F(Core, TextsOfALayoutShowTheColumnsThatTheirNamesSay) {
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD) VALUES ('7','Ayşe')");
    RecordsetPtr rs;
    KayitSetiAc(session, rs, "SELECT HSTNO,AD FROM MUSTKAYIT", adodb::CursorLocation::Client);
    std::string labels;
    for (const char* name : {"vAlan2", "sBaslik2", "vAlanHSTNO", "vAlan3", "sBaslikad"})
        labels += "<label x='" + std::to_string(labels.size() / 4) + "' y='0' width='20' name='" + name +
                  "' text='-'/>";
    report::Layout layout =
        report::parseLayout("<report title='t'><detail height='6'>" + labels + "</detail></report>", "t.xml");
    RaporAlanBagla(layout, *rs);
    EXPECT_EQ(report::documentText(report::compose(layout, {report::rowsOf(*rs)}, shop.clock.now())),
              "Ayşe AD 7 - AD\n");
}

TEST_F(Core, MoneyIsStoredTimesAMillion) {
    EXPECT_EQ(ParaGoster(session, StoredAmount::ofColumn(12500000.0)), "12,50");
    EXPECT_EQ(ParaGoster(session, StoredAmount::ofColumn(-1234567890.0)), "-1.234,57");
    EXPECT_EQ(ParaGoster(session, storedIn(Null{})), "");
    EXPECT_EQ(ParaYaz(session, {}, "ODMIKTAR", MoneyMode::Ifade), "(ODMIKTAR / 1000000)");
    EXPECT_EQ(ParaOku(session, "1234,50", "", MoneyMode::Deger).inStatement(), "1.234.500.000,00");
    EXPECT_EQ(ParaOku(session, "", "", MoneyMode::Deger).inStatement(), "0,00");
    EXPECT_EQ(ParaOku(session, "12,3456789", "", MoneyMode::Deger).inStatement(), "12.345.678,90");
    EXPECT_EQ(ParaOku(session, "1234,5", "", MoneyMode::Ifade).inStatement(), "1234500000");
    EXPECT_THROW(static_cast<void>(ParaOku(session, "abc", "", MoneyMode::Deger)), RuntimeError);
    EXPECT_EQ(SifirIseNull(0), Value("NULL"));
    EXPECT_EQ(SifirIseNull(Null{}), Value("NULL"));
    EXPECT_EQ(SifirIseNull("5"), Value(5));
}

} // namespace

} // namespace veldona
