// The delivered layouts on a shop's real database.
#include <gtest/gtest.h>

#include "core/amountwords.h"
#include "platform/report/compose.h"
#include "platform/report/delivered.h"
#include "platform/report/layoutreader.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/conversion.h"
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

TEST_F(ReportDelivered, ReceiptIsHalfAPageOfNamedTexts) {
    Layout layout = bandedLayout("", "rprtahsilatmakbuzu");
    for (const char* name : {"Label8", "lblUnvan", "lblAdres", "lblTelefon", "lblBaslik"})
        EXPECT_TRUE(layout.setText("Section4", name, std::string("4:") + name)) << name;
    for (const char* name :
         {"lblMustNo", "lblIslemNo", "lblAdSoyad", "Label17", "lblKalanBorç", "lblYazi", "Label18"})
        EXPECT_TRUE(layout.setText("Section1", name, std::string("1:") + name)) << name;
    layout.setText("Section1", "Label17", "1.234,05#YTL.");
    const Document document = report::compose(layout, {}, shop.clock.now());
    ASSERT_EQ(document.pages.size(), 1U);
    EXPECT_EQ(document.pageWidth, 210);
    EXPECT_EQ(document.pageHeight, 148);
    expectHolds(document,
                {"TAHSİLAT MAKBUZU", "4:lblUnvan", "4:Label8", "Müşteri No 1:lblMustNo İşlem No 1:lblIslemNo",
                 "1.234,05#YTL. 1:lblKalanBorç", "Yazıyla 1:lblYazi", "Ödeyen Tahsil Eden"});
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

TEST_F(ReportDelivered, CustomerListIsTheOneOnTheScreen) {
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD,GSM,EVMH,EVIL) VALUES "
             "('7','Ayşe','Yılmaz','0532','Çam','İstanbul')");
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('8','Veli','Şen')");
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD) VALUES ('G3','Sistem')");
    Layout layout = layoutOf("CariListesi2.rpt");
    expectHolds(ofTemplate(layout), {"Yılmaz Mobilya", "1 7 Ayşe Yılmaz 0532 Çam İstanbul\n2 8 Veli Şen\n"});
    EXPECT_EQ(documentText(ofTemplate(layout)).find("Sistem"), std::string::npos);

    layout.setQuery("liste", "SELECT YOK FROM MUSTKAYIT");
    try {
        ofTemplate(layout);
        ADD_FAILURE();
    } catch (const ReportError& error) {
        EXPECT_TRUE(error.description().starts_with(
            "Rapor düzeni hatalı: CariListesi2.rpt, satır 6: \"liste\" sorgusu çalışmadı: "))
            << error.description();
    }
    layout.setQuery("liste", "DELETE FROM MUSTKAYIT");
    EXPECT_THROW(ofTemplate(layout), ReportError);
    EXPECT_EQ(shop.rows("SELECT COUNT(*) FROM MUSTKAYIT"), std::vector<std::string>{"3"});
}

} // namespace
} // namespace veldona::report
