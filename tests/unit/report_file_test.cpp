// Reading layout files: what a shop's editing may do to one, and what the message says.
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/report/delivered.h"
#include "platform/report/layoutreader.h"
#include "tests/support/files.h"
#include "tests/support/raised.h"

namespace veldona::report {
namespace {

struct Broken {
    const char* xml;
    const char* message; // behind "Rapor düzeni hatalı: bozuk.xml, "
};

std::string messageOf(const std::string& xml) {
    const auto error = test::raised<ReportError>([&] { static_cast<void>(parseLayout(xml, "bozuk.xml")); });
    if (!error) return "(read)";
    EXPECT_EQ(error->number(), kBrokenLayout);
    return error->description();
}

TEST(ReportFile, BrokenFilesSayWhatAndWhere) {
    const Broken cases[] = {
        {"", "satır 1: dosyada etiket yok."},
        {"yalnız yazı", "satır 1: dosyada etiket yok."},
        {"<report>\n<band height='5'>\n</report>",
         "satır 3: bir etiket kapanmamış, ya da başka bir adla kapanmış."},
        {"<report title=x/>", "satır 1: etiketin öznitelikleri bozuk; değerler tırnak içinde yazılır."},
        {"<rapor/>", "satır 1: dosya tek bir <report> etiketi olmalıdır."},
        {"<report/>\n<report/>", "satır 1: dosya tek bir <report> etiketi olmalıdır."},
        {"<!DOCTYPE report [<!ENTITY a 'b'>]><report/>",
         "satır 1: belge türü tanımı (DOCTYPE) kullanılamaz."},
        {"<report>\n<sayfa/></report>", "satır 2: <sayfa> etiketi burada kullanılamaz."},
        {"<report colour='1'/>", "satır 1: <report> etiketinin \"colour\" özniteliği yoktur."},
        {"<report size='9' size='8'/>", "satır 1: <report> etiketinde size iki kez yazılmış."},
        {"<report paper='A3'/>",
         "satır 1: <report> etiketinin paper=\"A3\" değeri şunlardan biri olmalıdır: A4, A5."},
        {"<report>yazı</report>", "satır 1: <report> içinde etiket dışında yazı olamaz."},
        {"<report>\n\n<band/></report>", "satır 3: <band> etiketine height yazılmalıdır."},
        {"<report><band height='5,5'/></report>",
         "satır 1: <band> etiketinin height=\"5,5\" değeri sayı değil; ondalık ayracı noktadır."},
        {"<report><band height='-5'/></report>",
         "satır 1: <band> etiketinin height=\"-5\" değeri sayı değil; ondalık ayracı noktadır."},
        {"<report><band height='1e2'/></report>",
         "satır 1: <band> etiketinin height=\"1e2\" değeri sayı değil; ondalık ayracı noktadır."},
        {"<report><band height='99999'/></report>",
         "satır 1: <band> etiketinin height=\"99999\" değeri 1 ile 1000 arasında olmalıdır."},
        {"<report><band height='600'/></report>",
         ": bölümler sayfaya sığmıyor; kenar boşluklarını ya da yükseklikleri küçültünüz."},
        {"<report><band height='9'>\n<label x='0' y='0' width='200' text='a'/></band></report>",
         "satır 2: bir öğe sayfanın sağına taşıyor (x + width en çok 180 mm)."},
        {"<report><band height='9'>\n\n<line x='0' y='9.5' width='20'/></band></report>",
         "satır 3: bir öğe bölümün altına taşıyor (y + height, bölümün height değerini aşıyor)."},
        {"<report><band height='9'><label x='0' y='0' width='9' text='a' color='red'/></band></report>",
         "satır 1: <label> etiketinin color=\"red\" değeri renk değil; #rrggbb biçiminde yazılır."},
        {"<report><band height='9'><label x='0' y='0' width='9' text='{AD'/></band></report>",
         "satır 1: \"{\" bir sütun adı ve \"}\" ister; ayracın kendisi için \"{{\" yazınız."},
        {"<report><band height='9'><label x='0' y='0' width='9' text='%p'/></band></report>",
         "satır 1: %p ve %P yalnız pageHeader ve pageFooter içinde kullanılabilir."},
        {"<report><band height='9'><field x='0' y='0' width='9'/></band></report>",
         "satır 1: <field> etiketine column yazılmalıdır."},
        {"<report><band height='9'><field x='0' y='0' width='9' column='A;DROP'/></band></report>",
         "satır 1: \"A;DROP\" bir sütun adı değil."},
        {"<report><band height='9'><field x='0' y='0' width='9' column='plan.A'/></band></report>",
         "satır 1: \"plan\" adında bir sorgu yok."},
        {"<report><band height='20'><label name='a' x='0' y='0' width='9'/>\n"
         "<label name='a' x='0' y='9' width='9'/></band></report>",
         "satır 2: \"a\" adı bu bölümde iki kez kullanılmış."},
        {"<report><query name='q' sql='DELETE FROM MUSTKAYIT'/></report>",
         "satır 1: sorgu yalnız SELECT olabilir."},
        {"<report><query name='q' sql='SELECTED'/></report>", "satır 1: sorgu yalnız SELECT olabilir."},
        {"<report><query name='q' sql='select 1'/><query name='q' sql='select 2'/></report>",
         "satır 1: \"q\" adında iki sorgu var."},
        {"<report><table query='q'><detail height='5'/></table></report>",
         "satır 1: \"q\" adında bir sorgu yok."},
        {"<report><table/></report>", "satır 1: <table> içinde bir <detail> olmalıdır."},
        {"<report><pageHeader height='5'/>\n<pageHeader height='5'/></report>",
         "satır 2: <pageHeader> iki kez yazılmış."},
        {"<report title='\xDE'/>", ": dosya UTF-8 olarak kaydedilmemiş."},
    };
    for (const Broken& broken : cases) {
        const std::string link = broken.message[0] == ':' ? "" : ", ";
        EXPECT_EQ(messageOf(broken.xml), "Rapor düzeni hatalı: bozuk.xml" + link + broken.message);
    }
}

TEST(ReportFile, SizeAndNestingAreLimited) {
    EXPECT_EQ(messageOf("<report>" + std::string(2 << 20, ' ') + "</report>"),
              "Rapor düzeni hatalı: bozuk.xml: dosya bir megabayttan büyük.");
    std::string deep = "<report>", many = "<report><band height='9'>";
    for (int i = 0; i < 50000; ++i)
        deep += "<band height='9'>";
    EXPECT_NE(messageOf(deep), "(read)");
    for (int i = 0; i < 6000; ++i)
        many += "<box x='0' y='0' width='1' height='1'/>";
    EXPECT_NE(messageOf(many + "</band></report>").find("çok fazla etiket"), std::string::npos);
    std::string bands = "<report>", queries = "<report>",
                signs = "<report><pageHeader height='9'><label x='0' ";
    for (int i = 0; i < 6000; ++i) {
        bands += "<band height='1'/>";
        queries += "<query name='q" + std::to_string(i) + "' sql='SELECT 1'/>";
    }
    signs += "y='0' width='9' text='" + std::string(12'000, '%') + "%p{A}%p{B}";
    for (int i = 0; i < 6000; ++i)
        signs += "%p";
    EXPECT_NE(messageOf(bands + "</report>").find("çok fazla etiket"), std::string::npos);
    EXPECT_NE(messageOf(queries + "</report>").find("çok fazla sorgu"), std::string::npos);
    EXPECT_NE(messageOf(signs + "'/></pageHeader></report>").find("çok fazla etiket"), std::string::npos);
}

class ReportFolder : public testing::Test {
protected:
    void write(const std::string& file, const std::string& text) { test::writeBytes(folder / file, text); }

    test::TemporaryFolder place;
    std::filesystem::path folder = place.path();
};

TEST_F(ReportFolder, ShopsOwnBandedLayoutComesBeforeTheDeliveredOne) {
    EXPECT_THROW(static_cast<void>(readLayout(folder.string())), ReportError);
    EXPECT_THROW(static_cast<void>(bandedLayout(folder.string(), "yok")), ReportError);
    EXPECT_EQ(bandedLayout(folder.string(), "gungecodmrprYTL").title, "Ödeme Raporu");
    write("gungecodmrprYTL.xml", "<report title='Bizim'/>");
    EXPECT_EQ(bandedLayout(folder.string(), "gungecodmrprYTL").title, "Bizim");
    write("gungecodmrprYTL.xml", "<report");
    EXPECT_THROW(static_cast<void>(bandedLayout(folder.string(), "gungecodmrprYTL")), ReportError);
}

TEST_F(ReportFolder, MissingLayoutsAreWrittenAndOwnOnesKept) {
    const std::filesystem::path rapor = folder / "VELDONA" / "Rapor";
    writeMissingLayouts(rapor.string());
    for (const DeliveredLayout& each : deliveredLayouts())
        EXPECT_NO_THROW(static_cast<void>(readLayout((rapor / each.file).string()))) << each.file;
    folder = rapor;
    write("CariListesi2.rpt", "<report title='Bizim'/>");
    writeMissingLayouts(rapor.string());
    EXPECT_EQ(readLayout((rapor / "CariListesi2.rpt").string()).title, "Bizim");
}

} // namespace
} // namespace veldona::report
