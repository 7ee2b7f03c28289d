// The delivered layouts on a shop's real database.
#include <gtest/gtest.h>

#include "core/amountwords.h"
#include "core/session.h"
#include "platform/report/compose.h"
#include "platform/report/delivered.h"
#include "platform/report/layoutreader.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"
#include "tests/support/raised.h"
#include "tests/support/shop.h"

namespace veldona::report {
namespace {

class ReportDelivered : public testing::Test {
protected:
    void SetUp() override {
        shop.run("UPDATE FIRMABILGISI SET FIRMA='Yılmaz Mobilya ve Beyaz Eşya Tic. Ltd. Şti.', GIRIS='Yılmaz "
                 "Ticaret', "
                 "ADRES='Cumhuriyet Mah. Atatürk Cad. No:12 Üsküdar İstanbul', TELEFON='0216 333 44 55', "
                 "GSM='0532 111 22 33', WEB='www.yilmaz.example'");
    }
    static Layout layoutOf(std::string_view file) {
        for (const DeliveredLayout& each : deliveredLayouts())
            if (each.file == file) return parseLayout(each.xml, std::string(file));
        throw std::out_of_range(std::string(file));
    }
    Document ofTemplate(const Layout& layout) {
        ConnectionQueries queries(*shop.session.gBaglanti);
        return composeTemplate(layout, queries, shop.clock.now());
    }
    void expectHolds(const Document& document, std::initializer_list<const char*> parts) {
        const std::string text = documentText(document);
        for (const char* part : parts)
            EXPECT_NE(text.find(part), std::string::npos) << part << "\nnot in\n" << text;
    }
    test::Shop shop;
};

TEST_F(ReportDelivered, ReceiptIsHalfAPage) {
    const Document document = report::compose(bandedLayout("", "rprtahsilatmakbuzu"), {}, shop.clock.now());
    ASSERT_EQ(document.pages.size(), 1U);
    EXPECT_EQ(document.pageWidth, 210);
    EXPECT_EQ(document.pageHeight, 148);
}

TEST_F(ReportDelivered, ContractOfTwoHundredFiftyFiveInstallments) {
    shop.run("INSERT INTO T_TEMP_GENEL "
             "(ALAN_1,ALAN_4,ALAN_6,ACIKLAMA_1,ID_1,SAYI_1,SAYI_2,SAYI_3,SAYI_4,TARIH_1,DENEME) "
             "VALUES ('7','Ayşe Yılmaz','EvTel : 1    IsTel : 2    GSM : 3','Barbaros Mah. Çam Sk. Üsküdar "
             "İstanbul',12,"
             "26000,25600,100,400,#02,22,2048#,'" +
             YaziyaCevir(25500) + "')");
    for (int i = 0; i < 255; ++i)
        shop.run("INSERT INTO BEKLENENODM (MUSTNO,ISLEMNO,ODTRH,KALAN) VALUES ('7',12,'" +
                 toText(addMonths(DateTime::of(2026, 12, 22), i)) + "',100)");
    shop.run(
        "INSERT INTO GUNUGECENODM (MUSTNO,ISLEMNO,ODTRH,KALAN) VALUES ('7',12,#11,22,2026 10:15:00#,100)");
    const Document document = ofTemplate(layoutOf("SozlesmeAntetli.rpt"));
    expectHolds(document,
                {"Yılmaz Mobilya ve Beyaz Eşya Tic. Ltd. Şti.", "TAKSİTLİ SATIŞ SÖZLEŞMESİ",
                 "Müşteri No 7 Adı Soyadı Ayşe Yılmaz", "26.000,00 YTL 400,00 YTL 100,00 YTL 25.500,00 YTL",
                 "Yazıyla: Yalnız Yirmibeşbin beşyüz YTL  00 YKR", "Son taksit tarihi: 22/02/2048",
                 "No Vade Taksit (YTL) Paraf Tarih Ödenen (YTL)", "1 22/12/2026 100,00 22/11/2026 100,00",
                 "255 22/02/2048 100,00", "Toplam 25.500,00", "SATICI ALICI KEFİL",
                 "Sözleşme No 12   Ayşe Yılmaz Sayfa 1 / "});
    EXPECT_EQ(document.data.at(1).name, "plan"); // behind the goods, as on the paper
    EXPECT_EQ(document.data.at(1).rowCount(), 255U);
    const std::string last = pageText(document.pages.back());
    EXPECT_NE(last.find("SATICI ALICI KEFİL"), std::string::npos);
}

TEST_F(ReportDelivered, ContractWithoutRowsIsAnEmptyTable) {
    const Document document = ofTemplate(layoutOf("SozlesmeAntetli.rpt"));
    ASSERT_EQ(document.pages.size(), 1U);
    expectHolds(document, {"ALICI", "Toplam 0,00 Toplam 0,00", "Sayfa 1 / 1"});
}

// All that the page about layouts offers for queries, in one layout of a shop's own.
TEST_F(ReportDelivered, AShopsOwnQueriesMayUseAllThatIsOffered) {
    for (const char* customer :
         {"'1','Ayşe','Işık','0212'", "'2','Çiğdem','Yılmaz',NULL", "'3','Ali','Ak',''"})
        shop.run(std::string("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD,EVTEL) VALUES (") + customer + ")");
    for (const char* row : {"'1',5,#11,02,2026#,2500000,1", "'1',5,#12,22,2026#,1000000,0",
                            "'2',6,#11,21,2026 10:00:00#,3125000,0", "'9',7,NULL,500000,0"})
        shop.run(std::string("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR,PESINAT) VALUES (") + row +
                 ")");
    const std::pair<const char*, const char*> queries[] = {
        {"SELECT UCASE(AD) AS X FROM MUSTKAYIT WHERE AD LIKE 'ç%'", "ÇİĞDEM"},
        {"SELECT NZ(SUM(ODMIKTAR),0) AS X FROM URUNSAT WHERE MUSTNO='3'", "0"},
        {"SELECT NZ(EVTEL,'yok')+'/'+SOYAD AS X FROM MUSTKAYIT WHERE HSTNO='2'", "yok/Yılmaz"},
        {"SELECT ROUND(ODMIKTAR/1000000,2) AS X FROM URUNSAT WHERE MUSTNO='2'", "3,12"},
        {"SELECT DATE()-ODTRH AS X FROM URUNSAT WHERE ODTRH BETWEEN DATE()-30 AND #11,20,2026#", "20"},
        {"SELECT COUNT(*) AS X FROM URUNSAT WHERE ODTRH > NOW() OR ODTRH IS NULL AND NOT PESINAT=1", "2"},
        {"SELECT MID(ODTRH,4,7) AS X FROM URUNSAT WHERE PESINAT=1", "11/2026"},
        {"SELECT IIF(LEN(EVTEL)>0,EVTEL,'-') & '.' AS X FROM MUSTKAYIT WHERE HSTNO IN ('3')", "-."},
        {"SELECT VAL(HSTNO)+CDBL('1,5') AS X FROM MUSTKAYIT WHERE HSTNO='3'", "4,5"},
        {"SELECT TOP 1 T.BORC AS X FROM MUSTKAYIT LEFT JOIN (SELECT MUSTNO, SUM(ODMIKTAR)/1000000 AS BORC "
         "FROM "
         "URUNSAT GROUP BY MUSTNO) AS T ON T.MUSTNO=HSTNO ORDER BY HSTNO",
         "3,5"},
        {"SELECT MIN(AD) & MAX(SOYAD) AS X FROM MUSTKAYIT, URUNSAT WHERE HSTNO=MUSTNO", "AyşeYılmaz"},
        {"SELECT COUNT(*) AS X FROM (SELECT AD FROM MUSTKAYIT UNION SELECT AD FROM MUSTKAYIT) AS B", "3"},
        {"SELECT DISTINCT AD AS X FROM (MUSTKAYIT INNER JOIN URUNSAT ON HSTNO=URUNSAT.MUSTNO) LEFT JOIN "
         "URUNAL ON "
         "URUNAL.ISLEMNO=URUNSAT.ISLEMNO WHERE HSTNO IN (SELECT MUSTNO FROM URUNSAT WHERE PESINAT=1)",
         "Ayşe"},
    };
    for (const auto& [sql, expected] : queries) {
        std::string escaped = replaceAll(replaceAll(sql, "&", "&amp;"), "<", "&lt;");
        const Layout layout = parseLayout("<report title=\"t\"><query name=\"q\" sql=\"" + escaped +
                                              "\"/><detail height=\"5\" query=\"q\"><field x=\"0\" y=\"0\" "
                                              "width=\"100\" column=\"X\"/></detail></report>",
                                          "d.rpt");
        EXPECT_EQ(documentText(ofTemplate(layout)), std::string(expected) + '\n') << sql;
    }
}

TEST_F(ReportDelivered, CustomerListIsTheOneOnTheScreen) {
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD,GSM,EVMH,EVIL) VALUES "
             "('7','Ayşe','Yılmaz','0532','Çam','İstanbul')");
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('8','Veli','Şen')");
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD) VALUES ('G3','Sistem')");
    Layout layout = layoutOf("CariListesi2.rpt");
    expectHolds(ofTemplate(layout), {"Yılmaz Mobilya", "1 7 Ayşe Yılmaz 0532 Çam İstanbul\n2 8 Veli Şen\n"});
    EXPECT_EQ(documentText(ofTemplate(layout)).find("Sistem"), std::string::npos);

    layout.setQuery("liste", "SELECT YOK FROM MUSTKAYIT");
    const auto error = test::raised<ReportError>([&] { ofTemplate(layout); });
    EXPECT_TRUE(error.value().description().starts_with(
        "Rapor düzeni hatalı: CariListesi2.rpt, satır 6: \"liste\" sorgusu çalışmadı: "))
        << error->description();
}

} // namespace
} // namespace veldona::report
