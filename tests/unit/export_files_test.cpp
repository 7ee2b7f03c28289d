// The export panel and what each format writes, on a customer list and on a report without rows.
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "core/reporting.h"
#include "core/session.h"
#include "platform/controls/userinput.h"
#include "platform/desktop/desktop.h"
#include "platform/export/cells.h"
#include "platform/export/compoundfile.h"
#include "platform/export/delimited.h"
#include "platform/export/workbook.h"
#include "platform/report/compose.h"
#include "platform/report/desk.h"
#include "platform/report/layoutreader.h"
#include "platform/report/page.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/unicode.h"
#include "reports/startexport.h"
#include "reports/viewer.h"
#include "tests/support/files.h"
#include "tests/support/shop.h"

namespace veldona::test {

namespace {

using namespace std::string_literals;
using Lines = std::vector<std::string>;
constexpr const char* kError13 = "Hata Oluştu\nHata No : 13Hata Tanımı :";

class PdfDesk : public report::ReportDesk {
public:
    void preview(const report::Document&) override {}
    void opened(const report::Document&) override {}
    bool print(const report::Document&) override { return true; }
    void writeFile(const report::Document& document, const std::string& nativePath) override {
        std::ofstream(nativePath) << "%PDF " << document.pages.size();
    }
};

class Export : public ::testing::Test {
protected:
    Export() {
        session.reportDesk = &desk;
        shop.forms.add("frmCrNesne", [this](Forms& f) { return makeFrmCrNesne(f, session); });
        installLayouts(session.desktop.paths);
        for (int i = 1; i <= 60; ++i)
            shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD,EVMH) VALUES ('" + std::to_string(i) +
                     "','Ayşe','Öz, \"Işık\" <ğ>','=1+%D {AD} Mh.')"); // a spreadsheet would calculate it
        showTemplateReport(session, "\\Rapor\\CariListesi2.rpt", {"SELECT * FROM MUSTKAYIT ORDER BY ID"});
        panel().picExport.setVisible(true);
        panel().cmdExport.setVisible(true);
    }

    ExportPanel& panel() { return dynamic_cast<FrmCrNesne&>(*shop.forms.active()).aktar; }
    // The box that ended the export.
    std::string start(const char* format, const char* destination = "Dosya") {
        user::choose(panel().cmbFormat, format);
        user::choose(panel().cmbDestination, destination);
        StartExport(panel());
        const Lines said = shop.said();
        return said.size() == 1 ? said[0] : std::to_string(said.size()) + " boxes";
    }
    [[nodiscard]] std::filesystem::path file(const std::string& below) const {
        return std::filesystem::path(shop.desktop.paths.root()) / "VELDONA/Veldona_Taksit/aktar" / below;
    }

    Shop shop;
    Session& session = shop.session;
    PdfDesk desk;
};

TEST_F(Export, EachFormatHasItsFolderItsNameAndItsContent) {
    struct Case {
        const char* format;
        const char* path;
        const char* beginning;
        const char* holds;
    };
    const Case cases[] = {
        {"Karakter ile Ayrılmış", "Karakter Ayrılmış/aktar.txt",
         "\xEF\xBB\xBF'Müşteri Listesi'\r\n'ID';'HSTNO'", "'Ayşe';'Öz, \"Işık\" <ğ>'"},
        {"Virgül ile Ayrılmış (CSV)", "Virgül Ayrılmış/aktar.csv",
         "\xEF\xBB\xBF\"Müşteri Listesi\"\r\n\"ID\",\"HSTNO\"", ",\"'=1+%D {AD} Mh.\","},
        {"Crystal Reports (RPT)", "Crystal Report/aktar.rpt", "<report", "%%D {{AD} Mh."},
        {"Data Interchange (DIF)", "Data Interchange/aktar.dif", "TABLE\r\n0,1\r\n", "TUPLES\r\n0,66\r\n"},
        {"Zengin Metinli Biçim (RTF)", "Zengin Metin/aktar.rtf", "{\\rtf1", "Ay\\u351?e"},
        {"MS Excel 97-2000 (XLS)", "MSExcel/aktar.xls", "\xD0\xCF\x11\xE0", ""},
        {"MS Excel 97-2000,(Formatsız) (XLS)", "MSExcel/aktar.xls", "\xD0\xCF\x11\xE0", ""},
        {"HTML 32, Standard (HTM)", "HTML/aktar.htm", "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 3.2",
         "&lt;ğ&gt;"},
        {"HTML 4 (HTM)", "HTML/aktar.htm", "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4", "&lt;ğ&gt;"},
        {"Acrobat Format (PDF)", "PDF/aktar.pdf", "%PDF", ""},
        {"Kayıt Deseni (REC)", "Kayıt Deseni/aktar.rec", "\xEF\xBB\xBFTABLE \"Müşteri Listesi\"\r\nFIELDS",
         "RECORDS 60\r\nID whole 1 2\r\nHSTNO text 3 2\r\n"},
        {"Rapor Tanımı (DEF)", "Rapor Tanımı/aktar.def", "\xEF\xBB\xBFREPORT \"Müşteri Listesi\"",
         "COLUMN HSTNO text"},
        {"Tab ile Ayrılmış Metin", "Tab Ayrılmış Metin/aktar.txt", "\xEF\xBB\xBF", "60\t60\tAyşe\t"},
        {"Tab ile Ayrılmış Değerler", "Tab Ayrılmış Değerler/aktar.txt",
         "\xEF\xBB\xBFMüşteri Listesi\r\nID\tHSTNO", "\t'=1+%D {AD} Mh.\t"},
        {"Metin (TXT)", "Metin/aktar.txt", "\xEF\xBB\xBF", "Ayşe"},
        {"MS Word (DOC)", "MSWord/aktar.doc", "{\\rtf1", "Ay\\u351?e"},
        {"XML", "XML/aktar.xml", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>",
         "<field name=\"AD\">Ayşe</field>"},
    };
    panel().txtFieldDel.setText(";");
    panel().txtStringDel.setText("'");
    for (int round = 0; round < 2; ++round) // the second time the folders stand
        for (const Case& each : cases) {
            EXPECT_EQ(start(each.format).substr(0, std::string(kError13).size()), kError13) << each.format;
            const std::string content = bytesOf(file(each.path));
            EXPECT_EQ(content.substr(0, std::string(each.beginning).size()), each.beginning) << each.format;
            EXPECT_NE(content.find(each.holds), std::string::npos) << each.format;
            if (round == 0) std::filesystem::remove(file(each.path));
        }
}

TEST_F(Export, NothingIsWrittenWithoutADestinationOrUnderAPathOfTheOperators) {
    user::choose(panel().cmbFormat, "Acrobat Format (PDF)");
    StartExport(panel());
    EXPECT_EQ(shop.said(), Lines{kError13 + standardDescription(ErrorNumber::TypeMismatch)});
    panel().txtDiskFile.setText("x.pdf");
    user::choose(panel().cmbDestination, "Dosya");
    for (const char* name : {"D:x.pdf", "ş:x.pdf"}) { // the second character, whatever letter is before it
        panel().txtDiskFile.setText(name);
        StartExport(panel());
        EXPECT_FALSE(std::filesystem::exists(file(""))) << name;
    }
    panel().txtDiskFile.setText("x.pdf");
    StartExport(panel());
    EXPECT_TRUE(std::filesystem::exists(file("PDF/x.pdf")));
    panel().txtDiskFile.setText("..\\..\\vorel.mdb");
    EXPECT_EQ(shop.said().size(), 3U);
    StartExport(panel());
    EXPECT_NE(shop.said().at(0).find("Hata No : 76Hata Tanımı :"), std::string::npos);
    for (const char* destination : {"e-Mail (MAPI)", "e-Mail (VIM)", "MS Exchange", "Lotus Domino", "Belge"})
        EXPECT_NE(start("XML", destination).find("Hata No : 445"), std::string::npos) << destination;
}

TEST_F(Export, PagesOfAPdfAreChosenByNumber) {
    panel().cmbAllPages.setListIndex(1);
    panel().txtFirstPage.setText("2");
    panel().txtLastPage.setText("99");
    start("Acrobat Format (PDF)");
    EXPECT_EQ(bytesOf(file("PDF/aktar.pdf")), "%PDF " + std::to_string(session.rapor->pages.size() - 1));
    panel().txtFirstPage.setText("99");
    EXPECT_NE(start("Acrobat Format (PDF)").find("Hata No : 5"), std::string::npos);
}

TEST_F(Export, ResettingThePanelPutsItBackAsItWas) {
    const auto state = [this] {
        Lines lines;
        for (const Control* control : panel().form.controls())
            if (control != &panel().cmdExport && control->holder())
                lines.push_back(control->name() + (control->visible() ? " +" : " -") +
                                (control->enabled() ? "+" : "-"));
        return lines;
    };
    const Lines before = state();
    user::choose(panel().cmbFormat, "Karakter ile Ayrılmış");
    user::choose(panel().cmbDestination, "Dosya");
    panel().chkOpenFile.setChecked(true);
    EXPECT_TRUE(panel().fraOptions[2].visible() && panel().txtDiskFile.visible() &&
                panel().lblDateFormat.visible());
    user::choose(panel().cmbDestination, "MS Exchange");
    EXPECT_TRUE(panel().fraOptions[0].visible() && !panel().fraOptions[2].visible());
    EXPECT_FALSE(panel().chkOpenFile.checked());
    FormuSifirla(panel());
    EXPECT_EQ(state(), before);
    EXPECT_EQ(panel().cmbFormat.text(), kChooseFormat);
    EXPECT_EQ(panel().cmbDestination.text(), kChooseTarget);
    EXPECT_EQ(getExportDirectory("C:\\a\\b.htm") + "|" + getExportDirectory("b.htm") + "|" +
                  GetExportDir("?"),
              "C:\\a||Export");
}

TEST_F(Export, AReportWithoutRowsGivesTheLinesOfItsPages) {
    report::Document document = *session.rapor;
    document.data.clear();
    const report::DataSet rows = exports::tablesOf(document).front();
    std::size_t lines = 0;
    for (const report::Page& page : document.pages)
        lines += report::textLines(page).size();
    EXPECT_EQ(rows.rowCount(), lines);
    EXPECT_NE(exports::commaSeparated(document).find("\"Ayşe\""), std::string::npos);
    document.pages[0].items.clear();
    EXPECT_FALSE(exports::tabbedPages(document).empty());
}

// Two tables side by side, of which the second one is summed.
report::Document twoTables() {
    const report::Layout layout = report::parseLayout(
        R"(<report title="Rapor: 7"><query name="a" sql="SELECT 1"/>
<query name="b" heading="Ödeme" sql="SELECT 1"/>
<reportHeader height="6"><label x="0" y="0" width="60" text="Baş"/></reportHeader>
<sideBySide>
<table query="a"><header height="6"><label x="0" y="0" width="60" text="A'lar"/></header>
<detail height="6"><field x="0" y="0" width="60" column="AD"/></detail></table>
<table query="b" x="80"><header height="6"><label x="0" y="0" width="60" text="B'ler"/></header>
<detail height="6"><field x="0" y="0" width="60" column="TUTAR"/></detail>
<footer height="6"><sum x="0" y="0" width="60" column="TUTAR" format="0.00"/></footer></table>
</sideBySide></report>)",
        "iki.xml");
    return report::compose(layout,
                           {{.name = "a", .columns = {{"AD"}}, .cells = {"Ayşe", "=1"}},
                            {.name = "b", .columns = {{"TUTAR", 5}}, .cells = {450.25, 0.5}}},
                           DateTime::of(2026, 11, 22));
}

TEST(ExportedTables, StandUnderTheirHeadings) {
    EXPECT_NE(exports::commaSeparated(twoTables()).find("\r\n\r\n\"Ödeme\"\r\n\"TUTAR\"\r\n\"450,25\"\r\n"),
              std::string::npos);
    const std::string dif = exports::interchange(twoTables());
    EXPECT_EQ(dif.find("TUPLES\r\n0,9\r\n"), dif.find("TUPLES")); // twice heading, names and two rows; a gap
    EXPECT_NE(dif.find("\"Ayse\"\r\n"), std::string::npos);
    EXPECT_NE(dif.find("\"\xD6"
                       "deme\"\r\n"),
              std::string::npos);
    EXPECT_NE(dif.find("0,45025E-2\r\nV\r\n"), std::string::npos);
}

TEST(ExportedTables, ASheetHoldsThePartThatWasChosen) {
    using exports::WorkbookChoices;
    const report::Document document = twoTables();
    const auto holds = [&](const WorkbookChoices& choices) {
        Lines lines;
        for (const exports::SheetRows& sheet : exports::sheetsOf(document, choices)) {
            std::string line = sheet.name + (sheet.headings ? " +" : " -") + (sheet.totals ? "+" : "-");
            for (const Value& cell : sheet.rows.cells)
                line += "|" + exports::shownCell(cell);
            lines.push_back(line);
        }
        return lines;
    };
    EXPECT_EQ(holds({}), (Lines{"a ++|Ayşe|=1", "Ödeme ++|450,25|0,5"}));
    EXPECT_EQ(holds({.area = report::Area::Detail}), (Lines{"a +-|Ayşe|=1", "Ödeme +-|450,25|0,5"}));
    EXPECT_EQ(holds({.area = report::Area::Detail, .group = 2}), (Lines{"Rapor  7 +-|450,25|0,5"}));
    EXPECT_EQ(holds({.area = report::Area::ReportHeader}), (Lines{"Rapor  7 --|Baş"}));
    EXPECT_EQ(holds({.area = report::Area::GroupHeader}), (Lines{"Rapor  7 --|A'lar|B'ler"}));
    EXPECT_EQ(holds({.area = report::Area::GroupFooter, .group = 2}), (Lines{"Rapor  7 --|450,75"}));
    EXPECT_EQ(holds({.tabular = false}), (Lines{"Rapor  7 --|Baş||A'lar|B'ler|Ayşe|450,25|=1|0,5||450,75"}));
    for (const WorkbookChoices& nothing :
         {WorkbookChoices{.area = report::Area::PageFooter}, WorkbookChoices{.group = 3}})
        EXPECT_THROW(holds(nothing), RuntimeError);
    // SUM(A2:A3) by its tokens.
    const std::string sum = "\x25\x01\0\x02\0\0\xC0\0\xC0\x19\x10"s;
    EXPECT_NE(exports::workbook(document, {.functions = true}).find(sum), std::string::npos);
    EXPECT_EQ(exports::workbook(document, {}).find(sum), std::string::npos);
}

TEST_F(Export, ThePanelsChoicesReachTheSheet) {
    const auto content = [&] {
        start("MS Excel 97-2000 (XLS)");
        return bytesOf(file("MSExcel/aktar.xls"));
    };
    const auto wide = [](const char* text) {
        std::string bytes;
        for (const char16_t unit : utf16Of(text))
            (bytes += static_cast<char>(unit)) += static_cast<char>(unit >> 8);
        return bytes;
    };
    EXPECT_NE(content().find(wide("HSTNO")), std::string::npos);
    user::choose(panel().cmbUseTabFormat, "Hayır");
    EXPECT_EQ(content().find(wide("HSTNO")), std::string::npos) << "the pages' lines have other headings";
    user::choose(panel().cmbAreaType, "Sayfa Dipnotu");
    const std::string footers = content();
    EXPECT_NE(footers.find(wide("Sayfa 2 / ")), std::string::npos);
    EXPECT_EQ(footers.find(wide("Ayşe")), std::string::npos);
    panel().txtAreaGroup.setText("1"); // a page's foot belongs to no table
    EXPECT_NE(start("MS Excel 97-2000 (XLS)").find("Hata No : 5"), std::string::npos);
}

// Container sizes around the borders at which its tables grow by one more sector.
TEST(CompoundFile, HoldsEverySectorInItsTable) {
    for (const std::size_t sectors : std::initializer_list<std::size_t>{1, 8, 125, 126, 127, 128, 253, 254,
                                                                        13841, 13842, 13843, 14000, 40000}) {
        const std::string bytes = exports::compoundFile("Workbook", std::string(sectors * 512, 'x'));
        const auto word = [&](std::size_t at) {
            std::uint32_t value = 0;
            for (int i = 3; i >= 0; --i)
                value = value << 8 | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
            return value;
        };
        const std::uint32_t tables = word(44), lists = word(72);
        const std::size_t stream = std::max<std::size_t>(sectors, 8);
        EXPECT_EQ(bytes.size(), 512 * (1 + stream + 1 + tables + lists)) << sectors;
        EXPECT_GE(tables * 128, stream + 1 + tables + lists) << sectors;
        EXPECT_EQ(lists, tables > 109 ? (tables - 109 + 126) / 127 : 0) << sectors;
    }
}

} // namespace

} // namespace veldona::test
