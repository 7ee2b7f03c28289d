// A customer whose name and address nobody should have: the papers that are printed of such an account and
// the files that are made of them stay what they are.
#include <filesystem>
#include <optional>
#include <sstream>

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include "archivepart.h"
#include "core/session.h"
#include "hostiletexts.h"
#include "platform/export/cells.h"
#include "platform/export/delimited.h"
#include "platform/export/hypertext.h"
#include "platform/export/ownform.h"
#include "platform/export/richtext.h"
#include "platform/export/spreadsheet.h"
#include "platform/export/workbook.h"
#include "platform/export/xmldata.h"
#include "platform/report/compose.h"
#include "platform/report/layoutreader.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"
#include "tests/faults/day.h"
#include "tests/fuzz/export_readers.h"
#include "tests/fuzz/fuzzing.h"

namespace veldona::faults {
namespace {

// Keeps the pages themselves of what was shown last.
class KeepingDesk : public report::ReportDesk {
public:
    void preview(const report::Document& document) override { last = document; }
    void opened(const report::Document& document) override { last = document; }
    bool print(const report::Document& document) override {
        last = document;
        return true;
    }
    void writeFile(const report::Document&, const std::string&) override {}
    std::optional<report::Document> last;
};

void expectSound(const report::Document& document, const std::string& paper) {
    SCOPED_TRACE(paper);
    using namespace fuzz;
    const std::vector<report::DataSet> tables = exports::tablesOf(document);
    std::size_t rows =
        tables.size() > 1 ? 2 * tables.size() - 1 : 0; // headings, and lines between the tables
    for (const report::DataSet& table : tables)
        rows += table.rowCount() + 1;
    EXPECT_EQ(readCommaSeparated(exports::commaSeparated(document)).size(), rows);
    for (const std::string& html :
         {exports::hypertext32(document, true), exports::hypertext4(document, true)}) {
        EXPECT_GT(readTags(html).size(), 8U);
        requireXmlCharacters(html);
    }
    EXPECT_GT(readRichText(exports::richText(document)).size(), 6U);
    EXPECT_NO_THROW(static_cast<void>(readWorkbookTexts(exports::workbook(document, {}))));
    for (const std::string& xml : exports::xmlData(document, false)) {
        requireXmlCharacters(xml);
        EXPECT_TRUE(pugi::xml_document().load_string(xml.c_str(), pugi::parse_full));
    }
    std::string written;
    if (runs([&] {
            written = exports::ownForm(document);
        })) { // the endless texts are more than a layout holds
        const auto again = report::compose(report::parseLayout(written, "yine"), {}, {});
        EXPECT_EQ(again.pages.size(), document.pages.size());
    }
    const std::string text = report::documentText(document);
    EXPECT_EQ(validUtf8(text), text);
}

TEST(HostilePapers, StayWellFormed) {
    const Drive drive;
    openShop(drive);
    Till till(drive);
    till.play(openingLines());
    KeepingDesk desk;
    till.session().reportDesk = &desk;
    adodb::Connection& books = *till.session().gBaglanti;
    for (const std::string& typed : hostileTexts()) {
        SCOPED_TRACE(left(validUtf8(typed), 60));
        // As the books hold a text, whoever wrote it: quotes doubled, nothing else kept from it.
        const std::string text = replaceAll(validUtf8(typed), "'", "''");
        if (text.find('\0') != text.npos) continue; // no statement has such a text
        books.execute("UPDATE MUSTKAYIT SET AD='" + text + "', SOYAD='" + text + "', EVMH='" + text +
                      "', EVCD='" + text + "', EVTEL='" + text + "' WHERE HSTNO='7'");
        const std::pair<const char*, const char*> papers[] = {
            {"receipt", "type Text1 \"7\"\ndblclick L3 0\nput mskOdenenPara \"1\"\nclick Command1\nclick "
                        "cmdMakbuzYazdir\n"},
            {"contract", "click cmdSozlesme\nkey Esc\n"},
            {"list", "key F10\nclick cmdBul\nclick cmdYazici\nkey Esc\nkey Esc\n"},
        };
        for (const auto& [paper, lines] : papers) {
            desk.last.reset();
            till.play(lines);
            ASSERT_TRUE(desk.last) << paper << " is not shown: " << testing::PrintToString(till.said());
            expectSound(*desk.last, paper);
        }
    }
}

TEST(HostilePapers, ASheetTakesEveryText) {
    const Drive drive;
    const std::string path = (drive.path() / "s.xlsx").string();
    const std::vector<std::string> texts = hostileTexts();
    exports::Spreadsheet sheet(path);
    int folders = 0;
    for (std::size_t i = 0; i < texts.size(); ++i)
        sheet.write(static_cast<int>(i), 0, texts[i]);
    for (const auto& entry : std::filesystem::directory_iterator(drive.path()))
        if (entry.path().filename().string().starts_with('.')) { // where its plain parts will stand
            EXPECT_EQ(entry.status().permissions(), std::filesystem::perms::owner_all);
            ++folders;
        }
    EXPECT_EQ(folders, 1);
    sheet.close();
    const std::string shared = test::partOf(path, "xl/sharedStrings.xml");
    fuzz::requireXmlCharacters(shared);
    pugi::xml_document read;
    ASSERT_TRUE(read.load_string(shared.c_str(), pugi::parse_full | pugi::parse_ws_pcdata_single));
    std::vector<std::string> written;
    for (const pugi::xml_node item : read.child("sst").children("si"))
        written.emplace_back(item.child("t").text().get());
    std::vector<std::string> wanted;
    for (const std::string& text : texts) {
        const std::string one = left(exports::withoutControls(text), 32767);
        if (std::find(wanted.begin(), wanted.end(), one) == wanted.end()) wanted.push_back(one);
    }
    std::erase(wanted, ""); // no text, no cell
    EXPECT_EQ(written, wanted);
    EXPECT_TRUE(pugi::xml_document().load_string(test::partOf(path, "xl/worksheets/sheet1.xml").c_str()));
}

} // namespace
} // namespace veldona::faults
